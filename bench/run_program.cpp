#include "bench/run_program.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace vellumtide::bench {

ProgramRun runProgram(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments)
    argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);

  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process can be made");
  if (child == 0) {
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    execv(argv[0], argv.data());
    _exit(127);
  }
  int raw = 0;
  rusage usage{};
  wait4(child, &raw, 0, &usage);
  const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
  if (WIFEXITED(raw) && WEXITSTATUS(raw) == 127) {
    throw std::runtime_error(arguments[0] + " cannot be started");
  }
  return {spent.count(), usage.ru_maxrss, WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw)};
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.empty() ? 0 : values[values.size() / 2];
}

}  // namespace vellumtide::bench
