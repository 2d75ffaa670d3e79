#include "host/flat_sequence.h"

#include <cstdint>

namespace vellumtide {
namespace {

constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kFreshBit = 1;
constexpr std::size_t kWordSize = 4;
constexpr std::size_t kHeaderSize = 2 * kWordSize;

std::uint32_t readWord(std::string_view data, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = kWordSize; i-- > 0;) {
    word = word << 8 | static_cast<std::uint8_t>(data[offset + i]);
  }
  return word;
}

void appendWord(std::string& data, std::uint32_t word) {
  for (std::size_t i = 0; i < kWordSize; ++i)
    data.push_back(static_cast<char>(word >> (8 * i)));
}

std::string textAt(std::string_view data, std::size_t offset) {
  const std::string_view rest = data.substr(offset);
  return std::string(rest.substr(0, rest.find('\0')));
}

}  // namespace

FlatSequence readFlatSequence(const void* bytes, std::size_t size) {
  FlatSequence sequence;
  if (!bytes || size < kWordSize) return sequence;
  const std::string_view data(static_cast<const char*>(bytes), size);
  const std::uint32_t version = readWord(data, 0);
  if (version == 0) {
    sequence.path = textAt(data, kWordSize);
    sequence.hasProgram = !sequence.path.empty();
    sequence.freshFlag = !sequence.hasProgram;
  } else if (version == kVersion && size >= kHeaderSize) {
    sequence.freshFlag = (readWord(data, kWordSize) & kFreshBit) != 0;
    sequence.path = textAt(data, kHeaderSize);
  }
  return sequence;
}

std::string writeFlatSequence(std::string_view path, bool freshFlag) {
  std::string data;
  data.reserve(kHeaderSize + path.size() + 1);
  appendWord(data, kVersion);
  appendWord(data, freshFlag ? kFreshBit : 0);
  data.append(path);
  data.push_back('\0');
  return data;
}

}  // namespace vellumtide
