#include "host/render.h"

#include <algorithm>
#include <list>

#include "core/suite_handler.h"
#include "gl/gl_loader.h"
#include "host/global_data.h"
#include "host/parameter_checkout.h"
#include "host/parameter_refresh.h"
#include "host/sequence_data.h"
#include "services/aeo/layer_aspect.h"

namespace vellumtide {
namespace {

constexpr A_long kInputCheckoutId = 0;
constexpr std::int32_t kHostChannels = 4;

struct HostDepth {
  std::int32_t depth;
  std::int32_t bytesPerPixel;
};

HostDepth hostDepthOf(PF_PixelFormat format) {
  if (format == PF_PixelFormat_ARGB128) return {4, 16};
  if (format == PF_PixelFormat_ARGB64) return {2, 8};
  return {1, 4};
}

float ratio(const PF_RationalScale& scale) {
  return static_cast<float>(static_cast<double>(scale.num) / scale.den);
}

// The input and output buffers of one frame; the input goes back to the host at the end.
class FrameBuffers {
 public:
  FrameBuffers(PF_ProgPtr effect, const PF_SmartRenderCallbacks& callbacks)
      : effect_(effect), callbacks_(callbacks) {}
  ~FrameBuffers() {
    if (input) callbacks_.checkin_layer_pixels(effect_, kInputCheckoutId);
  }
  FrameBuffers(const FrameBuffers&) = delete;
  FrameBuffers& operator=(const FrameBuffers&) = delete;

  PF_Err checkout() {
    const PF_Err error = callbacks_.checkout_layer_pixels(effect_, kInputCheckoutId, &input);
    if (error) {
      input = nullptr;
      return error;
    }
    return callbacks_.checkout_output(effect_, &output);
  }

  PF_EffectWorld* input = nullptr;
  PF_EffectWorld* output = nullptr;

 private:
  PF_ProgPtr effect_;
  const PF_SmartRenderCallbacks& callbacks_;
};

ImageDesc describe(const PF_EffectWorld& world, std::int32_t index, float pixelAspect,
                   const HostDepth& format) {
  ImageDesc desc;
  desc.index = index;
  desc.pixelAspect = pixelAspect;
  desc.depth = format.depth;
  desc.channels = kHostChannels;
  desc.width = static_cast<std::uint32_t>(world.width);
  desc.height = static_cast<std::uint32_t>(world.height);
  desc.rowLength = world.rowbytes / format.bytesPerPixel;
  desc.pixels = world.data;
  return desc;
}

// A layer control without a layer: one texel, no pixels.
ImageDesc describeNoLayer(std::int32_t index) {
  ImageDesc desc;
  desc.index = index;
  desc.depth = 1;
  desc.channels = 3;
  desc.width = desc.height = 1;
  desc.rowLength = 1;
  return desc;
}

RenderContext evaluationContext(const PF_InData& in, const PF_EffectWorld& input,
                                const HostDepth& format) {
  RenderContext context;
  const float pixelAspect = ratio(in.pixel_aspect_ratio);
  context.output = describe(input, -1, pixelAspect, format);
  context.output.pixels = nullptr;
  context.downsampleX = ratio(in.downsample_x);
  context.downsampleY = ratio(in.downsample_y);
  context.inputs[0] = describe(input, 0, pixelAspect, format);
  context.inputs[0].x = input.origin_x;
  context.inputs[0].y = input.origin_y;
  return context;
}

RenderContext outputContext(const PF_EffectWorld& output, const HostDepth& format) {
  RenderContext context;
  context.output = describe(output, -1, 1.0f, format);
  context.output.x = output.origin_x;
  context.output.y = output.origin_y;
  return context;
}

// Fills the descriptors of the layers chosen in the panel; `holders` keep their pixels.
void addLayerInputs(PF_InData* in_data, const pbGraph& program, const HostDepth& format,
                    RenderContext& context, std::list<ParameterCheckout>& holders) {
  std::size_t next = 1;
  for (const auto& node : program.nodes) {
    if (node->kind() != NodeKind::Image) continue;
    const std::int32_t slot = static_cast<const ImageNode&>(*node).index;
    if (slot <= 0 || next == context.inputs.size()) continue;

    const PF_EffectWorld& layer = holders.emplace_back(in_data).checkout(slot).u.ld;
    if (!layer.data) {
      context.inputs[next++] = describeNoLayer(slot);
      continue;
    }
    context.inputs[next++] = describe(layer, slot, layerParameterAspect(in_data, slot), format);
    context.output.width = std::max(context.output.width, static_cast<std::uint32_t>(layer.width));
    context.output.height =
        std::max(context.output.height, static_cast<std::uint32_t>(layer.height));
  }
}

// Nodes that a frame has drawn become drawable again, also when the frame fails half-way.
class ProgramReset {
 public:
  explicit ProgramReset(pbGraph& program) : program_(program) {}
  ~ProgramReset() { program_.reset(); }
  ProgramReset(const ProgramReset&) = delete;
  ProgramReset& operator=(const ProgramReset&) = delete;

 private:
  pbGraph& program_;
};

void drawFrame(PF_InData* in_data, pbGraph& program, const FrameBuffers& buffers,
               const HostDepth& format) {
  RenderContext context = evaluationContext(*in_data, *buffers.input, format);
  std::list<ParameterCheckout> layerHolders;
  addLayerInputs(in_data, program, format, context, layerHolders);

  ParameterCheckout controls(in_data);
  refreshParameterValues(controls, program);

  const ProgramReset reset(program);
  program.evaluate(context);
  program.outputNode()->readback(outputContext(*buffers.output, format));
}

PF_Err pixelFormatOf(const PF_InData& in, const PF_EffectWorld& world, PF_PixelFormat& format) {
  const ScopedSuite<PF_WorldSuite2> suite(in.pica_basicP);
  return suite ? suite->PF_GetPixelFormat(&world, &format) : suite.error();
}

}  // namespace

PF_Err smartRender(PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra* extra) {
  FrameBuffers buffers(in_data->effect_ref, *extra->cb);
  if (const PF_Err error = buffers.checkout()) return error;
  GlobalData* globalData = GlobalData::of(in_data);
  // An empty layer has no buffers: nothing to draw.
  if (!globalData || !buffers.input || !buffers.output) return PF_Err_NONE;

  PF_PixelFormat format = 0;
  if (const PF_Err error = pixelFormatOf(*in_data, *buffers.output, format)) return error;

  const ScopedCurrentContext bracket(globalData->device);
  const SequenceData* sequence = SequenceData::live(in_data->sequence_data);
  pbGraph* program = sequence ? globalData->usableProgram(sequence->path) : nullptr;
  if (program && bracket.isCurrent() && glAvailable()) {
    drawFrame(in_data, *program, buffers, hostDepthOf(format));
  }
  return PF_Err_NONE;
}

}  // namespace vellumtide
