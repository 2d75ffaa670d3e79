// The basic suite: acquiring and releasing suites by name and version, plain blocks.
#include <cstring>
#include <string>

#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"

namespace vellumtide::headless {

template <>
std::string tableName<SPBasicSuite>() {
  return "the basic suite";
}

namespace {

constexpr int32_t kSuiteNotFound = 0x53214664;  // "S!Fd"

struct Provided {
  const char* name;
  int32_t version;
  const void* table;
};

template <typename Suite>
Provided provided(const Suite& table) {
  return {Suite::kName, Suite::kVersion, &table};
}

const std::vector<Provided>& providedSuites() {
  static const std::vector<Provided> suites = {
      provided(advAppSuite()), provided(effectUiSuite()),      provided(paramUtilsSuite()),
      provided(worldSuite()),  provided(utilitySuite()),       provided(persistentDataSuite()),
      provided(memorySuite()), provided(pfInterfaceSuite()),   provided(layerSuite()),
      provided(streamSuite()), provided(keyframeSuite()),      provided(markerSuite()),
      provided(itemSuite()),   provided(dynamicStreamSuite()), provided(effectSuite())};
  return suites;
}

int32_t acquireSuite(const char* name, int32_t version, const void** suite) {
  const std::string text =
      std::string("\"") + (name ? name : "(null)") + "\" " + std::to_string(version);
  return serve(CallKind::kSuiteAcquire, text.c_str(), [&](CallFrame& frame) {
    if (!name || !suite) return badArgument(frame, "AcquireSuite", "a null name or place");
    *suite = nullptr;
    for (const Provided& entry : providedSuites()) {
      if (entry.version != version || std::strcmp(entry.name, name) != 0) continue;
      *suite = entry.table;
      frame.books().suiteAcquired(name, version);
      return int32_t{0};
    }
    frame.books().fault("AcquireSuite: nobody provides the suite " + text);
    return kSuiteNotFound;
  });
}

int32_t releaseSuite(const char* name, int32_t version) {
  return serveGiveBack(CallKind::kCallback, "ReleaseSuite", [&](CallFrame& frame) {
    if (!name) return badArgument(frame, "ReleaseSuite", "a null name");
    if (frame.books().suiteReleased(name, version)) return PF_Err{PF_Err_NONE};
    return badArgument(
        frame, "ReleaseSuite",
        std::string("the suite \"") + name + "\" " + std::to_string(version) + " is not acquired");
  });
}

SPBoolean isEqual(const char* a, const char* b) {
  return a == b || (a && b && std::strcmp(a, b) == 0);
}

int32_t allocateBlock(size_t size, void** block) {
  return serve(CallKind::kAllocation, "AllocateBlock", [&](CallFrame& frame) {
    if (!block) return badArgument(frame, "AllocateBlock", "no place for the block");
    *block = frame.host().handles().allocatePlain(size);
    return PF_Err{*block ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY};
  });
}

int32_t freeBlock(void* block) {
  return serveGiveBack(CallKind::kCallback, "FreeBlock", [&](CallFrame& frame) {
    const bool done = frame.host().handles().releasePlain(block, "FreeBlock");
    return PF_Err{done ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
  });
}

int32_t reallocateBlock(void* block, size_t size, void** moved) {
  return serve(CallKind::kAllocation, "ReallocateBlock", [&](CallFrame& frame) {
    if (!moved) return badArgument(frame, "ReallocateBlock", "no place for the block");
    *moved = frame.host().handles().resizePlain(block, size, "ReallocateBlock");
    return PF_Err{*moved ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY};
  });
}

}  // namespace

SPBasicSuite& basicSuite() {
  static SPBasicSuite table = [] {
    auto made = trapTable<SPBasicSuite>();
    made.AcquireSuite = acquireSuite;
    made.ReleaseSuite = releaseSuite;
    made.IsEqual = isEqual;
    made.AllocateBlock = allocateBlock;
    made.FreeBlock = freeBlock;
    made.ReallocateBlock = reallocateBlock;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
