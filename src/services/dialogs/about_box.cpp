#include "services/dialogs/about_box.h"

#include "aeapi/constants.h"
#include "services/dialogs/about_script.h"
#include "services/dialogs/product.h"
#include "services/dialogs/splash.h"
#include "services/info_panel.h"
#include "services/preferences.h"
#include "services/script_bridge.h"

namespace vellumtide {
namespace {

constexpr const char* kSplashName = "splash.png";

std::string labelled(const char* label, const char* text) {
  return std::string(label) + (text ? text : "");
}

void drawDriverLines(PF_InData* in_data, const DriverStrings& driver) {
  drawInfoText3(in_data, labelled("OpenGL vendor  : ", driver.vendor).c_str(),
                labelled("OpenGL version : ", driver.version).c_str(),
                labelled("GLSL   version : ", driver.glslVersion).c_str());
}

std::string aboutScript(const std::string& workingFolder) {
  const std::string title = kProductTitle;
  // The folder is the only text from outside; a Windows path is full of back-slashes.
  const std::string picture = workingFolder + "/" + title + "/" + kSplashName;
  return "g_title = \"" + title + "\";\n" + "g_version_info = \"" + title + " " + kProductVersion +
         " (c) " + kProductYear + " " + kProductMaker + "\";\n" +
         "g_img_path =" + scriptLiteral(picture) + ";\n" + "g_URL = \"" + kProductPage + "\";\n" +
         kAboutDialogScript;
}

}  // namespace

PF_Err showAbout(PF_InData* in_data, bool& splashWritten, std::string& errorLog,
                 const DriverStrings& driver) {
  if (!splashWritten) {
    splashWritten = writeWorkingFile(in_data, kProductTitle, kSplashName, splashImage,
                                     splashImageSize) == PF_Err_NONE;
  }
  drawDriverLines(in_data, driver);
  std::string workingFolder;
  getWorkingFolder(in_data, workingFolder);
  executeScript(in_data, aboutScript(workingFolder));
  removeWorkingFile(in_data, kProductTitle, kSplashName);
  return exportErrorLog(in_data, errorLog, driver);
}

}  // namespace vellumtide
