#pragma once

#include <cstdarg>

// Diagnostics of the driver. Every text goes to one process-wide sink, which is the debug output
// once the module has started and standard error until then. The device must be current.

namespace vellumtide {

using ReportSink = void (*)(const char* text);

// Null gives standard error back.
void setReportSink(ReportSink sink);

// Formats (at most 1023 characters, the rest is cut) and sends the text to the sink.
void reportText(const char* format, ...);
void reportTextV(const char* format, std::va_list arguments);

// Vendor, renderer, version and extensions, a line each; a string the driver lacks is left out.
void reportGLVersion();

// Reads one pending GL error, reports it and returns its code; 0 reports "No Error.".
unsigned checkGLError();
// The same behind a message of the caller's.
unsigned checkGLError(const char* format, ...);

}  // namespace vellumtide
