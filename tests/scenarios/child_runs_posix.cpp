#include <signal.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "tests/scenarios/child_runs.h"
#include "tests/scenarios/life_writer.h"

// What a sanitizer keeps back of freed memory would be taken for the module's.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
  return "detect_leaks=0:quarantine_size_mb=8:handle_abort=1:allocator_may_return_null=1";
}

// There under sanitizers only.
extern "C" __attribute__((weak)) void __sanitizer_set_report_fd(void* descriptor);

namespace vellumtide::scenarios {
namespace {

// A step's processor time, far above what any takes on a slow machine, and what it may need of
// memory beyond what was there; the files of a scenario are below a few MiB.
constexpr int kStepSeconds = 20;
constexpr long kStepMemory = 512L << 10;  // KiB

long memoryLine(const char* name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long value = 0;
    if (word == name && status >> value) return value;
  }
  return 0;
}

class Watch {
 public:
  void operator()() {
    if (before_ > 0 && memoryLine("VmHWM:") > before_ + kStepMemory) {
      throw Finding{"memory", "a step took " +
                                  std::to_string((memoryLine("VmHWM:") - before_) >> 10) + " MiB"};
    }
    std::ofstream("/proc/self/clear_refs") << "5";  // the high-water mark starts anew
    before_ = memoryLine("VmRSS:");
    const itimerval limit{{0, 0}, {kStepSeconds, 0}};
    setitimer(ITIMER_PROF, &limit, nullptr);
  }

 private:
  long before_ = 0;
};

// One line: "step steps kind<tab>text", kind and text empty without a finding.
std::string outcomeLine(const Scenario& scenario, SecondOpinion& opinion) {
  Stage stage(scenario, opinion);
  Finding finding;
  try {
    Watch watch;
    stage.play([&] { watch(); });
  } catch (const Finding& found) {
    finding = found;
  } catch (const std::exception& error) {
    finding = {"exception", error.what()};
  }
  return std::to_string(stage.step()) + " " + escaped(finding.kind, false) + " " +
         escaped(finding.text, false) + "\n";
}

Outcome readOutcome(const std::string& line) {
  std::istringstream stream(line);
  Outcome outcome;
  std::string kind, text;
  stream >> outcome.step >> kind >> text;
  outcome.steps = outcome.step;
  if (kind != "\\") outcome.finding = Finding{unescaped(kind), unescaped(text)};
  return outcome;
}

// Why a process ended, from its status and what it wrote last.
Outcome crashOf(int status, const std::string& errors) {
  std::string kind = WIFSIGNALED(status) ? strsignal(WTERMSIG(status)) : "exit";
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGPROF) kind = "time";
  const std::size_t summary = errors.find("SUMMARY: ");
  std::string text = errors.substr(errors.size() > 400 ? errors.size() - 400 : 0);
  if (summary != std::string::npos) {
    text = errors.substr(summary, errors.find('\n', summary) - summary);
    std::istringstream words(text);
    std::string skipped, fault;
    words >> skipped >> skipped >> fault;
    kind = "crash " + fault;
  }
  return {Finding{kind, text}, 0, 0};
}

// A child that runs `body`, which writes lines to a descriptor; its errors go to a file.
class Child {
 public:
  explicit Child(const std::function<void(std::FILE*)>& body) : errors_(std::tmpfile()) {
    int ends[2];
    if (!errors_ || pipe(ends) != 0) throw std::runtime_error("no pipe");
    std::fflush(stdout);
    id_ = fork();
    if (id_ == 0) {
      close(ends[0]);
      dup2(fileno(errors_), STDERR_FILENO);
      // The host captures what is written to the standard error during a call.
      if (__sanitizer_set_report_fd) {
        const std::intptr_t descriptor = fileno(errors_);
        __sanitizer_set_report_fd(reinterpret_cast<void*>(descriptor));
      }
      std::FILE* lines = fdopen(ends[1], "w");
      try {
        body(lines);
      } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        _exit(1);
      }
      std::fclose(lines);
      _exit(0);
    }
    close(ends[1]);
    lines_ = fdopen(ends[0], "r");
  }
  ~Child() {
    if (lines_) std::fclose(lines_);
    std::fclose(errors_);
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // False at the end.
  bool next(std::string& line) {
    char* text = nullptr;
    std::size_t size = 0;
    const bool isLine = getline(&text, &size, lines_) > 0;
    line = isLine ? text : "";
    std::free(text);
    return isLine;
  }
  // Waits for the end; nothing when that was as it should be.
  std::optional<Outcome> crash() {
    int status = 0;
    waitpid(id_, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return std::nullopt;
    std::rewind(errors_);
    std::string errors;
    for (int c = std::fgetc(errors_); c != EOF; c = std::fgetc(errors_))
      errors += static_cast<char>(c);
    return crashOf(status, errors);
  }

 private:
  std::FILE* errors_;
  std::FILE* lines_ = nullptr;
  pid_t id_ = 0;
};

}  // namespace

Outcome playInChild(const Scenario& scenario) {
  Child child([&](std::FILE* lines) {
    SecondOpinion opinion;
    std::fputs(outcomeLine(scenario, opinion).c_str(), lines);
  });
  std::string line;
  if (child.next(line)) return readOutcome(line);
  return child.crash().value_or(Outcome{Finding{"exit", "without a word"}, 0, 0});
}

void playSeeds(std::uint64_t first, const std::function<bool(std::uint64_t)>& more,
               const std::function<void(std::uint64_t, const Outcome&)>& report) {
  constexpr std::uint64_t kMostInOne = 200;
  for (std::uint64_t seed = first; more(seed);) {
    Child child([&](std::FILE* lines) {
      SecondOpinion opinion;
      for (std::uint64_t each = seed; each < seed + kMostInOne && more(each); ++each) {
        std::fputs(outcomeLine(writeScenario(each), opinion).c_str(), lines);
        std::fflush(lines);
      }
    });
    std::string line;
    bool failed = false;
    while (!failed && child.next(line)) {
      const Outcome outcome = readOutcome(line);
      failed = outcome.finding.has_value();
      report(seed++, outcome);
    }
    if (failed) continue;
    if (const std::optional<Outcome> crash = child.crash()) report(seed++, *crash);
  }
}

}  // namespace vellumtide::scenarios
