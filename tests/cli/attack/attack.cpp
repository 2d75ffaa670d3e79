#include "attack.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "cli/image/image_file.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAsNobody = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
constexpr int kNoFileSystem = 98;  // what a row's shell ends with when it may not mount one
constexpr int kSetUpSeconds = 20, kCommandSeconds = 25;

std::string quoted(const fs::path& path) {
  return "'" + path.string() + "'";
}

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writePicture(const fs::path& path, double red) {
  headless::World world(8, 6, PF_PixelFormat_ARGB32);
  for (int i = 0; i < 48; ++i)
    world.setPixel(i % 8, i / 8, red, i / 47.0, 0.25, 1);
  writeImageFile(path, world, 1, {});
}

void writeText(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string kernel(const std::string& input, const std::string& value) {
  return "<languageVersion : 1.0;> kernel Test < namespace : \"t\"; vendor : \"v\"; version : 1; "
         ">\n{ " +
         input + "output pixel4 dst; void evaluatePixel() { dst = " + value + "; } }\n";
}

void fill(const fs::path& root) {
  writeText(root / "k.pbk", kernel("input image4 src; ", "sampleNearest(src, outCoord())"));
  writeText(root / "grey.pbk", kernel("", "float4(0.5, 0.5, 0.5, 1.0)"));
  writePicture(root / "in.png", 0.1);
  writePicture(root / "b.png", 0.2);
  for (int i = 1; i <= 3; ++i)
    writePicture(root / ("s." + std::to_string(i) + ".png"), i / 10.0);
  writePicture(root / "old.png", 0.9);
  writeText(root / "old.json", "{\"status\":\"done\"}\n");
  writeText(root / "keys.json", "{}\n");
  fs::create_directory(root / "sub");
  writePicture(root / "sub" / "in.png", 0.3);
}

// Whether a file that the program wrote can be used; of the formats that cannot be told, yes.
bool isWhole(const fs::path& path) {
  const std::string ending = path.extension().string();
  if (ending == ".json") return nlohmann::json::accept(contentOf(path));
  if (ending != ".png" && ending != ".exr" && ending != ".tif") return true;
  try {
    readImageFile(path);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

// What the program says, without the lines about frames and of shells.
bool saysSomething(const std::string& error) {
  return error.find("vellumtide: ") != std::string::npos;
}

}  // namespace

bool AttackedTree::canActAs(Person person, std::string& reason) {
  const bool isRoot = geteuid() == 0;
  if (person == Person::Root) {
    reason = "this test does not run as root";
    return isRoot;
  }
  if (!isRoot) return true;
  reason = "root cannot become nobody here, or nobody cannot run " VELLUMTIDE_EXECUTABLE;
  const std::string command =
      std::string(kAsNobody) + VELLUMTIDE_EXECUTABLE + " --version >/dev/null 2>&1";
  return std::system(command.c_str()) == 0;
}

AttackedTree::AttackedTree(Person person) : root_(folder_.path() / "tree"), person_(person) {
  for (const char* name : {"tree", "tmp", "home", "streams"})
    fs::create_directory(folder_.path() / name);
  fill(root_);
  if (person_ == Person::Root || geteuid() != 0) return;
  const auto give = [](const fs::path& path) {
    if (lchown(path.c_str(), 65534, 65534) != 0) throw std::runtime_error("chown fails");
  };
  give(folder_.path());
  for (const auto& entry : fs::recursive_directory_iterator(folder_.path()))
    give(entry.path());
}

// Folders that were made read-only can be removed again.
AttackedTree::~AttackedTree() {
  if (geteuid() != 0) shell("chmod -R u+rwX .", kSetUpSeconds);
}

int AttackedTree::shell(const std::string& lines, int seconds) const {
  const fs::path base = folder_.path(), script = base / "script";
  writeText(script, "cd " + quoted(root_) + "\n" + lines + "\n");
  fs::permissions(script, fs::perms::owner_all | fs::perms::group_read | fs::perms::others_read);
  const bool becomes = person_ == Person::Ordinary && geteuid() == 0;
  const std::string command =
      "umask 022; " + std::string(becomes ? kAsNobody : "") + "env -u VELLUMTIDE_MODULE" +
      " V=" VELLUMTIDE_EXECUTABLE " NO_COLOR=1 MESA_SHADER_CACHE_DISABLE=true HOME=" +
      quoted(base / "home") + " TMPDIR=" + quoted(base / "tmp") +
      " OUT=" + quoted(base / "streams" / "out") + " timeout -k 2 " + std::to_string(seconds) +
      " bash " + quoted(script) + " </dev/null >" + quoted(base / "streams" / "out.new") + " 2>" +
      quoted(base / "streams" / "error");
  const int raw = std::system(command.c_str());
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

void AttackedTree::setUp(const std::string& lines) {
  const int status = shell("set -e\n" + lines, kSetUpSeconds);
  if (status == 0) return;
  throw std::runtime_error("set-up: " + contentOf(folder_.path() / "streams" / "error"));
}

AttackedTree::Result AttackedTree::run(const std::string& lines) {
  const fs::path base = folder_.path();
  const FileTree before = treeOf(root_);
  Result result;
  result.status = shell(lines, kCommandSeconds);
  fs::rename(base / "streams" / "out.new", base / "streams" / "out");
  result.out = contentOf(base / "streams" / "out");
  result.error = contentOf(base / "streams" / "error");
  const FileTree after = treeOf(root_);
  result.changes = changesBetween(before, after);
  for (const char* beside : {"tmp", "home"}) {
    for (const auto& [name, entry] : treeOf(base / beside))
      result.changes += std::string("+../") + beside + "/" + name + " ";
  }
  for (const auto& [name, entry] : after) {
    const auto was = before.find(name);
    const bool isOld = was != before.end() && was->second.content == entry.content;
    if (isOld || entry.type != fs::file_type::regular || isWhole(root_ / name)) continue;
    result.broken += name + " ";
  }
  return result;
}

bool AttackedTree::check(const std::string& lines) {
  return shell("set -e\n" + lines, kSetUpSeconds) == 0;
}

TEST_P(AttackTest, LosesNothing) {
  const Attack& row = GetParam();
  bool ran = false;
  std::string why;
  for (const Person person : {Person::Root, Person::Ordinary}) {
    const bool isRoot = person == Person::Root;
    if (row.by == (isRoot ? Attack::By::Ordinary : Attack::By::Root)) continue;
    std::string reason;
    if (!AttackedTree::canActAs(person, reason)) {
      why = reason;
      continue;
    }
    ran = true;
    SCOPED_TRACE(std::string(isRoot ? "as root: " : "as an ordinary user: ") + row.command);
    AttackedTree tree(person);
    tree.setUp(row.setUp);
    const AttackedTree::Result result = tree.run(row.command);
    if (result.status == kNoFileSystem) {
      ran = false;
      why = "no file system can be mounted here";
      break;
    }
    EXPECT_EQ(result.status, row.status) << result.error;
    EXPECT_EQ(result.changes, row.changes) << result.error;
    EXPECT_EQ(result.broken, "");
    if (*row.message == '\0') {
      EXPECT_FALSE(saysSomething(result.error)) << result.error;
    } else {
      EXPECT_NE(result.error.find(row.message), std::string::npos) << result.error;
    }
    EXPECT_TRUE(*row.check == '\0' || tree.check(row.check)) << row.check << "\n" << result.out;
  }
  if (!ran) GTEST_SKIP() << why;
  if (!why.empty()) std::printf("only in part: %s\n", why.c_str());
}

std::string attackName(const testing::TestParamInfo<Attack>& row) {
  return row.param.name;
}

void PrintTo(const Attack& row, std::ostream* stream) {
  *stream << row.command;
}

}  // namespace vellumtide::cli
