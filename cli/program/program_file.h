// Program files as the command line reads them: by the module's own rules, without GL or a host.
#pragma once

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

#include "graph/graph_info.h"

namespace vellumtide::cli {

// A kernel (.pbk) or a graph (.pbg).
struct Program {
  std::variant<pbKernelInfo, pbGraphInfo> content;
  std::string text;  // of the whole file

  const pbKernelInfo* kernel() const { return std::get_if<pbKernelInfo>(&content); }
  const pbGraphInfo* graph() const { return std::get_if<pbGraphInfo>(&content); }
  const pbMetadata& metadata() const;
  const std::vector<pbVariable>& inputs() const;
  const pbVariable& output() const;
  const std::vector<pbParameter>& parameters() const;
};

// The host controls bound to a program: the first control of each input and parameter, in program
// order, -1 for none.
struct ProgramSlots {
  std::vector<int> inputs;
  std::vector<int> parameters;
};

ProgramSlots slotsOf(const Program& program);

// Reads and parses the file; the last character of its name says what it is, 'g' or 'G' a graph,
// 'k' a kernel. Throws Failure (ExitStatus::Program) when it cannot be read, goes beyond a
// limit, has another ending or holds no program.
Program readProgram(const std::filesystem::path& path);

}  // namespace vellumtide::cli
