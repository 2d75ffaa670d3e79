#include "tests/support/session.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace vellumtide::end_to_end {
namespace {

std::shared_ptr<Module> builtModule() {
  const char* other = std::getenv("VELLUMTIDE_MODULE");
  static const std::shared_ptr<Module> module = Module::load(other ? other : defaultModulePath());
  return module;
}

PF_ParamIndex shownIndex(Effect& effect, const std::string& label) {
  const Control* control = effect.findShown(label);
  if (!control) throw std::out_of_range("no control is shown as \"" + label + "\"");
  return control->index;
}

}  // namespace

std::string kernelText(const std::string& declarations, const std::string& statements,
                       const std::string& name) {
  const bool ownInput = declarations.find("image4") == std::string::npos;
  return "<languageVersion : 1.0;>\nkernel " + name +
         " <namespace : \"tests\"; vendor : \"Vellumtide\"; version : 1;>\n{\n" +
         (ownInput ? "input image4 src;\n" : "") + "output pixel4 dst;\n" + declarations +
         "\nvoid evaluatePixel()\n{\n" + statements + "\n}\n}\n";
}

Session::Session(HostOptions options)
    : host(builtModule(), std::move(options)), comp(host.addComposition("comp")) {
  EXPECT_EQ(host.globalSetup(), PF_Err_NONE);
}

Session::~Session() {
  host.finish();
  EXPECT_EQ(host.books().faultText(), "");
}

std::string Session::file(const std::string& name, const std::string& text) {
  const std::string path = folder_.path(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

Layer& Session::layer(World pixels, const std::string& programPath) {
  Layer& made = comp.addLayer("layer", std::move(pixels));
  if (!programPath.empty()) made.addMarker(programPath);
  return made;
}

Effect& Session::effect(World pixels, const std::string& programPath) {
  Effect& made = host.newInstance(layer(std::move(pixels), programPath));
  EXPECT_EQ(host.updateParamsUi(made), PF_Err_NONE);
  return made;
}

Effect& Session::kernel(World pixels, const std::string& text) {
  return effect(std::move(pixels), file(std::to_string(files_++) + ".pbk", text));
}

Effect& Session::graph(World pixels, const std::string& text) {
  return effect(std::move(pixels), file(std::to_string(files_++) + ".pbg", text));
}

World Session::render(Effect& effect, RenderOptions options) {
  const RenderResult result = host.render(effect, options);
  EXPECT_EQ(result.error, PF_Err_NONE);
  return result.output ? *result.output : World(0, 0, options.format);
}

std::string Session::takeInfo() {
  std::string text;
  for (const InfoText& info : host.infoPanel()) {
    std::string shown;
    for (const auto& line : info.lines) {
      if (line && !line->empty()) shown += (shown.empty() ? "" : " / ") + *line;
    }
    text += (text.empty() ? "" : "\n") + shown;
  }
  host.infoPanel().clear();
  return text;
}

void setControl(Effect& effect, const std::string& label, const std::vector<double>& numbers) {
  const PF_ParamIndex index = shownIndex(effect, label);
  switch (numbers.size()) {
    case 1:
      return effect.setNumber(index, numbers[0]);
    case 2:
      return effect.setPoint(index, numbers[0], numbers[1]);
    default:
      return effect.setColor(index, {numbers.at(0), numbers.at(1), numbers.at(2), numbers.at(3)});
  }
}

void setLayer(Effect& effect, const std::string& label, const Layer* layer) {
  effect.setLayer(shownIndex(effect, label), layer);
}

}  // namespace vellumtide::end_to_end
