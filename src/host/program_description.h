#pragma once

namespace vellumtide {

class pbGraph;

// Writes what a program consists of to the debug output: its information text, its parameters with
// the controls they are bound to, and its nodes.
void describeProgram(const pbGraph& program);

}  // namespace vellumtide
