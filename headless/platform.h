// What differs from one operating system to another and is no part of the other platform files.
// Internal to this folder.
#pragma once

namespace vellumtide::headless {

// Makes large blocks go back to the system as soon as they are freed. Software rasterisers allocate
// aligned textures anew all the time; an allocator that takes them from its heap fragments it, and
// the process grows by megabytes a frame.
void returnLargeBlocksAtOnce();

// What scripts find in $.os.
const char* operatingSystemName();

}  // namespace vellumtide::headless
