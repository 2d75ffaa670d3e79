#include "cli/render_session.h"

#include <filesystem>
#include <utility>

#include "cli/driver_log.h"
#include "cli/failure.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr const char* kUnusableTitle = "(Invalid PB)";

headless::HostOptions hostOptions(const ScratchFolder& folder) {
  headless::HostOptions options;
  options.ownGlContext = false;
  options.captureOutput = true;
  options.checkGuardsEveryCall = false;
  options.checkInputPixels = false;
  options.userDataFolder = utf8(folder.path());
  return options;
}

std::vector<std::string> infoLines(headless::Host& host) {
  std::vector<std::string> lines;
  for (const headless::InfoText& text : host.infoPanel()) {
    for (const std::optional<std::string>& line : text.lines) {
      if (line && !line->empty()) lines.push_back(*line);
    }
  }
  return lines;
}

std::string lastLine(std::string text) {
  while (!text.empty() && text.back() == '\n')
    text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

}  // namespace

RenderSession::RenderSession(std::shared_ptr<headless::Module> module,
                             const std::string& programPath, const Program& program,
                             std::vector<LayerPicture> pictures)
    : host_(std::make_unique<headless::Host>(std::move(module), hostOptions(folder_))) {
  host_->globalSetup();
  checkDevice();

  headless::Composition& composition = host_->addComposition("render");
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    layers_.push_back(&composition.addLayer("layer " + std::to_string(i + 1),
                                            headless::World(1, 1, PF_PixelFormat_ARGB32)));
  }
  setPictures(std::move(pictures));
  // An absolute path is never too short for a marker to be taken as one.
  layers_.front()->addMarker(utf8(std::filesystem::absolute(pathOf(programPath))));
  effect_ = &host_->newInstance(*layers_.front());
  host_->updateParamsUi(*effect_);
  checkProgram(programPath);

  const std::size_t inputs = std::min(program.inputs().size(), layers_.size());
  for (std::size_t i = 1; i < inputs; ++i) {
    effect_->setLayer(slotsOf(program).inputs[i], layers_[i]);
  }
}

RenderSession::~RenderSession() = default;

// The module says in the debug output how loading the GL entry points went.
void RenderSession::checkDevice() {
  const std::string output = host_->debugOutput();
  if (output.find("GLEW initialized") != std::string::npos) return;
  const std::size_t at = output.find("Error: ");
  throw Failure(
      ExitStatus::NoDevice,
      "no usable GL device: " + (at == std::string::npos ? "the module could not make one"
                                                         : lastLine(output.substr(at + 7))));
}

void RenderSession::checkProgram(const std::string& programPath) {
  std::string broken, reasons;
  for (const std::string& line : infoLines(*host_)) {
    const bool isBuildFailure = line.starts_with("!!!");
    (isBuildFailure ? broken : reasons) += "\n  " + line.substr(isBuildFailure ? 3 : 0);
  }
  const bool unusable = effect_->title.find(kUnusableTitle) != std::string::npos;
  if (!unusable && broken.empty()) return;
  std::string message;
  if (unusable) message = "the module cannot use this program" + reasons;
  if (!broken.empty()) {
    message += std::string(unusable ? "\n" : "") + "the shaders do not build:" + broken + "\n";
    message += exportDriverLog(*host_, *effect_);
    message += "Lines are counted in the text that \"vellumtide glsl\" prints.";
  }
  throw Failure(ExitStatus::Program, programPath + ": " + message);
}

void RenderSession::setPictures(std::vector<LayerPicture> pictures) {
  for (std::size_t i = 0; i < layers_.size() && i < pictures.size(); ++i) {
    const PF_RationalScale aspect = pictures[i].pixelAspect;
    layers_[i]->setPixels(std::move(pictures[i].pixels));
    layers_[i]->item()->pixelAspect = {aspect.num, aspect.den};
  }
}

std::shared_ptr<headless::World> RenderSession::render(const headless::RenderOptions& options) {
  const headless::RenderResult result = host_->render(*effect_, options);
  if (result.error != PF_Err_NONE) {
    throw Failure(ExitStatus::Failed,
                  "the module answers the frame with error " + std::to_string(result.error));
  }
  if (!result.output || result.output->width() == 0 || result.output->height() == 0) {
    throw Failure(ExitStatus::Failed, "the module gives no pixels for the frame");
  }
  return result.output;
}

std::string RenderSession::finish() {
  host_->finish();
  return host_->books().faultText();
}

}  // namespace vellumtide::cli
