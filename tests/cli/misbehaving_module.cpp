// Two modules: one whose first call crashes, one whose first call never returns.
#include <unistd.h>

#include <csignal>

#include "aeapi/entry_point.h"

extern "C" VELLUMTIDE_EXPORT int EntryPointFunc(int, void*, void*, void*, void*, void*) {
  while (VELLUMTIDE_HANGS)
    pause();
  return std::raise(SIGSEGV);
}
