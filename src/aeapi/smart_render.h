// Records of the smart pre-render and smart render commands.
#pragma once

#include "aeapi/params.h"

namespace vellumtide {

struct PF_RenderRequest {
  PF_LRect rect;
  PF_Field field;
  PF_ChannelMask channel_mask;
  PF_Boolean preserve_rgb_of_zero_alpha;
  char unused[3];
  A_long reserved[4];
};

struct PF_CheckoutResult {
  PF_LRect result_rect;
  PF_LRect max_result_rect;
  PF_RationalScale par;
  PF_Boolean solid;
  PF_Boolean reservedB[3];
  A_long ref_width;
  A_long ref_height;
  A_long reserved[6];
};

struct PF_PreRenderInput {
  PF_RenderRequest output_request;
  A_short bitdepth;
  const void* gpu_data;
  PF_GPU_Framework what_gpu;
  A_u_long device_index;
};

using PF_DeletePreRenderDataFunc = void (*)(void* pre_render_data);

struct PF_PreRenderOutput {
  PF_LRect result_rect;
  PF_LRect max_result_rect;
  PF_Boolean solid;
  PF_Boolean reserved;
  PF_RenderOutputFlags flags;
  void* pre_render_data;
  PF_DeletePreRenderDataFunc delete_pre_render_data_func;
};

struct PF_PreRenderCallbacks {
  PF_Err (*checkout_layer)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_idL,
                           const PF_RenderRequest* req, A_long what_time, A_long time_step,
                           A_u_long time_scale, PF_CheckoutResult* checkout_result);
  PF_Err (*GuidMixInPtr)(PF_ProgPtr effect_ref, A_u_long buf_sizeLu, const void* buf);
};

struct PF_PreRenderExtra {
  PF_PreRenderInput* input;
  PF_PreRenderOutput* output;
  PF_PreRenderCallbacks* cb;
};

struct PF_SmartRenderInput {
  PF_RenderRequest output_request;
  A_short bitdepth;
  void* pre_render_data;
  const void* gpu_data;
  PF_GPU_Framework what_gpu;
  A_u_long device_index;
};

struct PF_SmartRenderCallbacks {
  PF_Err (*checkout_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL,
                                  PF_EffectWorld** pixels);
  PF_Err (*checkin_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL);
  PF_Err (*checkout_output)(PF_ProgPtr effect_ref, PF_EffectWorld** output);
};

struct PF_SmartRenderExtra {
  PF_SmartRenderInput* input;
  PF_SmartRenderCallbacks* cb;
};

}  // namespace vellumtide
