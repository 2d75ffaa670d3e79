// Commands put together by chance: whatever they are, only what they name as an output may change,
// and never what they read. VELLUMTIDE_SEED repeats or varies them.
#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>

#include "attack.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kCommands = 500;
constexpr unsigned kSeed = 2011;

// Each kind of thing that can stand where a file is expected.
constexpr const char* kTargets =
    "ln -s old.png link.png; ln -s new.png dangling.png; ln -s loop.png loop.png; mkdir dir.png\n"
    "ln in.png hard.png; ln -s . here; ln -s /dev/null null.png; cp old.png shut.png\n"
    "chmod 444 shut.png; mkdir closed; chmod 555 closed; ln -s k.pbk k.png; ln -s s.2.png t.2.png";

constexpr const char* kNames[] = {
    "in.png",     "b.png",       "k.pbk",        "keys.json", "old.png",     "old.json",
    "new.png",    "link.png",    "dangling.png", "loop.png",  "dir.png",     "hard.png",
    "null.png",   "here/in.png", "here/new.png", "shut.png",  "k.png",       "closed/new.png",
    "no/new.png", "sub/in.png",  "sub/../b.png", "./new.exr", "new.json",    "-",
    "/dev/null",  "s.#.png",     "t.#.png",      "new.#.png", "here/s.#.png"};

struct Command {
  std::string text;
  std::vector<std::string> reads, writes;
  bool writesPictures = false;  // alone
};

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}

  Command command() {
    Command c;
    const auto reads = [&](const char* usual) {
      return "'" + c.reads.emplace_back(below(3) != 0 ? usual : name()) + "'";
    };
    const auto writes = [&] { return "'" + c.writes.emplace_back(name()) + "'"; };
    const bool sometimes = below(3) == 0;
    switch (below(8)) {
      case 0:
        c.text = "inspect " + reads("k.pbk") + " --graph dot -o " + writes();
        break;
      case 1:
        c.text = "compare " + reads("in.png") + " " + reads("b.png") + " -o " + writes();
        if (sometimes) c.text += " --frames 1-3";
        break;
      case 2:
        c.text = "project new " + writes() + " " + reads("k.pbk") + " -i " + reads("in.png");
        break;
      default:
        c.text = "render " + reads("k.pbk") + " -i " + reads("in.png") + " -o " + writes();
        if (sometimes) c.text += " --frames 1-3 --keep-going";
        if (below(3) == 0) c.text += " --report " + writes();
        if (below(4) == 0) c.text += " --animation " + reads("keys.json");
        if (below(4) == 0) c.text += " --skip-existing";
    }
    c.writesPictures =
        c.text.starts_with("compare") || (c.text.starts_with("render") && c.writes.size() == 1);
    return c;
  }

 private:
  int below(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }
  std::string name() { return kNames[below(static_cast<int>(std::size(kNames)))]; }

  std::mt19937 random_;
};

// The places in the tree that the names lead to, frames 1 to 3 of those with a place for a number.
std::set<fs::path> placesOf(const std::vector<std::string>& names, const AttackedTree& tree) {
  std::set<fs::path> places;
  for (const std::string& name : names) {
    for (const char frame : {'#', '1', '2', '3'}) {
      std::string file = name;
      std::replace(file.begin(), file.end(), '#', frame);
      std::error_code ended;
      fs::path place = tree.file(file);
      if (const fs::path next = fs::read_symlink(place, ended); !ended) {
        place = place.parent_path() / next;
      }
      places.insert(fs::weakly_canonical(place, ended));
    }
  }
  return places;
}

// Changes to what is no output, or is read as well.
std::string wrongChanges(const std::string& changes, const std::set<fs::path>& read,
                         const std::set<fs::path>& written, const AttackedTree& tree) {
  std::string wrong;
  for (std::size_t start = 0, end; start < changes.size(); start = end + 1) {
    end = changes.find(' ', start);
    const std::string change = changes.substr(start, end - start);
    const fs::path file = fs::weakly_canonical(tree.file("")) / change.substr(1);
    const bool isRead = std::any_of(read.begin(), read.end(), [&](const fs::path& other) {
      return other == file && change[0] != '+';
    });
    if (change[0] == '-' || isRead || !written.contains(file)) wrong += change + " ";
  }
  return wrong;
}

TEST(RandomCommands, ChangeNothingButTheirOutputs) {
  const char* const wanted = std::getenv("VELLUMTIDE_SEED");
  const unsigned seed = wanted ? static_cast<unsigned>(std::strtoul(wanted, nullptr, 10)) : kSeed;
  std::vector<Person> people;
  for (const Person person : {Person::Ordinary, Person::Root}) {
    std::string reason;
    if (AttackedTree::canActAs(person, reason))
      people.push_back(person);
    else
      std::printf("only in part: %s\n", reason.c_str());
  }
  Chance chance(seed);
  for (int i = 0; i < kCommands; ++i) {
    const Command command = chance.command();
    SCOPED_TRACE("VELLUMTIDE_SEED=" + std::to_string(seed) + ", command " + std::to_string(i) +
                 ": " + command.text);
    AttackedTree tree(people[static_cast<std::size_t>(i) % people.size()]);
    tree.setUp(kTargets);
    const std::set<fs::path> read = placesOf(command.reads, tree);
    const std::set<fs::path> written = placesOf(command.writes, tree);
    const AttackedTree::Result result = tree.run("$V " + command.text);
    EXPECT_LE(result.status, 5) << result.error;
    EXPECT_EQ(wrongChanges(result.changes, read, written, tree), "") << result.error;
    // Endings say nothing of drawings, projects and reports.
    EXPECT_TRUE(!command.writesPictures || result.broken.empty()) << result.broken;
    EXPECT_TRUE(result.status != 2 || result.changes.empty()) << result.changes << result.error;
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace vellumtide::cli
