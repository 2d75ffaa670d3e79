#pragma once

#include "nodes/pb_graph.h"

namespace vellumtide {

// Binds a newly built program's image inputs and parameters to host controls.
void assignHostSlots(pbGraph& program);

// Makes what is meant by each default the parameter's start value, which one without a control
// keeps.
void takeMeantDefaults(pbGraph& program);

}  // namespace vellumtide
