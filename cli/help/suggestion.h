// What a user may have meant by a word that is not known.
#pragma once

#include <string>
#include <vector>

namespace vellumtide::cli {

// The known word nearest to `word`, as "; did you mean X?"; "" when none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& known);

}  // namespace vellumtide::cli
