// The signals that end a process (on Windows: the console's events), taken as they come.
#pragma once

#include <chrono>

namespace vellumtide::cli {

// From now on nextSignal() gets every signal that would end the process but KILL and those of a
// crash; what was ignored before stays ignored. Pipes without a reader and files that may grow no
// more make writing fail instead of ending the process. A crash calls `atCrash`, which may touch
// neither heap nor locks. To be called once, before the first thread starts.
void takeSignals(void (*atCrash)());

// Waits for the next signal; 0 when none came within the time.
int nextSignal(std::chrono::milliseconds time);

// Standard output and error are again what they were at takeSignals(), whoever captures them.
void restoreStreams();

// Ends the process as by that signal, so that a shell sees 128 + n.
[[noreturn]] void endBySignal(int signal);

// "SIGTERM".
const char* signalName(int signal);

// What ends a program whose output nobody reads any more.
inline constexpr int kReaderGone = 13;

}  // namespace vellumtide::cli
