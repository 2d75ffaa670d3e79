#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

#include "cli/os/machine_room.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

// What Mesa's software rasteriser needs at the least.
constexpr std::size_t kFiles = 12;
constexpr std::size_t kBytes = std::size_t{288} << 20;

[[noreturn]] void fail(const std::string& lack, int resource, const std::string& unit, int error) {
  rlimit limit{};
  getrlimit(resource, &limit);
  throw Failure(ExitStatus::Failed, "a GL driver needs more " + lack + " than this process may " +
                                        "have (its limit is " + std::to_string(limit.rlim_cur) +
                                        unit + "): " + std::generic_category().message(error));
}

void requireFiles() {
  std::array<int, kFiles> files{};
  std::size_t got = 0;
  while (got < files.size() && (files[got] = dup(STDERR_FILENO)) >= 0)
    ++got;
  const int error = errno;
  for (std::size_t i = 0; i < got; ++i)
    close(files[i]);
  if (got < files.size() && error == EMFILE) fail("open files", RLIMIT_NOFILE, "", error);
}

void requireMemory() {
  void* const space = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (space == MAP_FAILED) fail("memory", RLIMIT_AS, " bytes", errno);
  munmap(space, kBytes);
}

}  // namespace

void requireMachineRoom() {
  requireFiles();
  requireMemory();
}

}  // namespace vellumtide::cli
