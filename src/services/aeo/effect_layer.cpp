#include "services/aeo/effect_layer.h"

#include "core/suite_handler.h"
#include "services/basic_suite.h"

namespace vellumtide::AEO {

AEGP_LayerH effectLayer(PF_InData* in_data) {
  const ScopedSuite<AEGP_PFInterfaceSuite1> effects(basicSuiteOf(in_data));
  AEGP_LayerH layer = nullptr;
  if (!effects || effects->AEGP_GetEffectLayer(in_data->effect_ref, &layer)) return nullptr;
  return layer;
}

}  // namespace vellumtide::AEO
