// A program as a drawing: text for Graphviz, and what Graphviz makes of it.
#pragma once

#include <string>

#include "cli/program/program_file.h"

namespace vellumtide::cli {

// A graph: its images, nodes with inputs, output and parameters, and connections, from left to
// right; a kernel: one node. Names never become part of Graphviz's language: nodes and ports have
// names of their own, and every text is escaped. A connection from or to something that the graph
// lacks ends at a node that says so.
std::string graphvizText(const Program& program);

// The SVG that Graphviz's program "dot" draws from the text. Throws Failure (ExitStatus::Failed)
// when it is not installed, fails or takes longer than a minute.
std::string drawSvg(const std::string& graphvizText);

}  // namespace vellumtide::cli
