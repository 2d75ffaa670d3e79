// What one effect instance remembers: which program it runs.
#pragma once

#include <cstdint>
#include <string>

#include "core/ae_base.h"
#include "panel/panel_update.h"

namespace vellumtide {

// Live form. The flat form, which projects save, is in flat_sequence.h. The list of live sequences
// in the global data tells the two apart, since the host hands out both through the same field.
class SequenceData : public aeBase {
 public:
  SequenceData();
  ~SequenceData() override;

  // The live object in a handle; null for no handle and for flat data.
  static SequenceData* live(PF_Handle handle);

  PF_Handle handle() { return handleOfHostMemory(this); }

  A_long reserved = 0;
  std::string path;         // UTF-8; empty while no program was chosen
  bool hasProgram = false;  // a path was adopted and loaded
  bool unused = false;
  bool freshFlag = true;     // the controls have not taken a program's defaults yet
  std::string label;         // the title that the host was last given; not saved
  PopupEntries entries;      // likewise
  std::uint64_t serial = 0;  // no two objects of a run have the same
};

// An instance's live data, to be found anew after every call of the host that lets it run other
// commands: one of them may have flattened the data or set the instance down.
class SequenceRef {
 public:
  explicit SequenceRef(PF_Handle handle);

  // Null once the data is gone, also when other data lies in its place.
  SequenceData* find() const;

 private:
  PF_Handle handle_;
  std::uint64_t serial_ = 0;
};

PF_Err sequenceSetup(PF_InData* in_data, PF_OutData* out_data);
PF_Err sequenceResetup(PF_InData* in_data, PF_OutData* out_data);
PF_Err sequenceFlatten(PF_InData* in_data, PF_OutData* out_data);
PF_Err sequenceSetdown(PF_InData* in_data, PF_OutData* out_data);

}  // namespace vellumtide
