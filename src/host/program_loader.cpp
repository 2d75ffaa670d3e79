#include "host/program_loader.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "core/message_channels.h"
#include "glsl/channel_order.h"
#include "graph/graph_reader.h"
#include "host/current_device.h"
#include "host/program_description.h"
#include "kernel/pbk_parser.h"
#include "panel/host_slots.h"
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
  return file.readAll(limits::kTextBytes);
}

// A text that says nothing leaves the description empty.
void describe(const std::string& text, pbGraphInfo& info) {
  readGraphText(text.c_str(), info);
}
void describe(const std::string& text, pbKernelInfo& info) {
  PBKParser(text).parse(info);
}

void sayRefused(Limit limit, const std::string& path) {
  sendMessage(Channel::Debug, "Program refused: " + limitText(limit) + "\n" + path + "\n");
}

void noteUnbuilt(GlobalData& globalData, const std::string& path, const char* failure) {
  globalData.unbuiltPrograms.push_back(path);
  const std::string text = std::string("Not loaded, because ") + failure + ":\n" + path + "\n";
  sendMessage(Channel::Debug, text);
  if (!std::exchange(globalData.deviceFailureLogged, true)) sendMessage(Channel::ErrorLog, text);
}

enum class BuildResult { Added, KnownMeanwhile, Unusable };

// Builds a program and gives it to the cache. One that the cache does not take goes again while the
// device is still current.
template <class Info>
BuildResult build(GlobalData& globalData, const std::string& path, const std::string& text) {
  Info info;
  describe(text, info);
  if (info.beyond != Limit::None) {
    sayRefused(info.beyond, path);
    return BuildResult::Unusable;
  }
  const CurrentDevice device(globalData);
  if (device.failure()) {
    noteUnbuilt(globalData, path, device.failure());
    return BuildResult::Unusable;
  }
  globalData.deviceFailureLogged = false;
  std::unique_ptr<pbGraph> program(newOrThrow<pbGraph>(info, kHostChannelOrder));
  if (!program->isUsable()) return BuildResult::Unusable;
  assignHostSlots(*program);
  takeMeantDefaults(*program);
  // The host, told of something in the program, may have called again for the same file.
  return globalData.programCache.addProgram(path, std::move(program)) ? BuildResult::Added
                                                                      : BuildResult::KnownMeanwhile;
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
  const auto showKnown = [&](const pbGraph& known) {
    show(isGraph ? "Graph has been loaded from memory" : "Kernel has been loaded from memory",
         known.name);
    return true;
  };
  if (const pbGraph* known = globalData.programCache.findProgram(path)) return showKnown(*known);

  std::erase(globalData.unbuiltPrograms, path);
  const std::optional<std::string> text = readWhole(path);
  if (!text) {
    // A graph that cannot be opened is passed over in silence.
    if (!isGraph) show("Kernel file could not be opened:", path);
    return false;
  }
  if (text->size() > limits::kTextBytes) {
    sayRefused(Limit::TextBytes, path);
    return false;
  }
  const BuildResult result = isGraph ? build<pbGraphInfo>(globalData, path, *text)
                                     : build<pbKernelInfo>(globalData, path, *text);
  if (result == BuildResult::Unusable) return false;
  const pbGraph& program = *globalData.programCache.findProgram(path);
  if (result == BuildResult::KnownMeanwhile) return showKnown(program);
  show(isGraph ? "Graph has been loaded from file:" : "Kernel has been loaded from file:",
       program.name);
  describeProgram(program);
  return true;
}

bool isUnbuilt(const GlobalData& globalData, const std::string& path) {
  const auto& unbuilt = globalData.unbuiltPrograms;
  return std::find(unbuilt.begin(), unbuilt.end(), path) != unbuilt.end();
}

}  // namespace vellumtide
