#include "core/suite_handler.h"

#include <cstring>

namespace vellumtide {

SuiteHandler::~SuiteHandler() {
  while (count_ > 0) {
    const Entry& entry = entries_[--count_];
    basic_->ReleaseSuite(entry.name, entry.version);
  }
}

const void* SuiteHandler::acquire(const char* name, int32_t version) {
  for (std::size_t i = 0; i < count_; ++i) {
    const Entry& entry = entries_[i];
    if (entry.version == version && std::strcmp(entry.name, name) == 0) return entry.table;
  }
  if (!basic_ || count_ == entries_.size()) throw PF_Err{PF_Err_INVALID_CALLBACK};
  const void* table = nullptr;
  const PF_Err error = basic_->AcquireSuite(name, version, &table);
  if (error) throw PF_Err{error};
  if (!table) throw PF_Err{PF_Err_INVALID_CALLBACK};
  entries_[count_++] = {name, version, table};
  return table;
}

}  // namespace vellumtide
