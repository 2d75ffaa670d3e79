// Suites of the application: registration, scripts, persistent data.
#include <algorithm>
#include <cstring>

#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"

namespace vellumtide::headless {

void checkPluginId(CallFrame& frame, AEGP_PluginID id, const char* caller) {
  if (id == 0 || frame.state().pluginIds.count(id) != 0) return;
  badArgument(frame, caller, "the plug-in id " + std::to_string(id) + " was never handed out");
}

namespace {

constexpr A_Err kScriptFailed = 1;

A_Err reportInfo(AEGP_PluginID id, const A_char* text) {
  return serve(CallKind::kSuiteCall, "AEGP_ReportInfo", [&](CallFrame& frame) {
    checkPluginId(frame, id, "AEGP_ReportInfo");
    if (!text) return badArgument(frame, "AEGP_ReportInfo", "a null text");
    frame.host().infoPanel().push_back({"AEGP_ReportInfo", {std::string(text)}});
    return PF_Err{PF_Err_NONE};
  });
}

A_Err registerWithAegp(AEGP_GlobalRefcon, const A_char* name, AEGP_PluginID* id) {
  return serve(CallKind::kSuiteCall, "AEGP_RegisterWithAEGP", [&](CallFrame& frame) {
    if (!name || !id) return badArgument(frame, "AEGP_RegisterWithAEGP", "a null name or place");
    frame.host().registeredName = name;
    *id = 4200 + static_cast<AEGP_PluginID>(frame.state().pluginIds.size());
    frame.state().pluginIds.insert(*id);
    return PF_Err{PF_Err_NONE};
  });
}

A_Err isScriptingAvailable(A_Boolean* available) {
  return serve(CallKind::kSuiteCall, "AEGP_IsScriptingAvailable", [&](CallFrame& frame) {
    if (!available) return badArgument(frame, "AEGP_IsScriptingAvailable", "no place");
    *available = 1;
    return PF_Err{PF_Err_NONE};
  });
}

// A memory handle holding the text and its terminator.
AEGP_MemHandle textHandle(CallFrame& frame, const std::string& text, const char* what) {
  HandleStore& handles = frame.host().handles();
  AEGP_MemHandle handle = handles.allocate(BlockFamily::kMemHandle, text.size() + 1, what);
  if (handle) std::memcpy(*handle, text.c_str(), text.size() + 1);
  return handle;
}

A_Err executeScript(AEGP_PluginID id, const A_char* script, A_Boolean, AEGP_MemHandle* result,
                    AEGP_MemHandle* error) {
  return serve(CallKind::kSuiteCall, "AEGP_ExecuteScript", [&](CallFrame& frame) {
    checkPluginId(frame, id, "AEGP_ExecuteScript");
    if (!script) return badArgument(frame, "AEGP_ExecuteScript", "a null script");
    if (result) *result = nullptr;
    if (error) *error = nullptr;
    const ScriptRun run = frame.host().scripts().run(script);
    if (!run.error.empty()) {
      if (error) *error = textHandle(frame, run.error, "script error");
      return PF_Err{kScriptFailed};
    }
    if (result) *result = textHandle(frame, run.result, "script result");
    return PF_Err{PF_Err_NONE};
  });
}

bool isBlob(CallFrame& frame, AEGP_PersistentBlobH blob, const char* caller) {
  if (blob == reinterpret_cast<AEGP_PersistentBlobH>(&frame.host().preferences())) return true;
  badArgument(frame, caller, "an unknown blob");
  return false;
}

A_Err getApplicationBlob(AEGP_PersistentBlobH* blob) {
  return serve(CallKind::kSuiteCall, "AEGP_GetApplicationBlob", [&](CallFrame& frame) {
    if (!blob) return badArgument(frame, "AEGP_GetApplicationBlob", "no place for the blob");
    *blob = reinterpret_cast<AEGP_PersistentBlobH>(&frame.host().preferences());
    return PF_Err{PF_Err_NONE};
  });
}

A_Err doesKeyExist(AEGP_PersistentBlobH blob, const A_char* section, const A_char* key,
                   A_Boolean* exists) {
  return serve(CallKind::kSuiteCall, "AEGP_DoesKeyExist", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_DoesKeyExist";
    if (!isBlob(frame, blob, kName)) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (!section || !key || !exists) return badArgument(frame, kName, "a null argument");
    *exists = frame.host().preferences().get(section, key).has_value();
    return PF_Err{PF_Err_NONE};
  });
}

// Fills the buffer with as much as fits, terminator included, and answers with the whole size.
A_Err getString(AEGP_PersistentBlobH blob, const A_char* section, const A_char* key,
                const A_char* dephault, A_u_long size, A_char* buffer, A_u_long* actualSize) {
  return serve(CallKind::kSuiteCall, "AEGP_GetString", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetString";
    if (!isBlob(frame, blob, kName)) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (!section || !key || !buffer) return badArgument(frame, kName, "a null argument");
    const std::string text =
        frame.host().preferences().get(section, key).value_or(dephault ? dephault : "");
    const size_t whole = text.size() + 1;
    std::memcpy(buffer, text.c_str(), std::min<size_t>(size, whole));
    if (actualSize) *actualSize = static_cast<A_u_long>(whole);
    return PF_Err{PF_Err_NONE};
  });
}

A_Err setString(AEGP_PersistentBlobH blob, const A_char* section, const A_char* key,
                const A_char* text) {
  return serve(CallKind::kSuiteCall, "AEGP_SetString", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_SetString";
    if (!isBlob(frame, blob, kName)) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (!section || !key || !text) return badArgument(frame, kName, "a null argument");
    frame.host().preferences().set(section, key, text);
    return PF_Err{PF_Err_NONE};
  });
}

}  // namespace

const AEGP_UtilitySuite5& utilitySuite() {
  static const AEGP_UtilitySuite5 table = [] {
    auto made = trapTable<AEGP_UtilitySuite5>();
    made.AEGP_ReportInfo = reportInfo;
    made.AEGP_RegisterWithAEGP = registerWithAegp;
    made.AEGP_IsScriptingAvailable = isScriptingAvailable;
    made.AEGP_ExecuteScript = executeScript;
    return made;
  }();
  return table;
}

const AEGP_PersistentDataSuite3& persistentDataSuite() {
  static const AEGP_PersistentDataSuite3 table = [] {
    auto made = trapTable<AEGP_PersistentDataSuite3>();
    made.AEGP_GetApplicationBlob = getApplicationBlob;
    made.AEGP_DoesKeyExist = doesKeyExist;
    made.AEGP_GetString = getString;
    made.AEGP_SetString = setString;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
