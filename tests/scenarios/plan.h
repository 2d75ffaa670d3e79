// What a program file asks to be drawn: its nodes in the order of the file, where their inputs come
// from, the shader texts, the parameters and the host controls that feed them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kernel/kernel_info.h"

namespace vellumtide::scenarios {

struct PlanSlot {
  std::string name;  // cut to 31 bytes; the sampler's name begins with it
  int source = -1;   // index of a node, -1 when nothing is connected
};

struct PlanNode {
  int image = -1;  // which input image it is, -1 for a kernel node
  std::string name;
  std::vector<PlanSlot> slots;
  std::string vertex, fragment;  // "" when the node's kernel is missing
  std::string source;            // of the kernel
};

struct PlanParameter {
  pbParameter parameter;
  std::string uniform;
  int slot = -1;  // first host control bound to it
};

struct Plan {
  std::vector<PlanNode> nodes;
  std::vector<PlanParameter> parameters;
  int output = -1;

  // The nodes that the output needs, sources first; nothing when there is no output node or one of
  // them depends on itself.
  std::vector<int> order;
  int depth = 0;  // kernels on the longest way to the output
};

// Nothing when the path's last byte names neither a kernel nor a graph, or nothing can be drawn.
std::optional<Plan> planOf(const std::string& path, const std::string& text);

}  // namespace vellumtide::scenarios
