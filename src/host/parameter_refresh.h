#pragma once

#include "host/parameter_checkout.h"
#include "nodes/pb_graph.h"

namespace vellumtide {

// Reads the controls bound to a parameter into the record's current value. A parameter without
// controls keeps its value. Throws the host's error of a checkout.
void refreshParameterValue(ParameterCheckout& holder, pbGraphParameter& record);

// Of all parameters of a program. Instances share its records: a frame of another one, drawn from
// within one of the checkouts, leaves nothing of its own in them.
void refreshParameterValues(ParameterCheckout& holder, pbGraph& program);

}  // namespace vellumtide
