// Dialogs as short ExtendScript programs that the host runs. Every call blocks until the user has
// answered. The first argument is the in-data of the current command.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "aeapi/effect_data.h"

namespace vellumtide {

// Run a UTF-8 script and return the host's error. `result` and `error` receive the script's answer
// and its error text; they stay as they were when the host gives none. Scripts end at their first
// zero byte.
PF_Err executeScript(PF_InData* in_data, const std::string& script);
PF_Err executeScript(PF_InData* in_data, const std::string& script, std::string& result);
PF_Err executeScript(PF_InData* in_data, const std::string& script, std::string& result,
                     std::string& error);

// The text as it is written inside a script's quotes. BEL is dropped; other characters without an
// escape of their own, zero bytes among them, stay as they are.
std::string escapeScriptString(std::string_view text);

// The text as a script's string, quotes included, of which a dialog is certain to show something:
// it ends at its first zero byte, as the whole script would, bytes that are not UTF-8 are dropped
// and the line separators U+2028 and U+2029 become line feeds, since scripts with them do not run.
std::string scriptLiteral(std::string_view text);

// The dialogs below put every text into their script as such a literal. A script that fails reads
// as "no", an empty path or 0.

void alert(PF_InData* in_data, std::string_view message, std::string_view title,
           bool errorIcon = false);

// Title before message. True for "yes".
bool confirm(PF_InData* in_data, std::string_view title, std::string_view message,
             bool noAsDefault);

// `filter` is put into the script unescaped and must hold no quote. False when the user cancels;
// the path is empty then.
bool openFileDialog(PF_InData* in_data, std::string_view prompt, std::string_view filter,
                    std::string& path);
// False when the user cancels.
bool selectFolderDialog(PF_InData* in_data, std::string_view prompt, std::string& path);

// The same into a buffer of `bufferSize` + 1 characters: at most `bufferSize` are copied, a zero
// byte behind them; the number copied is returned, 0 when the user cancels.
std::size_t openFileDialog(PF_InData* in_data, std::string_view prompt, std::string_view filter,
                           std::size_t bufferSize, char* buffer);
std::size_t selectFolderDialog(PF_InData* in_data, std::string_view prompt, std::size_t bufferSize,
                               char* buffer);

}  // namespace vellumtide
