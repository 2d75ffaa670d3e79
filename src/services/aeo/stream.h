// The host's streams (a control, a layer's markers, the group that an effect's controls live in)
// and their values, each given back at the end of its life.
#pragma once

#include <string_view>

#include "core/suite_handler.h"
#include "services/aeo/effect.h"

namespace vellumtide::AEO {

// After a refusal `error()` is non-zero and every operation answers with that error.
class Stream {
 public:
  struct ParentOf {
    const Stream& child;
  };

  Stream(const Effect& effect, PF_ParamIndex index);
  Stream(SPBasicSuite* basic, AEGP_LayerH layer, AEGP_LayerStream which);
  explicit Stream(ParentOf parent);
  ~Stream();
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  PF_Err error() const { return error_; }
  AEGP_StreamRefH ref() const { return stream_; }
  SPBasicSuite* basic() const { return basic_; }

  // Hides the control in the panel or shows it again; not undoable. The host is told only when
  // that changes something.
  PF_Err setHidden(bool hidden) const;

  // The name of a group: of an effect instance when its controls' parent is named.
  PF_Err setName(std::string_view utf8) const;

  // Check boxes (0, 1), pop-ups (from 1), sliders and angles (degrees).
  PF_Err setOneD(double value) const;
  // Points, in full-resolution layer pixels.
  PF_Err setTwoD(double x, double y) const;
  // Components from 0 to 1.
  PF_Err setColor(double red, double green, double blue, double alpha) const;
  // Any of these, in the field that is the control's.
  PF_Err setValue(const AEGP_StreamVal2& value) const;

 private:
  template <class Call>
  void receive(Call call);

  SPBasicSuite* basic_;
  ScopedSuite<AEGP_StreamSuite3> suite_;
  AEGP_StreamRefH stream_ = nullptr;
  PF_Err error_;
};

// A value read from a stream. It must not outlive the stream.
class StreamValue {
 public:
  // At a time of the layer.
  StreamValue(const Stream& stream, const A_Time& time);
  // Of one keyframe, from 0.
  StreamValue(const Stream& stream, AEGP_KeyframeIndex index);
  ~StreamValue();
  StreamValue(const StreamValue&) = delete;
  StreamValue& operator=(const StreamValue&) = delete;

  PF_Err error() const { return error_; }
  // Meaningful without an error only.
  const AEGP_StreamVal2& value() const { return value_.val; }

 private:
  ScopedSuite<AEGP_StreamSuite3> suite_;
  AEGP_StreamValue2 value_{};
  PF_Err error_;
};

// How many keyframes (markers, for a marker stream) there are; 0 when the host does not say.
A_long keyframeCount(const Stream& stream);

// Names the effect instance in the panel through the stream of any one of its controls.
PF_Err setInstanceTitle(const Effect& effect, PF_ParamIndex anyControl, std::string_view utf8);

}  // namespace vellumtide::AEO
