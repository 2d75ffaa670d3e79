#include "host/panel_command.h"

#include "host/global_data.h"
#include "host/sequence_data.h"
#include "panel/default_values.h"

namespace vellumtide {

PF_Err updateParamsUi(PF_InData* in_data, PF_ParamDef* controls[]) {
  GlobalData* globalData = GlobalData::of(in_data);
  const SequenceRef instance(in_data->sequence_data);
  SequenceData* sequence = instance.find();
  if (!globalData || !sequence) return PF_Err_NONE;
  const pbGraph* program = globalData->usableProgram(sequence->path);
  PanelMemory memory{sequence->label, sequence->entries};
  const PF_Err shown = updatePanel(in_data, controls, program, memory);
  // The host may have flattened the instance in between.
  if ((sequence = instance.find())) {
    sequence->label = memory.title;
    sequence->entries = memory.entries;
  }
  const PF_Err adopted = program ? adoptDefaultsOnce(in_data, *program) : PF_Err_NONE;
  return shown ? shown : adopted;
}

PF_Err adoptDefaultsOnce(PF_InData* in_data, const pbGraph& program) {
  const SequenceRef instance(in_data->sequence_data);
  const auto setFresh = [&instance](bool isFresh) {
    SequenceData* sequence = instance.find();
    const bool wasFresh = sequence && sequence->freshFlag;
    if (sequence) sequence->freshFlag = isFresh;
    return wasFresh;
  };
  if (!setFresh(false)) return PF_Err_NONE;
  bool asked = false;
  const PF_Err error = adoptDefaults(in_data, program, asked);
  if (!asked) setFresh(true);
  return error;
}

}  // namespace vellumtide
