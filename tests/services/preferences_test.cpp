#include "services/preferences.h"

#include "tests/support/room_host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide {
namespace {

namespace fs = std::filesystem;
using testing::RoomHost;
using testing::ScratchFolder;

TEST(RootFolder, IsReadWholeOrEmpty) {
  RoomHost room;
  std::string read = "old";
  for (const std::string& value : {std::string(), std::string("abc"), std::string(5000, 'p')}) {
    if (!value.empty()) {
      room.host.preferences().set("Settings_cs_VTD_Launcher", "rootFolder", value);
    }
    EXPECT_GE(room.refuseEach([&read](PF_InData* in) { read = readRootFolder(in); }), 4);
    EXPECT_EQ(read, value);
  }
}

TEST(RootFolder, IsSearchedTwoLevelsDeepFilesFirst) {
  const ScratchFolder scratch;
  const std::string root = scratch.path("");
  for (const char* path : {"one/two/fx.pbk", "one/two/three/deep.pbk", "one/two/top.pbk", "top.pbk",
                           "one/two/shallow.pbk", "one/shallow.pbk", "one/Case.pbk"}) {
    scratch.put(path, "x");
  }
#ifndef _WIN32
  fs::create_directory_symlink("..", scratch.path("one/up"));
  scratch.put("one/odd\\name.pbk", "x");
#endif
  RoomHost().run([&root](PF_InData*) {
    const std::pair<const char*, const char*> cases[] = {{"fx.pbk", "\\one\\two\\fx.pbk"},
                                                         {"top.pbk", "\\top.pbk"},
                                                         {"shallow.pbk", "\\one\\shallow.pbk"},
                                                         {"deep.pbk", ""},
                                                         {"case.pbk", ""},
                                                         {"name.pbk", ""},
                                                         {"x.pbk", ""},
                                                         {"", ""},
                                                         {"one", ""},
                                                         {".", ""}};
    for (const auto& [name, found] : cases) {
      const std::string expected = *found ? root + found : "";
      EXPECT_EQ(findUnderRootFolder(root, name).value_or(""), expected) << name;
    }
    EXPECT_EQ(findUnderRootFolder(root + "none", "fx.pbk"), std::nullopt);
    EXPECT_EQ(findUnderRootFolder("", "fx.pbk"), std::nullopt);
  });
}

TEST(WorkingFile, IsWrittenOnceAndRemovedWithItsEmptyFolders) {
  const ScratchFolder scratch;
  RoomHost room;
  room.host.scripts().userDataFolder = scratch.path("");
  room.run([&scratch](PF_InData* in) {
    writeWorkingFile(in, "Vellumtide", "splash.png", "first", 5);
    EXPECT_EQ(writeWorkingFile(in, "Vellumtide", "splash.png", "other", 5), PF_Err_NONE);
    EXPECT_EQ(scratch.get("Orrinwald/Vellumtide/splash.png"), "first");
    scratch.put("Orrinwald/keep", "x");
    removeWorkingFile(in, "Vellumtide", "splash.png");
    EXPECT_FALSE(fs::exists(scratch.path("Orrinwald/Vellumtide")));
    EXPECT_TRUE(fs::remove(scratch.path("Orrinwald/keep"))) << "what else is there stays";
    removeWorkingFile(in, "Vellumtide", "splash.png");
    EXPECT_FALSE(fs::exists(scratch.path("Orrinwald")));
  });
  room.host.scripts().userDataFolder = scratch.path("no/such/folder");
  room.run([](PF_InData* in) {
    EXPECT_EQ(writeWorkingFile(in, "Vellumtide", "splash.png", "x", 1), 1);
    EXPECT_EQ(removeWorkingFile(in, "Vellumtide", "splash.png"), PF_Err_NONE);
  });
  EXPECT_EQ(room.host.scripts().runs()[0].script,
            "Folder(Folder.userData.fsName+\"/Orrinwald\").fsName;");
}

}  // namespace
}  // namespace vellumtide
