#include "core/message_channels.h"

#include <array>
#include <cstddef>

namespace vellumtide {
namespace {

std::array<MessageSink, 3> sinks{};

}  // namespace

void setMessageSink(Channel channel, MessageSink sink) {
  const auto index = static_cast<std::size_t>(channel);
  if (index < sinks.size()) sinks[index] = sink;
}

void sendMessage(Channel channel, const std::string& text) {
  const auto index = static_cast<std::size_t>(channel);
  if (index < sinks.size() && sinks[index]) sinks[index](text.c_str());
}

}  // namespace vellumtide
