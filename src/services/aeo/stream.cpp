#include "services/aeo/stream.h"

#include <vector>

#include "core/command_scope.h"
#include "core/utf.h"

namespace vellumtide::AEO {
namespace {

using DynamicSuite = ScopedSuite<AEGP_DynamicStreamSuite4>;
using KeyframeSuite = ScopedSuite<AEGP_KeyframeSuite4>;

PF_Err firstError(PF_Err first, PF_Err second) {
  return first ? first : second;
}

}  // namespace

template <class Call>
void Stream::receive(Call call) {
  if (error_) return;
  error_ = call();
  if (error_) stream_ = nullptr;
  if (!error_ && !stream_) error_ = PF_Err_INVALID_CALLBACK;
}

Stream::Stream(const Effect& effect, PF_ParamIndex index)
    : basic_(effect.basic()), suite_(basic_), error_(firstError(effect.error(), suite_.error())) {
  receive([&] {
    return suite_->AEGP_GetNewEffectStreamByIndex(currentPluginId, effect.ref(), index, &stream_);
  });
}

Stream::Stream(SPBasicSuite* basic, AEGP_LayerH layer, AEGP_LayerStream which)
    : basic_(basic), suite_(basic_), error_(suite_.error()) {
  receive([&] { return suite_->AEGP_GetNewLayerStream(currentPluginId, layer, which, &stream_); });
}

Stream::Stream(ParentOf parent)
    : basic_(parent.child.basic()),
      suite_(basic_),
      error_(firstError(parent.child.error(), suite_.error())) {
  receive([&] {
    const DynamicSuite dynamic(basic_);
    return dynamic
               ? dynamic->AEGP_GetNewParentStreamRef(currentPluginId, parent.child.ref(), &stream_)
               : dynamic.error();
  });
}

Stream::~Stream() {
  if (stream_) suite_->AEGP_DisposeStream(stream_);
}

PF_Err Stream::setHidden(bool hidden) const {
  if (error_) return error_;
  const DynamicSuite dynamic(basic_);
  if (!dynamic) return dynamic.error();
  AEGP_DynStreamFlags flags = 0;
  const bool known = dynamic->AEGP_GetDynamicStreamFlags(stream_, &flags) == PF_Err_NONE;
  if (known && ((flags & AEGP_DynStreamFlag_HIDDEN) != 0) == hidden) return PF_Err_NONE;
  return dynamic->AEGP_SetDynamicStreamFlag(stream_, AEGP_DynStreamFlag_HIDDEN, false, hidden);
}

PF_Err Stream::setName(std::string_view utf8) const {
  if (error_) return error_;
  const DynamicSuite dynamic(basic_);
  if (!dynamic) return dynamic.error();
  const std::u16string units = toUtf16(utf8).units;
  std::vector<A_UTF16Char> name(units.begin(), units.end());
  name.push_back(0);
  return dynamic->AEGP_SetStreamName(stream_, name.data());
}

PF_Err Stream::setValue(const AEGP_StreamVal2& value) const {
  if (error_) return error_;
  AEGP_StreamValue2 streamValue{stream_, value};
  return suite_->AEGP_SetStreamValue(currentPluginId, stream_, &streamValue);
}

PF_Err Stream::setOneD(double value) const {
  AEGP_StreamVal2 stored{};
  stored.one_d = value;
  return setValue(stored);
}

PF_Err Stream::setTwoD(double x, double y) const {
  AEGP_StreamVal2 stored{};
  stored.two_d = {x, y};
  return setValue(stored);
}

PF_Err Stream::setColor(double red, double green, double blue, double alpha) const {
  AEGP_StreamVal2 stored{};
  stored.color = {alpha, red, green, blue};
  return setValue(stored);
}

StreamValue::StreamValue(const Stream& stream, const A_Time& time)
    : suite_(stream.basic()), error_(firstError(stream.error(), suite_.error())) {
  if (error_) return;
  error_ = suite_->AEGP_GetNewStreamValue(currentPluginId, stream.ref(), AEGP_LTimeMode_LayerTime,
                                          &time, false, &value_);
}

StreamValue::StreamValue(const Stream& stream, AEGP_KeyframeIndex index)
    : suite_(stream.basic()), error_(firstError(stream.error(), suite_.error())) {
  if (error_) return;
  const KeyframeSuite keyframes(stream.basic());
  error_ = keyframes
               ? keyframes->AEGP_GetNewKeyframeValue(currentPluginId, stream.ref(), index, &value_)
               : keyframes.error();
}

StreamValue::~StreamValue() {
  if (!error_) suite_->AEGP_DisposeStreamValue(&value_);
}

A_long keyframeCount(const Stream& stream) {
  if (stream.error()) return 0;
  const KeyframeSuite keyframes(stream.basic());
  A_long count = 0;
  const bool known =
      keyframes && keyframes->AEGP_GetStreamNumKFs(stream.ref(), &count) == PF_Err_NONE;
  return known ? count : 0;
}

PF_Err setInstanceTitle(const Effect& effect, PF_ParamIndex anyControl, std::string_view utf8) {
  const Stream control(effect, anyControl);
  const Stream group(Stream::ParentOf{control});
  return group.setName(utf8);
}

}  // namespace vellumtide::AEO
