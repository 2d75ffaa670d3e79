// A kernel's text read in the plainest way: comments and metadata taken out, the rest as it stands
// between the prelude and a main(). What builds like this has to build in the module.
#pragma once

#include <string>
#include <string_view>

namespace vellumtide::scenarios {

// A fragment shader; "" when there is no kernel with braces.
std::string plainFragment(std::string_view source);

}  // namespace vellumtide::scenarios
