// Graphs draw what their kernels draw one after another, each node once.
#include <gtest/gtest.h>

#include "tests/support/frame_probe.h"
#include "tests/support/graph_text.h"
#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

const std::string kGain = kernelText("parameter float gain;",
                                     "dst = sampleNearest(src, outCoord()) * gain + 0.1;", "Gain");
const std::string kMix = kernelText("input image4 a; input image4 b; parameter float amount;",
                                    "dst = mix(sampleNearest(a, outCoord()),"
                                    "sampleNearest(b, outCoord() + float2(2.0, 0.0)), amount);",
                                    "Mix");

// One image feeds a node that feeds two, a second image joins at the end; one parameter drives
// four nodes.
GraphText diamond() {
  return GraphText("diamond")
      .parameter("level", "float", "0.5")
      .kernel(kGain)
      .kernel(kMix)
      .node("top", "Gain", "top::gain = level;")
      .node("left", "Gain", "left::gain = level * 0.5;")
      .node("right", "Gain", "right::gain = 1.0 - level;")
      .node("join", "Mix", "join::amount = 0.25;")
      .node("end", "Mix", "end::amount = level;")
      .wire("first=image second=image first>top.src top>left.src top>right.src left>join.a")
      .wire("right>join.b join>end.a second>end.b end>out");
}

// The kernel alone on one or two pictures, its only parameter set.
World applied(Session& session, const std::string& kernel, const std::vector<World>& pictures,
              double value) {
  Effect& effect = session.kernel(pictures[0], kernel);
  if (pictures.size() > 1) setLayer(effect, "b", &session.layer(pictures[1]));
  setControl(effect, pictures.size() > 1 ? "amount" : "gain", {value});
  return session.render(effect, {.format = pictures[0].format()});
}

TEST(Graph, EqualsItsKernelsOneAfterAnother) {
  Session session;
  const std::string path = session.file("diamond.pbg", diamond().str());
  for (const PF_PixelFormat format : kFormats) {
    const World first = randomWorld(31, 22, format);
    const World second = plainWorld(31, 22, format, {1, 0.5, 0, 1});
    for (const double level : {0.5, 0.75}) {
      Effect& effect = session.effect(first, path);
      setControl(effect, "level", {level});
      setLayer(effect, "second", &session.layer(second));
      const World top = applied(session, kGain, {first}, level);
      const World left = applied(session, kGain, {top}, level / 2);
      const World right = applied(session, kGain, {top}, 1 - level);
      const World join = applied(session, kMix, {left, right}, 0.25);
      const World end = applied(session, kMix, {join, second}, level);
      const Formula asAlone = [&end](const Rgba&, int x, int y) { return pixelAt(end, x, y); };
      EXPECT_EQ(differences(first, session.render(effect, {.format = format}), asAlone), "");
    }
  }
}

// Records keep 31 bytes of a name; in the shader it is whole.
TEST(Graph, LongNamesWorkAndAreToldApart) {
  const std::string name(40, 'a');
  const std::string kernel = "kernel Long < > { input image4 " + name + "_one; input image4 " +
                             name + "_two; output pixel4 " + name + "_out; dependent int " + name +
                             "_n, " + name + "_m; void evaluateDependents() { " + name +
                             "_n = 2; " + name + "_m = 3; } void evaluatePixel() { " + name +
                             "_out = float(" + name + "_n) * sampleNearest(" + name +
                             "_one, outCoord()) + float(" + name + "_m) * sampleNearest(" + name +
                             "_two, outCoord()); } }";
  const World first = plainWorld(5, 4, kFloat, {1, 0.5, 0, 0.25});
  const World second = plainWorld(5, 4, kFloat, {1, 0, 2, 1});
  const Rgba expected = {5, 1, 6, 3.5};
  Session session;
  Effect& alone = session.kernel(first, kernel);
  setLayer(alone, name.substr(0, 31), &session.layer(second));
  EXPECT_EQ(pixelAt(session.render(alone, {.format = kFloat}), 2, 1), expected);

  Effect& inGraph = session.graph(
      first, GraphText()
                 .kernel(kernel)
                 .wire("x=image y=image n=Long x>n." + name + "_one y>n." + name + "_two n>out")
                 .str());
  setLayer(inGraph, "y", &session.layer(second));
  EXPECT_EQ(pixelAt(session.render(inGraph, {.format = kFloat}), 2, 1), expected);
}

TEST(Graph, NodesAreDrawnOnceAndHoldNoMemoryBetweenFrames) {
  constexpr int kWidth = 24, kHeight = 10;
  const std::string rung =
      kernelText("input image4 a; input image4 b; parameter float amount;",
                 "dst = sampleNearest(a, outCoord()) + sampleNearest(b, outCoord());", "Rung");
  const struct {
    GraphText graph;
    int draws, textures;
  } cases[] = {
      {diamond(), 5, 7},
      // Nodes that nothing downstream needs are not drawn.
      {diamond().wire("left>out"), 2, 7},
      // A quarter of a million draws if nodes were not shared.
      {ladder(18, rung).parameter("amount", "float"), 35, 37},
  };
  for (const auto& c : cases) {
    Session session;
    Effect& effect = session.graph(World(kWidth, kHeight, PF_PixelFormat_ARGB32), c.graph.str());
    for (int frame = 0; frame < 2; ++frame) {
      FrameProbe probe;
      session.host.render(effect, probed(probe));
      ASSERT_TRUE(probe.finished);
      EXPECT_EQ(probe.samples, static_cast<uint64_t>(c.draws) * kWidth * kHeight);
      EXPECT_EQ(probe.textures, c.textures);
      EXPECT_EQ(probe.largeTextures, 0);
    }
  }
}

TEST(Graph, InputsThatNothingFeedsAreTransparent) {
  Session session;
  const std::string step = kernelText("", "dst = sampleNearest(src, outCoord()) + 0.25;", "Step");
  const World picture = plainWorld(5, 4, PF_PixelFormat_ARGB32, {0.5, 0.5, 0.5, 0.5});
  const struct {
    const char *wires, *info;
    double value;
  } cases[] = {
      {"src=image n=Step n>out", "Unconnected input: src of node n / graph\n", 0.25},
      {"n=Step nobody>n.src n>out", "Unconnected input: src of node n / graph\n", 0.25},
      {"src=image n=Step src>n.none n>out", "Unconnected input: src of node n / graph\n", 0.25},
      {"src=image src>out", "", 0.5},
      // Of several connections the last one counts.
      {"src=image n=Step m=Step src>n.src n>m.src src>m.src n>out m>out", "", 0.75},
      // The fifth image has no layer.
      {"a=image b=image c=image d=image e=image n=Step e>n.src n>out", "", 0.25},
      // An image and a node of one name: the image is meant.
      {"same=image same=Step n=Step same>n.src n>out",
       "Unconnected input: src of node same / graph\n", 0.75},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.wires);
    Effect& effect = session.graph(picture, GraphText().kernel(step).wire(c.wires).str());
    EXPECT_EQ(session.takeInfo(), c.info + std::string("Graph has been loaded from file: / graph"));
    EXPECT_EQ(differences(picture, session.render(effect),
                          everywhere({c.value, c.value, c.value, c.value})),
              "");
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
