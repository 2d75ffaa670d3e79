#include <gtest/gtest.h>

#include "kernel/pbk_parser.h"

namespace vellumtide {
namespace {

/// The body with every run of characters that are no copies in brackets behind the source's
/// character that they stand at.
std::string annotated(const std::string& source) {
  pbKernelInfo kernel;
  SourceMap map;
  PBKParser(source).parse(kernel, &map);
  std::string text;
  bool isOpen = false;
  std::size_t place = 0;
  for (std::size_t i = 0; i < kernel.body.size(); ++i) {
    const auto origin = map.originOf(i);
    if (!origin) return "no origin: " + kernel.body.substr(i);
    if (isOpen && (origin->isCopy || origin->source != place)) text += ']', isOpen = false;
    if (origin->isCopy) {
      EXPECT_EQ(source.at(origin->source), kernel.body[i]) << source << " at " << i;
    } else if (!isOpen) {
      place = origin->source;
      text += std::string("[") + (source + "$").at(place) + ":";
      isOpen = true;
    }
    text += kernel.body[i];
  }
  EXPECT_FALSE(map.originOf(kernel.body.size()));
  return text + (isOpen ? "]" : "");
}

TEST(SourceMap, EveryCharacterOfTheBodyHasItsOrigin) {
  const struct {
    const char *source, *annotated;
  } kCases[] = {
      {"kernel k{a + b\r\n;}", "a + b\r\n;"},
      {"#define A 1 // c\nkernel k{x", "[#:#]define A 1 [/:\n][k:\n]x"},
      {"kernel k{a/* \n\n */b// c\r\nd}", "a[/: ]b[/:\n]\nd"},
      {"kernel k{union(unionSize)}", "[u:vlmk_union](unionSize)"},
      {"kernel k{ input/**/image4  a,b ; output\n\npixel4   c;}",
       " [i:input ]image4  a,b ; [o:output ]pixel4[c: ]c;"},
      {"kernel k{parameter  float\n a < defaultValue: 1.0;\n> /**/, b<>;c}",
       "[p:parameter ]float[a: ]a,[b: ]b;c"},
      {"kernel k{dependent  float2 a/**/;dependent int n;}",
       "[d:dependent varying ]float2 a[/: ];[d:dependent ]int n;"},
      {"kernel k{evaluateDependents( ) {/**/{}\n} x",
       "evaluateDependents( ) {[{:\n#ifdef vlmk_VERTEX_SHADER\n][/: ]{}\n[}:\n#endif\n]} x"},
  };
  for (const auto& [source, expected] : kCases)
    EXPECT_EQ(annotated(source), expected) << source;
}

TEST(SourceMap, StaysSmall) {
  SourceMap map;
  pbKernelInfo kernel;
  std::string source = "kernel k{";
  for (int i = 0; i < 100'000; ++i)
    source += "a+b\n";
  PBKParser(source).parse(kernel, &map);
  EXPECT_EQ(map.segmentCount(), 1u);

  SourceMap gap;
  gap.addCopy(0, 5, 2);
  gap.addCopy(3, 8, 2);
  gap.addCopy(2, std::size_t{1} << 31, 2);
  EXPECT_EQ(gap.originOf(1)->source, 6u);
  EXPECT_FALSE(gap.originOf(2) || gap.originOf(3));
}

}  // namespace
}  // namespace vellumtide
