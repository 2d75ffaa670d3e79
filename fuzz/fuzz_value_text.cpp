// Value text and parameter metadata on any bytes: the first byte picks the element type.
#include <cmath>
#include <cstring>
#include <string>

#include "fuzz/fuzz_input.h"
#include "kernel/meant_value.h"
#include "kernel/pbk_parser.h"
#include "kernel/value_text.h"

namespace {

using namespace vellumtide;

#ifdef __GLIBC__
/// Texts on which this C library scans otherwise than the standard says: numbers that overflow an
/// int, and exponents or "infinity" begun and not finished.
bool isSpecial(const std::string& text) {
  if (text.find_first_of("eEpPiInN") != std::string::npos) return true;
  std::size_t digits = 0;
  for (const char c : text) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits > 9) return true;
  }
  return false;
}

/// Compares the first two components with the C library's scan.
void compareWithScan(const std::string& text) {
  if (text.find('\0') != std::string::npos || isSpecial(text)) return;
  int ints[2] = {0, 0};
  float floats[2] = {0, 0};
  char words[2][4096] = {};
  if (text.size() >= sizeof(words[0])) return;
  std::sscanf(text.c_str(), "%d,%d", &ints[0], &ints[1]);
  std::sscanf(text.c_str(), "%f,%f", &floats[0], &floats[1]);
  std::sscanf(text.c_str(), "%[^\t\r\n ,],%s", words[0], words[1]);
  const ValueCells ownInts = valueFromText(text, pbElementType::Int2);
  const ValueCells ownFloats = valueFromText(text, pbElementType::Float2);
  const ValueCells ownBools = valueFromText(text, pbElementType::Bool2);
  for (std::size_t i = 0; i < 2; ++i) {
    FUZZ_EXPECT(ownInts.intAt(i) == ints[i]);
    const float own = ownFloats.floatAt(i);
    FUZZ_EXPECT(std::memcmp(&own, &floats[i], sizeof(own)) == 0);
    FUZZ_EXPECT(ownBools.boolAt(i) == (std::strcmp(words[i], "true") == 0));
  }
}
#endif

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto type = static_cast<pbElementType>(data[0] % kElementTypeCount);
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const ValueCells cells = valueFromText(text, type);
  if (baseKind(type) == BaseKind::None) FUZZ_EXPECT(cells == ValueCells());
#ifdef __GLIBC__
  compareWithScan(text);
#endif

  // Blanks around it change nothing in what is meant, which is always a number.
  const auto meant = meantValue(text, type);
  FUZZ_EXPECT(meant == meantValue(" " + text + "\n", type) || text.size() + 2 > kMeantValueLimit);
  if (meant) {
    FUZZ_EXPECT(baseKind(type) != BaseKind::None && text.size() <= kMeantValueLimit);
    for (std::size_t i = 0; baseKind(type) == BaseKind::Float && i < 16; ++i)
      FUZZ_EXPECT(!std::isnan(meant->floatAt(i)));
  }
  const pbValue value = valueOf(cells, text, type);
  FUZZ_EXPECT(value.cells == cells && (!value.meant || value.meant == meant));

  std::string source = "kernel K { parameter ";
  source.append(typeName(type)).append(" p < ").append(text);
  pbKernelInfo kernel;
  PBKParser(source).parse(kernel);
  source.append("> ; >;}");
  PBKParser(source).parse(kernel);
  return 0;
}
