// Handle memory as the utility callbacks, the basic suite and the memory suite give it out.
#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"

namespace vellumtide::headless {

template <>
std::string tableName<PF_UtilCallbacks>() {
  return "the utility callbacks";
}

namespace {

PF_Handle newHandle(uint64_t size) {
  PF_Handle handle = nullptr;
  serve(CallKind::kAllocation, "host_new_handle", [&](CallFrame& frame) {
    handle = frame.host().handles().allocate(BlockFamily::kHandle, size, "");
    return PF_Err{PF_Err_NONE};
  });
  return handle;
}

void* lockHandle(PF_Handle handle) {
  void* data = nullptr;
  serve(CallKind::kAllocation, "host_lock_handle", [&](CallFrame& frame) {
    data = frame.host().handles().lock(BlockFamily::kHandle, handle, "host_lock_handle");
    return PF_Err{PF_Err_NONE};
  });
  return data;
}

void unlockHandle(PF_Handle handle) {
  serveGiveBack(CallKind::kCallback, "host_unlock_handle", [&](CallFrame& frame) {
    frame.host().handles().unlock(BlockFamily::kHandle, handle, "host_unlock_handle");
    return PF_Err{PF_Err_NONE};
  });
}

void disposeHandle(PF_Handle handle) {
  serveGiveBack(CallKind::kCallback, "host_dispose_handle", [&](CallFrame& frame) {
    frame.host().handles().release(BlockFamily::kHandle, handle, "host_dispose_handle");
    return PF_Err{PF_Err_NONE};
  });
}

uint64_t handleSize(PF_Handle handle) {
  uint64_t size = 0;
  serve(CallKind::kCallback, "host_get_handle_size", [&](CallFrame& frame) {
    size = frame.host().handles().size(BlockFamily::kHandle, handle, "host_get_handle_size");
    return PF_Err{PF_Err_NONE};
  });
  return size;
}

PF_Err resizeHandle(uint64_t size, PF_Handle* handle) {
  return serve(CallKind::kAllocation, "host_resize_handle", [&](CallFrame& frame) {
    constexpr const char* kName = "host_resize_handle";
    if (!handle) return badArgument(frame, kName, "a null handle");
    const bool done = frame.host().handles().resize(BlockFamily::kHandle, *handle, size, kName);
    return PF_Err{done ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY};
  });
}

PF_Err platformData(PF_ProgPtr, PF_PlatDataID which, void*) {
  return serve(CallKind::kCallback, "get_platform_data", [&](CallFrame& frame) {
    return badArgument(frame, "get_platform_data",
                       "data " + std::to_string(which) + " is not provided");
  });
}

A_Err newMemHandle(AEGP_PluginID id, const A_char* what, AEGP_MemSize size, AEGP_MemFlag flags,
                   AEGP_MemHandle* handle) {
  return serve(CallKind::kAllocation, "AEGP_NewMemHandle", [&](CallFrame& frame) {
    checkPluginId(frame, id, "AEGP_NewMemHandle");
    if (!handle) return badArgument(frame, "AEGP_NewMemHandle", "no place for the handle");
    const bool clear = (flags & AEGP_MemFlag_CLEAR) != 0;
    *handle = frame.host().handles().allocate(BlockFamily::kMemHandle, size, what, clear);
    return PF_Err{*handle ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY};
  });
}

A_Err freeMemHandle(AEGP_MemHandle handle) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_FreeMemHandle", [&](CallFrame& frame) {
    const bool done =
        frame.host().handles().release(BlockFamily::kMemHandle, handle, "AEGP_FreeMemHandle");
    return PF_Err{done ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
  });
}

A_Err lockMemHandle(AEGP_MemHandle handle, void** data) {
  return serve(CallKind::kAllocation, "AEGP_LockMemHandle", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_LockMemHandle";
    if (!data) return badArgument(frame, kName, "no place for the pointer");
    *data = frame.host().handles().lock(BlockFamily::kMemHandle, handle, kName);
    return PF_Err{*data ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
  });
}

A_Err unlockMemHandle(AEGP_MemHandle handle) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_UnlockMemHandle", [&](CallFrame& frame) {
    const bool done =
        frame.host().handles().unlock(BlockFamily::kMemHandle, handle, "AEGP_UnlockMemHandle");
    return PF_Err{done ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
  });
}

A_Err memHandleSize(AEGP_MemHandle handle, AEGP_MemSize* size) {
  return serve(CallKind::kSuiteCall, "AEGP_GetMemHandleSize", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetMemHandleSize";
    if (!size) return badArgument(frame, kName, "no place for the size");
    HandleStore& handles = frame.host().handles();
    *size = static_cast<AEGP_MemSize>(handles.size(BlockFamily::kMemHandle, handle, kName));
    return PF_Err{handles.isLive(handle) ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
  });
}

A_Err resizeMemHandle(const A_char*, AEGP_MemSize size, AEGP_MemHandle handle) {
  return serve(CallKind::kAllocation, "AEGP_ResizeMemHandle", [&](CallFrame& frame) {
    const bool done = frame.host().handles().resize(BlockFamily::kMemHandle, handle, size,
                                                    "AEGP_ResizeMemHandle");
    return PF_Err{done ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY};
  });
}

}  // namespace

PF_UtilCallbacks& utilCallbacks() {
  static PF_UtilCallbacks table = [] {
    auto made = trapTable<PF_UtilCallbacks>();
    made.host_new_handle = newHandle;
    made.host_lock_handle = lockHandle;
    made.host_unlock_handle = unlockHandle;
    made.host_dispose_handle = disposeHandle;
    made.host_get_handle_size = handleSize;
    made.host_resize_handle = resizeHandle;
    made.get_platform_data = platformData;
    return made;
  }();
  return table;
}

const AEGP_MemorySuite1& memorySuite() {
  static const AEGP_MemorySuite1 table = [] {
    auto made = trapTable<AEGP_MemorySuite1>();
    made.AEGP_NewMemHandle = newMemHandle;
    made.AEGP_FreeMemHandle = freeMemHandle;
    made.AEGP_LockMemHandle = lockMemHandle;
    made.AEGP_UnlockMemHandle = unlockMemHandle;
    made.AEGP_GetMemHandleSize = memHandleSize;
    made.AEGP_ResizeMemHandle = resizeMemHandle;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
