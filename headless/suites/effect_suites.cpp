// Suites of the effect interface: the application's panels, the effect's own panel, worlds.
#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"

namespace vellumtide::headless {
namespace {

std::optional<std::string> lineOf(const A_char* text) {
  return text ? std::optional<std::string>(text) : std::nullopt;
}

PF_Err drawInfo(const char* name, std::initializer_list<const A_char*> lines) {
  return serve(CallKind::kSuiteCall, name, [&](CallFrame& frame) {
    InfoText text{name, {}};
    for (const A_char* line : lines)
      text.lines.push_back(lineOf(line));
    frame.host().infoPanel().push_back(std::move(text));
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err infoDrawText(const A_char* line1, const A_char* line2) {
  return drawInfo("PF_InfoDrawText", {line1, line2});
}

PF_Err infoDrawText3(const A_char* line1, const A_char* line2, const A_char* line3) {
  return drawInfo("PF_InfoDrawText3", {line1, line2, line3});
}

PF_Err infoDrawText3Plus(const A_char* line1, const A_char* line2Right, const A_char* line2Left,
                         const A_char* line3Right, const A_char* line3Left) {
  return drawInfo("PF_InfoDrawText3Plus", {line1, line2Right, line2Left, line3Right, line3Left});
}

PF_Err infoDrawColor(PF_Pixel) {
  return serve(CallKind::kSuiteCall, "PF_InfoDrawColor",
               [](CallFrame&) { return PF_Err{PF_Err_NONE}; });
}

PF_Err setProjectDirty() {
  return serve(CallKind::kSuiteCall, "PF_SetProjectDirty", [](CallFrame& frame) {
    ++frame.host().projectDirtied;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err refreshAllWindows() {
  return serve(CallKind::kSuiteCall, "PF_RefreshAllWindows", [](CallFrame& frame) {
    ++frame.host().windowsRefreshed;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err setOptionsButtonName(PF_ProgPtr reference, const A_char* name) {
  return serve(CallKind::kSuiteCall, "PF_SetOptionsButtonName", [&](CallFrame& frame) {
    constexpr const char* kName = "PF_SetOptionsButtonName";
    if (!name) return badArgument(frame, kName, "a null name");
    if (Effect* effect = frame.effectOf(reference, kName)) {
      effect->optionsButton = name;
    } else {
      frame.state().optionsButton = name;
    }
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err updateParamUi(PF_ProgPtr reference, PF_ParamIndex index, const PF_ParamDef* def) {
  return serve(CallKind::kSuiteCall, "PF_UpdateParamUI", [&](CallFrame& frame) {
    constexpr const char* kName = "PF_UpdateParamUI";
    Effect* effect = frame.effectOf(reference, kName);
    if (!effect || !def) return badArgument(frame, kName, "no instance or a null definition");
    if (index <= 0 || static_cast<size_t>(index) >= effect->controls().size()) {
      badArgument(frame, kName, "parameter " + std::to_string(index) + " cannot be updated");
      return PF_Err{PF_Err_INVALID_INDEX};
    }
    Control& control = effect->control(index);
    if (def->param_type != control.type) {
      return badArgument(frame, kName,
                         "parameter " + std::to_string(index) + " is of another type");
    }
    if (def->name[sizeof def->name - 1] != 0) {
      return badArgument(frame, kName,
                         "the name of parameter " + std::to_string(index) + " has no terminator");
    }
    applyUiUpdate(control, *def);
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err newWorld(PF_ProgPtr, A_long width, A_long height, PF_Boolean clear, PF_PixelFormat format,
                PF_EffectWorld* world) {
  return serve(CallKind::kAllocation, "PF_NewWorld", [&](CallFrame& frame) {
    constexpr const char* kName = "PF_NewWorld";
    if (!world || width <= 0 || height <= 0) {
      return badArgument(frame, kName, "no place for the world, or a size that is not above 0");
    }
    if (pixelFormatOfDepth(depthOfPixelFormat(format)) != format) {
      return badArgument(frame, kName, "unknown pixel format " + std::to_string(format));
    }
    auto made = std::make_unique<World>(width, height, format);
    if (!clear) made->fillBytes(0xCD);
    *world = *frame.state().lend(*made);
    frame.state().newWorlds[made.get()] = std::move(made);
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err disposeWorld(PF_ProgPtr, PF_EffectWorld* world) {
  return serveGiveBack(CallKind::kSuiteCall, "PF_DisposeWorld", [&](CallFrame& frame) {
    constexpr const char* kName = "PF_DisposeWorld";
    HostState& state = frame.state();
    const auto found = world ? state.newWorlds.find(world->platform_ref) : state.newWorlds.end();
    if (found == state.newWorlds.end()) {
      return badArgument(frame, kName, "a world that PF_NewWorld did not make");
    }
    const std::string damage = found->second->damage();
    if (!damage.empty()) badArgument(frame, kName, "the world was written " + damage);
    state.worldFormats.erase(found->first);
    state.newWorlds.erase(found);
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err getPixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format) {
  return serve(CallKind::kSuiteCall, "PF_GetPixelFormat", [&](CallFrame& frame) {
    constexpr const char* kName = "PF_GetPixelFormat";
    if (!world || !format) return badArgument(frame, kName, "a null world or place");
    const auto found = frame.state().worldFormats.find(world->platform_ref);
    if (found == frame.state().worldFormats.end()) {
      return badArgument(frame, kName, "a world that this host did not give out");
    }
    *format = found->second;
    return PF_Err{PF_Err_NONE};
  });
}

}  // namespace

const PF_AdvAppSuite1& advAppSuite() {
  static const PF_AdvAppSuite1 table = [] {
    auto made = trapTable<PF_AdvAppSuite1>();
    made.PF_SetProjectDirty = setProjectDirty;
    made.PF_RefreshAllWindows = refreshAllWindows;
    made.PF_InfoDrawText = infoDrawText;
    made.PF_InfoDrawColor = infoDrawColor;
    made.PF_InfoDrawText3 = infoDrawText3;
    made.PF_InfoDrawText3Plus = infoDrawText3Plus;
    return made;
  }();
  return table;
}

const PF_EffectUISuite1& effectUiSuite() {
  static const PF_EffectUISuite1 table{setOptionsButtonName};
  return table;
}

const PF_ParamUtilsSuite1& paramUtilsSuite() {
  static const PF_ParamUtilsSuite1 table = [] {
    auto made = trapTable<PF_ParamUtilsSuite1>();
    made.PF_UpdateParamUI = updateParamUi;
    return made;
  }();
  return table;
}

const PF_WorldSuite2& worldSuite() {
  static const PF_WorldSuite2 table{newWorld, disposeWorld, getPixelFormat};
  return table;
}

}  // namespace vellumtide::headless
