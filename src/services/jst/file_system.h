// The platform's file-system calls. Paths are UTF-8 and are turned into the platform's form here
// and nowhere else: wide characters on Windows; on Linux every back-slash becomes a slash. A path
// that the platform cannot take (empty, too long, with a NUL inside) fails like a missing one.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::_JST {

enum class EntryKind { File, Folder };

// True for anything that is there, and when the answer is that access is denied.
bool pathExists(std::string_view path);

// As fopen. Null for a folder, and for anything to be read that is not a regular file, such as a
// pipe or a device, so that no opening and no read can block. Windows refuses those for writing
// too.
std::FILE* openStream(std::string_view path, const char* mode);

bool eraseFile(std::string_view path);
bool makeFolder(std::string_view path);   // one level
bool eraseFolder(std::string_view path);  // an empty one

// Names in the folder, without "." and "..", in the order the file system gives them. A link counts
// as what it leads to and is left out when it leads nowhere. Empty when the folder cannot be read.
std::vector<std::string> entryNames(std::string_view folder, EntryKind kind);

}  // namespace vellumtide::_JST
