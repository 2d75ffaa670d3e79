// The path and text classes over the host's memory: usable only while a command runs.
#pragma once

#include "core/ae_allocator.h"
#include "services/jst/paths.h"
#include "services/jst/text.h"

namespace vellumtide {

using HostText = _JST::String<aeAllocator>;
using HostFile = _JST::File<aeAllocator>;
using HostFolder = _JST::Folder<aeAllocator>;

}  // namespace vellumtide
