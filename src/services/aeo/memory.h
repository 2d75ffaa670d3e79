// A memory handle that the host gave out, freed at the end of its life.
#pragma once

#include <optional>
#include <string>

#include "core/suite_handler.h"

namespace vellumtide::AEO {

// Acquires what freeing needs before the handle exists, so that a handle received can always be
// given back.
class Memory {
 public:
  explicit Memory(SPBasicSuite* basic) : suite_(basic) {}
  ~Memory();
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;

  // Non-zero when the memory suite was refused; receive nothing then.
  PF_Err error() const { return suite_.error(); }

  // Where the host writes a handle; used once.
  AEGP_MemHandle* receive() { return &handle_; }

  // Copies of the zero-terminated text, which ends with the handle at the latest. Nothing without
  // a handle or when the host does not lock it.
  std::optional<std::string> text() const;
  std::optional<std::u16string> utf16Text() const;

 private:
  template <class Unit>
  std::optional<std::basic_string<Unit>> copyText() const;

  ScopedSuite<AEGP_MemorySuite1> suite_;
  AEGP_MemHandle handle_ = nullptr;
};

}  // namespace vellumtide::AEO
