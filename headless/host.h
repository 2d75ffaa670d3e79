// A host without a screen: it loads an effect module and drives it through the binary interface
// alone, in the order of the real host, and keeps books of everything the module does.
//
//   auto module = Module::load(defaultModulePath());
//   Host host(module);
//   host.globalSetup();
//   Composition& comp = host.addComposition("comp");
//   Layer& photo = comp.addLayer("photo", World(640, 360, PF_PixelFormat_ARGB32));
//   photo.addMarker("kernels/blur.pbk");     // a fresh instance adopts it
//   Effect& effect = host.newInstance(photo);
//   host.updateParamsUi(effect);
//   for (const Control* control : effect.shownControls()) std::puts(control->label.c_str());
//   if (Control* radius = effect.findShown("Radius")) effect.setNumber(radius->index, 12.5);
//   RenderResult frame = host.render(effect, {.format = PF_PixelFormat_ARGB64});
//   if (frame.error == PF_Err_NONE) use(*frame.output);
//   host.finish();                                    // set-downs, leaks
//   std::puts(host.books().faultText().c_str());      // "" when the module did nothing wrong
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/books.h"
#include "headless/effect.h"
#include "headless/gate.h"
#include "headless/handle_store.h"
#include "headless/host_gl_context.h"
#include "headless/module.h"
#include "headless/output_capture.h"
#include "headless/preferences.h"
#include "headless/scene.h"
#include "headless/script_engine.h"
#include "headless/world.h"

namespace vellumtide::headless {

struct HostState;

struct HostOptions {
  A_u_long expectedVersion = 0x80001;
  PF_OutFlags expectedOutFlags = 0x06000031;
  PF_OutFlags2 expectedOutFlags2 = 0x00001400;
  bool checkOutFlags = true;
  bool ownGlContext = true;    // a GL context of the host's own is current during every call
  bool captureOutput = false;  // debugOutput() and standardOutput() collect what the module writes
  bool checkGuardsEveryCall = true;
  bool checkInputPixels = true;   // a written input world is a fault; costs a pass over the pixels
  std::string preferencesFile{};  // "" keeps the preferences in memory
  std::string userDataFolder{};   // Folder.userData of scripts; "" is the system's folder for
                                  // temporary files
};

// One call of PF_InfoDrawText, PF_InfoDrawText3, PF_InfoDrawText3Plus or AEGP_ReportInfo.
struct InfoText {
  std::string function;
  std::vector<std::optional<std::string>> lines;  // nothing for a null line
};

// What is known of one call into the module.
struct CallRecord {
  PF_Cmd command = 0;
  PF_Err error = PF_Err_NONE;
  double seconds = 0;  // inside the entry point alone
  PF_OutFlags outFlags = 0;
  PF_OutFlags2 outFlags2 = 0;
  A_long numParams = 0;
  std::string returnMessage;
  int64_t handlesBefore = 0, handlesAfter = 0;
  // The sequence data that the instance had, and whether this call itself gave other data.
  PF_Handle sequenceGiven = nullptr;
  bool sequenceChanged = false;
};

struct RenderOptions {
  PF_PixelFormat format = PF_PixelFormat_ARGB32;
  PF_RationalScale downsampleX{1, 1};
  PF_RationalScale downsampleY{1, 1};
  std::optional<PF_RationalScale> pixelAspect{};  // default: the layer's
  A_long time = 0;                                // in units of 1 / timeScale seconds
  A_long timeStep = 1;
  A_u_long timeScale = 24;
  std::optional<PF_LRect> request{};  // in downsampled pixels; default: the whole layer
  bool wholeLayers = false;  // hands out all of a layer, also what lies outside the checkout's
                             // rectangle, as when an effect before has made the layer larger
  int outputPadding = 16;    // bytes after each row of the output
  PF_Field field = PF_Field_FRAME;
  PF_ChannelMask channelMask = PF_ChannelMask_ARGB;
  World* output = nullptr;  // drawn into when its format and rectangle are those of the result
  // As CallArguments::adjust, for pre-render and render.
  std::function<void(PF_InData&, PF_OutData&)> adjust{};
};

struct RenderResult {
  PF_Err error = PF_Err_NONE;
  PF_LRect resultRect{};  // what the module said it gives
  PF_LRect maxResultRect{};
  std::shared_ptr<World> output;  // null when pre-render failed, or when options.output was used
  double preRenderSeconds = 0, renderSeconds = 0;  // inside the entry point alone
};

// What a generic call passes besides in-data and out-data.
struct CallArguments {
  PF_ParamDef** params = nullptr;
  PF_LayerDef* output = nullptr;
  void* extra = nullptr;
  const RenderOptions* frame = nullptr;  // time, resolution and aspect of the in-data
  bool withInData = true;
  std::function<void(PF_InData&, PF_OutData&)> adjust{};  // the last word on both records
};

class Host {
 public:
  explicit Host(std::shared_ptr<Module> module, HostOptions options = {});
  ~Host();  // destroys what is left without calling the module
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // --- Commands, in the order of a module's life. Each returns the module's error number and
  // leaves the rest in lastCall(); faults go to books().
  PF_Err globalSetup();
  PF_Err paramsSetup();
  // A new instance (sequence set-up). paramsSetup() is run first when it was not yet; when that
  // fails, lastCall() tells and the instance is good for nothing but being closed.
  Effect& newInstance(Layer& layer);
  // An instance from flattened data, as when a project is opened (sequence re-set-up).
  Effect& openInstance(Layer& layer, const std::vector<uint8_t>& flatData);
  PF_Err updateParamsUi(Effect& effect);
  PF_Err userChangedParam(Effect& effect, PF_ParamIndex index);
  // Smart pre-render, then smart render.
  RenderResult render(Effect& effect, const RenderOptions& options = {});
  PF_Err plainRender(Effect& effect, const RenderOptions& options = {});
  PF_Err doDialog(Effect& effect);
  PF_Err about(Effect* effect = nullptr);
  // Flattens; the instance then holds flat data and needs resetup() before anything else.
  PF_Err flatten(Effect& effect);
  PF_Err resetup(Effect& effect);
  // The instance's flat bytes: flattens, copies, sets up again.
  std::vector<uint8_t> save(Effect& effect);
  // A second instance with the same data and values, made as the host duplicates an effect.
  Effect& duplicate(Effect& effect);
  PF_Err sequenceSetdown(Effect& effect);
  // Sequence set-down, then the instance is gone.
  void closeInstance(Effect& effect);
  PF_Err globalSetdown();
  // Closes all instances, sets the module down and reports what it still holds as faults.
  void finish();

  // Commands may come from within a call that the module makes of the host (Gate::onCall,
  // ScriptEngine::onDialog), as when a host saves or draws while a dialog is open. What they do to
  // an instance's sequence data stands in the out-data of the outer command from then on, while its
  // in-data still holds what it was called with. An instance whose own command is under way cannot
  // be closed, and the module cannot be set down, before that command ends.
  // Whether a command under way is about to make, replace or end the instance's sequence data; a
  // host gives it no other command meanwhile, except for trying what the module makes of it.
  bool takesCommands(const Effect& effect) const;

  // Any command with any arguments; effect null for a call without an instance.
  PF_Err call(PF_Cmd command, Effect* effect, const CallArguments& arguments = {});

  // --- The scene.
  Composition& addComposition(const std::string& name);
  std::list<Composition>& compositions() { return compositions_; }
  std::list<Effect>& effects() { return effects_; }
  // As add_param was given them; the first is the layer that the effect is on.
  const std::vector<PF_ParamDef>& declaredParams() const;

  // --- What is known.
  Books& books() { return books_; }
  Gate& gate() { return gate_; }
  HandleStore& handles() { return handles_; }
  // Books, handles, locks and suites in one.
  Holdings holdings() const;
  const CallRecord& lastCall() const { return lastCall_; }
  std::vector<InfoText>& infoPanel() { return infoPanel_; }
  std::string debugOutput() { return capture_.takeDebugOutput(); }
  std::string standardOutput() { return capture_.takeStandardOutput(); }
  const HostGlContext* glContext() const { return gl_.get(); }
  Preferences& preferences() { return preferences_; }
  ScriptEngine& scripts() { return scripts_; }
  const Module& module() const { return *module_; }
  const HostOptions& options() const { return options_; }
  HostState& state() { return *state_; }  // for the callbacks
  bool isSetUp() const { return setUp_; }
  PF_Handle globalData() const { return globalData_; }
  int projectDirtied = 0;      // calls of PF_SetProjectDirty
  int windowsRefreshed = 0;    // calls of PF_RefreshAllWindows
  std::string registeredName;  // as given to AEGP_RegisterWithAEGP

 private:
  Effect& addInstance(Layer& layer);
  PF_InData makeInData(Effect* effect, const RenderOptions& frame);
  void takeOver(PF_Cmd command, Effect* effect, const PF_OutData& out);
  void checkAfter(PF_Cmd command, const PF_OutData& out);
  PF_Err preRender(Effect& effect, const RenderOptions& options, PF_PreRenderOutput& output);

  std::shared_ptr<Module> module_;
  HostOptions options_;
  Books books_;
  Gate gate_;
  HandleStore handles_;
  std::unique_ptr<HostGlContext> gl_;
  OutputCapture capture_;
  Preferences preferences_;
  ScriptEngine scripts_;
  std::unique_ptr<HostState> state_;
  std::list<Composition> compositions_;
  std::list<Effect> effects_;
  std::vector<InfoText> infoPanel_;
  CallRecord lastCall_;
  PF_Handle globalData_ = nullptr;
  bool setUp_ = false;
  bool paramsDeclared_ = false;
};

// "PF_Cmd_SMART_RENDER"; "command 99" for a number without a name.
std::string commandName(PF_Cmd command);

}  // namespace vellumtide::headless
