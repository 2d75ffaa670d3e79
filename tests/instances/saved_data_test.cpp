// What projects hold of an instance: read back whatever it is, found again when files have moved.
#include <filesystem>
#include <random>

#include "tests/support/instances.h"

namespace vellumtide::instances {
namespace {

namespace fs = std::filesystem;

// With the separators of every system as one.
std::string slashed(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

// Opens an instance from the bytes and gives what it is saved as.
std::vector<uint8_t> reopened(Host& host, Layer& layer, const std::vector<uint8_t>& bytes) {
  Effect& effect = host.openInstance(layer, bytes);
  EXPECT_EQ(host.lastCall().error, PF_Err_NONE);
  std::vector<uint8_t> saved = host.save(effect);
  host.closeInstance(effect);
  return saved;
}

TEST(SavedData, IsReadWithinItsBounds) {
  Session session;
  Layer& layer = session.comp.addLayer("layer", smallWorld());
  const std::string path = session.file("a.pbk", kernelText("", "dst = float4(1.0);"));
  const std::vector<uint8_t> whole = savedData(path);
  for (size_t length = 0; length < whole.size(); ++length) {
    const std::vector<uint8_t> cut(whole.begin(), whole.begin() + static_cast<long>(length));
    const std::string kept = path.substr(0, length < 8 ? 0 : length - 8);
    ASSERT_EQ(reopened(session.host, layer, cut), savedData(kept, length < 8)) << length;
  }
  std::vector<uint8_t> older(4 + path.size());
  std::copy(path.begin(), path.end(), older.begin() + 4);
  for (size_t length = 4; length <= older.size(); ++length) {
    const std::vector<uint8_t> cut(older.begin(), older.begin() + static_cast<long>(length));
    ASSERT_EQ(reopened(session.host, layer, cut),
              savedData(path.substr(0, length - 4), length == 4))
        << length;
  }
  for (int version = 2; version < 256; ++version) {
    std::vector<uint8_t> bytes = whole;
    bytes[0] = static_cast<uint8_t>(version);
    ASSERT_EQ(reopened(session.host, layer, bytes), savedData("", true)) << version;
  }
  std::mt19937 random(20131101);
  for (int i = 0; i < 2000; ++i) {
    std::vector<uint8_t> bytes(random() % 40);
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(random() % 3 ? random() % 2 : random());
    const std::vector<uint8_t> saved = reopened(session.host, layer, bytes);
    ASSERT_LE(saved.size(), bytes.size() + 9) << "case " << i;
    ASSERT_EQ(reopened(session.host, layer, saved), saved) << "case " << i;
  }
}

TEST(Relocation, SearchesTwoLevelsBelowTheRootFolder) {
  const ScratchFolder scratch;
  for (int i = 0; i < 20; ++i) {
    for (int j = 0; j < 24; ++j) {
      const std::string folder = "root/d" + std::to_string(i) + "/e" + std::to_string(j);
      for (int k = 0; k < 20; ++k)
        scratch.put(folder + "/f" + std::to_string(k) + ".pbk", "");
    }
  }
  std::error_code ignored;  // a system without links is tested without them
  fs::create_directory_symlink(scratch.path("root"), scratch.path("root/d3/loop"), ignored);
  fs::create_directory_symlink(scratch.path("root/d4"), scratch.path("root/d4/e1/loop"), ignored);

  Session session;
  Layer& layer = session.comp.addLayer("layer", smallWorld());
  const auto found = [&](const std::string& path) {
    const std::vector<uint8_t> saved = reopened(session.host, layer, savedData(path));
    return slashed(std::string(saved.begin() + 8, saved.end() - 1));
  };
  const std::string lost = "/gone/here/lost.pbk";
  EXPECT_EQ(found(lost), lost) << "no root folder is set";
  session.host.preferences().set("Settings_cs_VTD_Launcher", "rootFolder", scratch.path("none"));
  EXPECT_EQ(found(lost), lost) << "the root folder does not exist";
  session.host.preferences().set("Settings_cs_VTD_Launcher", "rootFolder", scratch.path("root"));
  EXPECT_EQ(found(lost), lost);
  // Deepest first and in one branch, so that each later one wins in any listing order.
  const std::string text = kernelText("", "dst = float4(0.25);");
  scratch.put("root/d1/e1/deep/lost.pbk", text);
  scratch.put("root/d1/e1/LOST.pbk", text);
  EXPECT_EQ(found(lost), lost) << "three levels below, and another spelling";
  for (const char* place : {"root/d9/e19/lost.pbk", "root/d9/lost.pbk", "root/lost.pbk"}) {
    scratch.put(place, text);
    EXPECT_EQ(found(lost), slashed(scratch.path(place)));
    EXPECT_EQ(found("D:\\old\\lost.pbk"), slashed(scratch.path(place)));
  }
  // The program that was found is the one that runs.
  Effect& effect = session.host.openInstance(layer, savedData(lost));
  session.host.updateParamsUi(effect);
  EXPECT_EQ(effect.title, "VTD: Sample");
  EXPECT_EQ(session.host.render(effect, {.format = PF_PixelFormat_ARGB128}).output->pixel(1, 1)[0],
            0.25);
}

}  // namespace
}  // namespace vellumtide::instances
