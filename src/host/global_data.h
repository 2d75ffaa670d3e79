// The one object that lives for as long as the host keeps the module started, and the two commands
// that make and end it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/ae_base.h"
#include "gl/draw_limits.h"
#include "gl/window_device.h"
#include "host/program_cache.h"
#include "panel/panel_update.h"

namespace vellumtide {

// A window device that goes away with its owner. Making one leaves the host's context current.
struct OwnedDevice : WindowDevice {
  OwnedDevice() { make(); }
  ~OwnedDevice() { destroyWindowDevice(window, deviceContext, renderContext); }
  OwnedDevice(const OwnedDevice&) = delete;
  OwnedDevice& operator=(const OwnedDevice&) = delete;

  // Tries again where there is no context yet.
  void make();
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
  DrawLimits drawLimits;
  std::string errorLog;
  std::vector<PF_Handle> liveSequences;  // in no particular order
  std::uint64_t sequencesMade = 0;
  // What instances that are flattened at the moment have told the host, by their flat data.
  std::map<PF_Handle, PanelMemory> flatPanels;
  // Programs that were not built because the device could not be used.
  std::vector<std::string> unbuiltPrograms;
  bool deviceFailureLogged = false;  // until the device can be used again
  bool splashWritten = false;        // the about box has written its image once

  void readDriverStrings();
  // With the device current: what start-up could not ask the driver for.
  void prepareDriver();

  // The cached program of a path, when it can be drawn; else null.
  pbGraph* usableProgram(const std::string& path) const;

 private:
  void registerWithHost(PF_InData* in_data);
  void initialiseDriver();
  void loadEntryPoints();
  void readDriver();

  bool entryPointsLoaded_ = false;
};

PF_Err globalSetup(PF_InData* in_data, PF_OutData* out_data);
PF_Err globalSetdown(PF_InData* in_data);

}  // namespace vellumtide
