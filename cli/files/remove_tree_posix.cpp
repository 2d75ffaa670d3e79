#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

#include "cli/files/remove_tree.h"

namespace vellumtide::cli {
namespace {

// As the system call fills it; the C library's reader of folders uses the heap.
struct Entry {
  std::uint64_t inode;
  std::int64_t next;
  std::uint16_t length;
  std::uint8_t type;
  char name[1];
};

void removeAt(int parent, const char* name) {
  if (unlinkat(parent, name, 0) == 0) return;
  const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (folder < 0) return;
  alignas(Entry) char buffer[2048];
  for (long got; (got = syscall(SYS_getdents64, folder, buffer, sizeof buffer)) > 0;) {
    for (long at = 0; at < got;) {
      const auto* entry = reinterpret_cast<const Entry*>(buffer + at);
      at += entry->length;
      if (std::strcmp(entry->name, ".") != 0 && std::strcmp(entry->name, "..") != 0) {
        removeAt(folder, entry->name);
      }
    }
  }
  close(folder);
  unlinkat(parent, name, AT_REMOVEDIR);
}

}  // namespace

void removeTree(const char* path) {
  removeAt(AT_FDCWD, path);
}

}  // namespace vellumtide::cli
