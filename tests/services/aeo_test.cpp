// What is read of the host's layers and streams, and what is shown in its Info panel.
#include "services/aeo/layer_aspect.h"
#include "services/aeo/marker_comment.h"
#include "services/aeo/stream.h"
#include "services/debug_output.h"
#include "tests/support/room_host.h"

namespace vellumtide {
namespace {

using testing::RoomHost;

TEST(Markers, GiveTheFirstComment) {
  RoomHost room;
  std::optional<std::string> comment = "old";
  const auto read = [&comment](PF_InData* in) { comment = firstMarkerComment(in); };
  room.run(read);
  EXPECT_EQ(comment, std::nullopt);
  for (const char* text : {"", "a.pbk", "\xC3\xA9\xF0\x9F\x98\x80.pbg"}) {
    room.layer.markers().clear();
    room.layer.addMarker(text);
    room.layer.addMarker("second.pbk");
    EXPECT_GT(room.refuseEach(read), 15);
    EXPECT_EQ(comment, text);
  }
}

TEST(LayerAspect, IsThatOfTheChosenLayersItem) {
  RoomHost room;
  headless::Layer& other = room.addLayer("other");
  float aspect = 0;
  const auto read = [&aspect](PF_InData* in) { aspect = layerParameterAspect(in, 1); };
  room.layer.item()->pixelAspect = {5, 1};
  room.run(read);
  EXPECT_EQ(aspect, 1.0f) << "no layer";
  room.effect->setLayer(1, &other);
  for (const A_Ratio& ratio : {A_Ratio{3, 2}, A_Ratio{1, 0}, A_Ratio{0, 1}, A_Ratio{-1, 1}}) {
    other.item()->pixelAspect = ratio;
    room.refuseEach(read);
    EXPECT_EQ(aspect, ratio.num == 3 ? 1.5f : 1.0f);
  }
}

TEST(Streams, SetControlsAndNameTheInstance) {
  RoomHost room;
  const auto& controls = room.effect->controls();
  EXPECT_GT(room.refuseEach([&](PF_InData* in) {
    const int sets = controls[2].valueSets;
    const AEO::Effect effect(in);
    AEO::Stream(effect, 3).setHidden(true);
    AEO::Stream(effect, 4).setHidden(false);
    const PF_Err error = AEO::Stream(effect, 2).setOneD(1);
    EXPECT_EQ(error == PF_Err_NONE, controls[2].valueSets == sets + 1);
    AEO::Stream(effect, 3).setTwoD(3, 4);
    AEO::Stream(effect, 4).setColor(0.1, 0.2, 0.3, 0.4);
    AEO::setInstanceTitle(effect, 4, "VTD: \xC3\xA9");
  }),
            40);
  EXPECT_TRUE(controls[3].hidden && !controls[4].hidden);
  EXPECT_TRUE(controls[2].number == 1 && controls[3].point.x == 3 && controls[3].point.y == 4);
  const headless::ColorValue& color = controls[4].color;
  EXPECT_EQ((std::vector{color.red, color.green, color.blue, color.alpha}),
            (std::vector{0.1, 0.2, 0.3, 0.4}));
  EXPECT_EQ(room.effect->title, "VTD: \xC3\xA9");
}

TEST(InfoPanel, ShowsTextSplitAtTheFirstTwoLineFeeds) {
  using Lines = std::vector<std::optional<std::string>>;
  const std::pair<std::string, Lines> cases[] = {
      {"a\nb\nc\nd", {"a", "b", "c\nd"}},
      {"a", {"a", std::nullopt, std::nullopt}},
      {"", {"", std::nullopt, std::nullopt}},
      {std::string(1024, 'x'), {"dprintf error ;Message too large", "", std::nullopt}}};
  RoomHost room;
  for (const auto& [text, lines] : cases) {
    room.run([&text = text](PF_InData* in) { dprintf(in, text.c_str(), 0); });
    EXPECT_EQ(room.host.infoPanel().back().lines, lines);
  }
  EXPECT_EQ(room.refuseEach([](PF_InData* in) { dprintf(in, "a"); }), 7);
  EXPECT_NE(dprintf(nullptr, "no host"), PF_Err_NONE);
}

#ifndef _WIN32
TEST(DebugOutput, CutsResultsAndRefusesLongFormats) {
  const std::string longest(1023, 'x');
  ::testing::internal::CaptureStderr();
  _printf(longest.c_str(), 0);
  _printf("%s", (longest + "cut").c_str());
  _printf((longest + "y").c_str(), 0);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            longest + longest + "_printf error ;Message too large\n");
}
#endif

}  // namespace
}  // namespace vellumtide
