// Graphs that are broken, cyclic, deep or built to do harm.
#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/graph_text.h"
#include "tests/support/pictures.h"
#include "tests/support/session.h"
#include "tests/support/small_stack.h"

namespace vellumtide::end_to_end {
namespace {

const std::string kStep = kernelText("", "dst = sampleNearest(src, outCoord()) + 1.0;", "Step");
const std::string kRung = kernelText(
    "input image4 a; input image4 b;",
    "dst = 0.5 * (sampleNearest(a, outCoord()) + sampleNearest(b, outCoord()));", "Rung");

World picture() {
  return plainWorld(4, 3, kFloat, {0.5, 0.25, 0, 1});
}

std::string wired(const std::string& words) {
  return GraphText().kernel(kStep).kernel(kRung).wire("src=image").wire(words).str();
}

TEST(GraphLimits, UnusableGraphsSayWhyAndLeaveTheFrameAlone) {
  const std::string cyclic = "Cyclick Dependency detected. / graph";
  const struct {
    std::string text, info;
  } cases[] = {
      {wired("a=Step a>a.src a>out"), cyclic},
      {wired("a=Step b=Step a>b.src b>a.src b>out"), cyclic},
      {wired("a=Step b=Step c=Step a>b.src b>a.src b>c.src c>out"), cyclic},
      {wired("a=Step b=Step c=Rung c>a.src a>b.src src>c.a b>c.b j=Rung src>j.a b>j.b j>out"),
       cyclic},
      {wired("a=Step src>a.src"), "No output node. / graph"},
      {wired("a=Step src>a.src nobody>out"), ""},
      {"<graph/>", "No output node."},
      {"", "No output node."},
      {"no XML at all", "No output node."},
      {"<kernel></kernel>", "No output node."},
      {std::string("\0\xFF\xFE<", 4), "No output node."},
      {std::string(100000, '<'), "No output node."},
  };
  Session session;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 2000));
    Effect& effect = session.graph(picture(), c.text);
    EXPECT_EQ(session.takeInfo(), c.info);
    EXPECT_EQ(effect.title, "VTD: (Invalid PB)");
    World output = picture();
    const uint64_t before = output.checksum();
    EXPECT_EQ(session.host.render(effect, {.format = kFloat, .output = &output}).error,
              PF_Err_NONE);
    EXPECT_EQ(output.checksum(), before);
  }
}

// A chain as deep as this would need more than the stack if any step called itself.
TEST(GraphLimits, DeepChainOnASmallStack) {
  constexpr int kDepth = 5000;
  runOnSmallStack([] {
    Session session;
    Effect& effect = session.graph(picture(), chain(kDepth, kStep).str());
    EXPECT_EQ(effect.title, "VTD: chain");
    const World frame = session.render(effect, {.format = kFloat});
    EXPECT_EQ(pixelAt(frame, 1, 1), (Rgba{kDepth + 0.5, kDepth + 0.25, kDepth, kDepth + 1}));
  });
}

TEST(GraphLimits, TallLadderLoadsAndDraws) {
  Session session;
  const std::string text = ladder(2000, kRung).str();
  const auto start = std::chrono::steady_clock::now();
  const World frame = session.render(session.graph(picture(), text), {.format = kFloat});
  EXPECT_EQ(pixelAt(frame, 3, 2), pixelAt(picture(), 3, 2));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// Whatever a file holds, loading, showing and drawing it ends, with nothing held and no error.
TEST(GraphLimits, HostileFilesEndInAPictureOrARefusal) {
  HostOptions options;
  options.captureOutput = true;
  Session session(options);
  const std::string whole = wired("a=Step src>a.src a>out"), big(10'000'000, 'x');
  std::string nested = "<graph>", crlf;
  for (int i = 0; i < 100000; ++i)
    nested += "<node id=\"a\">";
  for (const char c : whole)
    crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  std::vector<std::string> texts = {
      nested,
      crlf,
      "\xEF\xBB\xBF" + whole,
      GraphText(big).kernel(kStep).wire("a=Step b=Step a>b.src b>out " + big + ">out").str(),
      wired("a=Step b=Step a=Step a=image src=image a>b.src b>out"),
      GraphText().kernel("kernel Step { /* never ends").wire("a=Step b=Lost a>b.src b>out").str(),
      GraphText().kernel("").node("", "").wire("=image =Step >. >out").str(),
      GraphText("&lt;&#0;&bogus;&#x110000;").wire("&quot;=image &quot;>out").str(),
      "<!DOCTYPE g [<!ENTITY a \"&b;&b;\"><!ENTITY b \"&a;&a;\">]><graph name=\"&a;\"></graph>",
  };
  for (std::size_t length = 0; length < whole.size(); length += 7)
    texts.push_back(whole.substr(0, length));
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 1000));
    Effect& effect = session.graph(picture(), text);
    session.render(effect, {.format = kFloat});
    session.host.closeInstance(effect);
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
