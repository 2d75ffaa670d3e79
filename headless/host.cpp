#include "headless/host.h"

#include <chrono>
#include <cstdio>
#include <deque>
#include <filesystem>

#include "headless/call_frame.h"
#include "headless/platform.h"
#include "headless/tables.h"
#include "headless/text.h"

namespace vellumtide::headless {
namespace {

constexpr PF_SpecVersion kSpecVersion{13, 1};
constexpr A_AppID kApplication = 0x46585443;  // "FXTC"
constexpr A_long kTotalTime = 24 * 3600;

std::string hex(uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", value);
  return text;
}

// The copies of the controls that commands with a panel or a plain render are passed.
struct ParamArray {
  std::vector<PF_ParamDef> records;
  std::vector<PF_ParamDef*> pointers;
  std::deque<std::string> texts;  // of pop-ups, which a command from within may change

  ParamArray(Effect& effect, const RenderOptions& frame) {
    for (const Control& control : effect.controls()) {
      records.push_back(paramDefOf(control, frame.downsampleX, frame.downsampleY));
      if (control.type == PF_Param_POPUP) {
        records.back().u.pd.u.namesptr = texts.emplace_back(control.choicesText).c_str();
      }
    }
    for (PF_ParamDef& record : records)
      pointers.push_back(&record);
  }
};

// UTF-8, without a separator at its end.
std::string temporaryFolder() {
  const std::u8string folder = std::filesystem::temp_directory_path().u8string();
  std::string text(folder.begin(), folder.end());
  while (text.size() > 1 && (text.back() == '/' || text.back() == '\\'))
    text.pop_back();
  return text;
}

bool takesParams(PF_Cmd command) {
  return command >= PF_Cmd_DO_DIALOG && command <= PF_Cmd_UPDATE_PARAMS_UI;
}

}  // namespace

std::string commandName(PF_Cmd command) {
  switch (command) {
    case PF_Cmd_ABOUT:
      return "PF_Cmd_ABOUT";
    case PF_Cmd_GLOBAL_SETUP:
      return "PF_Cmd_GLOBAL_SETUP";
    case PF_Cmd_GLOBAL_SETDOWN:
      return "PF_Cmd_GLOBAL_SETDOWN";
    case PF_Cmd_PARAMS_SETUP:
      return "PF_Cmd_PARAMS_SETUP";
    case PF_Cmd_SEQUENCE_SETUP:
      return "PF_Cmd_SEQUENCE_SETUP";
    case PF_Cmd_SEQUENCE_RESETUP:
      return "PF_Cmd_SEQUENCE_RESETUP";
    case PF_Cmd_SEQUENCE_FLATTEN:
      return "PF_Cmd_SEQUENCE_FLATTEN";
    case PF_Cmd_SEQUENCE_SETDOWN:
      return "PF_Cmd_SEQUENCE_SETDOWN";
    case PF_Cmd_DO_DIALOG:
      return "PF_Cmd_DO_DIALOG";
    case PF_Cmd_RENDER:
      return "PF_Cmd_RENDER";
    case PF_Cmd_USER_CHANGED_PARAM:
      return "PF_Cmd_USER_CHANGED_PARAM";
    case PF_Cmd_UPDATE_PARAMS_UI:
      return "PF_Cmd_UPDATE_PARAMS_UI";
    case PF_Cmd_SMART_PRE_RENDER:
      return "PF_Cmd_SMART_PRE_RENDER";
    case PF_Cmd_SMART_RENDER:
      return "PF_Cmd_SMART_RENDER";
    default:
      return "command " + std::to_string(command);
  }
}

Host::Host(std::shared_ptr<Module> module, HostOptions options)
    : module_(std::move(module)),
      options_(std::move(options)),
      handles_(books_),
      preferences_(options_.preferencesFile),
      state_(std::make_unique<HostState>()) {
  returnLargeBlocksAtOnce();
  if (options_.ownGlContext) gl_ = std::make_unique<HostGlContext>();
  if (options_.userDataFolder.empty()) options_.userDataFolder = temporaryFolder();
  scripts_.userDataFolder = options_.userDataFolder;
  scripts_.os = operatingSystemName();
}

Host::~Host() {
  forgetLastHost(*this);
}

Composition& Host::addComposition(const std::string& name) {
  return compositions_.emplace_back(name);
}

const std::vector<PF_ParamDef>& Host::declaredParams() const {
  return state_->declared;
}

Holdings Host::holdings() const {
  Holdings held = books_.holdings;
  held.handles = handles_.liveHandles();
  held.locks = handles_.locks();
  held.streams = static_cast<int64_t>(state_->streams.size());
  held.effectRefs = static_cast<int64_t>(state_->effectRefs.size());
  held.worlds = static_cast<int64_t>(state_->newWorlds.size());
  for (const auto& [reference, target] : state_->streams)
    held.streamValues += target.values;
  for (const auto& [reference, values] : state_->orphanedValues)
    held.streamValues += values;
  return held;
}

PF_InData Host::makeInData(Effect* effect, const RenderOptions& frame) {
  PF_InData in{};
  in.inter = interactCallbacks();
  in.utils = &utilCallbacks();
  in.effect_ref = effect ? referenceOf(*effect) : referenceOf(*this);
  in.quality = PF_Quality_HI;
  in.version = kSpecVersion;
  in.appl_id = kApplication;
  in.num_params = static_cast<A_long>(state_->declared.size());
  in.current_time = frame.time;
  in.time_step = in.local_time_step = frame.timeStep;
  in.total_time = kTotalTime;
  in.time_scale = frame.timeScale;
  in.field = frame.field;
  in.downsample_x = frame.downsampleX;
  in.downsample_y = frame.downsampleY;
  in.pixel_aspect_ratio = frame.pixelAspect.value_or(PF_RationalScale{1, 1});
  in.global_data = globalData_;
  in.pica_basicP = &basicSuite();
  if (effect) {
    Layer& layer = effect->layer();
    // Width and height are those of the layer, whatever the resolution of the frame.
    in.width = layer.width();
    in.height = layer.height();
    in.extent_hint = {0, 0, in.width, in.height};
    in.sequence_data = effect->sequenceData;
    if (!frame.pixelAspect) in.pixel_aspect_ratio = layer.pixelAspect();
  }
  return in;
}

namespace {

bool replacesSequenceData(PF_Cmd command) {
  return command >= PF_Cmd_SEQUENCE_SETUP && command <= PF_Cmd_SEQUENCE_SETDOWN;
}

// What a command under way has put into its out-data is the instance's for a command within it.
void takeFromOuterCommands(CallFrame& frame, HandleStore& handles) {
  for (CallFrame* outer = frame.outer(); outer; outer = outer->outer()) {
    if (outer->effect() != frame.effect() || !outer->out) continue;
    const PF_Handle held = outer->out->sequence_data;
    if (!held || handles.isLive(held)) frame.effect()->sequenceData = held;
    return;
  }
}

// The other way round, when the command within it ends.
void tellOuterCommands(CallFrame& frame, PF_Handle before) {
  for (CallFrame* outer = frame.outer(); outer; outer = outer->outer()) {
    if (outer->effect() != frame.effect() || !outer->out) continue;
    if (outer->out->sequence_data != before) continue;
    outer->out->sequence_data = outer->given = frame.effect()->sequenceData;
  }
}

}  // namespace

bool Host::takesCommands(const Effect& effect) const {
  for (const CallFrame* frame = CallFrame::current(); frame; frame = frame->outer()) {
    if (frame->effect() == &effect && replacesSequenceData(frame->command())) return false;
  }
  return true;
}

PF_Err Host::call(PF_Cmd command, Effect* effect, const CallArguments& arguments) {
  CallFrame frame(*this, effect, command, arguments.frame);
  if (effect) takeFromOuterCommands(frame, handles_);
  PF_InData in = makeInData(effect, frame.options());
  PF_OutData out{};
  out.global_data = in.global_data;
  out.sequence_data = frame.given = in.sequence_data;
  frame.out = &out;
  PF_ParamDef** params = arguments.params;
  std::optional<ParamArray> array;
  if (!params && effect && takesParams(command)) {
    array.emplace(*effect, frame.options());
    params = array->pointers.data();
  }
  if (arguments.adjust) arguments.adjust(in, out);

  const int64_t handlesBefore = handles_.liveHandles();
  handles_.hold(in.global_data);
  handles_.hold(in.sequence_data);
  if (gl_) gl_->makeCurrent();
  const bool captures = options_.captureOutput && frame.isOutermost();
  if (captures) capture_.start();
  PF_Err error = PF_Err_NONE;
  const auto start = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point end;
  try {
    error = module_->entryPoint()(command, arguments.withInData ? &in : nullptr, &out, params,
                                  arguments.output, arguments.extra);
    end = std::chrono::steady_clock::now();
  } catch (...) {
    end = std::chrono::steady_clock::now();
    books_.fault("an exception left the entry point");
    error = PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
  if (captures) capture_.stop();
  if (gl_) {
    const std::string difference = gl_->difference();
    if (!difference.empty()) books_.fault("the host's GL context was not restored: " + difference);
    gl_->release();
  }
  handles_.letGo(in.global_data);
  handles_.letGo(in.sequence_data);

  lastCall_ = {command,
               error,
               std::chrono::duration<double>(end - start).count(),
               out.out_flags,
               out.out_flags2,
               out.num_params,
               fieldText(out.return_msg),
               handlesBefore,
               handles_.liveHandles(),
               frame.given,
               out.sequence_data != frame.given};
  takeOver(command, effect, out);
  if (effect) tellOuterCommands(frame, in.sequence_data);
  checkAfter(command, out);
  return error;
}

// What the host keeps of the out-data.
void Host::takeOver(PF_Cmd command, Effect* effect, const PF_OutData& out) {
  if (command == PF_Cmd_GLOBAL_SETUP) globalData_ = out.global_data;
  if (command == PF_Cmd_GLOBAL_SETDOWN) globalData_ = nullptr;
  if (globalData_ && !handles_.isLive(globalData_)) {
    books_.fault("global_data is not a live handle");
    globalData_ = nullptr;
  }
  if (!effect) return;
  effect->sequenceData = out.sequence_data;
  if (effect->sequenceData && !handles_.isLive(effect->sequenceData)) {
    books_.fault("sequence_data is not a live handle");
    effect->sequenceData = nullptr;
  }
}

void Host::checkAfter(PF_Cmd command, const PF_OutData& out) {
  if (options_.checkGuardsEveryCall) handles_.checkGuards();
  if (lastCall_.error != PF_Err_NONE) return;
  const auto declared = static_cast<A_long>(state_->declared.size());
  if (command == PF_Cmd_PARAMS_SETUP && out.num_params != declared) {
    books_.fault("num_params is " + std::to_string(out.num_params) + ", but there are " +
                 std::to_string(declared) + " parameters");
  }
  if (command != PF_Cmd_GLOBAL_SETUP || !options_.checkOutFlags) return;
  const auto compare = [this](const char* what, A_u_long is, A_u_long expected) {
    if (is == expected) return;
    books_.fault(std::string(what) + " is " + hex(is) + ", the property list says " +
                 hex(expected));
  };
  compare("my_version", out.my_version, options_.expectedVersion);
  compare("out_flags", static_cast<A_u_long>(out.out_flags),
          static_cast<A_u_long>(options_.expectedOutFlags));
  compare("out_flags2", static_cast<A_u_long>(out.out_flags2),
          static_cast<A_u_long>(options_.expectedOutFlags2));
}

}  // namespace vellumtide::headless
