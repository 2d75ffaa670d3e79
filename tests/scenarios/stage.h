// Plays a scenario: a host that trusts nothing, the built module, and after every step a look at
// the books, the guard zones and the picture. Steps name what they work on; a step whose layer,
// instance or file there is none of does nothing, so that any step can be left out.
//
//   layer NAME WxH [origin X,Y] [padding BYTES] [pixels KIND SEED] [aspect N/D]   made or replaced
//   new E LAYER FILE            an instance whose layer's marker names the file
//   open E LAYER FILE [flaw KIND SEED]            from saved data; KIND cut, garbled or old
//   panel E | set E N V... | key E N TIME V | choose E N LAYER     N counts the panel's controls
//   render E [depth D] [scale N/D N/D] [request L,T,R,B] [time T] [padding PIXELS] [whole]
//   dialog E FILE | about E | duplicate E NEW | save E | flatten E | resetup E | close E
//   lose FILE | find FILE | move FILE             the file itself
//   restart                     everything is saved, the module set down, and opened again
//   refuse N | busy N | visit N STEP...           in the next step: the N-th call of the host is
//                               refused, N attempts at the device, or STEP happens within it
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "headless/host.h"
#include "tests/scenarios/scenario.h"
#include "tests/scenarios/second_opinion.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide::scenarios {

struct Finding {
  std::string kind;  // what shrinking keeps: "picture", "books", "error", ...
  std::string text;
};

class Stage {
 public:
  Stage(const Scenario& scenario, SecondOpinion& opinion);
  ~Stage();

  // Plays all steps, calling `watch` before each and after the last; throws Finding.
  void play(const std::function<void()>& watch);
  // The step that is or was played last, from 0; the number of steps when it was the end.
  std::size_t step() const { return step_; }

 private:
  struct Instance {
    headless::Effect* effect;
    std::string path;
    bool isFresh;  // as far as is known: true until saved data say otherwise
  };
  // Of the next step.
  struct Trouble {
    int refuse = 0, busy = 0, visit = 0;
    Step visitor;
  };

  void openHost();
  void playStep(const Step& words);
  void act(const Step& words);
  void visit();
  void panel(Instance& instance);
  void trouble(const Step& words);
  void checkBooks();
  void expectNone(PF_Err error, const std::string& what);
  void settle();

  const Plan* load(const std::string& path);
  const Plan* known(const std::string& path) const;
  void followPath(Instance& instance);

  void makeLayer(const Step& words);
  void makeInstance(const Step& words);
  void openInstance(const Step& words);
  void add(const std::string& name, headless::Effect& effect, const std::string& path);
  void setControl(Instance& instance, const Step& words);
  void render(Instance& instance, const Step& words);
  void compare(Instance& instance, const headless::RenderOptions& options,
               const headless::World& before, const headless::World& got, PF_Err error);
  void dialog(Instance& instance, const std::string& file);
  void restart();
  void close(const std::string& name);

  const Scenario& scenario_;
  SecondOpinion& opinion_;
  testing::ScratchFolder folder_;
  std::shared_ptr<headless::Module> module_;
  std::unique_ptr<headless::Host> host_;
  headless::Composition* comp_ = nullptr;
  std::map<std::string, headless::Layer*> layers_;
  std::map<std::string, Instance> instances_;
  std::map<std::string, Plan> known_;  // what the module holds, by path
  Trouble trouble_;
  bool disturbed_ = false;  // something may have been refused during this step
  std::optional<Finding> visited_;
  std::size_t step_ = 0;
};

}  // namespace vellumtide::scenarios
