// Controls that change from frame to frame.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "aeapi/geometry.h"
#include "cli/control/control_panel.h"
#include "cli/control/key_text.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

// Between two keys a control moves in a straight line, every component by itself, or holds the
// first key's value until the second, as the first key says. Check boxes and pop-ups hold. Before
// the first key the first value stands, after the last the last. Failures are ExitStatus::Usage.
class Animation {
 public:
  // "NAME@FRAME=VALUE", "NAME@FRAME:hold=VALUE" or ":linear". NAME and VALUE as ControlPanel::set
  // takes them; FRAME is a number, fractions allowed, or seconds with an "s" behind.
  void addKey(const std::string& option);
  // A file of keys (see readKeyFile).
  void addFile(const std::filesystem::path& file);
  bool empty() const { return options_.empty() && keys_.empty(); }

  // Finds the controls and reads the values; again for a new panel, which must outlive this. Throws
  // when a name or a value does not fit the panel, when a control has two keys at one time, and
  // when the panel was given a constant for it; with `misfit` such keys go there and are left out.
  void bind(ControlPanel& panel, PF_RationalScale framesPerSecond,
            const std::function<void(const Failure&)>& misfit = {});

  // Sets the controls for a time, in frames.
  void apply(double frame) const;

 private:
  struct Key {
    ControlValue value;
    bool holds = false;
    std::string where;
  };
  // The keys of one control by their frame; a constant stands alone.
  struct Track {
    std::map<double, Key> keys;
    bool isConstant = false;
  };

  KeyText resolve(const std::string& option) const;
  void addToTracks(const KeyText& text, PF_RationalScale framesPerSecond);
  static ControlValue valueAt(const Track& track, double frame);

  std::vector<std::string> options_;
  std::vector<KeyText> keys_;
  ControlPanel* panel_ = nullptr;
  std::map<int, Track> tracks_;  // by control
};

}  // namespace vellumtide::cli
