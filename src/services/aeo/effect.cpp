#include "services/aeo/effect.h"

#include "core/command_scope.h"
#include "services/basic_suite.h"

namespace vellumtide::AEO {

Effect::Effect(PF_InData* in_data)
    : basic_(basicSuiteOf(in_data)), suite_(basic_), error_(suite_.error()) {
  if (error_) return;
  const ScopedSuite<AEGP_PFInterfaceSuite1> effects(basic_);
  error_ = effects
               ? effects->AEGP_GetNewEffectForEffect(currentPluginId, in_data->effect_ref, &effect_)
               : effects.error();
  if (error_) effect_ = nullptr;
  if (!error_ && !effect_) error_ = PF_Err_INVALID_CALLBACK;
}

Effect::~Effect() {
  if (effect_) suite_->AEGP_DisposeEffect(effect_);
}

}  // namespace vellumtide::AEO
