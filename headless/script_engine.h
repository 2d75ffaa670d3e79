// The host's scripting engine: runs scripts for real against stand-ins for the host's objects.
// Every dialog is recorded and answered from queues that the caller fills beforehand.
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellumtide::headless {

// One control of a window that a script made.
struct WindowControl {
  std::string type;  // "button", "group", "image", "statictext", ...
  std::string text;
  std::vector<int> bounds;  // left, top, right, bottom; empty when the script gave none
};

struct DialogRecord {
  enum class Kind { kAlert, kConfirm, kOpenFile, kSelectFolder, kWindow };
  Kind kind = Kind::kAlert;
  std::string text;    // message or prompt
  std::string title;   // of an alert, a confirm or a window
  std::string filter;  // of an open-file dialog
  bool errorIcon = false;
  bool noAsDefault = false;
  std::vector<WindowControl> controls;  // of a window
  std::vector<std::string> drawn;       // texts that a window's drawing handlers drew
  std::vector<int> bounds;              // of a window
  std::string answer;                   // "true", a path, a pressed button; "" for cancelled
};

struct ScriptRun {
  std::string script;
  std::string result;  // the last value as text, "" when there was an error
  std::string error;   // the script error's text, "" when there was none
};

class ScriptEngine {
 public:
  // Answers, taken in order; with an empty queue a confirm answers with its default button, a
  // chooser is cancelled and a window is closed.
  std::deque<bool> confirmAnswers;
  std::deque<std::optional<std::string>> fileAnswers;
  std::deque<std::optional<std::string>> folderAnswers;
  std::deque<std::vector<std::string>> windowAnswers;  // texts of the buttons pressed, in order;
                                                       // "image" clicks the drawn picture

  std::string userDataFolder;  // Folder.userData.fsName
  std::string os = "Linux";    // $.os
  bool networkAllowed = true;  // the preference that scripts may write files and reach the network

  // Runs one script in a fresh engine; never throws. Keeps the run and the dialogs it showed.
  ScriptRun run(const std::string& script);

  const std::vector<ScriptRun>& runs() const { return runs_; }
  const std::vector<DialogRecord>& dialogs() const { return dialogs_; }
  // Commands that scripts gave to system.callSystem and app.executeCommand, in order.
  const std::vector<std::string>& systemCalls() const { return systemCalls_; }
  const std::vector<int>& hostCommands() const { return hostCommands_; }
  void clearRecords();

 private:
  std::vector<ScriptRun> runs_;
  std::vector<DialogRecord> dialogs_;
  std::vector<std::string> systemCalls_;
  std::vector<int> hostCommands_;
};

}  // namespace vellumtide::headless
