#include "cli/help/suggestion.h"

#include <algorithm>

namespace vellumtide::cli {
namespace {

// How many letters to change, add, leave out or swap with their neighbour make `a` of `b`.
std::size_t distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t k = 0; k <= b.size(); ++k) {
      if (i == 0 || k == 0) {
        cost[i][k] = i + k;
        continue;
      }
      cost[i][k] = std::min({cost[i - 1][k] + 1, cost[i][k - 1] + 1,
                             cost[i - 1][k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1)});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1]) {
        cost[i][k] = std::min(cost[i][k], cost[i - 2][k - 2] + 1);
      }
    }
  }
  return cost[a.size()][b.size()];
}

}  // namespace

std::string suggestion(const std::string& word, const std::vector<std::string>& known) {
  constexpr std::size_t kLongest = 64;  // nobody means one of ours by a word longer than that
  if (word.size() > kLongest) return "";
  std::string best;
  std::size_t least = std::max<std::size_t>(1, std::min<std::size_t>(3, word.size() / 3)) + 1;
  for (const std::string& candidate : known) {
    const bool isStart = word.size() > 2 && candidate.starts_with(word);
    const std::size_t far = isStart ? 1 : distance(word, candidate);
    if (far >= least) continue;
    least = far;
    best = candidate;
  }
  return best.empty() ? "" : "; did you mean " + best + "?";
}

}  // namespace vellumtide::cli
