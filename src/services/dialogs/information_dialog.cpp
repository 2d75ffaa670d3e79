#include "services/dialogs/information_dialog.h"

#include "aeapi/constants.h"
#include "services/jst/jst.h"
#include "services/script_bridge.h"

namespace vellumtide {
namespace {

constexpr std::size_t kLongestInformation = 255;

// Cuts at 255 bytes, or just before a UTF-8 character that would be split there.
std::string_view cutInformation(std::string_view text) {
  if (text.size() <= kLongestInformation) return text;
  std::size_t end = kLongestInformation;
  for (int i = 0; i < 3 && (text[end] & 0xC0) == 0x80; ++i)
    --end;
  return text.substr(0, end);
}

}  // namespace

PF_Err showInformation(PF_InData* in_data, InformationHost& instance, std::string& errorLog,
                       const DriverStrings& driver) {
  if (const std::optional<std::string> text = instance.information()) {
    alert(in_data, cutInformation(*text), "Pixel Bender Information");
    return exportErrorLog(in_data, errorLog, driver);
  }
  // A file that was found before and one that never was are asked for by the same name.
  const std::string path = instance.path();
  const std::string lostName(_JST::nameOf(path));
  const std::string prompt =
      lostName.empty() ? "Select Pixel Bender file" : "Where is " + lostName + "?";
  std::string chosen;
  if (!openFileDialog(in_data, prompt, "pbk or pbg:*.pbk;*.pbg;", chosen)) return PF_Err_NONE;
  if (instance.load(chosen)) instance.adopt(chosen, lostName);
  return PF_Err_NONE;
}

}  // namespace vellumtide
