// What a driver says about the shader texts that it was given.
#pragma once

#include <string>
#include <vector>

namespace vellumtide::cli {

enum class ShaderStage { Vertex, Fragment, Link };

// What was said about one stage of one node.
struct DriverSection {
  std::string label;  // the node's, the kernel's when it stands alone
  ShaderStage stage = ShaderStage::Vertex;
  std::string log;
};

// The sections of the module's error log, in its order. Only the given labels begin one.
std::vector<DriverSection> splitDriverLog(const std::string& log,
                                          const std::vector<std::string>& labels);

struct DriverMessage {
  // What a column counts in.
  enum class Columns {
    Text,      // the line as it was given
    Expanded,  // the line after Mesa's preprocessor
  };

  bool isError = true;  // else a warning
  int line = 0;         // from 1, 0 when it was not said
  int column = 0;       // from 1, 0 when it was not said
  Columns columns = Columns::Text;
  std::string text;    // without place and severity; further lines begin with blanks
  bool isCut = false;  // the text goes on where the log does not
};

// The messages of one section, in its order: the forms of Mesa "0:95(12): error: ...", of NVIDIA
// "0(95) : error C1008: ..." and of the others "ERROR: 0:95: ..." or "ERROR: 0:95:12: ...". Lines
// without a place count only where no error has one. A log that fills the module's buffer is cut:
// its last line is left out unless place and severity are whole, and the last message is marked.
std::vector<DriverMessage> parseDriverMessages(const std::string& log);

// The names that a message quotes, in its order: `foo', 'foo', "foo".
std::vector<std::string> quotedNames(const std::string& message);

}  // namespace vellumtide::cli
