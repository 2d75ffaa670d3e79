#include "tests/scenarios/frame_request.h"

#include <algorithm>
#include <cmath>

#include "tests/scenarios/pictures.h"

namespace vellumtide::scenarios {
namespace {

using headless::Effect;
using headless::Layer;
using headless::RenderOptions;
using headless::World;

PF_LRect overlap(const PF_LRect& a, const PF_LRect& b) {
  const PF_LRect both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                      std::min(a.bottom, b.bottom)};
  return both.left < both.right && both.top < both.bottom ? both : PF_LRect{};
}

float ratio(const PF_RationalScale& scale) {
  return static_cast<float>(static_cast<double>(scale.num) / scale.den);
}

double unfixed(PF_Fixed value) {
  return value / 65536.0;
}

World& pixelsOf(Layer& layer, const RenderOptions& options) {
  return layer.pixelsFor(options.format, options.downsampleX, options.downsampleY);
}

FrameImage imageOf(World& world, const PF_LRect& part, int index, float aspect) {
  const int pixelBytes = headless::bytesPerPixel(world.format());
  const PF_LRect whole = world.rect();
  FrameImage image{index,
                   aspect,
                   part.left,
                   part.top,
                   part.right - part.left,
                   part.bottom - part.top,
                   world.rowBytes() / pixelBytes,
                   nullptr};
  image.pixels = world.row(part.top - whole.top) +
                 static_cast<std::ptrdiff_t>(part.left - whole.left) * pixelBytes;
  return image;
}

// The value of one parameter from the records that the host hands out at the frame's time.
ValueCells valueOf(const Effect& effect, const RenderOptions& options, const PlanParameter& each) {
  if (each.slot < 0) {
    const pbValue& value = each.parameter.defaultValue;
    return value.isSet ? value.meantCells() : ValueCells();
  }
  const auto record = [&](int offset) {
    const A_Time time{options.time, options.timeScale};
    return paramDefOf(effect.controlAt(each.slot + offset, time), options.downsampleX,
                      options.downsampleY);
  };
  ValueCells value;
  const PF_ParamDef first = record(0);
  const bool isRgb = each.parameter.aeUIControl == pbUIControl::None &&
                     each.parameter.parameterType == pbParameterType::ColorRGB;
  const int count = componentCount(each.parameter.type);
  switch (first.param_type) {
    case PF_Param_POPUP:
      value.setInt(0, first.u.pd.value - 1);
      return value;
    case PF_Param_ANGLE:
      value.setFloat(0, static_cast<float>(unfixed(first.u.ad.value)));
      return value;
    case PF_Param_POINT:
      value.setFloat(0,
                     static_cast<float>(unfixed(first.u.td.x_value) / ratio(options.downsampleX)));
      value.setFloat(1,
                     static_cast<float>(unfixed(first.u.td.y_value) / ratio(options.downsampleY)));
      return value;
    case PF_Param_COLOR: {
      const PF_Pixel& color = first.u.cd.value;
      const A_u_char channels[] = {color.red, color.green, color.blue, color.alpha};
      for (std::size_t i = 0; i < (isRgb ? 3u : 4u); ++i)
        value.setFloat(i, static_cast<float>(channels[i] / 255.0));
      return value;
    }
    case PF_Param_FIX_SLIDER:
      // A percentage or a single channel takes one slider, whatever the type.
      if (each.parameter.aeUIControl != pbUIControl::None) {
        value.setFloat(0, static_cast<float>(unfixed(first.u.fd.value)));
        return value;
      }
      break;
    default:
      break;
  }
  for (int i = 0; i < count; ++i) {
    const PF_ParamDef control = record(i);
    const auto at = static_cast<std::size_t>(i);
    if (control.param_type == PF_Param_SLIDER) value.setInt(at, control.u.sd.value);
    if (control.param_type == PF_Param_FIX_SLIDER)
      value.setFloat(at, static_cast<float>(unfixed(control.u.fd.value)));
    if (control.param_type == PF_Param_CHECKBOX) value.setBool(at, control.u.bd.value != 0);
  }
  return value;
}

}  // namespace

FramePlaces placesOf(Effect& effect, const RenderOptions& options) {
  const PF_LRect whole = pixelsOf(effect.layer(), options).rect();
  const PF_LRect asked{0, 0, effect.layer().width(), effect.layer().height()};
  const PF_LRect input = options.wholeLayers ? whole : overlap(asked, whole);
  return {input, overlap(input, options.request.value_or(whole))};
}

FrameRequest requestOf(Effect& effect, const RenderOptions& options, const Plan& plan) {
  const PF_LRect part = placesOf(effect, options).input;
  FrameRequest request;
  request.format = options.format;
  request.downsampleX = ratio(options.downsampleX);
  request.downsampleY = ratio(options.downsampleY);
  request.pixelAspect = ratio(options.pixelAspect.value_or(effect.layer().pixelAspect()));
  request.width = part.right - part.left;
  request.height = part.bottom - part.top;
  request.images.push_back(
      imageOf(pixelsOf(effect.layer(), options), part, 0, request.pixelAspect));
  for (const PlanNode& node : plan.nodes) {
    if (node.image < 1 || node.image > 3) continue;
    Layer* layer = effect.layer().composition().findLayer(effect.control(node.image).layerId);
    if (!layer) {
      request.images.push_back({.index = node.image});
      continue;
    }
    World& world = pixelsOf(*layer, options);
    FrameImage image = imageOf(world, world.rect(), node.image,
                               layer->item() ? ratio(layer->pixelAspect()) : 1.0f);
    image.x = image.y = 0;
    request.images.push_back(image);
    request.width = std::max(request.width, image.width);
    request.height = std::max(request.height, image.height);
  }
  for (const PlanParameter& each : plan.parameters)
    request.values.push_back(valueOf(effect, options, each));
  return request;
}

bool hasSpecials(Effect& effect, const RenderOptions& options, const FrameRequest& request) {
  for (const ValueCells& value : request.values)
    for (const float number : value.floats())
      if (!std::isfinite(number)) return true;
  for (const FrameImage& image : request.images) {
    if (!image.pixels) continue;
    Layer* layer = effect.layer().composition().findLayer(effect.control(image.index).layerId);
    if (layer && hasSpecials(pixelsOf(*layer, options))) return true;
  }
  return false;
}

}  // namespace vellumtide::scenarios
