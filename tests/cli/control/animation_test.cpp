#include "cli/control/animation.h"

#include <cmath>

#include "cli/session/render_session.h"
#include "cli/text/failure.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

// Every kind of control, shown by the five pixels of a row.
const std::string kKernel = kernelText(
    "float x = floor(outCoord().x);"
    "if (x < 1.0) dst = float4(float(count), amount, turn, on ? 1.0 : 0.0);"
    "else if (x < 2.0) dst = float4(float(mode), place, both.y ? 1.0 : 0.0);"
    "else if (x < 3.0) dst = tint;"
    "else if (x < 4.0) dst = float4(offset, float(pair.y));"
    "else dst = float4(m[0], m[1]);",
    "parameter int count < maxValue : 9; >; parameter bool on; parameter bool2 both;"
    "parameter float amount < aeDisplayName : \"A@1=2\"; minValue : -1.0; maxValue : 3.0; >;"
    "parameter float turn < aeUIControl : \"aeAngle\"; >;"
    "parameter int mode < aeUIControl : \"aePopup\"; enumValues : \"low|mid|high\"; >;"
    "parameter float2 place < aeUIControl : \"aePoint\"; >;"
    "parameter float4 tint < aeUIControl : \"aeColor\"; >;"
    "parameter float3 offset; parameter int2 pair; parameter float2x2 m;");

class Animations : public CommandLine {
 protected:
  void SetUp() override {
    writeText("k.pbk", kKernel);
    program_ = readProgram(file("k.pbk"));
    std::vector<LayerPicture> pictures;
    pictures.push_back({headless::World(5, 1, PF_PixelFormat_ARGB128), {1, 1}, ""});
    session_ =
        std::make_unique<RenderSession>("", file("k.pbk").string(), program_, std::move(pictures));
  }

  std::vector<double> shown(const Animation& animation, double frame) {
    animation.apply(frame);
    headless::RenderOptions options;
    options.format = PF_PixelFormat_ARGB128;
    const auto world = session_->render(session_->effect(), options);
    std::vector<double> values;
    for (int x = 0; x < 5; ++x) {
      for (const double value : world->pixel(x, 0))
        values.push_back(value);
    }
    return values;
  }

  Program program_;
  std::unique_ptr<RenderSession> session_;
};

TEST_F(Animations, EveryKindOfControlShowsItsValueAtEachFrame) {
  writeText("keys.json", R"({
    "both": [false, true], "pair": [{"frame": 0, "value": [0, -4]}, {"frame": 8, "value": "0,4"}],
    "offset": [{"frame": 0, "value": [1, 2, 3], "interpolation": "hold"},
               {"frame": 4, "value": [4, 8, 12], "interpolation": "linear"},
               {"time": 0.5, "value": [8, -8, 12.5]}],
    "tint": [{"frame": 0, "value": "#000000"}, {"time": 0.7, "value": "#ff00ff00"}]})");
  Animation animation;
  EXPECT_TRUE(animation.empty());
  animation.addFile(file("keys.json"));
  for (const char* key :
       {"count@0=0", "count@10=5", "A@1=2@0=-1", "amount@8=3", "turn@0:linear=350", "turn@10=10",
        "on@0=true", "on@5=false", "mode@0=low", "mode@6.5:hold=3", "place@0=10,20",
        "place@16=20,-60", "m@0s=1,2,3,4", "m@1s=25,50,75,100", "offset y@20=8"}) {
    animation.addKey(key);
  }
  ControlPanel panel(program_, session_->effect());
  animation.bind(panel, {30, 1});
  const struct {
    double frame;
    std::vector<double> values;  // of the colour in parts of 255
  } kFrames[] = {
      {-9, {0, -1, 350, 1, 0, 10, 20, 1, 0, 0, 0, 255, 1, 2, 3, -4, 1, 2, 3, 4}},
      {0, {0, -1, 350, 1, 0, 10, 20, 1, 0, 0, 0, 255, 1, 2, 3, -4, 1, 2, 3, 4}},
      {5, {3,  1.5, 180,       0,         0,          13.125, -5, 1,  61, 0,
           61, 194, 4.3636364, 6.5454545, 12.0454545, 1,      5,  10, 15, 20}},
      {6.5, {3,  2.25, 129,       0,         2,          14.0625, -12.5, 1,    79,   0,
             79, 176,  4.9090909, 4.3636364, 12.1136364, 3,       6.2,   12.4, 18.6, 24.8}},
      {21, {5, 3, 10, 0, 2, 20, -60, 1, 255, 0, 255, 0, 8, 8, 12.5, 4, 17.8, 35.6, 53.4, 71.2}},
      {99, {5, 3, 10, 0, 2, 20, -60, 1, 255, 0, 255, 0, 8, 8, 12.5, 4, 25, 50, 75, 100}},
  };
  for (const auto& [frame, values] : kFrames) {
    const std::vector<double> got = shown(animation, frame);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const bool isColor = i >= 8 && i < 12;
      const double value = isColor ? values[i] / 255 : std::round(values[i] * 65536) / 65536;
      EXPECT_EQ(got[i], static_cast<float>(value)) << "frame " << frame << " value " << i;
    }
  }
}

TEST_F(Animations, ReachTheFramesOfASequence) {
  writeText("one.pbk", kernelText("dst = float4(level, shift, 1.0);",
                                  "parameter float level; parameter float2 shift;"));
  writeText("keys.json",
            R"({"shift": [{"time": 0, "value": [0, 8]}, {"time": 2, "value": [4, 0]}]})");
  const Outcome outcome =
      run("render one.pbk --size 2x2 -o o.%d.exr --depth 32 --frames 30-0x15 --fps 15 "
          "-k level@0:hold=1 -k level@1s=2 -k level@2s=4 --animation keys.json");
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  const auto pixel = [&](const char* name) { return readImageFile(file(name)).pixels.pixel(1, 1); };
  EXPECT_EQ(pixel("o.0.exr"), (std::vector<double>{1, 0, 8, 1}));
  EXPECT_EQ(pixel("o.15.exr"), (std::vector<double>{2, 2, 4, 1}));
  EXPECT_EQ(pixel("o.30.exr"), (std::vector<double>{4, 4, 0, 1}));
  const Outcome refused = run("render one.pbk --size 2x2 -o o.png -p level=1 -k level@1=1");
  EXPECT_EQ(refused.status, 2) << refused.error;
}

TEST_F(Animations, MistakesAreNamed) {
  const struct {
    const char *key, *json, *message;
  } kCases[] = {
      {"count", "", "-k count: expected NAME@FRAME=VALUE"},
      {"count@1:smooth=1", "", "expected NAME@FRAME=VALUE"},
      {"nothing@1=1", "", "-k nothing@1=1: there is no control \"nothing\"; the controls are"},
      {"amount@1e9s=2", "", "expected a time"},
      {"amount@1=4e4", "", "-k amount@1=4e4: expected a number from -32767 to 32767"},
      {"on@1:linear=true", "", "a check box has nothing between its values; expected hold"},
      {"turn@1=2", "", "\"turn\" is set with -p, too"},
      {"offset@1s=1,2,3", R"({"offset y": [{"frame": 24, "value": 1}]})",
       "\"offset y\" has another key at frame 24 ("},
      {"count@1=2", R"({"count": 1})", "\"count\" is a constant and has other keys, too"},
      {"", R"({"tint": [{"frame": 1, "value": 1}]})", "f.json: \"tint\" key 1: expected #rrggbb"},
      {"", R"({"count": [{"frame": 1, "value": 1, "ease": 1}]})", "no member \"ease\""},
      {"", R"({"count": [{"frame": 1, "time": 1, "value": 1}]})", "either \"frame\" or"},
      {"", R"({"count": [{"frame": "1", "value": 1}]})", "expected a number as \"frame\""},
      {"", R"({"count": [{"frame": 1}]})", "expected a \"value\""},
      {"", R"({"count": [{"frame": 1, "value": 1, "interpolation": 1}]})", "\"linear\" or"},
      {"", R"({"count": [{"frame": 1, "value": [[1]]}]})", "a list of numbers"},
      {"", R"({"count": []})", "f.json: \"count\": expected at least one key"},
      {"", R"({"count": null})", "expected a value"},
      {"", R"({"count": 1, "count": 2})", "f.json: \"count\" is there twice"},
      {"", "[", "f.json: is not JSON: parse error at line 1"},
      {"", "[]", "expected an object"},
  };
  for (const auto& [key, json, message] : kCases) {
    writeText("f.json", json);
    try {
      Animation animation;
      ControlPanel panel(program_, session_->effect());
      panel.set("turn=1");
      if (*json) animation.addFile(file("f.json"));
      if (*key) animation.addKey(key);
      animation.bind(panel, {24, 1});
      ADD_FAILURE() << key << json;
    } catch (const Failure& failure) {
      EXPECT_NE(std::string(failure.what()).find(message), std::string::npos) << failure.what();
    }
  }
}

}  // namespace
}  // namespace vellumtide::cli
