// Many instances of many programs: opened, saved, lost, repaired, rendered and closed at random.
#include <random>

#include "tests/support/instances.h"

namespace vellumtide::instances {
namespace {

constexpr unsigned kSeed = 20130801;
constexpr int kPrograms = 20, kMostInstances = 100, kSteps = 1000;

std::string numbered(int program) {
  return "p" + std::to_string(program) + ".pbk";
}

struct Instance {
  Effect* effect;
  int program;
  double gain;
  bool lost;
};

class Crowd {
 public:
  Crowd() : layer_(session_.comp.addLayer("layer", smallWorld())) {
    for (int i = 0; i < kPrograms; ++i) {
      const std::string green = std::to_string(i) + ".0 / 32.0";
      paths_.push_back(
          session_.file(numbered(i), kernelText("parameter float gain <defaultValue:0.5;>;",
                                                "dst = float4(gain, " + green + ", 0.0, 1.0);")));
    }
    Effect& first = session_.effect(smallWorld(), paths_[0]);
    gainIndex_ = first.findShown("gain")->index;
    session_.host.closeInstance(first);
  }

  void step() {
    const unsigned choice = pick(10);
    if (instances_.empty() || (choice < 5 && instances_.size() < kMostInstances)) return open();
    Instance& chosen = instances_[pick(instances_.size())];
    if (choice < 7) return render(chosen);
    if (choice == 7) return repair(chosen);
    if (choice == 8) return reopen(chosen);
    session_.host.closeInstance(*chosen.effect);
    chosen = instances_.back();
    instances_.pop_back();
  }

  size_t size() const { return instances_.size(); }
  int repaired() const { return repaired_; }

 private:
  unsigned pick(size_t count) { return static_cast<unsigned>(random_() % count); }

  void open() {
    const int program = static_cast<int>(pick(kPrograms));
    const unsigned way = pick(3);
    Host& host = session_.host;
    layer_.markers().clear();
    if (way == 0) layer_.addMarker(paths_[program]);
    Effect& effect = way == 0 ? host.newInstance(layer_)
                     : way == 1
                         ? host.openInstance(layer_, savedData(paths_[program]))
                         : host.openInstance(layer_, savedData("/gone/" + numbered(program)));
    ASSERT_EQ(host.updateParamsUi(effect), PF_Err_NONE);
    const Control* gain = effect.findShown("gain");
    ASSERT_EQ(gain == nullptr, way == 2);
    // Only a fresh instance takes the defaults; the others have what the project says.
    ASSERT_TRUE(way != 0 || gain->number == 0.5);
    instances_.push_back({&effect, program, pick(16) / 16.0, way == 2});
    effect.setNumber(gainIndex_, instances_.back().gain);
  }

  void render(Instance& instance) {
    const RenderResult frame =
        session_.host.render(*instance.effect, {.format = PF_PixelFormat_ARGB128});
    ASSERT_EQ(frame.error, PF_Err_NONE);
    const std::vector<double> expected =
        instance.lost ? std::vector<double>{0, 0, 0, 0}
                      : std::vector<double>{instance.gain, instance.program / 32.0, 0, 1};
    ASSERT_EQ(frame.output->pixel(3, 2), expected);
  }

  // The user looks at the information dialog; one that asks for a lost file repairs all that lost
  // it, and their values stay.
  void repair(Instance& instance) {
    Host& host = session_.host;
    host.scripts().clearRecords();
    host.scripts().fileAnswers = {paths_[instance.program]};
    ASSERT_EQ(host.doDialog(*instance.effect), PF_Err_NONE);
    host.scripts().fileAnswers.clear();
    const auto kind = instance.lost ? DialogRecord::Kind::kOpenFile : DialogRecord::Kind::kAlert;
    ASSERT_EQ(host.scripts().dialogs().at(0).kind, kind);
    if (!instance.lost) return;
    for (Instance& other : instances_) {
      if (!other.lost || other.program != instance.program) continue;
      other.lost = false;
      ++repaired_;
      ASSERT_EQ(host.updateParamsUi(*other.effect), PF_Err_NONE);
      ASSERT_EQ(other.effect->title, "VTD: Sample");
      ASSERT_EQ(other.effect->control(gainIndex_).number, other.gain);
    }
  }

  void reopen(Instance& instance) {
    Effect& copy = session_.host.duplicate(*instance.effect);
    session_.host.closeInstance(*instance.effect);
    instance.effect = &copy;
  }

  std::mt19937 random_{kSeed};
  Session session_;
  Layer& layer_;
  std::vector<std::string> paths_;
  std::vector<Instance> instances_;
  PF_ParamIndex gainIndex_ = 0;
  int repaired_ = 0;
};

TEST(ManyInstances, LeaveNothingBehind) {
  Crowd crowd;
  size_t most = 0;
  for (int step = 0; step < kSteps && !HasFatalFailure(); ++step) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", step " + std::to_string(step));
    crowd.step();
    most = std::max(most, crowd.size());
  }
  EXPECT_EQ(most, kMostInstances);
  EXPECT_GT(crowd.repaired(), kPrograms);
}

}  // namespace
}  // namespace vellumtide::instances
