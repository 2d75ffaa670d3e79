// The tokeniser and the kernel parser on any bytes.
#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "kernel/pbk_parser.h"

namespace {

using namespace vellumtide;

/// Adds up what the reader hands out.
class Sum : public ShaderReader::Parser {
 public:
  bool onToken(ShaderReader&, std::size_t length, TokenKind, LexState,
               std::string_view token) override {
    FUZZ_EXPECT(length > 0 && !token.empty());
    total += length;
    return false;
  }
  std::size_t total = 0;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string_view text = bytes.substr(0, bytes.find('\x03'));
  ShaderReader reader(bytes);
  Sum sum;
  reader.run(sum);
  const auto lineEnds =
      std::count_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; });
  FUZZ_EXPECT(sum.total == text.size());
  FUZZ_EXPECT(reader.lineCount() == static_cast<std::size_t>(lineEnds));

  pbKernelInfo kernel;
  SourceMap map;
  PBKParser parser(bytes);
  parser.parse(kernel, &map);
  for (std::size_t i = 0; i < kernel.body.size(); ++i) {
    const auto origin = map.originOf(i);
    FUZZ_EXPECT(origin && origin->source <= text.size());
    FUZZ_EXPECT(!origin->isCopy || text.at(origin->source) == kernel.body[i]);
  }
  FUZZ_EXPECT(map.segmentCount() <= text.size());
  pbKernelInfo unmapped;
  PBKParser(bytes).parse(unmapped);
  FUZZ_EXPECT(unmapped.body == kernel.body);
  FUZZ_EXPECT(parser.lineCount() <= reader.lineCount());
  FUZZ_EXPECT(parser.position() <= text.size());
  // Each token grows by less than the longest text put in its place.
  FUZZ_EXPECT(kernel.body.size() <= 48 * text.size());
  for (const pbParameter& parameter : kernel.parameters) {
    FUZZ_EXPECT(parameter.sourceName.starts_with(parameter.name.view()));
  }
  return 0;
}
