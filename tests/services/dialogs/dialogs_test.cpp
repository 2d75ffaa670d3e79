#include <utility>

#include "services/dialogs/about_box.h"
#include "services/dialogs/information_dialog.h"
#include "services/dialogs/splash.h"
#include "tests/support/room_host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide {
namespace {

namespace fs = std::filesystem;
using headless::DialogRecord;
using testing::nativePath;
using testing::RoomHost;
using testing::ScratchFolder;
using Lines = std::vector<std::optional<std::string>>;

constexpr DriverStrings kDriver{"V", nullptr, "1.20"};
const Lines kNoLog = {std::nullopt, "1.20", "No error log"};

TEST(ErrorLog, IsClearedOnlyByAWholeExport) {
  const ScratchFolder scratch;
  std::string full = scratch.path("none");
#ifdef __linux__
  full = scratch.path("full");
  fs::create_directory(full);
  fs::create_symlink("/dev/full", full + "/Vellumtide_error_log.txt");
#endif
  const struct {
    bool exports;
    std::optional<std::string> folder;
    const char *title, *text;  // of the last dialog
  } cases[] = {
      {false, {}, "Vellumtide", "Vellumtide has error log.\nDo you export this?"},
      {true, {}, "", "Select where export log"},
      {true, scratch.path("none"), "Log file has failed to export",
       "Log file has failed to export.\nTry other folder."},
      {true, full, "Log file has failed to export",
       "Log file has failed to export.\nTry other folder."},
      {true, scratch.path(""), "Log file has exported ", nullptr},
  };
  RoomHost room;
  auto& scripts = room.host.scripts();
  std::string log = "failed\n";
  const auto exportIt = [&log](PF_InData* in) { exportErrorLog(in, log, kDriver); };
  for (const auto& c : cases) {
    EXPECT_EQ(log, "failed\n");
    scripts.confirmAnswers = {c.exports};
    scripts.folderAnswers = {c.folder};
    room.run(exportIt);
    EXPECT_EQ(scripts.dialogs().back().title, c.title);
    if (c.text) {
      EXPECT_EQ(scripts.dialogs().back().text, c.text);
    }
  }
  EXPECT_EQ(log, "");
  EXPECT_EQ(scratch.get("Vellumtide_error_log.txt"),
            "Win64bit\nvendor : V\nversion : -\nglsl : 1.20\nfailed\n");
  const auto dialogs = scripts.dialogs().size();
  room.run(exportIt);
  EXPECT_EQ(scripts.dialogs().size(), dialogs) << "nothing to ask without a log";
  ASSERT_EQ(room.host.infoPanel().size(), 2u) << "declined, and no log";
  EXPECT_EQ(room.host.infoPanel()[1].lines, kNoLog);
}

// Messages that come while a dialog of the export is open are neither lost nor written over.
TEST(ErrorLog, KeepsWhatArrivesDuringTheExport) {
  const ScratchFolder scratch;
  RoomHost room;
  auto& scripts = room.host.scripts();
  std::string log = "first\n";
  const auto exportIt = [&](PF_InData* in) { exportErrorLog(in, log, kDriver); };
  scripts.onDialog = [&](const DialogRecord& dialog) {
    if (dialog.kind == DialogRecord::Kind::kSelectFolder) log += "second\n";
    if (dialog.title == "Log file has exported ") log += "third\n";
  };
  scripts.confirmAnswers = {true};
  scripts.folderAnswers = {scratch.path("")};
  room.run(exportIt);
  const std::string head = "Win64bit\nvendor : V\nversion : -\nglsl : 1.20\n";
  EXPECT_EQ(scratch.get("Vellumtide_error_log.txt"), head + "first\nsecond\n");
  EXPECT_EQ(log, "third\n");

  // While the user chooses a folder, the about box exports the log into the same one.
  bool inside = false;
  scripts.onDialog = [&](const DialogRecord& dialog) {
    if (dialog.kind != DialogRecord::Kind::kSelectFolder || std::exchange(inside, true)) return;
    exportIt(currentInData());
  };
  scripts.confirmAnswers = {true, true};
  scripts.folderAnswers = {scratch.path(""), scratch.path("")};
  room.run(exportIt);
  EXPECT_EQ(scratch.get("Vellumtide_error_log.txt"), head + "third\n");
  EXPECT_EQ(room.host.infoPanel().back().lines, kNoLog);
}

struct Instance : InformationHost {
  std::optional<std::string> text;
  std::string stored, did;
  bool loads = true;

  std::optional<std::string> information() override { return text; }
  std::string path() override { return stored; }
  bool load(const std::string& path) override { return (did += "load " + path + ";", loads); }
  void adopt(const std::string& path, const std::string& lostName) override {
    did += "adopt " + path + " for '" + lostName + "';";
  }
};

TEST(InformationDialog, ShowsTheProgramOrAsksForItsFile) {
  const std::string accents = "x" + std::string(254, 'y') + "\xC3\xA9";
  const struct {
    std::optional<std::string> text;
    const char *stored, *chosen;
    bool loads;
    std::string shown, did;
  } cases[] = {
      {std::string(300, 'a'), "/a.pbk", "", true, std::string(255, 'a'), ""},
      {accents, "/a.pbk", "", true, accents.substr(0, 255), ""},
      {accents.substr(1) + "z", "/a.pbk", "", true, accents.substr(1, 254), ""},
      {{}, "", "/n.pbk", true, "Select Pixel Bender file", "load /n.pbk;adopt /n.pbk for '';"},
      {{},
       "D:\\old\\fx.pbg",
       "/fx.pbg",
       true,
       "Where is fx.pbg?",
       "load /fx.pbg;adopt /fx.pbg for 'fx.pbg';"},
      {{}, "/a/b.pbk", "", true, "Where is b.pbk?", ""},
      {{}, "/a/b.pbk", "/c.pbk", false, "Where is b.pbk?", "load /c.pbk;"}};
  for (const auto& c : cases) {
    RoomHost room;
    auto& scripts = room.host.scripts();
    if (*c.chosen) scripts.fileAnswers = {c.chosen};
    Instance instance;
    instance.text = c.text;
    instance.stored = c.stored;
    instance.loads = c.loads;
    std::string log;
    room.run([&](PF_InData* in) { showInformation(in, instance, log, kDriver); });
    ASSERT_EQ(scripts.dialogs().size(), 1u);
    EXPECT_EQ(scripts.dialogs()[0].text, c.shown);
    EXPECT_EQ(scripts.dialogs()[0].title, c.text ? "Pixel Bender Information" : "");
    EXPECT_EQ(room.host.infoPanel().size(), c.text ? 1u : 0u) << "the error log follows";
    EXPECT_EQ(instance.did, nativePath(c.did));
  }
}

TEST(AboutBox, ShowsThePictureOnceAndOpensThePage) {
  const ScratchFolder scratch;
  scratch.put("it's/x", "");
  RoomHost room;
  auto& scripts = room.host.scripts();
  scripts.userDataFolder = scratch.path("it's");
  scripts.windowAnswers = {{"Go to Webpage", "image"}, {"Close"}};
  scripts.networkAllowed = false;
  bool written = false;
  std::string log;
  for (int i = 0; i < 2; ++i) {
    room.run([&](PF_InData* in) { showAbout(in, written, log, kDriver); });
  }
  for (const auto& run : scripts.runs())
    EXPECT_EQ(run.error, "") << run.script;
  ASSERT_GE(scripts.dialogs().size(), 3u);
  const DialogRecord& window = scripts.dialogs()[0];
  EXPECT_EQ(window.title, "Vellumtide");
  EXPECT_EQ(window.bounds, (std::vector{0, 0, 512, 322}));
  EXPECT_EQ(window.controls.at(0).bounds, (std::vector{0, 0, 512, 288}));
  ASSERT_EQ(window.drawn.size(), 2u);
  EXPECT_NE(window.drawn[0].text.find(nativePath("Orrinwald/Vellumtide/splash.png")),
            std::string::npos);
  EXPECT_EQ(window.drawn[1].text, "Vellumtide v 1.2.2 (c) 2013 Orrinwald");
  EXPECT_EQ(scripts.dialogs()[2].drawn.size(), 1u) << "no picture the second time";
  EXPECT_EQ(scripts.dialogs()[1].text.rfind("This script requires access to network.", 0), 0u);
  EXPECT_EQ(scripts.hostCommands(), std::vector{2359});
  EXPECT_FALSE(fs::exists(scratch.path("it's/Orrinwald")));
  EXPECT_EQ(room.host.infoPanel().at(0).lines,
            (Lines{"OpenGL vendor  : V", "OpenGL version : ", "GLSL   version : 1.20"}));
}

TEST(Dialogs, SurviveEveryRefusal) {
  const ScratchFolder scratch;
  RoomHost room;
  room.host.scripts().userDataFolder = scratch.path("");
  const int calls = room.refuseEach([&](PF_InData* in) {
    room.host.scripts().confirmAnswers = {true};
    room.host.scripts().folderAnswers = {scratch.path("")};
    room.host.scripts().fileAnswers = {scratch.path("n.pbk")};
    Instance instance;
    std::string log = "failed\n";
    showInformation(in, instance, log, kDriver);
    bool written = false;
    showAbout(in, written, log, kDriver);
    EXPECT_EQ(log.empty(), fs::remove(scratch.path("Vellumtide_error_log.txt")));
  });
  EXPECT_GT(calls, 80);
}

}  // namespace
}  // namespace vellumtide
