#include "services/dialogs/error_log.h"

#include "aeapi/constants.h"
#include "services/dialogs/product.h"
#include "services/info_panel.h"
#include "services/jst/jst.h"
#include "services/script_bridge.h"

namespace vellumtide {
namespace {

std::string exportText(const std::string& errorLog, const DriverStrings& driver) {
  const auto orDash = [](const char* text) { return std::string(text ? text : "-"); };
  return "Win64bit\nvendor : " + orDash(driver.vendor) + "\nversion : " + orDash(driver.version) +
         "\nglsl : " + orDash(driver.glslVersion) + "\n" + errorLog;
}

bool writeWhole(const std::string& path, const std::string& text) {
  HostFile file(path);
  if (!file.open('w')) return false;
  const bool written = file.write(text.data(), text.size());
  return file.close() && written;
}

}  // namespace

PF_Err exportErrorLog(PF_InData* in_data, std::string& errorLog, const DriverStrings& driver) {
  const auto sayNoLog = [&] {
    drawInfoText3(in_data, driver.version, driver.glslVersion, "No error log");
    return PF_Err_NONE;
  };
  if (errorLog.empty() ||
      !confirm(in_data, kProductTitle, "Vellumtide has error log.\nDo you export this?", true)) {
    return sayNoLog();
  }
  alert(in_data, "Please select where export log", "VTD exports log");
  std::string folder;
  if (!selectFolderDialog(in_data, "Select where export log", folder)) return PF_Err_NONE;
  // Another command may have exported it while the folder was chosen: it is in a file already.
  if (errorLog.empty()) return sayNoLog();
  if (!writeWhole(folder + "/Vellumtide_error_log.txt", exportText(errorLog, driver))) {
    alert(in_data, "Log file has failed to export.\nTry other folder.",
          "Log file has failed to export");
    return PF_Err_NONE;
  }
  // Messages that arrive while the user reads on are for the next export.
  errorLog.clear();
  alert(in_data,
        std::string("Log file has been exported.\nPlease send it, together with the Pixel Bender "
                    "file, to the author:\n") +
            kAuthorAddress,
        "Log file has exported ");
  return PF_Err_NONE;
}

}  // namespace vellumtide
