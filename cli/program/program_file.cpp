#include "cli/program/program_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "bank/slot_assignment.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"
#include "graph/graph_reader.h"
#include "kernel/pbk_parser.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& reason) {
  throw Failure(ExitStatus::Program, utf8(path) + ": " + reason);
}

std::string readText(const fs::path& path) {
  std::error_code failed;
  const fs::file_status status = fs::status(path, failed);
  if (!fs::exists(status)) fail(path, failed ? reasonOf(failed) : "there is no such file");
  if (fs::is_directory(status)) fail(path, "is a folder, not a program file");
  // Like the module, which must not wait for the other end of a pipe.
  if (!fs::is_regular_file(status)) fail(path, "is a pipe or a device, not a program file");
  if (fs::file_size(path, failed) > limits::kTextBytes) {
    fail(path, "the file is larger than 64 MiB");
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) {
    const bool isMachine = errno == EMFILE || errno == ENFILE || errno == ENOMEM;
    const std::string reason = "cannot be read: " + lastReason();
    if (isMachine) throw Failure(ExitStatus::Failed, utf8(path) + ": " + reason);
    fail(path, reason);
  }
  return text;
}

void checkLimit(const fs::path& path, Limit beyond) {
  if (beyond != Limit::None) fail(path, "asks for " + limitText(beyond));
}

pbKernelInfo parseKernel(const fs::path& path, const std::string& text) {
  pbKernelInfo kernel;
  PBKParser(text).parse(kernel);
  checkLimit(path, kernel.beyond);
  const bool nothing = kernel.name.empty() && kernel.inputs.empty() && kernel.output.name.empty() &&
                       kernel.parameters.empty() && kernel.dependents.empty();
  if (nothing)
    fail(path, "holds no kernel (a kernel starts with \"kernel NAME\" and its metadata)");
  return kernel;
}

pbGraphInfo parseGraph(const fs::path& path, const std::string& text) {
  pbGraphInfo graph;
  const bool isRead = readGraphText(text.c_str(), graph) == 0;
  checkLimit(path, graph.beyond);
  if (!isRead) {
    fail(path, "holds no graph (a graph is an XML document with a \"graph\" element)");
  }
  return graph;
}

}  // namespace

const pbMetadata& Program::metadata() const {
  return std::visit([](const pbMetadata& m) -> const pbMetadata& { return m; }, content);
}

const std::vector<pbVariable>& Program::inputs() const {
  return std::visit(
      [](const auto& p) -> const auto& { return p.inputs; }, content);
}

const pbVariable& Program::output() const {
  return std::visit(
      [](const auto& p) -> const auto& { return p.output; }, content);
}

const std::vector<pbParameter>& Program::parameters() const {
  return std::visit(
      [](const auto& p) -> const auto& { return p.parameters; }, content);
}

ProgramSlots slotsOf(const Program& program) {
  std::vector<const pbParameter*> parameters;
  for (const pbParameter& parameter : program.parameters())
    parameters.push_back(&parameter);
  ProgramSlots slots{{}, assignParameterSlots(parameters)};
  for (std::size_t i = 0; i < program.inputs().size(); ++i)
    slots.inputs.push_back(inputSlot(i));
  return slots;
}

Program readProgram(const fs::path& path) {
  const std::string name = utf8(path);
  const char last = name.empty() ? '\0' : name.back();
  const bool isGraph = last == 'g' || last == 'G';
  if (!isGraph && last != 'k') {
    fail(path, "unknown extension: kernels end in .pbk, graphs in .pbg");
  }
  std::string text = readText(path);
  Program program;
  if (isGraph) {
    program.content = parseGraph(path, text);
  } else {
    program.content = parseKernel(path, text);
  }
  program.text = std::move(text);
  return program;
}

}  // namespace vellumtide::cli
