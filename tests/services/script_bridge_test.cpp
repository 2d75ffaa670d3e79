#include "services/script_bridge.h"

#include <cstring>

#include "tests/support/room_host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide {
namespace {

using testing::nativePath;
using testing::RoomHost;

TEST(ScriptBridge, ComposesItsScriptsExactly) {
  const std::string withNul("a\0\"", 3);
  EXPECT_EQ(escapeScriptString("\\a\a\b\f\n\r\t\v?\"'\x01\xC3\xA9\xFF"),
            "\\\\a\\b\\f\\n\\r\\t\\v\\?\\\"\\'\x01\xC3\xA9\xFF");
  EXPECT_EQ(escapeScriptString(withNul), std::string("a\0\\\"", 4));
  RoomHost room;
  room.run([](PF_InData* in) {
    std::string path;
    alert(in, "Say \"hi\"\nC:\\x", "T", true);
    confirm(in, "Title", "Message?", false);
    openFileDialog(in, "Where?", "pbk or pbg:*.pbk;*.pbg;", path);
    selectFolderDialog(in, "Which'", path);
  });
  const char* const expected[] = {
      R"(alert("Say \"hi\"\nC:\\x","T",true);)", R"(confirm("Message\?",false,"Title");)",
      R"(function main(){var file = File.openDialog("Where\?","pbk or pbg:*.pbk;*.pbg;");)"
      R"(if(file != null){return file.fsName;}else{return "";}}main();)",
      R"(function main(){var folder = Folder.selectDialog("Which\'"); )"
      R"(if(folder != null){return folder.fsName;}else{return "";}}main();)"};
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(room.host.scripts().runs().at(i).script, expected[i]);
  }
}

TEST(ScriptBridge, ShowsHostileTextsUnchanged) {
  std::string controls;
  for (char c = 1; c < 32; ++c)
    controls += c;
  const std::string shown = controls.substr(0, 6) + controls.substr(7);
  const std::pair<std::string, std::string> cases[] = {
      {controls, shown},
      {"\");alert(\"x", "\");alert(\"x"},
      {"\\u0041\xC3\xA9\xF0\x9F\x98\x80?'\x7F\\", "\\u0041\xC3\xA9\xF0\x9F\x98\x80?'\x7F\\"},
      {std::string(1 << 20, '\\'), std::string(1 << 20, '\\')},
      {std::string("cut\0 off", 8), "cut"},
      {"Voil\xE0 un flou", "Voil\uFFFD un flou"},
      {"a\xFF\x80z\xC0\x80shown", "a\uFFFD\uFFFDz\uFFFD\uFFFDshown"},
      {"a\xE2\x80\xA8z\xE2\x80\xA9", "a\nz\n"}};
  RoomHost room;
  for (const auto& [text, expected] : cases) {
    room.run([&text = text](PF_InData* in) { alert(in, text, text); });
    EXPECT_EQ(room.host.scripts().runs().back().error, "");
    EXPECT_EQ(room.host.scripts().dialogs().back().text, expected);
  }
}

TEST(ScriptBridge, ReadsAnswers) {
  const struct {
    std::optional<std::string> answer;
    bool file, folder;
    const char* copied;  // into a buffer of 5
  } cases[] = {{"/a/b.pbk", true, true, "/a/b."},
               {"null", true, false, ""},
               {"", false, false, ""},
               {std::nullopt, false, false, ""}};
  RoomHost room;
  auto& scripts = room.host.scripts();
  for (const auto& c : cases) {
    scripts.fileAnswers = scripts.folderAnswers = {c.answer, c.answer};
    scripts.confirmAnswers = {c.file};
    room.run([&](PF_InData* in) {
      std::string path = "old";
      char buffer[] = "overwritten";
      EXPECT_EQ(openFileDialog(in, "p", "f", path), c.file);
      EXPECT_EQ(path, nativePath(c.answer.value_or("")));
      EXPECT_EQ(selectFolderDialog(in, "p", path), c.folder);
      EXPECT_EQ(openFileDialog(in, "p", "f", 5, buffer), std::strlen(c.copied));
      EXPECT_EQ(buffer, nativePath(c.copied));
      EXPECT_EQ(selectFolderDialog(in, "p", 5, buffer), std::strlen(c.copied));
      EXPECT_EQ(confirm(in, "t", "m", !c.file), c.file);
    });
  }
}

TEST(ScriptBridge, ReturnsTheHostsErrorAndEveryHandle) {
  RoomHost room;
  std::string result, error;
  EXPECT_GT(room.refuseEach([&](PF_InData* in) {
    const auto before = room.host.scripts().runs().size();
    const PF_Err code = executeScript(in, "'done'", result, error);
    EXPECT_EQ(code != PF_Err_NONE, room.host.scripts().runs().size() == before);
    executeScript(in, "broken(", result, error);
    executeScript(in, "'done'", result);
  }),
            25);
  EXPECT_EQ(result, "done");
  EXPECT_NE(error, "");
  EXPECT_NE(executeScript(nullptr, "x", result), PF_Err_NONE);
}

}  // namespace
}  // namespace vellumtide
