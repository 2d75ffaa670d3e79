#include "tests/support/command_line.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iterator>
#include <set>

namespace vellumtide::cli {
namespace {

std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Outcome CommandLine::run(const std::string& arguments, const std::string& environment) const {
  const std::string command = "cd " + folder_.path().string() + " && (" + environment + " " +
                              VELLUMTIDE_EXECUTABLE + " " + arguments +
                              ") >.stdout 2>.stderr </dev/null";
  const int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw), contents(file(".stdout")),
          contents(file(".stderr"))};
}

void CommandLine::expectEndings(const std::string& command,
                                const std::vector<Ending>& endings) const {
  for (const auto& [arguments, status, message] : endings) {
    const Outcome outcome = run(command + arguments);
    SCOPED_TRACE(command + arguments + "\n" + outcome.error);
    EXPECT_EQ(outcome.status, status);
    EXPECT_NE(outcome.error.find(message), std::string::npos);
    if (status < 2) continue;
    EXPECT_EQ(outcome.error.find("vellumtide: "), 0u);
    EXPECT_EQ(outcome.out, "");
  }
}

pid_t CommandLine::start(const std::string& arguments, const std::string& environment) const {
  const std::string command = "cd " + folder_.path().string() + " && mkdir -p tmp && exec env " +
                              "TMPDIR=tmp " + environment + " " VELLUMTIDE_EXECUTABLE " render " +
                              arguments + " >.stdout 2>.stderr </dev/null";
  const pid_t child = fork();
  if (child != 0) return child;
  execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
  _exit(127);
}

int CommandLine::wait(pid_t child) {
  int raw = 0;
  waitpid(child, &raw, 0);
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

void CommandLine::writeText(const std::string& name, const std::string& text) const {
  std::ofstream(file(name), std::ios::binary) << text;
}

std::string CommandLine::readText(const std::string& name) const {
  return contents(file(name));
}

std::string CommandLine::filesLike(const std::string& stem) const {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
    const std::string name = entry.path().filename().string();
    if (name.find(stem) <= 1) names.insert(name + " ");
  }
  std::string all;
  for (const std::string& name : names)
    all += name;
  return all;
}

void expectPixel(const headless::World& world, int x, int y, std::vector<double> rgba,
                 double tolerance) {
  const std::vector<double> got = world.pixel(x, y);
  for (int c = 0; c < 4; ++c) {
    EXPECT_NEAR(got[c], rgba[c], tolerance) << "pixel " << x << "," << y << " channel " << c;
  }
}

std::string kernelText(const std::string& statements, const std::string& declarations) {
  return "<languageVersion : 1.0;> kernel Test < namespace : \"t\"; vendor : \"v\"; version : 3; "
         ">\n"
         "{ input image4 src; output pixel4 dst; " +
         declarations + "\nvoid evaluatePixel() {" + statements + "} }\n";
}

}  // namespace vellumtide::cli
