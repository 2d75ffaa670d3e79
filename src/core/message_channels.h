// Three process-wide text sinks on which problems in programs are reported.
#pragma once

#include <string>

namespace vellumtide {

enum class Channel {
  Ignored = 0,
  Debug = 1,     // debug output with the host's Info panel
  ErrorLog = 2,  // appended to the error log
};

using MessageSink = void (*)(const char* text);

// A null sink silences the channel again.
void setMessageSink(Channel channel, MessageSink sink);

// Does nothing for a channel without a sink.
void sendMessage(Channel channel, const std::string& text);

}  // namespace vellumtide
