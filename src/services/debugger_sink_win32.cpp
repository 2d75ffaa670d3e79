#include <windows.h>

#include <string>

#include "core/utf.h"
#include "services/debugger_sink.h"

namespace vellumtide {

void writeToDebugger(const char* text) {
  const std::u16string units = toUtf16(text).units;
  OutputDebugStringW(std::wstring(units.begin(), units.end()).c_str());
}

}  // namespace vellumtide
