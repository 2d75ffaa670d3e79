#include <algorithm>

#include "host/render.h"

namespace vellumtide {
namespace {

constexpr A_long kInputCheckoutId = 0;

bool isEmpty(const PF_LRect& rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}

PF_LRect unite(const PF_LRect& a, const PF_LRect& b) {
  if (isEmpty(a)) return b;
  if (isEmpty(b)) return a;
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

PF_LRect intersect(const PF_LRect& a, const PF_LRect& b) {
  const PF_LRect both = {std::max(a.left, b.left), std::max(a.top, b.top),
                         std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
  return isEmpty(both) ? PF_LRect{} : both;
}

}  // namespace

PF_Err smartPreRender(PF_InData* in_data, PF_OutData*, PF_PreRenderExtra* extra) {
  PF_RenderRequest request = extra->input->output_request;
  request.rect = {0, 0, in_data->width, in_data->height};
  request.preserve_rgb_of_zero_alpha = 1;

  PF_CheckoutResult layer{};
  const PF_Err error = extra->cb->checkout_layer(in_data->effect_ref, 0, kInputCheckoutId, &request,
                                                 in_data->current_time, in_data->time_step,
                                                 in_data->time_scale, &layer);

  PF_PreRenderOutput& output = *extra->output;
  // The host allows no pixels beyond those it asked for.
  const PF_LRect& asked = extra->input->output_request.rect;
  output.result_rect = intersect(unite(output.result_rect, layer.result_rect), asked);
  output.max_result_rect = isEmpty(output.max_result_rect)
                               ? layer.max_result_rect
                               : unite(output.max_result_rect, layer.max_result_rect);
  return error;
}

}  // namespace vellumtide
