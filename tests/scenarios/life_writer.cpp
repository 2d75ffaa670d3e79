#include "tests/scenarios/life_writer.h"

#include <sstream>

#include "tests/scenarios/dice.h"
#include "tests/scenarios/program_writer.h"

namespace vellumtide::scenarios {
namespace {

using Words = std::vector<std::string>;

class LifeWriter {
 public:
  explicit LifeWriter(std::uint64_t seed) : dice_(seed) {}

  Scenario write() {
    for (int i = dice_.between(1, 2); i > 0; --i)
      life_.files.push_back(writeFile(dice_, i));
    layer("photo");
    layer("under");
    if (dice_.oneIn(2)) layer("third");
    // The device fails the program's first load.
    if (dice_.oneIn(40)) add({"busy", "1000000"});
    newInstance("e0");
    add({"panel", "e0"});
    layers("e0");
    render("e0");
    for (int i = dice_.between(4, 12); i > 0; --i)
      something();
    return std::move(life_);
  }

 private:
  void add(Step step) { life_.steps.push_back(std::move(step)); }
  std::string file() { return dice_.pick(life_.files).name; }
  std::string anInstance() { return "e" + std::to_string(dice_.below(3)); }
  std::string aLayer() { return dice_.pick(Words{"photo", "under", "third", "none"}); }
  std::string number(int low, int high) { return std::to_string(dice_.between(low, high)); }

  void layer(const std::string& name) {
    const int most = dice_.oneIn(10) ? 90 : 16;
    std::string size = number(1, most) + "x" + number(1, most);
    if (dice_.oneIn(150)) size = dice_.pick(Words{"20000x1", "1x17000", "16384x1"});
    add({"layer", name, size, "padding", std::to_string(16 * dice_.below(3)), "pixels",
         dice_.pick(Words{"bytes", "words", "floats", "specials"}), number(1, 999)});
    Step& step = life_.steps.back();
    if (dice_.oneIn(12)) step.insert(step.end(), {"origin", number(-9, 5) + "," + number(-9, 5)});
    if (dice_.oneIn(8))
      step.insert(step.end(), {"aspect", dice_.pick(Words{"2/1", "10/11", "1/3"})});
  }

  void newInstance(const std::string& name) {
    if (dice_.oneIn(4)) {
      add({"open", name, dice_.oneIn(2) ? "photo" : "under", file()});
      if (dice_.oneIn(2))
        life_.steps.back().insert(
            life_.steps.back().end(),
            {"flaw", dice_.pick(Words{"cut", "garbled", "old"}), number(1, 99)});
    } else {
      add({"new", name, dice_.oneIn(2) ? "photo" : "under", file()});
    }
  }

  void layers(const std::string& name) {
    for (const char* index : {"0", "1", "2"})
      if (dice_.oneIn(2)) add({"choose", name, index, aLayer()});
  }

  void render(const std::string& name) {
    Step step = {"render", name, "depth", dice_.pick(Words{"8", "16", "32"})};
    const auto more = [&](Words words) { step.insert(step.end(), words.begin(), words.end()); };
    if (dice_.oneIn(5))
      more({"scale", dice_.pick(Words{"1/2", "1/3", "2/3", "1/4", "1/1"}),
            dice_.pick(Words{"1/2", "1/3", "2/3", "1/4", "1/1"})});
    if (dice_.oneIn(4))
      more({"request",
            number(-4, 8) + "," + number(-4, 8) + "," + number(1, 40) + "," + number(1, 40)});
    if (dice_.oneIn(3)) more({"padding", number(0, 5)});
    if (dice_.oneIn(6)) more({"whole"});
    if (dice_.oneIn(3)) more({"time", number(0, 9)});
    add(step);
  }

  void set(const std::string& name) {
    const auto value = [&] {
      return dice_.oneIn(8) ? dice_.pick(Words{"1e9", "-40000", "0.1", "-0.0"})
                            : dice_.number(-3, 3);
    };
    if (dice_.oneIn(4)) return add({"key", name, number(0, 99), number(0, 9), value()});
    add({"set", name, number(0, 99), value(), value(), value(), value()});
  }

  void trouble() {
    if (dice_.oneIn(3)) {
      const std::string what = dice_.pick(Words{"panel", "render", "flatten", "about", "save"});
      return add({"visit", number(1, dice_.oneIn(2) ? 12 : 200), what, anInstance()});
    }
    if (dice_.oneIn(2)) return add({"refuse", number(1, dice_.oneIn(2) ? 12 : 300)});
    add({"busy", dice_.pick(Words{"1", "2", "1000000"})});
  }

  void something() {
    const std::string name = anInstance();
    if (dice_.oneIn(12)) trouble();
    switch (dice_.below(24)) {
      case 0:
      case 1:
      case 2:
        return newInstance(name);
      case 3:
        return layer(dice_.pick(Words{"photo", "under", "third"}));
      case 4:
        return layers(name);
      case 5:
        return add({"dialog", name, file()});
      case 6:
        return add({"duplicate", name, anInstance()});
      case 7:
        return add({dice_.pick(Words{"flatten", "flatten", "about"}), name});
      case 8:
      case 9:
        return add({"resetup", name});
      case 10:
        return add({dice_.pick(Words{"lose", "move", "find"}), file()});
      case 11:
        return add({"close", name});
      case 12:
        if (dice_.oneIn(4)) return add({"restart"});
        return add({"panel", name});
      case 13:
      case 14:
        return add({"panel", name});
      case 15:
      case 16:
        return set(name);
      default:
        return render(name);
    }
  }

  Dice dice_;
  Scenario life_;
};

}  // namespace

Scenario writeScenario(std::uint64_t seed) {
  return LifeWriter(seed).write();
}

}  // namespace vellumtide::scenarios
