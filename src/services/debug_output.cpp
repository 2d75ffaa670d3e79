#include "services/debug_output.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "services/debugger_sink.h"
#include "services/info_panel.h"

namespace vellumtide {
namespace {

constexpr std::size_t kTextSize = 1024;

// Ends the line at its first line feed and returns what lies behind, null without a line feed.
char* cutLine(char* line) {
  char* feed = line ? std::strchr(line, '\n') : nullptr;
  if (!feed) return nullptr;
  *feed = '\0';
  return feed + 1;
}

}  // namespace

void _printf(const char* format, ...) {
  if (std::strlen(format) >= kTextSize) {
    _printf("_printf error ;Message too large\n");
    return;
  }
  char text[kTextSize] = "";
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  writeToDebugger(text);
}

PF_Err dprintf(PF_InData* in_data, const char* format, ...) {
  if (std::strlen(format) >= kTextSize) {
    return dprintf(in_data, "dprintf error ;Message too large\n");
  }
  char text[kTextSize] = "";
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  char* line2 = cutLine(text);
  char* line3 = cutLine(line2);
  return drawInfoText3(in_data, text, line2, line3);
}

}  // namespace vellumtide
