#include "host/program_loader.h"

#include <memory>
#include <optional>
#include <utility>

#include "glsl/channel_order.h"
#include "graph/graph_reader.h"
#include "host/program_description.h"
#include "kernel/pbk_parser.h"
#include "params/host_slots.h"
#include "services/info_panel.h"
#include "services/jst/jst.h"

namespace vellumtide {
namespace {

// The order of the host's pixels: alpha, red, green, blue.
constexpr ChannelOrder kHostChannelOrder = 18;

enum class ProgramKind { Graph, Kernel, Unknown };

// Only the last character counts.
ProgramKind kindOf(const std::string& path) {
  const char last = path.empty() ? '\0' : path.back();
  if (last == 'g' || last == 'G') return ProgramKind::Graph;
  return last == 'k' ? ProgramKind::Kernel : ProgramKind::Unknown;
}

std::optional<std::string> readWhole(const std::string& path) {
  HostFile file(path);
  if (!file.open('r')) return std::nullopt;
  return file.readAll();
}

// Built with the device current; a program that cannot be drawn goes again at once.
template <class Info>
std::unique_ptr<pbGraph> buildUsable(const GlobalData& globalData, const Info& info) {
  const ScopedCurrentContext bracket(globalData.device);
  std::unique_ptr<pbGraph> program(newOrThrow<pbGraph>(info, kHostChannelOrder));
  if (!program->isUsable()) program.reset();
  return program;
}

std::unique_ptr<pbGraph> buildGraph(const GlobalData& globalData, const std::string& text) {
  pbGraphInfo info;
  return readGraphText(text.c_str(), info) == 0 ? buildUsable(globalData, info) : nullptr;
}

std::unique_ptr<pbGraph> buildKernel(const GlobalData& globalData, const std::string& text) {
  pbKernelInfo info;
  PBKParser(text).parse(info);
  return buildUsable(globalData, info);
}

}  // namespace

bool loadProgram(GlobalData& globalData, PF_InData* inData, const std::string& path, bool report) {
  const auto show = [&](const char* line1, const std::string& line2) {
    if (report) drawInfoText(inData, line1, line2.c_str());
  };
  const ProgramKind kind = kindOf(path);
  if (kind == ProgramKind::Unknown) {
    show("Unknown file extention:", path);
    return false;
  }
  const bool isGraph = kind == ProgramKind::Graph;
  if (const pbGraph* known = globalData.programCache.findProgram(path)) {
    show(isGraph ? "Graph has been loaded from memory" : "Kernel has been loaded from memory",
         known->name);
    return true;
  }

  const std::optional<std::string> text = readWhole(path);
  if (!text) {
    // A graph that cannot be opened is passed over in silence.
    if (!isGraph) show("Kernel file could not be opened:", path);
    return false;
  }
  std::unique_ptr<pbGraph> built =
      isGraph ? buildGraph(globalData, *text) : buildKernel(globalData, *text);
  if (!built) return false;

  pbGraph& program = *built;
  globalData.programCache.addProgram(path, std::move(built));
  assignHostSlots(program);
  show(isGraph ? "Graph has been loaded from file:" : "Kernel has been loaded from file:",
       program.name);
  describeProgram(program);
  return true;
}

}  // namespace vellumtide
