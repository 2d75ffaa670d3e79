#include "host/dialog_commands.h"

#include "core/suite_handler.h"
#include "host/global_data.h"
#include "host/panel_command.h"
#include "host/program_loader.h"
#include "host/sequence_data.h"
#include "services/about_box.h"
#include "services/information_dialog.h"
#include "services/jst/jst.h"

namespace vellumtide {
namespace {

DriverStrings driverOf(const GlobalData& globalData) {
  return {globalData.glVendor, globalData.glVersion, globalData.glslVersion};
}

// The instance that the information dialog is opened for.
class DialogInstance : public InformationHost {
 public:
  DialogInstance(PF_InData* in_data, GlobalData& globalData, SequenceData& sequence)
      : in_data_(in_data), globalData_(globalData), sequence_(sequence) {}

  std::optional<std::string> information() override {
    const pbGraph* program = globalData_.usableProgram(sequence_.path);
    return program ? std::optional(program->description) : std::nullopt;
  }

  std::string path() override { return sequence_.path; }

  bool load(const std::string& path) override {
    return loadProgram(globalData_, in_data_, path, true);
  }

  // The host updates the panel after the dialog; a fresh instance takes the defaults at once.
  void adopt(const std::string& path) override {
    sequence_.path = path;
    sequence_.hasProgram = true;
    const pbGraph* program = globalData_.usableProgram(path);
    if (program) adoptDefaultsOnce(in_data_, *program);
    const ScopedSuite<PF_AdvAppSuite1> app(in_data_->pica_basicP);
    if (app) app->PF_SetProjectDirty();
  }

  void repairOthers(const std::string& fileName, const std::string& path) override {
    for (PF_Handle handle : globalData_.liveSequences) {
      SequenceData* other = SequenceData::live(handle);
      if (other == &sequence_ || globalData_.usableProgram(other->path)) continue;
      if (HostFile(other->path).getName().view() == fileName) other->path = path;
    }
  }

 private:
  PF_InData* in_data_;
  GlobalData& globalData_;
  SequenceData& sequence_;
};

}  // namespace

PF_Err aboutCommand(PF_InData* in_data) {
  // The host may ask before it has set the module up: there is nothing to tell yet.
  GlobalData* globalData = GlobalData::of(in_data);
  if (!globalData) return PF_Err_NONE;
  return showAbout(in_data, globalData->splashWritten, globalData->errorLog, driverOf(*globalData));
}

PF_Err informationCommand(PF_InData* in_data) {
  GlobalData* globalData = GlobalData::of(in_data);
  SequenceData* sequence = SequenceData::live(in_data->sequence_data);
  if (!globalData || !sequence) return PF_Err_NONE;
  DialogInstance instance(in_data, *globalData, *sequence);
  return showInformation(in_data, instance, globalData->errorLog, driverOf(*globalData));
}

}  // namespace vellumtide
