#include "gl/window_device.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "gl/gl_loader.h"
#include "gl/gl_report.h"

namespace vellumtide {
namespace {

struct OwnedDevice : WindowDevice {
  OwnedDevice() { createWindowDevice(window, deviceContext, renderContext); }
  ~OwnedDevice() { destroyWindowDevice(window, deviceContext, renderContext); }
};

void expectCurrent(const SavedCurrentContext& expected) {
  const SavedCurrentContext now = saveCurrentContext();
  EXPECT_EQ(now.renderContext, expected.renderContext);
  EXPECT_EQ(now.deviceContext, expected.deviceContext);
  EXPECT_EQ(now.readSurface, expected.readSurface);
  EXPECT_EQ(now.display, expected.display);
  EXPECT_EQ(now.boundApi, expected.boundApi);
}

std::string reported;
void collect(const char* text) {
  reported += text;
}

TEST(WindowDevice, NamesAreCutAt63Characters) {
  const std::string prefix = "AEGL_WindowDevice_";
  const std::string longText(100, 'x');
  struct Case {
    std::string text, suffix, className;
  };
  for (const Case& c :
       {Case{"", "", prefix}, Case{"Vellumtide", "Vellumtide", prefix + "Vellumtide"},
        Case{longText, longText.substr(0, 63), prefix + longText.substr(0, 45)}}) {
    setDeviceNameSuffix(c.text.c_str());
    const OwnedDevice device;
    EXPECT_EQ(deviceNameSuffix(), c.suffix);
    EXPECT_EQ(deviceClassName(), c.className);
    EXPECT_TRUE(device.renderContext);
  }
  setDeviceNameSuffix("Vellumtide");
}

TEST(WindowDevice, ScopesGiveBackWhatWasCurrent) {
  const OwnedDevice host, device;
  ASSERT_TRUE(host.renderContext && device.renderContext);
  const SavedCurrentContext nothing = saveCurrentContext();
  EXPECT_FALSE(nothing.renderContext);
  {
    const ScopedCurrentContext scope(device);
    EXPECT_TRUE(scope.isCurrent());
    EXPECT_EQ(saveCurrentContext().renderContext, device.renderContext);
  }
  expectCurrent(nothing);

  ASSERT_TRUE(makeDeviceCurrent(host));
  const SavedCurrentContext hosts = saveCurrentContext();
  try {
    const ScopedCurrentContext outer(device);
    { const ScopedCurrentContext inner(host); }
    EXPECT_EQ(saveCurrentContext().renderContext, device.renderContext);
    throw std::runtime_error("");
  } catch (const std::runtime_error&) {
  }
  expectCurrent(hosts);
  {
    const ScopedCurrentContext none{WindowDevice{}};
    EXPECT_FALSE(none.isCurrent());
    EXPECT_FALSE(saveCurrentContext().renderContext);
  }
  expectCurrent(hosts);

  const OwnedDevice another;
  EXPECT_FALSE(saveCurrentContext().renderContext) << "creation leaves nothing current";
  restoreCurrentContext(nothing);
}

TEST(GLReport, TextsOfDriverAndErrors) {
  const OwnedDevice device;
  const ScopedCurrentContext scope(device);
  ASSERT_EQ(initialiseGL(), nullptr);
  setReportSink(collect);

  reported.clear();
  reportGLVersion();
  const auto line = [](const char* label, GLenum name) {
    return label + std::string(reinterpret_cast<const char*>(glGetString(name))) + "\n";
  };
  EXPECT_EQ(reported, "OpenGL Version Infomation\n" + line("Vendor   : ", GL_VENDOR) +
                          line("Renderer : ", GL_RENDERER) + line("Version  : ", GL_VERSION) +
                          line("Extentions : ", GL_EXTENSIONS).substr(0, 1023));

  reported.clear();
  EXPECT_EQ(checkGLError("draw %s %d\n", "node", 7), 0u);
  EXPECT_EQ(reported, "draw node 7\nNo Error.\n");

  reported.clear();
  glBindTexture(GL_TRIANGLES, 1);
  EXPECT_EQ(checkGLError(), unsigned{GL_INVALID_ENUM});
  EXPECT_EQ(reported, "OpenGL Error: invalid enumerant\n");
  setReportSink(nullptr);
}

}  // namespace
}  // namespace vellumtide
