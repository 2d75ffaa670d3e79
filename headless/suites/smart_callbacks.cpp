// Layer checkouts of smart pre-render and smart render.
#include <algorithm>

#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"

namespace vellumtide::headless {

template <>
std::string tableName<PF_PreRenderCallbacks>() {
  return "the pre-render callbacks";
}
template <>
std::string tableName<PF_SmartRenderCallbacks>() {
  return "the smart render callbacks";
}

namespace {

PF_LRect intersection(const PF_LRect& a, const PF_LRect& b) {
  const PF_LRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                   std::min(a.bottom, b.bottom)};
  return r.left < r.right && r.top < r.bottom ? r : PF_LRect{};
}

// The part of a world inside `rect` (layer coordinates), in the same memory.
PF_EffectWorld viewOf(CallFrame& frame, World& world, const PF_LRect& rect) {
  PF_EffectWorld view = *frame.state().lend(world);
  const PF_LRect whole = world.rect();
  view.width = rect.right - rect.left;
  view.height = rect.bottom - rect.top;
  view.extent_hint = {0, 0, view.width, view.height};
  view.origin_x = rect.left;
  view.origin_y = rect.top;
  if (view.width == 0) return view;
  uint8_t* pixel = world.row(rect.top - whole.top) +
                   static_cast<size_t>(rect.left - whole.left) * bytesPerPixel(world.format());
  view.data = reinterpret_cast<PF_PixelPtr>(pixel);
  return view;
}

PF_Err checkoutLayer(PF_ProgPtr reference, PF_ParamIndex index, A_long id,
                     const PF_RenderRequest* request, A_long, A_long, A_u_long timeScale,
                     PF_CheckoutResult* result) {
  return serve(CallKind::kCallback, "checkout_layer", [&](CallFrame& frame) {
    constexpr const char* kName = "checkout_layer";
    Effect* effect = frame.effectOf(reference, kName);
    RenderPass* pass = frame.state().pass;
    if (!effect || !pass || frame.command() != PF_Cmd_SMART_PRE_RENDER) {
      return badArgument(frame, kName, "called outside PF_Cmd_SMART_PRE_RENDER");
    }
    if (!request || !result || timeScale == 0) {
      return badArgument(frame, kName, "a null request or result, or a time scale of 0");
    }
    const auto& controls = effect->controls();
    if (index < 0 || static_cast<size_t>(index) >= controls.size() ||
        controls[index].type != PF_Param_LAYER) {
      badArgument(frame, kName, "parameter " + std::to_string(index) + " is not a layer");
      return PF_Err{PF_Err_INVALID_INDEX};
    }
    if (pass->layers.count(id) != 0) {
      return badArgument(frame, kName, "checkout id " + std::to_string(id) + " is already in use");
    }
    *result = PF_CheckoutResult{};
    LayerCheckout& checkout = pass->layers[id];
    Layer* layer = effect->layer().composition().findLayer(controls[index].layerId);
    if (!layer) return PF_Err{PF_Err_NONE};
    const RenderOptions& options = frame.options();
    World& world = layer->pixelsFor(options.format, options.downsampleX, options.downsampleY);
    result->max_result_rect = world.rect();
    result->result_rect =
        options.wholeLayers ? world.rect() : intersection(request->rect, world.rect());
    result->par = layer->pixelAspect();
    result->ref_width = layer->width();
    result->ref_height = layer->height();
    checkout.world = &world;
    checkout.view = viewOf(frame, world, result->result_rect);
    checkout.view.pix_aspect_ratio = result->par;
    if (frame.host().options().checkInputPixels) checkout.checksum = world.checksum();
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err guidMixIn(PF_ProgPtr, A_u_long, const void*) {
  return serve(CallKind::kCallback, "GuidMixInPtr", [](CallFrame&) { return PF_Err{PF_Err_NONE}; });
}

// The checkout of that id, null and a fault when pre-render made none.
LayerCheckout* findCheckout(CallFrame& frame, A_long id, const char* caller) {
  RenderPass* pass = frame.state().pass;
  if (!pass || frame.command() != PF_Cmd_SMART_RENDER) {
    badArgument(frame, caller, "called outside PF_Cmd_SMART_RENDER");
    return nullptr;
  }
  const auto found = pass->layers.find(id);
  if (found != pass->layers.end()) return &found->second;
  badArgument(frame, caller, "checkout id " + std::to_string(id) + " was not checked out before");
  return nullptr;
}

PF_Err checkoutLayerPixels(PF_ProgPtr, A_long id, PF_EffectWorld** pixels) {
  return serve(CallKind::kCallback, "checkout_layer_pixels", [&](CallFrame& frame) {
    constexpr const char* kName = "checkout_layer_pixels";
    if (!pixels) return badArgument(frame, kName, "no place for the world");
    LayerCheckout* checkout = findCheckout(frame, id, kName);
    if (!checkout) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (checkout->pixelsOut) {
      return badArgument(frame, kName, "id " + std::to_string(id) + " is already checked out");
    }
    checkout->pixelsOut = true;
    ++frame.books().holdings.pixels;
    *pixels = &checkout->view;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err checkinLayerPixels(PF_ProgPtr, A_long id) {
  return serveGiveBack(CallKind::kCallback, "checkin_layer_pixels", [&](CallFrame& frame) {
    constexpr const char* kName = "checkin_layer_pixels";
    LayerCheckout* checkout = findCheckout(frame, id, kName);
    if (!checkout) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    if (!checkout->pixelsOut) {
      return badArgument(frame, kName, "id " + std::to_string(id) + " is not checked out");
    }
    checkout->pixelsOut = false;
    --frame.books().holdings.pixels;
    return PF_Err{PF_Err_NONE};
  });
}

PF_Err checkoutOutput(PF_ProgPtr, PF_EffectWorld** output) {
  return serve(CallKind::kCallback, "checkout_output", [&](CallFrame& frame) {
    RenderPass* pass = frame.state().pass;
    if (!output || !pass || frame.command() != PF_Cmd_SMART_RENDER) {
      return badArgument(frame, "checkout_output", "called outside PF_Cmd_SMART_RENDER");
    }
    ++pass->outputCheckouts;
    *output = frame.state().lend(*pass->output);
    return PF_Err{PF_Err_NONE};
  });
}

}  // namespace

PF_PreRenderCallbacks& preRenderCallbacks() {
  static PF_PreRenderCallbacks table = [] {
    auto made = trapTable<PF_PreRenderCallbacks>();
    made.checkout_layer = checkoutLayer;
    made.GuidMixInPtr = guidMixIn;
    return made;
  }();
  return table;
}

PF_SmartRenderCallbacks& smartRenderCallbacks() {
  static PF_SmartRenderCallbacks table = [] {
    auto made = trapTable<PF_SmartRenderCallbacks>();
    made.checkout_layer_pixels = checkoutLayerPixels;
    made.checkin_layer_pixels = checkinLayerPixels;
    made.checkout_output = checkoutOutput;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
