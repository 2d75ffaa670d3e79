// Projects and preferences survive on disk; broken files are refused with a reason.
#include "headless/project.h"

#include <filesystem>
#include <fstream>

#include "subject_host.h"

namespace vellumtide::headless {
namespace {

std::string scratchFile(const char* name) {
  return (std::filesystem::path(testing::TempDir()) / name).string();
}

void writeText(const std::string& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

World pixelsOf(const ProjectLayer& layer) {
  return testPicture(layer.width, layer.height, PF_PixelFormat_ARGB32);
}

TEST(Project, ReopenedRendersTheSame) {
  const std::string file = scratchFile("vellumtide_project_test.json");
  SubjectHost subject("1 + \"\u00e9\"");
  Layer& other = subject.layer.composition().addLayer("other", World(4, 4, PF_PixelFormat_ARGB32));
  other.item()->pixelAspect = {10, 11};
  other.item()->file = "pictures/o.png";
  Effect& effect = *subject.effect;
  effect.setNumber(4, 77);
  effect.setNumber(5, 0.1);
  effect.setPoint(6, 1.25, -7);
  effect.setColor(8, {0.1, 0.2, 0.3, 0.4});
  effect.setLayer(1, &other);
  effect.program = "kernels/a.pbk";
  subject.host.newInstance(other);
  std::ofstream(file, std::ios::binary)
      << Project::capture(subject.host, subject.layer.composition()).text();
  const uint64_t picture = subject.host.render(effect).output->checksum();

  Host host(loadSubject());
  host.globalSetup();
  const std::vector<Effect*> opened = Project::read(file).open(host, pixelsOf);
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_EQ(opened[0]->program, "kernels/a.pbk");
  for (const Control& control : effect.controls()) {
    const Control& again = opened[0]->control(control.index);
    EXPECT_EQ(again.number, control.number) << control.label;
    EXPECT_EQ(again.point.y, control.point.y);
    EXPECT_EQ(again.color.blue, control.color.blue);
    EXPECT_EQ(again.layerId, control.layerId);
  }
  Layer& reopened = opened[1]->layer();
  EXPECT_EQ(reopened.item()->pixelAspect.den, 11u);
  EXPECT_EQ(reopened.item()->file, "pictures/o.png");
  EXPECT_EQ(opened[0]->layer().markers()[0].comment, u"1 + \"\u00e9\"");
  EXPECT_EQ(host.render(*opened[0]).output->checksum(), picture);
  host.finish();
  EXPECT_EQ(host.books().faultText(), "");
  std::filesystem::remove(file);
}

TEST(Project, BrokenFilesAreRefused) {
  const std::string file = scratchFile("vellumtide_broken_project.json");
  EXPECT_THROW(Project::read(file), std::runtime_error);
  constexpr const char* kHead = R"({"format":1,"composition":"c",)";
  const std::string unreadable[] = {
      "",
      "{",
      "[]",
      R"({"format":2})",
      R"({"format":1,"composition":3})",
      std::string(kHead) + R"("layers":[{"id":"x"}],"instances":[]})",
      std::string(kHead) + R"("layers":[{"id":1,"name":"","pixelAspect":[1,0]}],"instances":[]})",
      std::string(kHead) + R"("layers":[],"instances":[{"layer":1,"sequenceData":"0g"}]})",
      std::string(kHead) + R"("layers":[],"instances":[{"layer":1,"sequenceData":"010"}]})"};
  for (const std::string& text : unreadable) {
    writeText(file, text);
    EXPECT_THROW(Project::read(file), std::runtime_error) << text;
  }
  const std::string layer = R"("layers":[{"id":1,"name":"n","width":2,"height":2}],"instances":[)";
  const std::string unopenable[] = {
      R"({"layer":2}]})", R"({"layer":1,"controls":[{"index":9,"type":1,"value":[1]}]}]})",
      R"({"layer":1,"controls":[{"index":4,"type":6,"value":[1,2]}]}]})",
      R"({"layer":1,"controls":[{"index":4,"type":1,"value":[]}]}]})",
      R"({"layer":1,"controls":[{"index":1,"type":0,"value":[5]}]}]})"};
  Host host(loadSubject());
  host.globalSetup();
  for (const std::string& text : unopenable) {
    writeText(file, kHead + layer + text);
    const Project project = Project::read(file);
    EXPECT_THROW(project.open(host, pixelsOf), std::runtime_error) << text;
  }
  host.finish();
  EXPECT_EQ(host.books().faultText(), "");
  std::filesystem::remove(file);
}

TEST(Preferences, LiveInAFile) {
  const std::string file = scratchFile("vellumtide_preferences_test.json");
  std::filesystem::remove(file);
  Preferences(file).set("section", "rootFolder", "a\\b\u00e9");
  const Preferences again(file);
  EXPECT_EQ(again.get("section", "rootFolder"), "a\\b\u00e9");
  EXPECT_EQ(again.get("section", "none"), std::nullopt);
  EXPECT_EQ(again.get("none", "rootFolder"), std::nullopt);
  writeText(file, "[1]");
  EXPECT_THROW(Preferences{file}, std::runtime_error);
  std::filesystem::remove(file);
  EXPECT_THROW(Preferences("no/such/folder/p.json").set("a", "b", "c"), std::runtime_error);
}

}  // namespace
}  // namespace vellumtide::headless
