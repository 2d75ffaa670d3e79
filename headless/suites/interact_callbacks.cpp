// Parameter callbacks of the in-data: declaring, checking out, checking in.
#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"
#include "headless/text.h"

namespace vellumtide::headless {

template <>
std::string tableName<PF_InteractCallbacks>() {
  return "the interact callbacks";
}

namespace {

bool isKnownType(PF_ParamType type) {
  return (type >= PF_Param_LAYER && type <= PF_Param_POPUP) || type == PF_Param_FLOAT_SLIDER;
}

// What is wrong with a declaration, "" when nothing is.
std::string faultOf(const PF_ParamDef& def, const std::vector<PF_ParamDef>& before) {
  if (def.name[sizeof def.name - 1] != 0) return "the name has no terminator";
  for (size_t i = 1; i < before.size(); ++i) {
    if (def.uu.id != 0 && before[i].uu.id == def.uu.id) {
      return "id " + std::to_string(def.uu.id) + " is already that of parameter " +
             std::to_string(i);
    }
  }
  if (def.param_type == PF_Param_POPUP && !def.u.pd.u.namesptr) return "a pop-up without entries";
  const Control control = makeControl(def, 0, 0, 0);
  if (control.isNumber() && control.clamped(control.number) != control.number) {
    return "the default lies outside the valid range";
  }
  if (control.type == PF_Param_POPUP &&
      control.choices().size() != static_cast<size_t>(def.u.pd.num_choices)) {
    return "num_choices is not the number of entries";
  }
  return "";
}

PF_Err addParam(PF_ProgPtr, PF_ParamIndex index, PF_ParamDef* def) {
  return serve(CallKind::kCallback, "add_param", [&](CallFrame& frame) {
    if (frame.command() != PF_Cmd_PARAMS_SETUP) {
      return badArgument(frame, "add_param", "called outside PF_Cmd_PARAMS_SETUP");
    }
    if (!def) return badArgument(frame, "add_param", "a null definition");
    std::vector<PF_ParamDef>& declared = frame.state().declared;
    const auto place = static_cast<PF_ParamIndex>(declared.size());
    if (index != -1 && index != place) {
      badArgument(frame, "add_param", "index " + std::to_string(index) + " is not the next");
      return PF_Err{PF_Err_INVALID_INDEX};
    }
    if (!isKnownType(def->param_type)) {
      badArgument(frame, "add_param", "unknown type " + std::to_string(def->param_type));
      return PF_Err{PF_Err_UNRECOGNIZED_PARAM_TYPE};
    }
    const std::string wrong = faultOf(*def, declared);
    if (!wrong.empty()) {
      badArgument(frame, "add_param", "parameter " + std::to_string(place) + ": " + wrong);
    }
    declared.push_back(*def);
    PF_ParamDef& kept = declared.back();
    // Texts are the caller's only for the span of the call.
    const char** text = kept.param_type == PF_Param_POPUP      ? &kept.u.pd.u.namesptr
                        : kept.param_type == PF_Param_CHECKBOX ? &kept.u.bd.u.nameptr
                                                               : nullptr;
    if (text && *text) *text = frame.state().paramTexts.emplace_back(*text).c_str();
    return PF_Err{PF_Err_NONE};
  });
}

// Fills a layer parameter's record with the pixels of the chosen layer at the frame's resolution.
void fillLayer(CallFrame& frame, const Control& control, PF_ParamDef& def) {
  const A_long dephault = control.declared.u.ld.dephault;
  def.u.ld = PF_LayerDef{};
  Layer* layer = frame.effect()->layer().composition().findLayer(control.layerId);
  if (layer) {
    const RenderOptions& options = frame.options();
    World& world = layer->pixelsFor(options.format, options.downsampleX, options.downsampleY);
    def.u.ld = *frame.state().lend(world);
    def.u.ld.pix_aspect_ratio = layer->pixelAspect();
  }
  def.u.ld.dephault = dephault;
}

PF_Err checkoutParam(PF_ProgPtr reference, PF_ParamIndex index, A_long time, A_long,
                     A_u_long timeScale, PF_ParamDef* param) {
  return serve(CallKind::kCallback, "checkout_param", [&](CallFrame& frame) {
    constexpr const char* kName = "checkout_param";
    Effect* effect = frame.effectOf(reference, kName);
    if (!effect) return badArgument(frame, kName, "called without an instance");
    if (!param) return badArgument(frame, kName, "a null record");
    if (frame.command() == PF_Cmd_UPDATE_PARAMS_UI) {
      badArgument(frame, kName, "parameters are not checked out during the panel update");
    }
    if (index < 0 || static_cast<size_t>(index) >= effect->controls().size()) {
      badArgument(frame, kName, "there is no parameter " + std::to_string(index));
      return PF_Err{PF_Err_INVALID_INDEX};
    }
    if (timeScale == 0) return badArgument(frame, kName, "a time scale of 0");
    const Control control = effect->controlAt(index, {time, timeScale});
    const RenderOptions& options = frame.options();
    *param = paramDefOf(control, options.downsampleX, options.downsampleY);
    if (control.type == PF_Param_LAYER) fillLayer(frame, control, *param);
    if (control.type == PF_Param_POPUP) {
      param->u.pd.u.namesptr = frame.texts.emplace_back(effect->control(index).choicesText).c_str();
    }
    param->unused = frame.state().nextCheckout++;
    frame.paramsOut[param->unused] = index;
    ++frame.books().holdings.params;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err checkinParam(PF_ProgPtr reference, PF_ParamDef* param) {
  return serveGiveBack(CallKind::kCallback, "checkin_param", [&](CallFrame& frame) {
    constexpr const char* kName = "checkin_param";
    if (!frame.effectOf(reference, kName)) {
      return badArgument(frame, kName, "called without an instance");
    }
    if (!param) return badArgument(frame, kName, "a null record");
    if (frame.paramsOut.erase(param->unused) == 0) {
      return badArgument(frame, kName, "a parameter that is not checked out");
    }
    param->unused = 0;
    --frame.books().holdings.params;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err abortCheck(PF_ProgPtr) {
  return serve(CallKind::kCallback, "abort", [](CallFrame&) { return PF_Err{PF_Err_NONE}; });
}

PF_Err progress(PF_ProgPtr, A_long, A_long) {
  return serve(CallKind::kCallback, "progress", [](CallFrame&) { return PF_Err{PF_Err_NONE}; });
}

}  // namespace

const PF_InteractCallbacks& interactCallbacks() {
  static const PF_InteractCallbacks table = [] {
    auto made = trapTable<PF_InteractCallbacks>();
    made.checkout_param = checkoutParam;
    made.checkin_param = checkinParam;
    made.add_param = addParam;
    made.abort = abortCheck;
    made.progress = progress;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
