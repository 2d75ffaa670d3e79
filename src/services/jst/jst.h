// The path and text classes over the host's memory: usable only while a command runs.
#pragma once

#include "core/ae_allocator.h"
#include "services/jst/file.h"
#include "services/jst/folder.h"

namespace vellumtide {

using HostText = _JST::String<aeAllocator<char>>;
using HostFile = _JST::File<aeAllocator<char>>;
using HostFolder = _JST::Folder<aeAllocator<char>>;

}  // namespace vellumtide
