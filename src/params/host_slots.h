#pragma once

#include "graph/pb_graph.h"

namespace vellumtide {

// Binds a newly built program's image inputs and parameters to host controls.
void assignHostSlots(pbGraph& program);

}  // namespace vellumtide
