// An instance of the effect on a layer: its controls, its title in the panel, its sequence data.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "headless/control.h"
#include "headless/scene.h"

namespace vellumtide::headless {

class Host;

class Effect {
 public:
  Effect(Host& host, Layer& layer, const std::vector<PF_ParamDef>& declared);
  Effect(const Effect&) = delete;
  Effect& operator=(const Effect&) = delete;

  Host& host() const { return *host_; }
  Layer& layer() const { return *layer_; }

  // Controls by index; control 0 is the layer the effect is on.
  std::vector<Control>& controls() { return controls_; }
  const std::vector<Control>& controls() const { return controls_; }
  // Throws std::out_of_range for an index there is none of.
  Control& control(PF_ParamIndex index) { return controls_.at(static_cast<size_t>(index)); }
  // The controls the panel shows, control 0 left out.
  std::vector<const Control*> shownControls() const;
  // The shown control of that label, null when there is none; the first of several.
  Control* findShown(const std::string& label);

  // Setting values as the user would: held to the valid range. Throws std::invalid_argument when
  // the control is of another type.
  void setNumber(PF_ParamIndex index, double value);
  void setPoint(PF_ParamIndex index, double x, double y);
  void setColor(PF_ParamIndex index, ColorValue color);
  void setLayer(PF_ParamIndex index, const Layer* layer);
  // A hold keyframe of a number: in force from that time on, before the first one the first is.
  void setNumberAt(PF_ParamIndex index, A_Time time, double value);

  // The control at a time, keyframes applied.
  Control controlAt(PF_ParamIndex index, A_Time time) const;

  // Name of the group stream that the controls live in, UTF-8.
  std::string title;
  std::string optionsButton;  // "" unless the module named it

  std::string program;  // the program's path as the caller knows it; only projects use it

  PF_Handle sequenceData = nullptr;
  bool flat = false;  // sequenceData holds flattened data

 private:
  Host* host_;
  Layer* layer_;
  std::vector<Control> controls_;
  std::map<PF_ParamIndex, std::vector<std::pair<A_Time, double>>> keyframes_;
};

}  // namespace vellumtide::headless
