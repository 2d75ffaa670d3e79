#include "tests/scenarios/stage.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "tests/scenarios/frame_request.h"
#include "tests/scenarios/pictures.h"
#include "tests/support/driver_faults.h"

namespace vellumtide::scenarios {
namespace {

using namespace headless;
using end_to_end::driverFaults;

std::string word(const Step& words, std::size_t at) {
  return at < words.size() ? words[at] : "";
}
int number(const Step& words, std::size_t at) {
  return std::atoi(word(words, at).c_str());
}
double real(const Step& words, std::size_t at) {
  return std::atof(word(words, at).c_str());
}
// The word behind a key, "" when the key is not there.
std::string after(const Step& words, const std::string& key, std::size_t further = 1) {
  const auto found = std::find(words.begin(), words.end(), key);
  return word(words, static_cast<std::size_t>(found - words.begin()) + further);
}

std::vector<int> numbersOf(const std::string& text) {
  std::vector<int> numbers;
  const char* at = text.c_str();
  for (char* end = nullptr; *at; at = *end ? end + 1 : end) {
    numbers.push_back(static_cast<int>(std::strtol(at, &end, 10)));
    if (end == at) break;
  }
  numbers.resize(4);
  return numbers;
}

// "1/2"; full where there is none.
PF_RationalScale scaleOf(const std::string& text) {
  const std::vector<int> parts = numbersOf(text);
  if (parts[0] < 1 || parts[1] < 1) return {1, 1};
  return {parts[0], static_cast<A_u_long>(parts[1])};
}

// Only these spellings are taken from a marker.
bool isAdopted(const std::string& path) {
  const std::string end = path.size() > 4 ? path.substr(path.size() - 3) : "";
  return end == "pbk" || end == "PBK" || end == "pbg" || end == "PBG";
}

// The module joins what it finds with back-slashes on every system.
std::string withSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::string fileNameOf(const std::string& path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

// The path in saved data, of the present layout or the old one.
std::string pathOf(const std::vector<std::uint8_t>& data) {
  const std::size_t at = data.size() > 3 && data[0] == 0 ? 4 : 8;
  if (data.size() < 4 || data[1] || data[2] || data[3] || data[0] > 1 || data.size() < at)
    return "";
  const auto begin = data.begin() + static_cast<std::ptrdiff_t>(at);
  return std::string(begin, std::find(begin, data.end(), 0));
}

std::vector<std::uint8_t> savedData(const std::string& path, const std::string& flaw, int seed) {
  std::vector<std::uint8_t> data = {1, 0, 0, 0, static_cast<std::uint8_t>(seed % 2), 0, 0, 0};
  if (flaw == "old") data = {0, 0, 0, 0};
  data.insert(data.end(), path.begin(), path.end());
  data.push_back(0);
  Dice dice(static_cast<std::uint64_t>(seed));
  if (flaw == "cut")
    data.resize(static_cast<std::size_t>(dice.below(static_cast<int>(data.size()))));
  if (flaw == "garbled") {
    for (int i = dice.between(1, 5); i > 0; --i)
      data[static_cast<std::size_t>(dice.below(static_cast<int>(data.size())))] =
          static_cast<std::uint8_t>(dice.below(256));
  }
  return data;
}

}  // namespace

Stage::Stage(const Scenario& scenario, SecondOpinion& opinion)
    : scenario_(scenario), opinion_(opinion), module_(Module::load(defaultModulePath())) {
  std::filesystem::create_directories(folder_.path("root"));
  for (const ProgramFile& file : scenario.files)
    folder_.put(file.name, file.text());
}

Stage::~Stage() {
  driverFaults().refusals = 0;
}

void Stage::play(const std::function<void()>& watch) {
  openHost();
  for (step_ = 0; step_ < scenario_.steps.size(); ++step_) {
    watch();
    const Step& words = scenario_.steps[step_];
    if (words.empty()) continue;
    if (words[0] == "refuse" || words[0] == "busy" || words[0] == "visit") {
      trouble(words);
      continue;
    }
    playStep(words);
    checkBooks();
  }
  host_->finish();
  checkBooks();
  watch();
}

void Stage::playStep(const Step& words) {
  if (words[0] == "restart") return restart();
  Gate& gate = host_->gate();
  // Without memory for its scope a set-down can free nothing: its first two calls are that memory.
  const int spared = trouble_.refuse > 0 && words[0] == "close" ? 2 : 0;
  gate.refuseNth(static_cast<std::uint64_t>(trouble_.refuse + spared));
  gate.onNth(static_cast<std::uint64_t>(trouble_.visit),
             [this](CallKind, const char*) { visit(); });
  driverFaults().refusals = trouble_.busy;
  disturbed_ = trouble_.refuse > 0 || trouble_.busy > 0 || trouble_.visit > 0;
  act(words);
  gate.refuseNth(0);
  gate.onNth(0, {});
  driverFaults().refusals = 0;
  trouble_ = {};
  if (visited_) throw *std::exchange(visited_, std::nullopt);
  if (disturbed_) settle();
  disturbed_ = false;
}

// A step within a call of the module, for an instance that the host may give commands to.
void Stage::visit() {
  const auto found = instances_.find(trouble_.visitor[1]);
  if (found == instances_.end() || found->second.effect->flat ||
      !host_->takesCommands(*found->second.effect)) {
    return;
  }
  try {
    act(trouble_.visitor);
  } catch (const Finding& finding) {
    visited_ = finding;  // must not pass through the module
  }
}

void Stage::openHost() {
  driverFaults().sparesNew = true;
  host_ = std::make_unique<Host>(module_, HostOptions{.captureOutput = true});
  driverFaults().sparesNew = false;
  comp_ = &host_->addComposition("comp");
  host_->preferences().set("Settings_cs_VTD_Launcher", "rootFolder", folder_.path("root"));
  expectNone(host_->globalSetup(), "global set-up");
}

void Stage::trouble(const Step& words) {
  if (words[0] == "refuse") trouble_.refuse = number(words, 1);
  if (words[0] == "busy") trouble_.busy = number(words, 1);
  if (words[0] == "visit" && words.size() > 3) {
    trouble_.visit = number(words, 1);
    trouble_.visitor.assign(words.begin() + 2, words.end());
  }
}

void Stage::checkBooks() {
  const std::string faults = host_->books().faultText();
  if (!faults.empty()) throw Finding{"books", faults};
}

void Stage::expectNone(PF_Err error, const std::string& what) {
  if (error != PF_Err_NONE && !disturbed_) {
    throw Finding{"error of " + what, "ended with " + std::to_string(error)};
  }
}

// After a refusal it is open what an instance holds: it must be possible to save each, and what was
// saved says it.
void Stage::settle() {
  disturbed_ = false;
  for (auto it = instances_.begin(); it != instances_.end();) {
    Instance& instance = it->second;
    if (!instance.effect->sequenceData) {
      host_->closeInstance(*instance.effect);
      it = instances_.erase(it);
      continue;
    }
    if (instance.effect->flat) expectNone(host_->resetup(*instance.effect), "re-set-up");
    followPath(instance);
    ++it;
  }
}

// Takes over the path that an instance has, which is what it would save.
void Stage::followPath(Instance& instance) {
  host_->save(*instance.effect);
  const std::vector<std::uint8_t> data = host_->save(*instance.effect);
  if (data.size() < 9) throw Finding{"save", "an instance cannot be saved"};
  instance.path = pathOf(data);
  instance.isFresh = data[4] % 2 != 0;
  load(instance.path);
}

const Plan* Stage::known(const std::string& path) const {
  const auto found = known_.find(path);
  return found == known_.end() ? nullptr : &found->second;
}

const Plan* Stage::load(const std::string& path) {
  if (const Plan* plan = known(path)) return plan;
  const std::filesystem::path name = testing::utf8Path(withSlashes(path));
  if (!std::filesystem::is_regular_file(name)) return nullptr;
  std::ifstream file(name, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  std::optional<Plan> plan = planOf(path, text);
  return plan ? &known_.emplace(path, std::move(*plan)).first->second : nullptr;
}

void Stage::act(const Step& words) {
  const std::string& what = words[0];
  const std::string name = word(words, 1);
  if (what == "layer") return makeLayer(words);
  if (what == "new") return makeInstance(words);
  if (what == "open") return openInstance(words);
  if (what == "lose") std::filesystem::remove(folder_.path(name));
  for (const ProgramFile& file : scenario_.files) {
    if (file.name != name) continue;
    if (what == "find") folder_.put(name, file.text());
    if (what == "move") {
      std::filesystem::remove(folder_.path(name));
      folder_.put("root/sub/" + name, file.text());
    }
  }
  const auto found = instances_.find(name);
  if (found == instances_.end()) return;
  Instance& instance = found->second;
  Effect& effect = *instance.effect;
  if (what == "close") return close(name);
  if (what == "resetup") {
    if (!effect.flat) return;
    expectNone(host_->resetup(effect), "re-set-up");
    if (!disturbed_) followPath(instance);
    return;
  }
  if (effect.flat) return;
  if (what == "panel") panel(instance);
  if (what == "save") host_->save(effect);
  if (what == "flatten") expectNone(host_->flatten(effect), "flatten");
  if (what == "about") expectNone(host_->about(&effect), "the about box");
  if (what == "dialog") dialog(instance, word(words, 2));
  if (what == "render") render(instance, words);
  if (what == "duplicate" && !instances_.count(word(words, 2))) {
    add(word(words, 2), host_->duplicate(effect), instance.path);
    if (!disturbed_) followPath(instance);
  }
  if (what == "set" || what == "key" || what == "choose") setControl(instance, words);
}

void Stage::makeLayer(const Step& words) {
  const std::vector<int> size = numbersOf(word(words, 2));
  const std::vector<int> origin = numbersOf(after(words, "origin"));
  const WorldLayout layout{std::atoi(after(words, "padding").c_str()), origin[0], origin[1]};
  World world = drawnWorld(std::max(size[0], 1), std::max(size[1], 1), after(words, "pixels"),
                           std::atoi(after(words, "pixels", 2).c_str()), layout);
  Layer*& layer = layers_[word(words, 1)];
  if (layer) {
    layer->setPixels(std::move(world));
  } else {
    layer = &comp_->addLayer(word(words, 1), std::move(world));
  }
  const PF_RationalScale aspect = scaleOf(after(words, "aspect"));
  layer->item()->pixelAspect = {aspect.num, aspect.den};
}

void Stage::makeInstance(const Step& words) {
  const auto layer = layers_.find(word(words, 2));
  if (layer == layers_.end() || instances_.count(word(words, 1))) return;
  layer->second->markers().clear();
  const std::string path = folder_.path(word(words, 3));
  if (!word(words, 3).empty()) layer->second->addMarker(path);
  Effect& effect = host_->newInstance(*layer->second);
  expectNone(host_->lastCall().error, "a new instance");
  add(word(words, 1), effect, isAdopted(path) ? path : "");
}

void Stage::openInstance(const Step& words) {
  const auto layer = layers_.find(word(words, 2));
  if (layer == layers_.end() || instances_.count(word(words, 1))) return;
  const auto data = savedData(folder_.path(word(words, 3)), after(words, "flaw"),
                              std::atoi(after(words, "flaw", 2).c_str()));
  Effect& effect = host_->openInstance(*layer->second, data);
  expectNone(host_->lastCall().error, "opening an instance");
  add(word(words, 1), effect, pathOf(data));
  if (!disturbed_) followPath(instances_.at(word(words, 1)));
}

void Stage::add(const std::string& name, Effect& effect, const std::string& path) {
  instances_[name] = {&effect, path, true};
  if (!disturbed_) load(path);
}

void Stage::close(const std::string& name) {
  host_->closeInstance(*instances_.at(name).effect);
  // Without memory for the command the module keeps the instance; the host forgets it all the same.
  instances_.erase(name);
}

void Stage::setControl(Instance& instance, const Step& words) {
  Effect& effect = *instance.effect;
  const auto shown = effect.shownControls();
  if (shown.empty()) return;
  const Control& control = *shown[static_cast<std::size_t>(number(words, 2)) % shown.size()];
  if (words[0] == "choose") {
    const auto layer = layers_.find(word(words, 3));
    for (const Control* each : shown)
      if (each->type == PF_Param_LAYER && each->index % 3 == number(words, 2) % 3)
        effect.setLayer(each->index, layer == layers_.end() ? nullptr : layer->second);
  } else if (control.type == PF_Param_POINT) {
    effect.setPoint(control.index, real(words, 3), real(words, 4));
  } else if (control.type == PF_Param_COLOR) {
    const auto part = [&](std::size_t at) { return std::clamp(real(words, at), 0.0, 1.0); };
    effect.setColor(control.index, {part(3), part(4), part(5), part(6)});
  } else if (control.isNumber() && words[0] == "key") {
    effect.setNumberAt(control.index, {number(words, 3), 24}, real(words, 4));
  } else if (control.isNumber()) {
    effect.setNumber(control.index, real(words, 3));
  }
}

// The first update with a program gives a fresh instance its defaults, and the next one leaves the
// values to the user.
void Stage::panel(Instance& instance) {
  expectNone(host_->updateParamsUi(*instance.effect), "the panel's update");
  if (disturbed_ || !known(instance.path) || !instance.isFresh) return;
  followPath(instance);
  if (instance.isFresh) throw Finding{"fresh", "an instance stays fresh"};
}

void Stage::dialog(Instance& instance, const std::string& file) {
  const bool asks = !known(instance.path);
  const std::string lost = fileNameOf(instance.path), chosen = folder_.path(file);
  host_->scripts().fileAnswers.clear();
  if (!file.empty()) host_->scripts().fileAnswers = {chosen};
  expectNone(host_->doDialog(*instance.effect), "the dialog");
  host_->scripts().fileAnswers.clear();
  if (!asks || file.empty() || disturbed_ || !load(chosen)) return;
  instance.path = chosen;
  for (auto& [name, other] : instances_) {
    const bool isLost = !lost.empty() && !known(other.path) && fileNameOf(other.path) == lost;
    if (isLost && !other.effect->flat) other.path = chosen;
  }
}

void Stage::render(Instance& instance, const Step& words) {
  RenderOptions options;
  const int depth = std::atoi(after(words, "depth").c_str());
  options.format = pixelFormatOfDepth(depth == 16 || depth == 32 ? depth : 8);
  options.downsampleX = scaleOf(after(words, "scale"));
  options.downsampleY = scaleOf(after(words, "scale", 2));
  options.wholeLayers = std::find(words.begin(), words.end(), "whole") != words.end();
  options.time = std::atoi(after(words, "time").c_str());
  const std::string request = after(words, "request");
  if (!request.empty()) {
    const std::vector<int> edges = numbersOf(request);
    options.request =
        PF_LRect{edges[0], edges[1], std::max(edges[0], edges[2]), std::max(edges[1], edges[3])};
  }
  const PF_LRect part = placesOf(*instance.effect, options).output;
  const int padding = std::atoi(after(words, "padding").c_str()) * bytesPerPixel(options.format);
  World output(part.right - part.left, part.bottom - part.top, options.format,
               {padding, part.left, part.top});
  output.fillBytes(0x5A);
  const World before = output;
  options.output = &output;
  const RenderResult result = host_->render(*instance.effect, options);
  checkBooks();
  if (result.output) throw Finding{"rectangle", "the frame is another part than it should be"};
  if (!disturbed_) compare(instance, options, before, output, result.error);
}

void Stage::compare(Instance& instance, const RenderOptions& options, const World& before,
                    const World& got, PF_Err error) {
  const Plan* plan = known(instance.path);
  if (before.width() == 0) return expectNone(error, "an empty frame");
  World expected = before;
  if (plan) {
    const FrameRequest request = requestOf(*instance.effect, options, *plan);
    if (std::max(request.width, request.height) > opinion_.largestTexture()) {
      if (error != PF_Err_OUT_OF_MEMORY) throw Finding{"too large", std::to_string(error)};
      return;
    }
    expectNone(error, "a frame");
    std::string wronged;
    const bool canDraw = opinion_.canDraw(*plan, wronged);
    if (!wronged.empty()) throw Finding{"build", "the shaders of " + wronged + " do not build"};
    if (!canDraw) return;
    opinion_.draw(*plan, request, GL_LINEAR, expected);
    World unfiltered = before;
    const bool special = hasSpecials(*instance.effect, options, request);
    if (special) opinion_.draw(*plan, request, GL_NEAREST, unfiltered);
    const std::string difference =
        differenceOf(got, expected, special ? &unfiltered : nullptr, plan->depth);
    if (!difference.empty()) throw Finding{"picture", difference};
    return;
  }
  expectNone(error, "a frame without a program");
  const std::string difference = differenceOf(got, expected, nullptr, 0);
  if (!difference.empty()) throw Finding{"picture without a program", difference};
}

// As when the host quits and the project is opened again.
void Stage::restart() {
  struct Saved {
    std::string name, layer;
    std::vector<std::uint8_t> data;
    std::vector<Control> controls;
  };
  std::vector<Saved> saved;
  for (auto& [name, instance] : instances_) {
    Effect& effect = *instance.effect;
    if (effect.flat) expectNone(host_->resetup(effect), "re-set-up");
    saved.push_back({name, effect.layer().name(), host_->save(effect), effect.controls()});
  }
  std::map<std::string, World> pixels;
  std::map<std::string, A_Ratio> aspects;
  for (const auto& [name, layer] : layers_) {
    pixels.emplace(name, layer->pixels());
    aspects[name] = layer->item()->pixelAspect;
  }
  std::map<std::string, AEGP_LayerIDVal> ids;
  for (const auto& [name, layer] : layers_)
    ids[name] = layer->id();
  host_->finish();
  checkBooks();
  instances_.clear();
  known_.clear();
  host_.reset();
  openHost();
  for (auto& [name, layer] : layers_) {
    layer = &comp_->addLayer(ids[name], name, pixels.at(name));
    layer->item()->pixelAspect = aspects[name];
  }
  for (Saved& each : saved) {
    Effect& effect = host_->openInstance(*layers_.at(each.layer), each.data);
    expectNone(host_->lastCall().error, "opening an instance");
    for (std::size_t i = 0; i < effect.controls().size(); ++i) {
      // Its texts are the present host's.
      const PF_ParamDef declared = effect.controls()[i].declared;
      effect.controls()[i] = each.controls[i];
      effect.controls()[i].declared = declared;
    }
    add(each.name, effect, pathOf(each.data));
    followPath(instances_.at(each.name));
  }
}

}  // namespace vellumtide::scenarios
