#include "host/panel_command.h"

#include "host/global_data.h"
#include "host/sequence_data.h"
#include "params/panel_update.h"

namespace vellumtide {

PF_Err updateParamsUi(PF_InData* in_data, PF_ParamDef* controls[]) {
  GlobalData* globalData = GlobalData::of(in_data);
  SequenceData* sequence = SequenceData::live(in_data->sequence_data);
  if (!globalData || !sequence) return PF_Err_NONE;
  const pbGraph* program = globalData->usableProgram(sequence->path);
  if (const PF_Err error = updatePanel(in_data, controls, program)) return error;
  if (!program || !sequence->freshFlag) return PF_Err_NONE;
  const PF_Err error = adoptDefaults(in_data, *program);
  if (!error) sequence->freshFlag = false;
  return error;
}

}  // namespace vellumtide
