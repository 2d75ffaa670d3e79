#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "nodes/pb_graph.h"

namespace vellumtide {

// Every program built since the module was started, by its path. Only grows, so that a program
// stays valid for as long as the module is loaded. Paths are compared byte for byte.
class ProgramCache {
 public:
  // Null when there is none.
  pbGraph* findProgram(std::string_view path) const;

  // False, with nothing changed, for a null program and for a path that is there already; the
  // program stays the caller's then.
  bool addProgram(std::string_view path, std::unique_ptr<pbGraph>&& program);

  std::size_t size() const { return entries_.size(); }

  // Destroys all programs in order, each inside a bracket that the caller provides.
  template <class Bracket>
  void destroyAll(Bracket makeCurrent) {
    for (Entry& entry : entries_) {
      const auto bracket = makeCurrent();
      entry.program.reset();
    }
    entries_.clear();
  }

 private:
  struct Entry {
    std::string path;
    std::unique_ptr<pbGraph> program;
  };

  std::vector<Entry> entries_;
};

}  // namespace vellumtide
