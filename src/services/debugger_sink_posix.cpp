#include <cstdio>

#include "services/debugger_sink.h"

namespace vellumtide {

void writeToDebugger(const char* text) {
  std::fputs(text, stderr);
}

}  // namespace vellumtide
