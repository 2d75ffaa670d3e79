#include "tests/end_to_end/support/session.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <utility>

namespace vellumtide::end_to_end {
namespace {

std::shared_ptr<Module> builtModule() {
  const char* other = std::getenv("VELLUMTIDE_MODULE");
  static const std::shared_ptr<Module> module = Module::load(other ? other : defaultModulePath());
  return module;
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
  return effect(std::move(pixels), file("sample" + std::to_string(files_++) + ".pbk", text));
}

std::string Session::takeInfo() {
  std::string text;
  for (const InfoText& info : host.infoPanel()) {
    if (!text.empty()) text += "\n";
    for (std::size_t i = 0; i < info.lines.size(); ++i)
      text += (i ? " / " : "") + info.lines[i].value_or("");
  }
  host.infoPanel().clear();
  return text;
}

}  // namespace vellumtide::end_to_end
