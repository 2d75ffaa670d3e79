// The module's one exported function.
#include "aeapi/entry_point.h"

#include <new>

#include "core/command_scope.h"
#include "host/dialog_commands.h"
#include "host/global_data.h"
#include "host/panel_command.h"
#include "host/render.h"
#include "host/sequence_data.h"
#include "panel/parameter_setup.h"
#include "services/debug_output.h"

namespace vellumtide {
namespace {

AEGP_PluginID pluginIdOf(const PF_InData* in_data) {
  const GlobalData* globalData = GlobalData::of(in_data);
  return globalData ? globalData->pluginID : 0;
}

PF_Err dispatch(PF_Cmd command, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                void* extra) {
  switch (command) {
    case PF_Cmd_ABOUT:
      return aboutCommand(in_data);
    case PF_Cmd_GLOBAL_SETUP:
      return globalSetup(in_data, out_data);
    case PF_Cmd_GLOBAL_SETDOWN:
      return globalSetdown(in_data);
    case PF_Cmd_PARAMS_SETUP:
      return setupParameters(in_data, out_data);
    case PF_Cmd_SEQUENCE_SETUP:
      return sequenceSetup(in_data, out_data);
    case PF_Cmd_SEQUENCE_RESETUP:
      return sequenceResetup(in_data, out_data);
    case PF_Cmd_SEQUENCE_FLATTEN:
      return sequenceFlatten(in_data, out_data);
    case PF_Cmd_SEQUENCE_SETDOWN:
      return sequenceSetdown(in_data, out_data);
    case PF_Cmd_DO_DIALOG:
      return informationCommand(in_data);
    case PF_Cmd_RENDER:
      _printf("Entry Render\n");
      return PF_Err_NONE;
    case PF_Cmd_UPDATE_PARAMS_UI:
      return updateParamsUi(in_data, params);
    case PF_Cmd_SMART_PRE_RENDER:
      return smartPreRender(in_data, out_data, static_cast<PF_PreRenderExtra*>(extra));
    case PF_Cmd_SMART_RENDER:
      return smartRender(in_data, out_data, static_cast<PF_SmartRenderExtra*>(extra));
    default:
      return PF_Err_NONE;
  }
}

}  // namespace

extern "C" VELLUMTIDE_EXPORT PF_Err EntryPointFunc(PF_Cmd command, PF_InData* in_data,
                                                   PF_OutData* out_data, PF_ParamDef* params[],
                                                   PF_LayerDef*, void* extra) {
  const CommandScope scope(command, in_data, pluginIdOf(in_data));
  // A command without in-data can reach no host.
  if (!in_data) return PF_Err_NONE;
  try {
    return dispatch(command, in_data, out_data, params, extra);
  } catch (PF_Err& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return PF_Err_OUT_OF_MEMORY;
  }
}

}  // namespace vellumtide
