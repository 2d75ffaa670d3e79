// Diagnostics with printf formats: the platform's debugger output and the host's Info panel.
#pragma once

#include "aeapi/effect_data.h"

#if defined(__GNUC__) || defined(__clang__)
#define VELLUMTIDE_PRINTF_LIKE(text, first) __attribute__((format(printf, text, first)))
#else
#define VELLUMTIDE_PRINTF_LIKE(text, first)
#endif

namespace vellumtide {

// Both format into 1024 bytes and cut longer results. A format of 1024 characters or more is
// replaced by a line that says so.

// Writes to the debugger (on Linux to standard error). Needs no command.
void _printf(const char* format, ...) VELLUMTIDE_PRINTF_LIKE(1, 2);

// Shows up to three lines, cut at line feeds, in the Info panel; further line feeds stay in the
// third. Returns the host's error of the call. Without in-data nothing is shown and the result is
// PF_Err_INVALID_CALLBACK.
PF_Err dprintf(PF_InData* in_data, const char* format, ...) VELLUMTIDE_PRINTF_LIKE(2, 3);

}  // namespace vellumtide
