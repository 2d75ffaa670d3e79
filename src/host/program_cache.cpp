#include "host/program_cache.h"

#include <utility>

namespace vellumtide {

pbGraph* ProgramCache::findProgram(std::string_view path) const {
  for (const Entry& entry : entries_) {
    if (entry.path == path) return entry.program.get();
  }
  return nullptr;
}

bool ProgramCache::addProgram(std::string_view path, std::unique_ptr<pbGraph>&& program) {
  if (!program || findProgram(path)) return false;
  entries_.push_back({std::string(path), nullptr});
  entries_.back().program = std::move(program);
  return true;
}

}  // namespace vellumtide
