// A small effect module for the headless host's own tests: well-behaved by default, and wrong in
// one way for each number in subject_misdeeds.h. The in-place misdeeds are chosen by the frame's
// time.
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "aeapi/aeapi.h"
#include "subject_gl.h"
#include "subject_misdeeds.h"

using namespace vellumtide;

namespace {

AEGP_PluginID pluginId = 0;
PF_InData* in = nullptr;

// A suite for the span of a scope.
template <typename Suite>
struct Use {
  const Suite* table = nullptr;
  Use() {
    const void* found = nullptr;
    if (in->pica_basicP->AcquireSuite(Suite::kName, Suite::kVersion, &found) == 0) {
      table = static_cast<const Suite*>(found);
    }
  }
  ~Use() {
    if (table) in->pica_basicP->ReleaseSuite(Suite::kName, Suite::kVersion);
  }
  const Suite* operator->() const { return table; }
};

struct Sequence {
  char text[256];
};

PF_Handle newHandle(size_t size) {
  return in->utils->host_new_handle(size);
}
void dispose(PF_Handle handle) {
  in->utils->host_dispose_handle(handle);
}

struct EffectRef {
  AEGP_EffectRefH ref = nullptr;
  Use<AEGP_PFInterfaceSuite1> interface;
  EffectRef() { interface->AEGP_GetNewEffectForEffect(pluginId, in->effect_ref, &ref); }
  ~EffectRef() { Use<AEGP_EffectSuite3>()->AEGP_DisposeEffect(ref); }
};

AEGP_StreamRefH controlStream(PF_ParamIndex index) {
  EffectRef effect;
  AEGP_StreamRefH stream = nullptr;
  Use<AEGP_StreamSuite3>()->AEGP_GetNewEffectStreamByIndex(pluginId, effect.ref, index, &stream);
  return stream;
}

PF_Err globalSetup(PF_OutData* out) {
  out->my_version = 0x80001;
  out->out_flags = in->current_time == kWrongOutFlags ? 1 : 0x06000031;
  out->out_flags2 = 0x00001400;
  const PF_Err error =
      Use<AEGP_UtilitySuite5>()->AEGP_RegisterWithAEGP(nullptr, "Subject", &pluginId);
  out->global_data = newHandle(16);
  in->utils->host_lock_handle(out->global_data);
  return error;
}

PF_ParamDef param(PF_ParamType type, A_long id, const char* name) {
  PF_ParamDef def{};
  def.param_type = type;
  def.uu.id = id;
  std::snprintf(def.name, sizeof def.name, "%s", name);
  return def;
}

PF_Err paramsSetup(PF_OutData* out) {
  PF_ParamDef defs[] = {param(PF_Param_LAYER, 1, "layer"),    param(PF_Param_CHECKBOX, 2, "check"),
                        param(PF_Param_POPUP, 3, "popup"),    param(PF_Param_SLIDER, 4, "slider"),
                        param(PF_Param_FIX_SLIDER, 5, "fix"), param(PF_Param_POINT, 6, "point"),
                        param(PF_Param_ANGLE, 7, "angle"),    param(PF_Param_COLOR, 8, "color")};
  char choices[] = "one|two|three";
  defs[2].u.pd.num_choices = 3;
  defs[2].u.pd.dephault = 2;
  defs[2].u.pd.u.namesptr = choices;
  defs[3].u.sd.valid_min = defs[3].u.sd.slider_min = -100;
  defs[3].u.sd.valid_max = defs[3].u.sd.slider_max = 100;
  defs[4].u.fd.valid_min = defs[4].u.fd.slider_min = -10 * 65536;
  defs[4].u.fd.valid_max = defs[4].u.fd.slider_max = 10 * 65536;
  defs[5].u.td.x_dephault = defs[5].u.td.y_dephault = 50 * 65536;
  defs[7].u.cd.dephault = {255, 255, 0, 0};
  for (PF_ParamDef& def : defs) {
    if (const PF_Err error = in->inter.add_param(in->effect_ref, -1, &def)) return error;
  }
  std::memset(choices, 'x', sizeof choices - 1);
  out->num_params = in->current_time == kWrongParamCount ? 10 : 9;
  return Use<PF_EffectUISuite1>()->PF_SetOptionsButtonName(in->effect_ref, "Options");
}

// The first marker's comment, its characters taken for ASCII.
void readMarker(char (&text)[256]) {
  AEGP_LayerH layer = nullptr;
  AEGP_StreamRefH stream = nullptr;
  Use<AEGP_StreamSuite3> streams;
  Use<AEGP_PFInterfaceSuite1>()->AEGP_GetEffectLayer(in->effect_ref, &layer);
  streams->AEGP_GetNewLayerStream(pluginId, layer, AEGP_LayerStream_MARKER, &stream);
  A_long count = 0;
  Use<AEGP_KeyframeSuite4> keyframes;
  keyframes->AEGP_GetStreamNumKFs(stream, &count);
  if (count > 0) {
    AEGP_StreamValue2 value{};
    keyframes->AEGP_GetNewKeyframeValue(pluginId, stream, 0, &value);
    AEGP_MemHandle handle = nullptr;
    Use<AEGP_MarkerSuite1>()->AEGP_GetMarkerString(pluginId, value.val.markerP,
                                                   AEGP_MarkerString_COMMENT, &handle);
    Use<AEGP_MemorySuite1> memory;
    void* data = nullptr;
    memory->AEGP_LockMemHandle(handle, &data);
    const auto* wide = static_cast<const A_UTF16Char*>(data);
    for (int i = 0; i < 255 && wide[i]; ++i)
      text[i] = static_cast<char>(wide[i]);
    memory->AEGP_UnlockMemHandle(handle);
    memory->AEGP_FreeMemHandle(handle);
    streams->AEGP_DisposeStreamValue(&value);
  }
  streams->AEGP_DisposeStream(stream);
}

// Runs the script in the sequence data; its result goes to the Info panel.
PF_Err doDialog() {
  const auto* sequence = static_cast<const Sequence*>(*in->sequence_data);
  AEGP_MemHandle texts[2] = {};
  const A_Err error = Use<AEGP_UtilitySuite5>()->AEGP_ExecuteScript(pluginId, sequence->text, 0,
                                                                    &texts[0], &texts[1]);
  Use<AEGP_MemorySuite1> memory;
  const char* lines[2] = {};
  for (int i = 0; i < 2; ++i) {
    void* data = nullptr;
    if (texts[i]) memory->AEGP_LockMemHandle(texts[i], &data);
    lines[i] = static_cast<const char*>(data);
  }
  Use<PF_AdvAppSuite1>()->PF_InfoDrawText3(lines[0], lines[1], nullptr);
  for (AEGP_MemHandle text : texts) {
    if (!text) continue;
    memory->AEGP_UnlockMemHandle(text);
    memory->AEGP_FreeMemHandle(text);
  }
  return error;
}

PF_Err updatePanel(PF_ParamDef* params[]) {
  PF_ParamDef def = *params[5];
  std::snprintf(def.name, sizeof def.name, "Gain");
  def.u.fd.slider_max = 2 * 65536;
  Use<PF_ParamUtilsSuite1>()->PF_UpdateParamUI(in->effect_ref, 5, &def);
  Use<AEGP_StreamSuite3> streams;
  Use<AEGP_DynamicStreamSuite4> dynamic;
  const AEGP_StreamRefH hidden = controlStream(1), gain = controlStream(5);
  dynamic->AEGP_SetDynamicStreamFlag(hidden, AEGP_DynStreamFlag_HIDDEN, 0, 1);
  AEGP_StreamValue2 value{};
  value.val.one_d = 1.5;
  streams->AEGP_SetStreamValue(pluginId, gain, &value);
  AEGP_StreamRefH group = nullptr;
  dynamic->AEGP_GetNewParentStreamRef(pluginId, gain, &group);
  const A_UTF16Char title[] = {'T', 0xE9, 0xD83D, 0xDE00, 0};
  dynamic->AEGP_SetStreamName(group, title);
  for (AEGP_StreamRefH stream : {hidden, gain, group})
    streams->AEGP_DisposeStream(stream);
  return 0;
}

PF_Err checkout(PF_ParamIndex index, PF_ParamDef* record) {
  return in->inter.checkout_param(in->effect_ref, index, in->current_time, in->time_step,
                                  in->time_scale, record);
}

PF_Err preRender(PF_PreRenderExtra* extra) {
  PF_RenderRequest request = extra->input->output_request;
  PF_CheckoutResult result{};
  const PF_Err error = extra->cb->checkout_layer(in->effect_ref, 0, 7, &request, in->current_time,
                                                 in->time_step, in->time_scale, &result);
  extra->output->result_rect = result.result_rect;
  extra->output->max_result_rect = result.max_result_rect;
  if (in->current_time == kResultOutsideRequest) --extra->output->result_rect.left;
  return error;
}

// Copies the input, every byte raised by the slider's value.
PF_Err smartRender(PF_SmartRenderExtra* extra) {
  PF_EffectWorld *input = nullptr, *output = nullptr;
  if (PF_Err error = extra->cb->checkout_layer_pixels(in->effect_ref, 7, &input)) return error;
  if (PF_Err error = extra->cb->checkout_output(in->effect_ref, &output)) return error;
  PF_PixelFormat format = 0;
  if (Use<PF_WorldSuite2>()->PF_GetPixelFormat(output, &format)) return 1;
  PF_ParamDef slider;
  if (PF_Err error = checkout(4, &slider)) return error;
  const int pixel = format == PF_PixelFormat_ARGB128 ? 16 : format == PF_PixelFormat_ARGB64 ? 8 : 4;
  for (int y = 0; y < output->height; ++y) {
    const auto* from = reinterpret_cast<const A_u_char*>(input->data) + y * input->rowbytes;
    auto* to = reinterpret_cast<A_u_char*>(output->data) + y * output->rowbytes;
    for (int x = 0; x < output->width * pixel; ++x) {
      to[x] = static_cast<A_u_char>(from[x] + slider.u.sd.value);
    }
  }
  in->inter.checkin_param(in->effect_ref, &slider);
  auto* pixels = reinterpret_cast<A_u_char*>(output->data);
  switch (in->current_time) {
    case kWriteInputPixels:
      input->data->red ^= 1;
      break;
    case kWriteRowPadding:
      pixels[output->width * pixel] = 1;
      break;
    case kWriteBehindWorld:
      pixels[output->height * output->rowbytes] = 1;
      break;
    case kPixelsTwice:
      return extra->cb->checkout_layer_pixels(in->effect_ref, 7, &input);
    default:
      break;
  }
  return 0;
}

PF_Err misbehave(PF_Cmd misdeed, PF_OutData* out) {
  const PF_UtilCallbacks& utils = *in->utils;
  SPBasicSuite& basic = *in->pica_basicP;
  const void* table = nullptr;
  const auto handle = [] { return newHandle(24); };
  switch (misdeed) {
    case kLeakHandle:
      handle();
      break;
    case kFreeTwice: {
      const PF_Handle freed = handle();
      dispose(freed);
      dispose(freed);
      break;
    }
    case kFreeUnknown:
      dispose(reinterpret_cast<PF_Handle>(&in));
      break;
    case kFreeByWrongFamily:
      Use<AEGP_MemorySuite1>()->AEGP_FreeMemHandle(handle());
      break;
    case kUnlockUnlocked:
      utils.host_unlock_handle(handle());
      break;
    case kFreeLocked: {
      const PF_Handle locked = handle();
      utils.host_lock_handle(locked);
      dispose(locked);
      break;
    }
    case kWriteBehind:
      static_cast<char*>(*handle())[24] = 0;
      break;
    case kWriteBefore:
      static_cast<char*>(*handle())[-1] = 0;
      break;
    case kWriteFreed: {
      const PF_Handle freed = handle();
      char* data = static_cast<char*>(*freed);
      dispose(freed);
      data[3] = 0;
      break;
    }
    case kChangeHandleCell: {
      const PF_Handle changed = handle();
      *changed = nullptr;
      dispose(changed);
      break;
    }
    case kResizeGlobalData:
      utils.host_resize_handle(99, &in->global_data);
      break;
    case kLeakMemHandle: {
      AEGP_MemHandle memory = nullptr;
      Use<AEGP_MemorySuite1>()->AEGP_NewMemHandle(pluginId, "lost purpose", 9, 0, &memory);
      break;
    }
    case kLeakBlock: {
      void* block = nullptr;
      basic.AllocateBlock(77, &block);
      break;
    }
    case kForgetParam:
    case kCheckinTwice: {
      PF_ParamDef record;
      checkout(4, &record);
      if (misdeed == kForgetParam) break;
      PF_ParamDef copy = record;
      in->inter.checkin_param(in->effect_ref, &record);
      in->inter.checkin_param(in->effect_ref, &copy);
      break;
    }
    case kCheckoutNoSuchParam: {
      PF_ParamDef record;
      return checkout(9, &record);
    }
    case kForeignEffectRef: {
      PF_ParamDef record;
      in->effect_ref = reinterpret_cast<PF_ProgPtr>(&record);
      return checkout(1, &record);
    }
    case kKeepSuite:
      basic.AcquireSuite("PF World Suite", 2, &table);
      break;
    case kReleaseUnacquired:
      return basic.ReleaseSuite("PF World Suite", 2);
    case kAskUnknownSuite:
      return basic.AcquireSuite("PF Nobody's Suite", 3, &table);
    case kAskUnknownVersion:
      return basic.AcquireSuite("PF World Suite", 1, &table);
    case kCallUnusedSlot: {
      Use<AEGP_StreamSuite3> streams;
      return reinterpret_cast<A_Err (*)()>(streams->unused8[1])();
    }
    case kCallUnusedCallback:
      return reinterpret_cast<PF_Err (*)()>(utils.fill)();
    case kUpdateParamZero: {
      PF_ParamDef def = param(PF_Param_LAYER, 0, "none");
      return Use<PF_ParamUtilsSuite1>()->PF_UpdateParamUI(in->effect_ref, 0, &def);
    }
    case kLeakStream:
      controlStream(4);
      break;
    case kDisposeStreamTwice: {
      Use<AEGP_StreamSuite3> streams;
      const AEGP_StreamRefH stream = controlStream(4);
      streams->AEGP_DisposeStream(stream);
      return streams->AEGP_DisposeStream(stream);
    }
    case kLeakStreamValue:
    case kDisposeValueTwice: {
      Use<AEGP_StreamSuite3> streams;
      const AEGP_StreamRefH stream = controlStream(4);
      AEGP_StreamValue2 value{};
      const A_Time time{0, 1};
      streams->AEGP_GetNewStreamValue(pluginId, stream, 0, &time, 0, &value);
      streams->AEGP_DisposeStream(stream);
      if (misdeed == kLeakStreamValue) break;
      streams->AEGP_DisposeStreamValue(&value);
      return streams->AEGP_DisposeStreamValue(&value);
    }
    case kLeakEffectRef: {
      AEGP_EffectRefH ref = nullptr;
      Use<AEGP_PFInterfaceSuite1>()->AEGP_GetNewEffectForEffect(pluginId, in->effect_ref, &ref);
      break;
    }
    case kUnknownLayer: {
      AEGP_ItemH item = nullptr;
      return Use<AEGP_LayerSuite5>()->AEGP_GetLayerSourceItem(reinterpret_cast<AEGP_LayerH>(&item),
                                                              &item);
    }
    case kUnknownWorld: {
      PF_EffectWorld world{};
      PF_PixelFormat format = 0;
      return Use<PF_WorldSuite2>()->PF_GetPixelFormat(&world, &format);
    }
    case kForeignPluginId:
      Use<AEGP_UtilitySuite5>()->AEGP_ReportInfo(999, "hello");
      break;
    case kSetWildValue: {
      AEGP_StreamValue2 value{};
      value.val.one_d = 10.5;
      Use<AEGP_StreamSuite3> streams;
      const AEGP_StreamRefH stream = controlStream(5);
      streams->AEGP_SetStreamValue(pluginId, stream, &value);
      streams->AEGP_DisposeStream(stream);
      break;
    }
    case kAddParamLate: {
      PF_ParamDef def = param(PF_Param_ANGLE, 50, "late");
      return in->inter.add_param(in->effect_ref, -1, &def);
    }
    case kChangeGlContext:
      makeOtherContextCurrent();
      break;
    case kDropGlContext:
      makeNoContextCurrent();
      break;
    case kThrow:
      throw 42.0;
    case kDeadSequenceData:
      dispose(out->sequence_data);
      break;
    case kSayThings:
      std::fputs("on standard output\n", stdout);
      std::fputs("on standard error\n", stderr);
      break;
    default:
      break;
  }
  return 0;
}

PF_Err sequence(PF_Cmd command, PF_OutData* out) {
  if (command == PF_Cmd_SEQUENCE_SETDOWN) {
    if (in->sequence_data) dispose(in->sequence_data);
    out->sequence_data = nullptr;
    return 0;
  }
  // Live and flat data differ in size only.
  const PF_Handle made = newHandle(command == PF_Cmd_SEQUENCE_FLATTEN ? 100 : sizeof(Sequence));
  if (!made) return PF_Err_OUT_OF_MEMORY;
  char text[256] = {};
  if (command == PF_Cmd_SEQUENCE_SETUP) {
    readMarker(text);
  } else {
    std::memcpy(text, *in->sequence_data, 99);
    dispose(in->sequence_data);
  }
  std::memcpy(*made, text, command == PF_Cmd_SEQUENCE_FLATTEN ? 100 : sizeof text);
  out->sequence_data = made;
  return 0;
}

}  // namespace

extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#else
    __attribute__((visibility("default")))
#endif
        PF_Err EntryPointFunc(PF_Cmd command, PF_InData* in_data, PF_OutData* out,
                              PF_ParamDef* params[], PF_LayerDef*, void* extra) {
  // Commands may come while another one shows a dialog.
  struct Restore {
    PF_InData* outer = in;
    ~Restore() { in = outer; }
  } restore;
  in = in_data;
  switch (command) {
    case PF_Cmd_GLOBAL_SETUP:
      return globalSetup(out);
    case PF_Cmd_PARAMS_SETUP:
      return paramsSetup(out);
    case PF_Cmd_SEQUENCE_SETUP:
    case PF_Cmd_SEQUENCE_RESETUP:
    case PF_Cmd_SEQUENCE_FLATTEN:
    case PF_Cmd_SEQUENCE_SETDOWN:
      return sequence(command, out);
    case PF_Cmd_DO_DIALOG:
      return doDialog();
    case PF_Cmd_UPDATE_PARAMS_UI:
      if (in->current_time == kCheckoutInPanelUpdate) {
        PF_ParamDef record;
        checkout(4, &record);
        return in->inter.checkin_param(in->effect_ref, &record);
      }
      return updatePanel(params);
    case PF_Cmd_SMART_PRE_RENDER:
      return preRender(static_cast<PF_PreRenderExtra*>(extra));
    case PF_Cmd_SMART_RENDER:
      return smartRender(static_cast<PF_SmartRenderExtra*>(extra));
    case PF_Cmd_GLOBAL_SETDOWN:
      in->utils->host_unlock_handle(in->global_data);
      dispose(in->global_data);
      return 0;
    default:
      return misbehave(command, out);
  }
}
