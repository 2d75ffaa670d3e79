#include <cerrno>
#include <fstream>
#include <string_view>
#include <system_error>

#include "cli/files/scratch_folder.h"
#include "cli/os/child_process.h"
#include "cli/program/graph_drawing.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr int kLimitSeconds = 60;

[[noreturn]] void fail(const std::string& reason) {
  throw Failure(ExitStatus::Failed, "no SVG can be drawn: " + reason +
                                        "; --graph dot prints the text that Graphviz draws from");
}

ChildResult runDot(const std::string& file) {
  try {
    return runTool("dot", {"-Tsvg", file}, kLimitSeconds);
  } catch (const Failure& failure) {
    const std::string absent = std::generic_category().message(ENOENT);
    if (!std::string_view(failure.what()).ends_with(absent)) fail(failure.what());
    fail("Graphviz and its program \"dot\" are not installed (Debian: apt-get install graphviz)");
  }
}

}  // namespace

std::string drawSvg(const std::string& graphvizText) {
  const ScratchFolder folder;
  const std::filesystem::path file = folder.path() / "program.dot";
  std::ofstream(file, std::ios::binary) << graphvizText;
  const ChildResult result = runDot(utf8(file));
  if (!result.failure.empty()) fail("Graphviz " + result.failure);
  if (result.status != 0 || result.output.find("</svg>") == std::string::npos) {
    fail("Graphviz ended with status " + std::to_string(result.status));
  }
  return result.output;
}

}  // namespace vellumtide::cli
