// The one object that lives for as long as the host keeps the module started, and the two commands
// that make and end it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/ae_base.h"
#include "gl/window_device.h"
#include "host/program_cache.h"

namespace vellumtide {

// A window device that goes away with its owner. Making one leaves the host's context current.
struct OwnedDevice : WindowDevice {
  OwnedDevice() {
    const SavedCurrentContext saved = saveCurrentContext();
    createWindowDevice(window, deviceContext, renderContext);
    restoreCurrentContext(saved);
  }
  ~OwnedDevice() { destroyWindowDevice(window, deviceContext, renderContext); }
  OwnedDevice(const OwnedDevice&) = delete;
  OwnedDevice& operator=(const OwnedDevice&) = delete;
};

class GlobalData : public aeBase {
 public:
  // Throws the host's error when its utility suite cannot be had.
  explicit GlobalData(PF_InData* in_data);
  ~GlobalData() override;

  // The live object of the current command; null outside a command or before set-up.
  static GlobalData* current();
  static GlobalData* of(const PF_InData* in_data);

  OwnedDevice device;
  ProgramCache programCache;
  PF_Err status = PF_Err_NONE;  // of the registration with the host
  AEGP_PluginID pluginID = 0;
  // The driver's own strings; null where it has none.
  const char* glVendor = nullptr;
  const char* glVersion = nullptr;
  const char* glslVersion = nullptr;
  std::string errorLog;
  std::vector<PF_Handle> liveSequences;  // in no particular order
  std::uint64_t sequencesMade = 0;
  bool splashWritten = false;  // the about box has written its image once

  void readDriverStrings();

  // The cached program of a path, when it can be drawn; else null.
  pbGraph* usableProgram(const std::string& path) const;

 private:
  void registerWithHost(PF_InData* in_data);
  void initialiseDriver();
};

PF_Err globalSetup(PF_InData* in_data, PF_OutData* out_data);
PF_Err globalSetdown(PF_InData* in_data);

}  // namespace vellumtide
