// test_scenarios: lives of programs and instances from seeds, each looked at after every step.
//
//   test_scenarios [--from SEED] [--count N] [--minutes M]   many, a line for each finding
//   test_scenarios --seed N [--print] [--shrink]             one; --print shows it, --shrink makes
//                                                            what fails small: scenario_N.txt
//   test_scenarios --replay FILE...  [--shrink]              kept ones
//
// The exit status is 1 when something was found.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/scenarios/child_runs.h"
#include "tests/scenarios/life_writer.h"
#include "tests/scenarios/shrinker.h"

namespace vellumtide::scenarios {
namespace {

struct Options {
  std::uint64_t first = 1, count = 500;
  double minutes = 0;
  bool single = false, prints = false, shrinks = false;
  std::vector<std::string> files;
};

Options parse(int count, char** words) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const auto value = [&] {
      if (++i >= count) throw std::runtime_error(word + " needs a value");
      return words[i];
    };
    if (word == "--from") {
      options.first = std::strtoull(value(), nullptr, 10);
    } else if (word == "--count") {
      options.count = std::strtoull(value(), nullptr, 10);
    } else if (word == "--minutes") {
      options.minutes = std::atof(value());
    } else if (word == "--seed") {
      options.first = std::strtoull(value(), nullptr, 10);
      options.single = true;
    } else if (word == "--print") {
      options.prints = true;
    } else if (word == "--shrink") {
      options.shrinks = true;
    } else if (word == "--replay") {
      while (i + 1 < count && std::strncmp(words[i + 1], "--", 2) != 0)
        options.files.push_back(words[++i]);
    } else {
      throw std::runtime_error("unknown option " + word);
    }
  }
  return options;
}

void show(const std::string& name, const Outcome& outcome) {
  if (!outcome.finding) return;
  std::printf("%s, step %llu: %s: %s\n", name.c_str(),
              static_cast<unsigned long long>(outcome.step), outcome.finding->kind.c_str(),
              outcome.finding->text.c_str());
  std::fflush(stdout);
}

// Plays one scenario; true when nothing was found.
bool playOne(const Options& options, const Scenario& scenario, const std::string& name) {
  if (options.prints) std::fputs(scenario.text().c_str(), stdout);
  const Outcome outcome = playInChild(scenario);
  show(name, outcome);
  if (!outcome.finding) {
    std::printf("%s: %llu steps, nothing found\n", name.c_str(),
                static_cast<unsigned long long>(outcome.steps));
    return true;
  }
  if (options.shrinks) {
    const Scenario small = shrink(scenario, [&](const Scenario& candidate) {
      const Outcome again = playInChild(candidate);
      return again.finding && again.finding->kind == outcome.finding->kind;
    });
    const std::string file = "scenario_" + name.substr(name.find_last_of(" /") + 1) + ".txt";
    std::ofstream(file, std::ios::binary) << small.text();
    show(file, playInChild(small));
  }
  return false;
}

bool playMany(const Options& options) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const auto seconds = [start] {
    return std::chrono::duration<double>(Clock::now() - start).count();
  };
  unsigned long long scenarios = 0, steps = 0, findings = 0;
  playSeeds(
      options.first,
      [&](std::uint64_t seed) {
        return options.minutes > 0 ? seconds() < options.minutes * 60
                                   : seed < options.first + options.count;
      },
      [&](std::uint64_t seed, const Outcome& outcome) {
        ++scenarios;
        steps += outcome.steps;
        show("seed " + std::to_string(seed), outcome);
        if (outcome.finding && ++findings == 1)
          std::printf("  repeat and shrink with: test_scenarios --seed %llu --shrink\n",
                      static_cast<unsigned long long>(seed));
      });
  std::printf("%llu scenarios, %llu steps, %llu findings, %.1f steps a second\n", scenarios, steps,
              findings, static_cast<double>(steps) / seconds());
  return findings == 0;
}

bool run(const Options& options) {
  if (options.single) {
    return playOne(options, writeScenario(options.first), "seed " + std::to_string(options.first));
  }
  if (options.files.empty()) return playMany(options);
  bool isFine = true;
  for (const std::string& name : options.files) {
    std::ifstream file(name, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + name);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    isFine = playOne(options, Scenario::read(text), name) && isFine;
  }
  return isFine;
}

}  // namespace
}  // namespace vellumtide::scenarios

int main(int count, char** words) try {
  return vellumtide::scenarios::run(vellumtide::scenarios::parse(count, words)) ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "test_scenarios: %s\n", error.what());
  return 2;
}
