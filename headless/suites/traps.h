// Functions for the slots of a table that the host does not provide: each reports its table and
// slot by name, so that a wrong slot is found at the first call. Internal to this folder.
#pragma once

#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

#include "headless/call_frame.h"

namespace vellumtide::headless {

// "\"PF World Suite\" 2" for a suite; tables without a name of their own specialise this.
template <typename Table>
std::string tableName() {
  return std::string("\"") + Table::kName + "\" " + std::to_string(Table::kVersion);
}

inline PF_Err reportTrap(const std::string& text) {
  return serve(CallKind::kSuiteCall, text.c_str(), [&](CallFrame& frame) {
    frame.books().fault(text + ", which this host does not provide, was called");
    return PF_Err_INVALID_CALLBACK;
  });
}

template <typename Table, size_t kSlot>
PF_Err trap() {
  return reportTrap("slot " + std::to_string(kSlot) + " of " + tableName<Table>());
}

// A table of nothing but traps.
template <typename Table>
Table trapTable() {
  static_assert(std::is_trivially_copyable_v<Table>);
  constexpr size_t kSlots = sizeof(Table) / sizeof(void*);
  Table table;
  [&table]<size_t... kSlot>(std::index_sequence<kSlot...>) {
    using Trap = PF_Err (*)();
    const Trap traps[] = {&trap<Table, kSlot>...};
    static_assert(sizeof traps == kSlots * sizeof(void*));
    std::memcpy(static_cast<void*>(&table), traps, sizeof traps);
  }
  (std::make_index_sequence<kSlots>());
  return table;
}

}  // namespace vellumtide::headless
