#include "host/parameter_checkout.h"

namespace vellumtide {

ParameterCheckout::~ParameterCheckout() {
  for (PF_ParamDef& def : held_)
    in_data_->inter.checkin_param(in_data_->effect_ref, &def);
}

const PF_ParamDef& ParameterCheckout::checkout(PF_ParamIndex index) {
  PF_ParamDef& def = held_.emplace_back();
  const PF_Err error =
      in_data_->inter.checkout_param(in_data_->effect_ref, index, in_data_->current_time,
                                     in_data_->time_step, in_data_->time_scale, &def);
  if (error) {
    held_.pop_back();
    throw PF_Err{error};
  }
  return def;
}

}  // namespace vellumtide
