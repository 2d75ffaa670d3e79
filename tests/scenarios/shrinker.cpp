#include "tests/scenarios/shrinker.h"

#include <algorithm>

namespace vellumtide::scenarios {
namespace {

// Kernels whose output's assignment is gone: what they draw is anybody's guess.
long unassignedOutputs(const Scenario& scenario) {
  long count = 0;
  for (const ProgramFile& file : scenario.files) {
    for (const ProgramLine& line : file.lines) {
      if (line.text.find("evaluatePixel") != std::string::npos) ++count;
      if (line.text.ends_with("= sum; }")) --count;
    }
  }
  return count;
}

class Shrinker {
 public:
  Shrinker(Scenario scenario, const std::function<bool(const Scenario&)>& stillFails)
      : best_(std::move(scenario)), stillFails_(stillFails) {}

  Scenario run() {
    do {
      changed_ = false;
      thin([](Scenario & s) -> auto& { return s.steps; });
      thin([](Scenario & s) -> auto& { return s.files; });
      for (std::size_t file = 0; file < best_.files.size(); ++file) {
        thin([file](Scenario & s) -> auto& { return s.files[file].lines; });
        for (std::size_t line = 0; line < best_.files[file].lines.size(); ++line)
          thinLine(file, line);
      }
      for (std::size_t step = 0; step < best_.steps.size(); ++step)
        thinWords(step);
    } while (changed_);
    return best_;
  }

 private:
  bool take(const Scenario& candidate) {
    if (unassignedOutputs(candidate) > unassignedOutputs(best_) || !stillFails_(candidate))
      return false;
    best_ = candidate;
    return changed_ = true;
  }

  // Leaves out ever smaller runs of a list's entries.
  template <class ListOf>
  void thin(ListOf listOf) {
    for (std::size_t run = std::max<std::size_t>(listOf(best_).size() / 2, 1);; run /= 2) {
      for (std::size_t at = 0; at < listOf(best_).size();) {
        Scenario candidate = best_;
        auto& list = listOf(candidate);
        const auto begin = list.begin() + static_cast<std::ptrdiff_t>(at);
        list.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(run, list.size() - at)));
        if (!take(candidate)) at += run;
      }
      if (run <= 1) return;
    }
  }

  // Fewer copies, and a parameter's declaration without one of its metadata.
  void thinLine(std::size_t file, std::size_t line) {
    while (best_.files[file].lines[line].copies > 1) {
      Scenario candidate = best_;
      candidate.files[file].lines[line].copies /= 2;
      if (!take(candidate)) break;
    }
    // Each "key: value;" behind the "<" of a parameter.
    std::size_t from = best_.files[file].lines[line].text.find('<');
    while (from++ != std::string::npos) {
      Scenario candidate = best_;
      std::string& text = candidate.files[file].lines[line].text;
      const std::size_t end = text.find(';', from);
      if (end == std::string::npos || text.find('>', from) < end) return;
      text.erase(from, end + 1 - from);
      from = take(candidate) ? from - 1 : end;
    }
  }

  // The optional words behind the fourth come in keys with one or two values.
  void thinWords(std::size_t step) {
    for (std::size_t at = best_.steps[step].size(); at-- > 2;) {
      for (const std::size_t count : {std::size_t{3}, std::size_t{2}}) {
        Scenario candidate = best_;
        Step& words = candidate.steps[step];
        if (at + count > words.size()) continue;
        const auto begin = words.begin() + static_cast<std::ptrdiff_t>(at);
        words.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
        if (take(candidate)) break;
      }
    }
  }

  Scenario best_;
  const std::function<bool(const Scenario&)>& stillFails_;
  bool changed_ = false;
};

}  // namespace

Scenario shrink(Scenario scenario, const std::function<bool(const Scenario&)>& stillFails) {
  return Shrinker(std::move(scenario), stillFails).run();
}

}  // namespace vellumtide::scenarios
