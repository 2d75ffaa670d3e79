#pragma once

#include <cstddef>
#include <string_view>

namespace vellumtide {

/// The text cut to at most `limit` bytes and then to whole UTF-8 characters. A text that fills a
/// name's field counts as cut there already. Bytes that are no UTF-8 stay.
std::string_view cutText(std::string_view text, std::size_t limit);

}  // namespace vellumtide
