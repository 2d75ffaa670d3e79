// The effect module, started on a headless host, and what every command asks of the two.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/files/scratch_folder.h"
#include "cli/program/program_file.h"
#include "headless/host.h"

namespace vellumtide::cli {

class HostSession {
 public:
  // Loads the module (see loadModule) and sets it up. `rootFolder` is the preference that says
  // where lost programs are searched, "" for none. Throws Failure: ExitStatus::NoDevice without a
  // usable GL device.
  explicit HostSession(const std::string& modulePath, const std::string& rootFolder = "");

  headless::Host& host() { return *host_; }

  // What the Info panel shows, a line each.
  std::vector<std::string> infoLines();

  // Throws Failure (ExitStatus::Program) when the program of an instance did not load, BuildFailure
  // with what the driver said when its shaders did not build. `program` is what was read from the
  // file; without it the file is read again when that is needed.
  void requireUsable(headless::Effect& effect, const std::string& programPath,
                     const Program* program = nullptr);

  // One frame. Throws Failure (ExitStatus::Failed) when the module answers with an error.
  std::shared_ptr<headless::World> render(headless::Effect& effect,
                                          const headless::RenderOptions& options);

  // Sets the module down; throws Failure (ExitStatus::Failed) when it broke the host's rules.
  void finish();

 private:
  ScratchFolder folder_;  // for what the module keeps between runs
  std::unique_ptr<headless::Host> host_;
};

}  // namespace vellumtide::cli
