#include "headless/script_engine.h"

#include <duktape.h>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "headless/script_stand_ins.h"
#include "headless/text.h"

namespace vellumtide::headless {
namespace {

using nlohmann::json;

constexpr const char* kNetworkSection = "Main Pref Section";
constexpr const char* kNetworkKey = "Pref_SCRIPTING_FILE_NETWORK_SECURITY";
constexpr int kOpenPreferences = 2359;

// The engine keeps characters beyond U+FFFF as two surrogates of three bytes each.
std::string fromEngine(const char* text, size_t length) {
  const std::string_view bytes(text, length);
  if (bytes.find('\xED') == std::string_view::npos) return std::string(bytes);
  std::u16string wide;
  for (size_t at = 0; at < bytes.size();) {
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(bytes[at + i]); };
    const bool surrogate = byte(0) == 0xED && at + 2 < bytes.size() && byte(1) >= 0xA0;
    if (surrogate) {
      wide += static_cast<char16_t>(0xD000 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
      at += 3;
      continue;
    }
    const size_t next = std::min(bytes.find('\xED', at + 1), bytes.size());
    wide += toUtf16(bytes.substr(at, next - at));
    at = next;
  }
  return toUtf8(wide);
}

bool existsOnDisk(const std::string& path, bool file) {
  std::error_code error;
  const std::filesystem::path native(std::u8string(path.begin(), path.end()));
  return file ? std::filesystem::is_regular_file(native, error)
              : std::filesystem::is_directory(native, error);
}

template <typename Answer>
std::optional<Answer> takeAnswer(std::deque<Answer>& queue) {
  if (queue.empty()) return std::nullopt;
  Answer answer = std::move(queue.front());
  queue.pop_front();
  return answer;
}

std::vector<int> boundsOf(const json& request) {
  std::vector<int> bounds;
  for (const json& edge : request)
    bounds.push_back(edge.is_number() ? edge.get<int>() : 0);
  return bounds;
}

std::vector<double> numbersOf(const json& request) {
  std::vector<double> numbers;
  for (const json& number : request)
    numbers.push_back(number.is_number() ? number.get<double>() : 0);
  return numbers;
}

}  // namespace

// What scripts may ask of the engine, by the request's name.
struct ScriptCalls {
  ScriptEngine& engine;

  json serve(const json& request) {
    const std::string call = request.at("call");
    if (call == "alert") return alert(request);
    if (call == "confirm") return confirm(request);
    if (call == "openFile") return choose(request, DialogRecord::Kind::kOpenFile);
    if (call == "selectFolder") return choose(request, DialogRecord::Kind::kSelectFolder);
    if (call == "window") return window(request);
    if (call == "exists") return existsOnDisk(request.at("path"), request.at("file"));
    if (call == "environment") return {{"os", engine.os}, {"userData", engine.userDataFolder}};
    if (call == "system") {
      engine.systemCalls_.push_back(request.at("command"));
      return "";
    }
    if (call == "command") {
      engine.hostCommands_.push_back(request.at("id").get<int>());
      if (engine.hostCommands_.back() == kOpenPreferences && engine.userAllowsNetwork) {
        engine.networkAllowed = true;
      }
      return nullptr;
    }
    if (call == "preference") {
      const bool network =
          request.at("section") == kNetworkSection && request.at("key") == kNetworkKey;
      return network && engine.networkAllowed ? 1 : 0;
    }
    return nullptr;
  }

 private:
  // Keeps the dialog and lets the caller act while it is open; gives its place in the records,
  // which may have grown meanwhile.
  size_t show(DialogRecord dialog) {
    engine.dialogs_.push_back(dialog);
    const size_t place = engine.dialogs_.size() - 1;
    if (engine.onDialog) engine.onDialog(dialog);
    return place;
  }

  static DialogRecord recordOf(const json& request, DialogRecord::Kind kind) {
    DialogRecord dialog;
    dialog.kind = kind;
    dialog.text = request.value("text", "");
    dialog.title = request.value("title", "");
    dialog.filter = request.value("filter", "");
    dialog.errorIcon = request.value("errorIcon", false);
    dialog.noAsDefault = request.value("noAsDefault", false);
    return dialog;
  }

  json alert(const json& request) {
    show(recordOf(request, DialogRecord::Kind::kAlert));
    return nullptr;
  }

  json confirm(const json& request) {
    const DialogRecord dialog = recordOf(request, DialogRecord::Kind::kConfirm);
    const size_t place = show(dialog);
    const bool answer = takeAnswer(engine.confirmAnswers).value_or(!dialog.noAsDefault);
    engine.dialogs_[place].answer = answer ? "true" : "false";
    return answer;
  }

  json choose(const json& request, DialogRecord::Kind kind) {
    const size_t place = show(recordOf(request, kind));
    auto& queue = kind == DialogRecord::Kind::kOpenFile ? engine.fileAnswers : engine.folderAnswers;
    const std::optional<std::string> answer = takeAnswer(queue).value_or(std::nullopt);
    if (!answer) return nullptr;
    engine.dialogs_[place].answer = *answer;
    return *answer;
  }

  json window(const json& request) {
    DialogRecord dialog = recordOf(request, DialogRecord::Kind::kWindow);
    dialog.bounds = boundsOf(request.at("bounds"));
    for (const json& control : request.at("controls")) {
      dialog.controls.push_back(
          {control.at("type"), control.at("text"), boundsOf(control.at("bounds"))});
    }
    for (const json& item : request.at("drawn")) {
      dialog.drawn.push_back({item.at("kind"), item.at("text"), numbersOf(item.at("place")),
                              item.at("font"), numbersOf(item.at("color"))});
    }
    const size_t place = show(std::move(dialog));
    const std::vector<std::string> presses =
        takeAnswer(engine.windowAnswers).value_or(std::vector<std::string>{});
    std::string& answer = engine.dialogs_[place].answer;
    for (const std::string& press : presses)
      answer += (answer.empty() ? "" : ", ") + press;
    return presses;
  }
};

namespace {

// hostCall(request text) -> answer text. No exception may pass through the engine's C frames.
duk_ret_t hostCall(duk_context* context) {
  duk_memory_functions functions;
  duk_get_memory_functions(context, &functions);
  auto& engine = *static_cast<ScriptEngine*>(functions.udata);
  bool failed = false;
  {
    std::string answer;
    try {
      size_t length = 0;
      const char* text = duk_require_lstring(context, 0, &length);
      answer = ScriptCalls{engine}.serve(json::parse(fromEngine(text, length))).dump();
    } catch (const std::exception& error) {
      answer = error.what();
      failed = true;
    }
    duk_push_lstring(context, answer.data(), answer.size());
  }
  if (failed) return duk_error(context, DUK_ERR_ERROR, "%s", duk_get_string(context, -1));
  return 1;
}

std::string topText(duk_context* context) {
  size_t length = 0;
  const char* text = duk_safe_to_lstring(context, -1, &length);
  return fromEngine(text, length);
}

}  // namespace

ScriptRun ScriptEngine::run(const std::string& script) {
  ScriptRun run{script, "", ""};
  const std::unique_ptr<duk_context, decltype(&duk_destroy_heap)> heap(
      duk_create_heap(nullptr, nullptr, nullptr, this, nullptr), &duk_destroy_heap);
  duk_context* context = heap.get();
  if (!context) {
    run.error = "out of memory";
  } else {
    duk_eval_string(context, kScriptStandIns);
    duk_push_global_object(context);
    duk_push_c_function(context, hostCall, 1);
    bool failed = duk_pcall(context, 2) != DUK_EXEC_SUCCESS;
    if (!failed) {
      duk_pop(context);
      failed = duk_peval_lstring(context, script.data(), script.size()) != 0;
    }
    (failed ? run.error : run.result) = topText(context);
  }
  runs_.push_back(run);
  return run;
}

void ScriptEngine::clearRecords() {
  runs_.clear();
  dialogs_.clear();
  systemCalls_.clear();
  hostCommands_.clear();
}

}  // namespace vellumtide::headless
