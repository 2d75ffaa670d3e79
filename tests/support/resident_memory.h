#pragma once

namespace vellumtide::end_to_end {

// Bytes of memory that this process holds at the moment, 0 where that cannot be told.
long residentBytes();

}  // namespace vellumtide::end_to_end
