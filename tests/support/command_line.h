// Runs the built program, in a scratch folder of its own for each test.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <fstream>
#include <string>
#include <vector>

#include "cli/files/scratch_folder.h"
#include "cli/image/image_file.h"

namespace vellumtide::cli {

struct Outcome {
  int status = 0;
  std::string out, error;
};

// How a command ends: a status, and a part of what it says on standard error.
struct Ending {
  std::string arguments;
  int status;
  const char* message;
};

class CommandLine : public testing::Test {
 protected:
  // `arguments` as a shell takes them, run in the scratch folder; `environment` goes before.
  Outcome run(const std::string& arguments, const std::string& environment = "") const;

  // Runs each behind `command`. Refusals say who refuses, and nothing on standard output.
  void expectEndings(const std::string& command, const std::vector<Ending>& endings) const;

  // Starts a render in the background and returns its process; its temporary files go to "tmp".
  pid_t start(const std::string& arguments, const std::string& environment = "") const;
  // Waits for its end and returns the status as a shell tells it.
  static int wait(pid_t child);

  std::filesystem::path file(const std::string& name) const { return folder_.path() / name; }
  void writeText(const std::string& name, const std::string& text) const;
  std::string readText(const std::string& name) const;
  // Names of the files in the folder that begin like `stem`, hidden ones included.
  std::string filesLike(const std::string& stem) const;

 private:
  ScratchFolder folder_;
};

// A pixel of a picture, channels from 0 to 1.
void expectPixel(const headless::World& world, int x, int y, std::vector<double> rgba,
                 double tolerance);

// A kernel around the statements of evaluatePixel, with declarations before it.
std::string kernelText(const std::string& statements, const std::string& declarations = "");

}  // namespace vellumtide::cli
