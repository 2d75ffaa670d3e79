#pragma once

#include "graph/graph_parameter.h"
#include "host/parameter_checkout.h"

namespace vellumtide {

// Reads the controls bound to a parameter into the record's current value. A parameter without
// controls keeps its value. Throws the host's error of a checkout.
void refreshParameterValue(ParameterCheckout& holder, pbGraphParameter& record);

}  // namespace vellumtide
