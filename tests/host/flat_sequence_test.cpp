#include "host/flat_sequence.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vellumtide {
namespace {

// Reads from a block of exactly the data's size, so that a sanitizer sees what lies behind it.
FlatSequence readExactly(const std::string& data) {
  const std::vector<char> block(data.begin(), data.end());
  return readFlatSequence(block.data(), block.size());
}

TEST(FlatSequence, IsWrittenByteForByteAndReadInEveryVersion) {
  EXPECT_EQ(writeFlatSequence("", true), std::string("\1\0\0\0\1\0\0\0\0", 9));
  EXPECT_EQ(writeFlatSequence("a.k", false), std::string("\1\0\0\0\0\0\0\0a.k\0", 12));
  for (const bool fresh : {false, true}) {
    const FlatSequence read = readExactly(writeFlatSequence("D:\\old\\\xC3\xA9.pbg", fresh));
    EXPECT_EQ(read.path, "D:\\old\\\xC3\xA9.pbg");
    EXPECT_EQ(read.freshFlag, fresh);
    EXPECT_FALSE(read.hasProgram);
  }
  for (int version = 0; version < 256; ++version) {
    const FlatSequence read =
        readExactly(static_cast<char>(version) + std::string("\0\0\0p\0\0\0q", 8));
    EXPECT_EQ(read.path, version == 0 ? "p" : version == 1 ? "q" : "");
    EXPECT_EQ(read.hasProgram, version == 0);
    EXPECT_EQ(read.freshFlag, version > 1);
  }
  const FlatSequence empty = readExactly(std::string("\0\0\0\0\0", 5));
  EXPECT_TRUE(empty.path.empty() && !empty.hasProgram && empty.freshFlag);
}

TEST(FlatSequence, StaysInsideItsBytes) {
  for (const auto& whole : {writeFlatSequence("a.pbk", false), std::string("\0\0\0\0a.pbk", 9)}) {
    for (std::size_t length = 0; length < whole.size(); ++length) {
      const std::string path = readExactly(whole.substr(0, length)).path;
      EXPECT_EQ(path, std::string("a.pbk").substr(0, path.size()));
    }
  }
  std::mt19937 random(20130801);
  for (int i = 0; i < 100000; ++i) {
    std::string data(random() % 24, '\0');
    for (char& byte : data)
      byte = static_cast<char>(random() % 4 ? random() % 3 : random());
    EXPECT_LE(readExactly(data).path.size(), data.size());
  }
}

}  // namespace
}  // namespace vellumtide
