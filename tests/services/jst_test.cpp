#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

#include <algorithm>
#include <memory>

#include "services/jst/file.h"
#include "services/jst/folder.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide {
namespace {

namespace fs = std::filesystem;
using Text = _JST::String<std::allocator<char>>;
using File = _JST::File<std::allocator<char>>;
using Folder = _JST::Folder<std::allocator<char>>;
using testing::ScratchFolder;

std::vector<std::string> texts(const Folder::Paths& paths) {
  std::vector<std::string> found;
  for (const Text& path : paths)
    found.push_back(path.str());
  return found;
}

TEST(JstText, SplitsAtEveryOccurrenceAndJoinsBack) {
  const std::tuple<const char*, const char*, std::vector<std::string>> cases[] = {
      {"a|b||c", "|", {"a", "b", "", "c"}},
      {"", "|", {""}},
      {"|", "|", {"", ""}},
      {"aXYbXY", "XY", {"a", "b", ""}},
      {"abc", "", {"abc"}}};
  for (const auto& [text, separator, pieces] : cases) {
    EXPECT_EQ(texts(Text(text).split(separator)), pieces) << text;
    EXPECT_EQ(_JST::join(Text(text).split(separator), separator), text);
  }
}

TEST(JstFile, OpensByModeAndKeepsWhatWasWritten) {
  const ScratchFolder scratch;
  File file(scratch.path("t\xC3\xA9xt.txt"));
  const auto writeAs = [&file](char mode, const char* bytes) {
    return file.open(mode) && file.write(bytes, 3) && file.close();
  };
  EXPECT_FALSE(file.exists() || file.open('r') || file.open('e'));
  EXPECT_TRUE(writeAs('w', "one") && writeAs('a', "\0wo") && writeAs('e', "ONE"));
  ASSERT_TRUE(file.open('r'));
  EXPECT_EQ(file.readAll(6), std::string("ONE\0wo", 6));
  EXPECT_FALSE(file.open('x'));
  EXPECT_EQ(file.mode(), File::Mode::None) << "an unknown mode closes the stream";
  ASSERT_TRUE(file.open('r'));
  EXPECT_EQ(file.readAll(4), std::string("ONE\0w", 5));
  EXPECT_TRUE(file.close() && file.remove());
  EXPECT_FALSE(file.exists() || file.remove() || File("").exists() || File("").open('w'));
}

TEST(JstFile, RefusesWhatIsNoFile) {
  const ScratchFolder scratch;
  std::vector<std::string> refused = {scratch.path(""), scratch.path(std::string(5000, 'n')),
                                      scratch.path(std::string("a\0b", 3))};
#ifndef _WIN32
  ASSERT_EQ(std::system(("mkfifo " + scratch.path("pipe")).c_str()), 0);
  fs::create_symlink("loop", scratch.path("loop"));
  refused.insert(refused.end(), {scratch.path("pipe"), scratch.path("loop")});
  EXPECT_FALSE(File(scratch.path("loop")).exists());
#endif
#ifdef _WIN32
  const HANDLE pipe =
      CreateNamedPipeA("\\\\.\\pipe\\vellumtide_jst_test", PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE,
                       PIPE_UNLIMITED_INSTANCES, 16, 16, 0, nullptr);
  ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
  refused.insert(refused.end(), {"\\\\.\\pipe\\vellumtide_jst_test", "NUL", "CONIN$"});
#endif
  for (const std::string& path : refused) {
    for (const char mode : {'r', 'w', 'e', 'a'})
      EXPECT_FALSE(File(path).open(mode)) << path;
  }
#ifdef _WIN32
  CloseHandle(pipe);
#else
  fs::create_symlink("/dev/zero", scratch.path("device"));
  EXPECT_FALSE(File(scratch.path("device")).open('r') || File(scratch.path("device")).open('e'));
#endif
}

TEST(JstFolder, ListsFilesAndFoldersApart) {
  const ScratchFolder scratch;
  Folder folder(scratch.path("new"));
  EXPECT_TRUE(folder.listFiles().empty());
  EXPECT_FALSE(Folder(scratch.path("new/deeper")).create()) << "one level only";
  ASSERT_TRUE(folder.create());
  scratch.put("new/a.pbk", "x");
  fs::create_directory(scratch.path("new/sub"));
#ifndef _WIN32
  fs::create_symlink("nowhere", scratch.path("new/dangling"));
#endif
  const std::string base = folder.path().str() + "\\";
  EXPECT_EQ(texts(folder.listFiles()), std::vector{base + "a.pbk"});
  EXPECT_EQ(texts(folder.listFolders()), std::vector{base + "sub"});
  EXPECT_TRUE(File(base + "a.pbk").open('r')) << "a listed path opens as it stands";
  EXPECT_EQ(File(base + "a.pbk").getName(), "a.pbk");
  EXPECT_FALSE(folder.remove()) << "not empty";
  EXPECT_TRUE(Folder(base + "sub").remove());
}

}  // namespace
}  // namespace vellumtide
