#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

#include "cli/os/child_process.h"
#include "cli/text/failure.h"

extern char** environ;

namespace vellumtide::cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLookEvery{5};
constexpr int kLooks = 160;  // that a child has to end by itself

std::atomic<pid_t> running{0};
std::atomic<bool> ended{false};  // by endChildProcess()

// Reads until the writer closes its end; false when the time is over before that.
bool readAll(int pipe, Clock::time_point end, std::string& text) {
  char part[4096];
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waiting{pipe, POLLIN, 0};
    const int ready = left.count() > 0 ? poll(&waiting, 1, static_cast<int>(left.count())) : 0;
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) return false;
    const ssize_t got = read(pipe, part, sizeof part);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return true;
    text.append(part, static_cast<std::size_t>(got));
  }
}

// The child's own process may have files to remove, so it is asked before it is killed.
void end(pid_t child) {
  kill(child, SIGTERM);
  const auto isRunning = [child] {
    siginfo_t end{};  // which is left to the thread that waits for it
    return waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           end.si_pid == 0;
  };
  for (int i = 0; i < kLooks && isRunning(); ++i)
    std::this_thread::sleep_for(kLookEvery);
  kill(child, SIGKILL);
}

// This process takes signals in a way of its own, which the child does not inherit.
class UsualSignals {
 public:
  UsualSignals() {
    posix_spawnattr_init(&attributes_);
    sigset_t none, usual;
    sigemptyset(&none);
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    sigaddset(&usual, SIGXFSZ);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &usual);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~UsualSignals() { posix_spawnattr_destroy(&attributes_); }
  UsualSignals(const UsualSignals&) = delete;
  UsualSignals& operator=(const UsualSignals&) = delete;

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_;
};

// `program` is a path, or a name to look up in PATH.
pid_t start(const char* program, const std::vector<std::string>& arguments, int output) {
  std::vector<char*> words{const_cast<char*>(program)};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int error =
      posix_spawnp(&child, program, &actions, UsualSignals().get(), words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    throw Failure(ExitStatus::Failed,
                  std::string("no process can be started: ") + std::strerror(error));
  }
  return child;
}

ChildResult run(const char* program, const std::vector<std::string>& arguments, int limitSeconds) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw Failure(ExitStatus::Failed, std::string("no pipe can be made: ") + std::strerror(errno));
  }
  pid_t child = 0;
  try {
    child = start(program, arguments, ends[1]);
  } catch (const Failure&) {
    close(ends[0]);
    close(ends[1]);
    throw;
  }
  close(ends[1]);
  running = child;
  ChildResult result;
  const bool inTime =
      readAll(ends[0], Clock::now() + std::chrono::seconds(limitSeconds), result.output);
  close(ends[0]);
  if (!inTime) end(child);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  running = 0;
  while (ended)
    pause();  // the process ends, too, and what became of the child is no result
  if (!inTime) {
    result.failure = "took longer than " + std::to_string(limitSeconds) + " seconds";
  } else if (WIFSIGNALED(status)) {
    result.failure = "ended by signal " + std::to_string(WTERMSIG(status)) + " (" +
                     strsignal(WTERMSIG(status)) + ")";
  } else {
    result.status = WEXITSTATUS(status);
  }
  return result;
}

}  // namespace

void endChildProcess() {
  ended = true;
  if (const pid_t child = running) end(child);
}

ChildResult runSelf(const std::vector<std::string>& arguments, int limitSeconds) {
  return run("/proc/self/exe", arguments, limitSeconds);
}

ChildResult runTool(const std::string& program, const std::vector<std::string>& arguments,
                    int limitSeconds) {
  return run(program.c_str(), arguments, limitSeconds);
}

}  // namespace vellumtide::cli
