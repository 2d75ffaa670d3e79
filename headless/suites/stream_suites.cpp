// Suites of streams: the controls of an instance, its group, a layer's markers.
#include <cmath>

#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"
#include "headless/text.h"

namespace vellumtide::headless {
namespace {

// The target of a stream reference, null and a fault when it is not out or its instance is gone.
StreamTarget* targetOf(CallFrame& frame, AEGP_StreamRefH reference, const char* caller) {
  const auto found = frame.state().streams.find(reference);
  if (found == frame.state().streams.end()) {
    badArgument(frame, caller, "a stream that is not out");
    return nullptr;
  }
  StreamTarget& target = found->second;
  if (target.kind == StreamTarget::Kind::kMarkers || target.effect) return &target;
  badArgument(frame, caller, "a stream of an instance that is gone");
  return nullptr;
}

PF_Err giveStream(CallFrame& frame, StreamTarget target, AEGP_StreamRefH* place) {
  target.madeIn = frame.books().command();
  *place = frame.state().newReference<AEGP_StreamRefH>();
  frame.state().streams[*place] = std::move(target);
  return PF_Err_NONE;
}

A_Err getNewLayerStream(AEGP_PluginID id, AEGP_LayerH reference, AEGP_LayerStream which,
                        AEGP_StreamRefH* stream) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewLayerStream", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewLayerStream";
    checkPluginId(frame, id, kName);
    Layer* layer = frame.layerOf(reference, kName);
    if (!layer || !stream) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (which != AEGP_LayerStream_MARKER) {
      return badArgument(frame, kName, "stream " + std::to_string(which) + " is not provided");
    }
    return giveStream(frame, {StreamTarget::Kind::kMarkers, nullptr, 0, layer, 0, ""}, stream);
  });
}

A_Err getNewEffectStreamByIndex(AEGP_PluginID id, AEGP_EffectRefH reference, PF_ParamIndex index,
                                AEGP_StreamRefH* stream) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewEffectStreamByIndex", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewEffectStreamByIndex";
    checkPluginId(frame, id, kName);
    const auto found = frame.state().effectRefs.find(reference);
    Effect* effect = found == frame.state().effectRefs.end() ? nullptr : found->second.effect;
    if (!effect || !stream) return badArgument(frame, kName, "an effect reference that is not out");
    if (index <= 0 || static_cast<size_t>(index) >= effect->controls().size()) {
      badArgument(frame, kName, "there is no stream of parameter " + std::to_string(index));
      return PF_Err{PF_Err_INVALID_INDEX};
    }
    return giveStream(frame, {StreamTarget::Kind::kControl, effect, index, nullptr, 0, ""}, stream);
  });
}

A_Err disposeStream(AEGP_StreamRefH reference) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_DisposeStream", [&](CallFrame& frame) {
    HostState& state = frame.state();
    const auto found = state.streams.find(reference);
    if (found == state.streams.end()) {
      return badArgument(frame, "AEGP_DisposeStream", "a stream that is not out");
    }
    if (found->second.values > 0) state.orphanedValues[reference] = found->second.values;
    state.streams.erase(found);
    return PF_Err{PF_Err_NONE};
  });
}

AEGP_StreamType streamTypeOf(const StreamTarget& target) {
  if (target.kind == StreamTarget::Kind::kMarkers) return AEGP_StreamType_MARKER;
  if (target.kind == StreamTarget::Kind::kGroup) return AEGP_StreamType_NO_DATA;
  switch (target.effect->control(target.index).type) {
    case PF_Param_LAYER:
      return AEGP_StreamType_LAYER_ID;
    case PF_Param_COLOR:
      return AEGP_StreamType_COLOR;
    case PF_Param_POINT:
      return AEGP_StreamType_TwoD_SPATIAL;
    default:
      return AEGP_StreamType_OneD;
  }
}

A_Err getStreamType(AEGP_StreamRefH reference, AEGP_StreamType* type) {
  return serve(CallKind::kSuiteCall, "AEGP_GetStreamType", [&](CallFrame& frame) {
    StreamTarget* target = targetOf(frame, reference, "AEGP_GetStreamType");
    if (!target || !type) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    *type = streamTypeOf(*target);
    return PF_Err{PF_Err_NONE};
  });
}

void giveMarker(CallFrame& frame, AEGP_StreamRefH reference, StreamTarget& target,
                const Marker& marker, AEGP_StreamValue2* value) {
  *value = AEGP_StreamValue2{};
  value->streamH = reference;
  value->val.markerP = frame.state().newReference<AEGP_MarkerValP>();
  frame.state().markers[value->val.markerP] = marker;
  ++target.values;
}

A_Err getNewStreamValue(AEGP_PluginID id, AEGP_StreamRefH reference, AEGP_LTimeMode,
                        const A_Time* time, A_Boolean, AEGP_StreamValue2* value) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewStreamValue", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewStreamValue";
    checkPluginId(frame, id, kName);
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target || !value || !time || time->scale == 0) {
      return badArgument(frame, kName, "no stream, no place, no time or a time scale of 0");
    }
    if (target->kind == StreamTarget::Kind::kGroup) {
      return badArgument(frame, kName, "a group has no value");
    }
    if (target->kind == StreamTarget::Kind::kMarkers) {
      if (target->layer->markers().empty()) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
      giveMarker(frame, reference, *target, target->layer->markers().front(), value);
      return PF_Err{PF_Err_NONE};
    }
    const Control control = target->effect->controlAt(target->index, *time);
    *value = AEGP_StreamValue2{};
    value->streamH = reference;
    switch (control.type) {
      case PF_Param_LAYER:
        value->val.layer_id = control.layerId;
        break;
      case PF_Param_POINT:
        value->val.two_d = {control.point.x, control.point.y};
        break;
      case PF_Param_COLOR:
        value->val.color = {control.color.alpha, control.color.red, control.color.green,
                            control.color.blue};
        break;
      default:
        value->val.one_d = control.number;
        break;
    }
    ++target->values;
    return PF_Err{PF_Err_NONE};
  });
}

A_Err disposeStreamValue(AEGP_StreamValue2* value) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_DisposeStreamValue", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_DisposeStreamValue";
    if (!value) return badArgument(frame, kName, "a null value");
    HostState& state = frame.state();
    state.markers.erase(value->val.markerP);
    const auto target = state.streams.find(value->streamH);
    if (target != state.streams.end() && target->second.values > 0) {
      --target->second.values;
      return PF_Err{PF_Err_NONE};
    }
    const auto orphan = state.orphanedValues.find(value->streamH);
    if (orphan == state.orphanedValues.end()) {
      return badArgument(frame, kName, "a value that is not out");
    }
    if (--orphan->second == 0) state.orphanedValues.erase(orphan);
    return PF_Err{PF_Err_NONE};
  });
}

// Puts a value into a control; what is wrong with it, "" when it was taken.
std::string putValue(Effect& effect, Control& control, const AEGP_StreamVal2& value) {
  switch (control.type) {
    case PF_Param_LAYER: {
      const bool known =
          value.layer_id == 0 || effect.layer().composition().findLayer(value.layer_id) != nullptr;
      if (!known) return "no layer has the id " + std::to_string(value.layer_id);
      control.layerId = value.layer_id;
      break;
    }
    case PF_Param_POINT:
      if (!std::isfinite(value.two_d.x) || !std::isfinite(value.two_d.y)) return "not a number";
      effect.setPoint(control.index, value.two_d.x, value.two_d.y);
      break;
    case PF_Param_COLOR: {
      const AEGP_ColorVal& color = value.color;
      for (double part : {color.redF, color.greenF, color.blueF, color.alphaF}) {
        if (!(part >= 0 && part <= 1)) return "a colour component outside 0 to 1";
      }
      effect.setColor(control.index, {color.redF, color.greenF, color.blueF, color.alphaF});
      break;
    }
    default:
      if (!std::isfinite(value.one_d)) return "not a number";
      // Sliders and pop-ups round to whole numbers; nothing else may be moved by the limits.
      if (const bool whole = control.type == PF_Param_SLIDER || control.type == PF_Param_POPUP;
          std::abs(control.clamped(value.one_d) - value.one_d) > (whole ? 0.5 : 0.0)) {
        return std::to_string(value.one_d) + " lies outside the valid range";
      }
      effect.setNumber(control.index, value.one_d);
  }
  ++control.valueSets;
  return "";
}

A_Err setStreamValue(AEGP_PluginID id, AEGP_StreamRefH reference, AEGP_StreamValue2* value) {
  return serve(CallKind::kSuiteCall, "AEGP_SetStreamValue", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_SetStreamValue";
    checkPluginId(frame, id, kName);
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target || !value) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (target->kind != StreamTarget::Kind::kControl) {
      return badArgument(frame, kName, "the stream is not a control's");
    }
    Control& control = target->effect->control(target->index);
    const std::string wrong = putValue(*target->effect, control, value->val);
    if (wrong.empty()) return PF_Err{PF_Err_NONE};
    return badArgument(frame, kName, "parameter " + std::to_string(control.index) + ": " + wrong);
  });
}

A_Err getStreamNumKfs(AEGP_StreamRefH reference, A_long* count) {
  return serve(CallKind::kSuiteCall, "AEGP_GetStreamNumKFs", [&](CallFrame& frame) {
    StreamTarget* target = targetOf(frame, reference, "AEGP_GetStreamNumKFs");
    if (!target || !count) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    const bool markers = target->kind == StreamTarget::Kind::kMarkers;
    *count = markers ? static_cast<A_long>(target->layer->markers().size()) : 0;
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getNewKeyframeValue(AEGP_PluginID id, AEGP_StreamRefH reference, AEGP_KeyframeIndex index,
                          AEGP_StreamValue2* value) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewKeyframeValue", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewKeyframeValue";
    checkPluginId(frame, id, kName);
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target || !value) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    const bool markers = target->kind == StreamTarget::Kind::kMarkers;
    if (!markers || index < 0 || static_cast<size_t>(index) >= target->layer->markers().size()) {
      return badArgument(frame, kName, "there is no keyframe " + std::to_string(index));
    }
    giveMarker(frame, reference, *target, target->layer->markers()[index], value);
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getDynamicStreamFlags(AEGP_StreamRefH reference, AEGP_DynStreamFlags* flags) {
  return serve(CallKind::kSuiteCall, "AEGP_GetDynamicStreamFlags", [&](CallFrame& frame) {
    StreamTarget* target = targetOf(frame, reference, "AEGP_GetDynamicStreamFlags");
    if (!target || !flags) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    *flags = 0;
    if (target->kind != StreamTarget::Kind::kControl) return PF_Err{PF_Err_NONE};
    const Control& control = target->effect->control(target->index);
    if (control.hidden) *flags |= AEGP_DynStreamFlag_HIDDEN;
    if (!control.enabled) *flags |= AEGP_DynStreamFlag_DISABLED;
    return PF_Err{PF_Err_NONE};
  });
}

A_Err setDynamicStreamFlag(AEGP_StreamRefH reference, AEGP_DynStreamFlags flag, A_Boolean undoable,
                           A_Boolean set) {
  return serve(CallKind::kSuiteCall, "AEGP_SetDynamicStreamFlag", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_SetDynamicStreamFlag";
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (target->kind != StreamTarget::Kind::kControl || flag != AEGP_DynStreamFlag_HIDDEN) {
      return badArgument(frame, kName, "flag " + std::to_string(flag) + " cannot be set here");
    }
    if (undoable) return badArgument(frame, kName, "hiding is not undoable");
    target->effect->control(target->index).hidden = set != 0;
    return PF_Err{PF_Err_NONE};
  });
}

A_Err setStreamName(AEGP_StreamRefH reference, const A_UTF16Char* name) {
  return serve(CallKind::kSuiteCall, "AEGP_SetStreamName", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_SetStreamName";
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target || !name) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (target->kind != StreamTarget::Kind::kGroup) {
      return badArgument(frame, kName, "only an instance's group can be named");
    }
    std::u16string wide;
    for (; *name; ++name)
      wide += static_cast<char16_t>(*name);
    target->effect->title = toUtf8(wide);
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getNewParentStreamRef(AEGP_PluginID id, AEGP_StreamRefH reference, AEGP_StreamRefH* parent) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewParentStreamRef", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewParentStreamRef";
    checkPluginId(frame, id, kName);
    StreamTarget* target = targetOf(frame, reference, kName);
    if (!target || !parent) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (target->kind != StreamTarget::Kind::kControl) {
      return badArgument(frame, kName, "only a control's stream has a parent here");
    }
    return giveStream(frame, {StreamTarget::Kind::kGroup, target->effect, 0, nullptr, 0, ""},
                      parent);
  });
}

}  // namespace

const AEGP_StreamSuite3& streamSuite() {
  static const AEGP_StreamSuite3 table = [] {
    auto made = trapTable<AEGP_StreamSuite3>();
    made.AEGP_GetNewLayerStream = getNewLayerStream;
    made.AEGP_GetNewEffectStreamByIndex = getNewEffectStreamByIndex;
    made.AEGP_DisposeStream = disposeStream;
    made.AEGP_GetStreamType = getStreamType;
    made.AEGP_GetNewStreamValue = getNewStreamValue;
    made.AEGP_DisposeStreamValue = disposeStreamValue;
    made.AEGP_SetStreamValue = setStreamValue;
    return made;
  }();
  return table;
}

const AEGP_KeyframeSuite4& keyframeSuite() {
  static const AEGP_KeyframeSuite4 table = [] {
    auto made = trapTable<AEGP_KeyframeSuite4>();
    made.AEGP_GetStreamNumKFs = getStreamNumKfs;
    made.AEGP_GetNewKeyframeValue = getNewKeyframeValue;
    return made;
  }();
  return table;
}

const AEGP_DynamicStreamSuite4& dynamicStreamSuite() {
  static const AEGP_DynamicStreamSuite4 table = [] {
    auto made = trapTable<AEGP_DynamicStreamSuite4>();
    made.AEGP_GetDynamicStreamFlags = getDynamicStreamFlags;
    made.AEGP_SetDynamicStreamFlag = setDynamicStreamFlag;
    made.AEGP_SetStreamName = setStreamName;
    made.AEGP_GetNewParentStreamRef = getNewParentStreamRef;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
