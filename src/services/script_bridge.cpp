#include "services/script_bridge.h"

#include <algorithm>
#include <utility>

#include "core/command_scope.h"
#include "core/utf.h"
#include "services/aeo/memory.h"
#include "services/basic_suite.h"

namespace vellumtide {
namespace {

using UtilitySuite = ScopedSuite<AEGP_UtilitySuite5>;

// Scripts are UTF-8, not in the platform's encoding.
constexpr A_Boolean kPlatformEncoding = false;

void copyWhenGiven(const AEO::Memory& memory, std::string& text) {
  if (auto given = memory.text()) text = std::move(*given);
}

const char* truth(bool value) {
  return value ? "true" : "false";
}

std::string answerOf(PF_InData* in_data, const std::string& script) {
  std::string answer;
  executeScript(in_data, script, answer);
  return answer;
}

std::string openFileScript(std::string_view prompt, std::string_view filter) {
  std::string script =
      "function main(){var file = File.openDialog(" + scriptLiteral(prompt) + ",\"";
  script += filter.substr(0, filter.find('\0'));
  return script + "\");if(file != null){return file.fsName;}else{return \"\";}}main();";
}

std::string selectFolderScript(std::string_view prompt) {
  return "function main(){var folder = Folder.selectDialog(" + scriptLiteral(prompt) +
         "); if(folder != null){return folder.fsName;}else{return \"\";}}main();";
}

std::size_t copyAnswer(const std::string& answer, std::size_t bufferSize, char* buffer) {
  const std::size_t count = answer == "null" ? 0 : std::min(answer.size(), bufferSize);
  std::copy_n(answer.data(), count, buffer);
  buffer[count] = '\0';
  return count;
}

}  // namespace

PF_Err executeScript(PF_InData* in_data, const std::string& script) {
  const UtilitySuite utility(basicSuiteOf(in_data));
  if (!utility) return utility.error();
  return utility->AEGP_ExecuteScript(currentPluginId, script.c_str(), kPlatformEncoding, nullptr,
                                     nullptr);
}

PF_Err executeScript(PF_InData* in_data, const std::string& script, std::string& result) {
  AEO::Memory answer(basicSuiteOf(in_data));
  const UtilitySuite utility(basicSuiteOf(in_data));
  if (answer.error()) return answer.error();
  if (!utility) return utility.error();
  const A_Err code = utility->AEGP_ExecuteScript(currentPluginId, script.c_str(), kPlatformEncoding,
                                                 answer.receive(), nullptr);
  copyWhenGiven(answer, result);
  return code;
}

PF_Err executeScript(PF_InData* in_data, const std::string& script, std::string& result,
                     std::string& error) {
  AEO::Memory answer(basicSuiteOf(in_data));
  AEO::Memory complaint(basicSuiteOf(in_data));
  const UtilitySuite utility(basicSuiteOf(in_data));
  if (answer.error()) return answer.error();
  if (complaint.error()) return complaint.error();
  if (!utility) return utility.error();
  const A_Err code = utility->AEGP_ExecuteScript(currentPluginId, script.c_str(), kPlatformEncoding,
                                                 answer.receive(), complaint.receive());
  copyWhenGiven(answer, result);
  copyWhenGiven(complaint, error);
  return code;
}

// One pass does what replacing the characters one after the other, the back-slash first, would do:
// no replacement holds a character that is replaced after it.
std::string escapeScriptString(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '\a':
        break;
      case '\b':
        escaped += "\\b";
        break;
      case '\f':
        escaped += "\\f";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\t':
        escaped += "\\t";
        break;
      case '\v':
        escaped += "\\v";
        break;
      case '\\':
      case '?':
      case '"':
      case '\'':
        escaped += '\\';
        [[fallthrough]];
      default:
        escaped += character;
    }
  }
  return escaped;
}

std::string scriptLiteral(std::string_view text) {
  std::u16string units = toUtf16(text).units;
  units.resize(std::min(units.size(), units.find(u'\0')));
  std::replace(units.begin(), units.end(), u'\u2028', u'\n');
  std::replace(units.begin(), units.end(), u'\u2029', u'\n');
  return '"' + escapeScriptString(toUtf8(units)) + '"';
}

void alert(PF_InData* in_data, std::string_view message, std::string_view title, bool errorIcon) {
  executeScript(in_data, "alert(" + scriptLiteral(message) + ',' + scriptLiteral(title) + ',' +
                             truth(errorIcon) + ");");
}

bool confirm(PF_InData* in_data, std::string_view title, std::string_view message,
             bool noAsDefault) {
  return answerOf(in_data, "confirm(" + scriptLiteral(message) + ',' + truth(noAsDefault) + ',' +
                               scriptLiteral(title) + ");") == "true";
}

bool openFileDialog(PF_InData* in_data, std::string_view prompt, std::string_view filter,
                    std::string& path) {
  path = answerOf(in_data, openFileScript(prompt, filter));
  return !path.empty();
}

bool selectFolderDialog(PF_InData* in_data, std::string_view prompt, std::string& path) {
  path = answerOf(in_data, selectFolderScript(prompt));
  return path != "null" && !path.empty();
}

std::size_t openFileDialog(PF_InData* in_data, std::string_view prompt, std::string_view filter,
                           std::size_t bufferSize, char* buffer) {
  return copyAnswer(answerOf(in_data, openFileScript(prompt, filter)), bufferSize, buffer);
}

std::size_t selectFolderDialog(PF_InData* in_data, std::string_view prompt, std::size_t bufferSize,
                               char* buffer) {
  return copyAnswer(answerOf(in_data, selectFolderScript(prompt)), bufferSize, buffer);
}

}  // namespace vellumtide
