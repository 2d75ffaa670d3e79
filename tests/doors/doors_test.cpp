// The rooms of the sources and which of them each may use, against every #include.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace vellumtide {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = VELLUMTIDE_SOURCE_FOLDER;

struct Room {
  std::string name;
  std::vector<std::string> doors;  // names of the rooms it may use
};

// The table that the build is made of, lowest room first.
std::vector<Room> readTable() {
  std::vector<Room> rooms;
  std::ifstream file(VELLUMTIDE_DOORS_FILE);
  for (std::string line; std::getline(file, line);) {
    const size_t colon = line.find(':');
    if (colon == std::string::npos) continue;
    std::istringstream words(line.substr(colon + 1));
    Room room{line.substr(0, colon), {}};
    for (std::string door; words >> door;)
      room.doors.push_back(door);
    rooms.push_back(room);
  }
  return rooms;
}

struct Include {
  std::string from, to;  // rooms, or folders of tests
  std::string place;     // "file:line"
};

// A folder that uses rooms and that no room uses.
bool isOutside(const std::string& room) {
  const std::string top = room.substr(0, room.find('/'));
  return top == "tests" || top == "bench" || top == "fuzz";
}

class Doors : public testing::Test {
 protected:
  Doors() : table_(readTable()) {
    for (const char* top : {"src", "headless", "cli", "tests", "bench", "fuzz"}) {
      for (const auto& entry : fs::recursive_directory_iterator(kRoot / top)) {
        const fs::path extension = entry.path().extension();
        if (extension == ".cpp" || extension == ".h") readIncludes(entry.path());
      }
    }
  }

  // The room that a file lies in: the longest that its path begins with, or its folder.
  std::string roomOf(const fs::path& path) const {
    std::string folder = path.parent_path().lexically_relative(kRoot).generic_string();
    if (folder.starts_with("src/")) folder.erase(0, 4);
    std::string longest;
    for (const Room& room : table_) {
      const bool inside = folder == room.name || folder.starts_with(room.name + "/");
      if (inside && room.name.size() > longest.size()) longest = room.name;
    }
    return longest.empty() ? folder : longest;
  }

  // The file that an #include of `from` names.
  static std::optional<fs::path> resolve(const fs::path& from, const std::string& name) {
    for (const fs::path& folder : {kRoot / "src", kRoot, from.parent_path()}) {
      if (fs::exists(folder / name)) return folder / name;
    }
    return std::nullopt;
  }

  void readIncludes(const fs::path& path) {
    static const std::regex kInclude("\\s*#\\s*include\\s+\"([^\"]+)\".*");
    std::ifstream file(path);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
      ++number;
      std::smatch match;
      if (!std::regex_match(line, match, kInclude)) continue;
      const std::string place =
          path.lexically_relative(kRoot).generic_string() + ":" + std::to_string(number);
      const auto target = resolve(path, match[1]);
      if (!target) {
        ADD_FAILURE() << place << ": there is no file \"" << match[1] << "\"";
      } else if (roomOf(path) != roomOf(*target)) {
        includes_.push_back({roomOf(path), roomOf(*target), place});
      }
    }
  }

  const Room* find(const std::string& name) const {
    const auto room = std::ranges::find(table_, name, &Room::name);
    return room == table_.end() ? nullptr : &*room;
  }

  std::vector<Room> table_;
  std::vector<Include> includes_;  // from one room into another
};

TEST_F(Doors, EveryIncludeGoesThroughOne) {
  ASSERT_FALSE(table_.empty());
  ASSERT_GT(includes_.size(), 100u);
  for (const Include& include : includes_) {
    if (isOutside(include.from)) {
      EXPECT_TRUE(find(include.to) || include.to == "tests/support")
          << include.place << ": " << include.from << " has no door to " << include.to
          << "; what tests share lies in tests/support";
      continue;
    }
    const Room* room = find(include.from);
    ASSERT_TRUE(room) << include.place << ": " << include.from << " is no room of the table";
    EXPECT_THAT(room->doors, testing::Contains(include.to))
        << include.place << ": " << include.from << " has no door to " << include.to;
  }
}

TEST_F(Doors, EachIsUsed) {
  std::set<std::pair<std::string, std::string>> used;
  for (const Include& include : includes_)
    used.emplace(include.from, include.to);
  for (const Room& room : table_) {
    for (const std::string& door : room.doors) {
      EXPECT_TRUE(used.contains({room.name, door}))
          << room.name << " includes nothing of " << door << "; the table need not allow it";
    }
  }
}

TEST_F(Doors, OpenDownwards) {
  std::set<std::string> lower;
  for (const Room& room : table_) {
    for (const std::string& door : room.doors) {
      EXPECT_TRUE(lower.contains(door))
          << room.name << " may use " << door << ", which is not above it in the table";
    }
    lower.insert(room.name);
  }
}

TEST_F(Doors, AreShownInTheDocument) {
  std::ifstream file(kRoot / "docs/architecture.md");
  std::map<std::string, std::string> shown;  // rows "| `room` | doors | what it is |"
  static const std::regex kRow("\\| `([^`]+)` \\| ([^|]*) \\|.*");
  std::smatch match;
  for (std::string line; std::getline(file, line);) {
    if (std::regex_match(line, match, kRow)) shown[match[1]] = match[2];
  }
  for (const Room& room : table_) {
    std::string doors;
    for (const std::string& door : room.doors)
      doors += (doors.empty() ? "" : ", ") + door;
    if (doors.empty()) doors = "-";
    const fs::path folder = fs::exists(kRoot / "src" / room.name) ? "src/" + room.name : room.name;
    EXPECT_EQ(shown[folder.generic_string()], doors) << "docs/architecture.md, " << folder;
  }
}

}  // namespace
}  // namespace vellumtide
