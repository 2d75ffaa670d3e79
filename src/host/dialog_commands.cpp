#include "host/dialog_commands.h"

#include "core/suite_handler.h"
#include "host/global_data.h"
#include "host/panel_command.h"
#include "host/program_loader.h"
#include "host/sequence_data.h"
#include "services/dialogs/about_box.h"
#include "services/dialogs/information_dialog.h"
#include "services/jst/jst.h"

namespace vellumtide {
namespace {

DriverStrings driverOf(const GlobalData& globalData) {
  return {globalData.glVendor, globalData.glVersion, globalData.glslVersion};
}

// The instance that the information dialog is opened for. While a dialog is open, and within every
// other call, the host may run commands that end it.
class DialogInstance : public InformationHost {
 public:
  DialogInstance(PF_InData* in_data, GlobalData& globalData)
      : in_data_(in_data), globalData_(globalData), instance_(in_data->sequence_data) {}

  std::optional<std::string> information() override {
    const pbGraph* program = globalData_.usableProgram(path());
    return program ? std::optional(program->description) : std::nullopt;
  }

  std::string path() override {
    const SequenceData* sequence = instance_.find();
    return sequence ? sequence->path : "";
  }

  bool load(const std::string& path) override {
    return loadProgram(globalData_, in_data_, path, true);
  }

  // The host updates the panel after the dialog; a fresh instance takes the defaults at once.
  void adopt(const std::string& path, const std::string& lostName) override {
    SequenceData* sequence = instance_.find();
    if (!sequence) return;
    sequence->path = path;
    sequence->hasProgram = true;
    if (!lostName.empty()) repairOthers(lostName, path);
    const pbGraph* program = globalData_.usableProgram(path);
    if (program) adoptDefaultsOnce(in_data_, *program);
    showChanges();
  }

 private:
  // Without a call of the host, so that the list stays as it is.
  void repairOthers(const std::string& lostName, const std::string& path) {
    for (PF_Handle handle : globalData_.liveSequences) {
      SequenceData& other = *SequenceData::live(handle);
      if (globalData_.usableProgram(other.path)) continue;
      if (_JST::nameOf(other.path) == lostName) other.path = path;
    }
  }

  // A path that changed is for the project to save, and every panel and picture of the instances
  // that it changed for is out of date.
  void showChanges() {
    const ScopedSuite<PF_AdvAppSuite1> app(in_data_->pica_basicP);
    if (!app) return;
    app->PF_SetProjectDirty();
    app->PF_RefreshAllWindows();
  }

  PF_InData* in_data_;
  GlobalData& globalData_;
  SequenceRef instance_;
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
  if (!globalData || !SequenceData::live(in_data->sequence_data)) return PF_Err_NONE;
  DialogInstance instance(in_data, *globalData);
  return showInformation(in_data, instance, globalData->errorLog, driverOf(*globalData));
}

}  // namespace vellumtide
