#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kernel/kernel_info.h"
#include "kernel/source_map.h"

namespace vellumtide {

/// Where a connection leads.
enum class ConnectionKind : std::int32_t {
  None = 0,
  ImageToNode = 1,
  NodeToNode = 2,
  ToOutput = 3,
};

/// One `connect` element, by names. `fromOutput` is read and not used further. `fullToInput` is
/// `toInput` uncut: it tells inputs apart whose names differ only behind what a record keeps.
struct pbgConnection {
  NameText from;
  NameText fromOutput;
  NameText to;
  NameText toInput;
  std::string fullToInput;
  ConnectionKind kind = ConnectionKind::None;
};

class GraphParameterNames;

/// What a graph file says: parameters, images, kernels, nodes and connections, each in document
/// order. A graph that goes beyond a limit holds nothing else.
class pbGraphInfo : public pbMetadata {
 public:
  /// One node: an instance of the kernel called `name`, known to connections as `id`.
  class pbgNodeInfo {
   public:
    /// Rewrites evaluateParametersSource into evaluateParameters: the graph's parameters get their
    /// shader names, `id::parameter` becomes `parameter`.
    void parse(const pbGraphInfo& graph);
    /// The same for many nodes of one graph. A `map` learns where the rewritten text comes from.
    void parse(const GraphParameterNames& parameterNames, SourceMap* map = nullptr);

    NameText id;
    NameText name;
    NameText vendor;
    NameText nameSpace;
    std::int32_t version = 1;
    std::string evaluateParametersSource;
    NameText clientID;
    std::string evaluateParameters;
  };

  std::vector<pbParameter> parameters;
  std::vector<pbVariable> inputs;
  pbVariable output;
  std::vector<pbKernelInfo> kernels;
  std::vector<std::string> kernelSources;
  std::vector<pbgNodeInfo> nodes;
  std::vector<pbgConnection> connections;
  Limit beyond = Limit::None;
};

using pbgNodeInfo = pbGraphInfo::pbgNodeInfo;

/// The names of a graph's parameters, for look-ups that do not walk the list. Refers to the graph:
/// use it only while the graph lives and its parameters stay as they are.
class GraphParameterNames {
 public:
  explicit GraphParameterNames(const pbGraphInfo& graph);
  bool contains(std::string_view name) const { return names_.count(name) != 0; }

 private:
  std::unordered_set<std::string_view> names_;
};

/// Finds a graph's kernels by name, the first of a name winning, without walking the list. Refers
/// to the graph: use it only while the graph lives and its kernels stay as they are.
class KernelsByName {
 public:
  explicit KernelsByName(const pbGraphInfo& graph);
  /// Null when no kernel has that name.
  const pbKernelInfo* find(std::string_view name) const;

 private:
  std::unordered_map<std::string_view, const pbKernelInfo*> kernels_;
};

}  // namespace vellumtide
