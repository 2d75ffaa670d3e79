#pragma once

#include <memory>
#include <string>

#include "core/ae_base.h"
#include "kernel/kernel_info.h"

namespace vellumtide {

// One parameter of a program as the renderer sees it.
class pbGraphParameter : public aeBase {
 public:
  // Takes the default as the current value, zeros when there is none.
  pbGraphParameter(const pbParameter& description, std::string uniform);

  std::int32_t slot = -1;  // first host control bound to it; -1 for none
  pbParameter parameter;   // in a graph renamed to its uniform's name, cut to 31 bytes
  ValueCells value;
  std::string text;         // not used by the graph itself
  std::string uniformName;  // uncut
};

// A stand-alone kernel's parameter: the uniform carries the parameter's own name.
std::unique_ptr<pbGraphParameter> makeKernelParameter(const pbParameter& description);

// A graph's parameter: renamed to its uniform, shown under its own name when it has no other.
std::unique_ptr<pbGraphParameter> makeGraphParameter(const pbParameter& description);

}  // namespace vellumtide
