// The host's scripting engine: runs scripts for real against stand-ins for the host's objects.
// Every dialog is recorded and answered from queues that the caller fills beforehand.
#pragma once

#include <deque>
#include <functional>
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

// One thing that a window's drawing handlers drew.
struct DrawnItem {
  std::string kind;           // "text" or "image"
  std::string text;           // the text, or the image's path
  std::vector<double> place;  // x, y, and of an image width and height
  std::string font;           // "Arial Regular 14"
  std::vector<double> color;  // red, green, blue, alpha
};

struct DialogRecord {
  enum class Kind { kAlert, kConfirm, kOpenFile, kSelectFolder, kWindow };
  Kind kind = Kind::kAlert;
  std::string text;    // message or prompt
  std::string title;   // of an alert, a confirm or a window
  std::string filter;  // of an open-file dialog
  bool errorIcon = false;
  bool noAsDefault = false;
  std::vector<int> bounds;              // of a window, as its controls'
  std::vector<WindowControl> controls;  // of a window, those of groups behind their group
  std::vector<DrawnItem> drawn;         // of a window
  std::string answer;  // "true" or "false", a path, the pressed buttons; "" for cancelled
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
  // The texts of the buttons pressed in one window, in order; "image" clicks its picture.
  std::deque<std::vector<std::string>> windowAnswers;

  // Called while a dialog is open, before it is answered; may call the module again.
  std::function<void(const DialogRecord&)> onDialog;

  std::string userDataFolder;      // Folder.userData.fsName
  std::string os = "Linux";        // $.os; with "Windows" in it paths get back-slashes
  bool networkAllowed = true;      // the preference that scripts may reach the network
  bool userAllowsNetwork = false;  // switched on when a script opens the preferences

  // Runs one script in a fresh engine; never throws. Keeps the run and the dialogs it showed.
  ScriptRun run(const std::string& script);

  const std::vector<ScriptRun>& runs() const { return runs_; }
  const std::vector<DialogRecord>& dialogs() const { return dialogs_; }
  // Commands that scripts gave to system.callSystem and app.executeCommand, in order.
  const std::vector<std::string>& systemCalls() const { return systemCalls_; }
  const std::vector<int>& hostCommands() const { return hostCommands_; }
  void clearRecords();

 private:
  friend struct ScriptCalls;

  std::vector<ScriptRun> runs_;
  std::vector<DialogRecord> dialogs_;
  std::vector<std::string> systemCalls_;
  std::vector<int> hostCommands_;
};

}  // namespace vellumtide::headless
