// Project files: an effect on its layers as a project keeps it, saved data and values included.
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/commands.h"
#include "cli/commands/option_checks.h"
#include "cli/control/control_panel.h"
#include "cli/files/file_guard.h"
#include "cli/files/pending_file.h"
#include "cli/os/module_file.h"
#include "cli/session/layer_pictures.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"
#include "cli/text/utf8_path.h"
#include "headless/project.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

namespace fs = std::filesystem;
using headless::Control;
using headless::Project;

struct ProjectOptions {
  std::string project, program, output, rootFolder, module;
  std::vector<std::string> inputs, settings;
  int depth = 0;
  int downsample = 1;
  int instance = 1;
  bool json = false;
};

std::optional<int> depthOf(const ProjectOptions& options) {
  return options.depth == 0 ? std::nullopt : std::optional<int>(options.depth);
}

void writeProject(const Project& project, const std::string& file) {
  try {
    writeFile(pathOf(file), project.text());
  } catch (const WriteRefusal& refusal) {
    throw Failure(ExitStatus::Failed, file + ": cannot be written: " + refusal.what());
  }
}

void makeProject(const ProjectOptions& options) {
  FileGuard guard;
  guard.reads("the program", pathOf(options.program));
  for (const std::string& input : options.inputs)
    guard.reads("the input", pathOf(input));
  if (const auto module = moduleFile(options.module)) guard.reads("the effect module", *module);
  guard.writes("PROJECT", pathOf(options.project));
  const Program program = readProgram(pathOf(options.program));
  std::vector<LayerSource> files;
  for (const std::string& input : options.inputs)
    files.push_back({pathOf(input)});
  RenderSession session(options.module, options.program, program, readPictures(files, {}).pictures);
  ControlPanel panel(program, session.effect());
  for (const std::string& setting : options.settings)
    panel.set(setting);
  writeProject(Project::capture(session.host(), session.composition()), options.project);
  session.finish();
}

// A project, opened on a host of its own as a compositing host opens one.
class OpenProject {
 public:
  explicit OpenProject(const ProjectOptions& options)
      : project_(Project::read(options.project)), session_(options.module, options.rootFolder) {
    std::vector<LayerSource> files;
    for (const headless::ProjectLayer& layer : project_.layers)
      files.push_back({pathOf(layer.file)});
    pictures_ = readPictures(files, depthOf(options));
    std::size_t next = 0;
    instances_ = project_.open(session_.host(), [&](const headless::ProjectLayer&) {
      return std::move(pictures_.pictures.at(next++).pixels);
    });
    for (headless::Effect* effect : instances_)
      session_.host().updateParamsUi(*effect);
  }

  const Project& project() const { return project_; }
  HostSession& session() { return session_; }
  LayerPictures& pictures() { return pictures_; }
  const std::vector<headless::Effect*>& instances() const { return instances_; }

 private:
  Project project_;
  HostSession session_;
  LayerPictures pictures_;
  std::vector<headless::Effect*> instances_;
};

std::string valueText(const Control& control) {
  const auto number = [](double value) { return numberText(static_cast<float>(value)); };
  switch (control.type) {
    case PF_Param_POINT:
      return number(control.point.x) + "," + number(control.point.y);
    case PF_Param_COLOR:
      return number(control.color.red) + "," + number(control.color.green) + "," +
             number(control.color.blue) + "," + number(control.color.alpha);
    case PF_Param_LAYER:
      return control.layerId == 0 ? "no layer" : "layer " + std::to_string(control.layerId);
    case PF_Param_CHECKBOX:
      return control.number != 0 ? "true" : "false";
    case PF_Param_POPUP: {
      const std::vector<std::string> entries = control.choices();
      const std::size_t index = static_cast<std::size_t>(control.number) - 1;
      return index < entries.size() ? entries[index] : number(control.number);
    }
    default:
      return number(control.number);
  }
}

// The same for other programs: numbers as numbers, points and colours as lists.
nlohmann::ordered_json valueJson(const Control& control) {
  switch (control.type) {
    case PF_Param_POINT:
      return {control.point.x, control.point.y};
    case PF_Param_COLOR:
      return {control.color.red, control.color.green, control.color.blue, control.color.alpha};
    case PF_Param_LAYER:
      return control.layerId;
    case PF_Param_CHECKBOX:
      return control.number != 0;
    default:
      return control.number;
  }
}

std::string projectJson(const OpenProject& opened) {
  Json layers = Json::array(), effects = Json::array();
  for (const headless::ProjectLayer& layer : opened.project().layers) {
    layers.push_back(
        {{"id", layer.id}, {"file", layer.file}, {"width", layer.width}, {"height", layer.height}});
  }
  for (const headless::Effect* effect : opened.instances()) {
    Json controls = Json::array();
    for (const Control* control : effect->shownControls()) {
      controls.push_back(
          {{"index", control->index}, {"label", control->label}, {"value", valueJson(*control)}});
    }
    effects.push_back({{"layer", effect->layer().id()},
                       {"title", effect->title},
                       {"program", effect->program},
                       {"controls", std::move(controls)}});
  }
  const Json all = {{"composition", opened.project().composition},
                    {"layers", std::move(layers)},
                    {"effects", std::move(effects)}};
  return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string projectText(const OpenProject& opened) {
  std::string text = "composition " + opened.project().composition + "\n";
  for (const headless::ProjectLayer& layer : opened.project().layers) {
    text += "layer " + std::to_string(layer.id) + ": " + layer.file + ", " +
            std::to_string(layer.width) + " x " + std::to_string(layer.height) + "\n";
  }
  for (const headless::Effect* effect : opened.instances()) {
    text += "effect on layer " + std::to_string(effect->layer().id()) + ": " + effect->title +
            ", from " + effect->program + "\n";
    for (const Control* control : effect->shownControls()) {
      text += "  " + control->label + " = " + valueText(*control) + "\n";
    }
  }
  return text;
}

void showProject(const ProjectOptions& options) {
  OpenProject opened(options);
  writeOut(options.json ? projectJson(opened) : projectText(opened));
  opened.session().finish();
}

// A program that is not where it was, nor in the root folder, is lost.
void requireProgram(HostSession& session, headless::Effect& effect) {
  try {
    session.requireUsable(effect, effect.program);
  } catch (const Failure&) {
    std::error_code ignored;
    if (fs::exists(pathOf(effect.program), ignored)) throw;
    throw Failure(ExitStatus::Program,
                  effect.program + ": the program is lost; name a folder that holds it, or whose " +
                      "folders do, with --root-folder");
  }
}

void requireApart(const ProjectOptions& options, const OpenProject& opened) {
  FileGuard guard;
  guard.reads("the project", pathOf(options.project));
  for (const headless::ProjectLayer& layer : opened.project().layers)
    guard.reads("the input", pathOf(layer.file));
  for (const headless::Effect* effect : opened.instances())
    guard.reads("the program", pathOf(effect->program));
  if (const auto module = moduleFile(options.module)) guard.reads("the effect module", *module);
  guard.writes("-o", pathOf(options.output));
}

void renderProject(const ProjectOptions& options) {
  requireNoTerminal("-o", pathOf(options.output));
  checkWritable(pathOf(options.output), {});
  OpenProject opened(options);
  requireApart(options, opened);
  if (options.instance > static_cast<int>(opened.instances().size())) {
    throw Failure(ExitStatus::Usage, options.project + ": there is no instance " +
                                         std::to_string(options.instance) + "; it has " +
                                         std::to_string(opened.instances().size()));
  }
  headless::Effect& effect = *opened.instances()[static_cast<std::size_t>(options.instance) - 1];
  requireProgram(opened.session(), effect);
  const headless::Layer& layer = effect.layer();
  requireRoom(layer.pixels(), opened.pictures().format, options.downsample);

  headless::RenderOptions frame;
  frame.format = opened.pictures().format;
  frame.downsampleX = frame.downsampleY = {1, static_cast<A_u_long>(options.downsample)};
  const PF_RationalScale aspect = layer.pixelAspect();
  writeImageFile(pathOf(options.output), *opened.session().render(effect, frame),
                 static_cast<double>(aspect.num) / aspect.den, opened.pictures().write);
  opened.session().finish();
}

using Action = void (*)(const ProjectOptions&);

// What the headless host throws for a file that is no project becomes an error of this program.
void run(Action action, const ProjectOptions& options) {
  try {
    action(options);
  } catch (const Failure&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw Failure(ExitStatus::Failed, error.what());
  }
}

CLI::App* addAction(CLI::App& parent, const char* name, const char* description, Action action,
                    const std::shared_ptr<ProjectOptions>& options) {
  CLI::App* command = parent.add_subcommand(name, description);
  command->add_option("PROJECT", options->project, "project file (.json)")->required();
  command->add_option("--module", options->module, "the effect module to use");
  command->callback([action, options] { run(action, *options); });
  return command;
}

}  // namespace

void addProjectCommand(CLI::App& app) {
  CLI::App* project = app.add_subcommand("project", "Make, look into and render project files");
  project->require_subcommand(1);
  const auto options = std::make_shared<ProjectOptions>();

  CLI::App* make =
      addAction(*project, "new", "Apply a program to images and save that as a project",
                makeProject, options);
  make->add_option("PROGRAM", options->program, "kernel (.pbk) or graph (.pbg)")->required();
  make->add_option("-i,--input", options->inputs, "image of the next layer, up to four")
      ->required()
      ->expected(1, 4)
      ->allow_extra_args(false);
  make->add_option("-p,--set", options->settings, "set a control, as render does")
      ->allow_extra_args(false);

  CLI::App* show = addAction(*project, "show", "Open a project and list layers, effects and values",
                             showProject, options);
  show->add_flag("--json", options->json, "print one JSON object");
  CLI::App* render =
      addAction(*project, "render", "Open a project and render an effect", renderProject, options);
  render->add_option("-o,--output", options->output, "file to write: .png, .tif or .exr")
      ->required();
  render->add_option("--instance", options->instance, "which effect of the project, from 1")
      ->check(wholeNumber(1, 1000000));
  render->add_option("--depth", options->depth, "bits a channel to render with")
      ->check(CLI::IsMember({"8", "16", "32"}));
  render->add_option("--downsample", options->downsample, "render at 1/N of the resolution")
      ->check(wholeNumber(1, 64));
  for (CLI::App* command : {show, render}) {
    command->add_option("--root-folder", options->rootFolder, "where to look for lost programs");
  }
}

}  // namespace vellumtide::cli
