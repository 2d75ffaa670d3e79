#include "host/panel_command.h"

#include "host/global_data.h"
#include "host/sequence_data.h"
#include "params/panel_update.h"

namespace vellumtide {

PF_Err updateParamsUi(PF_InData* in_data, PF_ParamDef* controls[]) {
  GlobalData* globalData = GlobalData::of(in_data);
  const SequenceRef instance(in_data->sequence_data);
  SequenceData* sequence = instance.find();
  if (!globalData || !sequence) return PF_Err_NONE;
  const pbGraph* program = globalData->usableProgram(sequence->path);
  if (const PF_Err error = updatePanel(in_data, controls, program)) return error;
  sequence = instance.find();
  if (!program || !sequence || !sequence->freshFlag) return PF_Err_NONE;
  const PF_Err error = adoptDefaults(in_data, *program);
  sequence = instance.find();
  if (!error && sequence) sequence->freshFlag = false;
  return error;
}

}  // namespace vellumtide
