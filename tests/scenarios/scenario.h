// A scenario: program files and the steps of a life around them, as lines of a readable text, each
// of which can be taken away without making the rest unreadable.
//
//   file a.pbk
//   | <languageVersion : 1.0;> kernel K <>
//   *900| input image4 in#;                    # is the number of the copy, 0 to 899
//   steps
//   layer photo 12x7 origin 0,0 padding 16 pixels bytes 5
//   new e photo a.pbk
//   render e depth 16
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::scenarios {

struct ProgramLine {
  std::string text;  // any bytes; "#" in a line of several copies is the copy's number
  int copies = 1;
};

struct ProgramFile {
  std::string name;
  std::vector<ProgramLine> lines;

  std::string text() const;
};

using Step = std::vector<std::string>;  // words; what they mean is the stage's business

struct Scenario {
  std::vector<ProgramFile> files;
  std::vector<Step> steps;

  std::string text() const;
  // Throws std::runtime_error naming the line that cannot be read.
  static Scenario read(std::string_view text);
};

// Bytes that are not printable ASCII as "\xNN", so that a line shows what it holds.
std::string escaped(std::string_view bytes, bool keepBlanks = true);
std::string unescaped(std::string_view text);

}  // namespace vellumtide::scenarios
