// The built module in a host of its own, with a folder for program files.
#pragma once

#include <string>

#include "headless/host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide::end_to_end {

using namespace headless;

// The text of a kernel "Sample" from its declarations and the statements of evaluatePixel. With no
// `image4` among the declarations it gets one input "src"; its output is always "dst".
std::string kernelText(const std::string& declarations, const std::string& statements,
                       const std::string& name = "Sample");

// Its destructor sets the module down and fails the test for every fault that the host has seen.
class Session {
 public:
  explicit Session(HostOptions options = {});
  ~Session();

  // Writes a program file (its bytes as they are) and gives its path.
  std::string file(const std::string& name, const std::string& text);
  // A new layer with these pixels; with a program, its path is the first marker's comment.
  Layer& layer(World pixels, const std::string& programPath = "");
  // A layer with an instance of the effect that runs the program, its panel updated.
  Effect& effect(World pixels, const std::string& programPath);
  // The same for the text of a kernel or a graph, under a file name of its own.
  Effect& kernel(World pixels, const std::string& text);
  Effect& graph(World pixels, const std::string& text);

  // Renders, expecting no error; the frame's pixels.
  World render(Effect& effect, RenderOptions options = {});
  // The texts that the Info panel has shown since the last call: "line 1 / line 2", one a line.
  std::string takeInfo();

  Host host;
  Composition& comp;

 private:
  testing::ScratchFolder folder_;
  int files_ = 0;
};

// Sets a shown control by its label: one number, the two of a point or the four of a colour. Throws
// std::out_of_range when there is none.
void setControl(Effect& effect, const std::string& label, const std::vector<double>& numbers);
void setLayer(Effect& effect, const std::string& label, const Layer* layer);

}  // namespace vellumtide::end_to_end
