#include "host/render.h"

#include <algorithm>
#include <list>

#include "core/message_channels.h"
#include "core/suite_handler.h"
#include "host/current_device.h"
#include "host/global_data.h"
#include "host/parameter_checkout.h"
#include "host/parameter_refresh.h"
#include "host/program_loader.h"
#include "host/sequence_data.h"
#include "nodes/buffer_transfer.h"
#include "nodes/gl_error.h"
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
  desc.width = static_cast<std::uint32_t>(std::max(world.width, 0));
  desc.height = static_cast<std::uint32_t>(std::max(world.height, 0));
  desc.rowLength = world.rowbytes / format.bytesPerPixel;
  desc.rowBytes = world.rowbytes;
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
    context.output.width = std::max(context.output.width, context.inputs[next - 1].width);
    context.output.height = std::max(context.output.height, context.inputs[next - 1].height);
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

std::string notDrawn(const ImageDesc& frame, const std::string& why) {
  return "Frame of " + std::to_string(frame.width) + " x " + std::to_string(frame.height) +
         " pixels not drawn: " + why;
}

// Draws the frame into the output buffer. Returns why that could not be done, "" when it was.
std::string drawFrame(PF_InData* in_data, GlobalData& globalData, pbGraph& program,
                      const FrameBuffers& buffers, const HostDepth& format) {
  const CurrentDevice device(globalData);
  RenderContext context = evaluationContext(*in_data, *buffers.input, format);
  if (device.failure()) return notDrawn(context.output, device.failure());
  std::list<ParameterCheckout> layerHolders;
  addLayerInputs(in_data, program, format, context, layerHolders);
  const ImageDesc& frame = context.output;
  const std::string limit = exceededLimit(globalData.drawLimits, frame.width, frame.height);
  if (!limit.empty()) return notDrawn(frame, limit);
  const RenderContext result = outputContext(*buffers.output, format);
  if (frame.width == 0 || frame.height == 0) {
    clearBuffer(result.output);
    return "";
  }

  ParameterCheckout controls(in_data);
  refreshParameterValues(controls, program);

  const ProgramReset reset(program);
  program.evaluate(context);
  program.outputNode()->readback(result);
  const unsigned error = program.glError();
  return error ? notDrawn(frame, glErrorText(error)) : "";
}

// A program that waits for the device is tried again. What is said on the way may make the host
// call again, so nothing of the instance is kept.
void retryUnbuilt(PF_InData* in_data) {
  GlobalData* globalData = GlobalData::of(in_data);
  const SequenceData* sequence = SequenceData::live(in_data->sequence_data);
  if (!globalData || !sequence || !isUnbuilt(*globalData, sequence->path)) return;
  const std::string path = sequence->path;
  loadProgram(*globalData, in_data, path, false);
}

PF_Err pixelFormatOf(const PF_InData& in, const PF_EffectWorld& world, PF_PixelFormat& format) {
  const ScopedSuite<PF_WorldSuite2> suite(in.pica_basicP);
  return suite ? suite->PF_GetPixelFormat(&world, &format) : suite.error();
}

}  // namespace

PF_Err smartRender(PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra* extra) {
  retryUnbuilt(in_data);
  FrameBuffers buffers(in_data->effect_ref, *extra->cb);
  if (const PF_Err error = buffers.checkout()) return error;
  GlobalData* globalData = GlobalData::of(in_data);
  // An empty layer has no buffers: nothing to draw.
  if (!globalData || !buffers.input || !buffers.output) return PF_Err_NONE;

  PF_PixelFormat format = 0;
  if (const PF_Err error = pixelFormatOf(*in_data, *buffers.output, format)) return error;

  const SequenceData* sequence = SequenceData::live(in_data->sequence_data);
  if (!sequence) return PF_Err_NONE;
  const HostDepth depth = hostDepthOf(format);
  pbGraph* program = globalData->usableProgram(sequence->path);
  if (program) {
    const std::string failure = drawFrame(in_data, *globalData, *program, buffers, depth);
    if (failure.empty()) return PF_Err_NONE;
    sendMessage(Channel::Debug, failure + "\n");
  } else if (!isUnbuilt(*globalData, sequence->path)) {
    return PF_Err_NONE;
  }
  clearBuffer(describe(*buffers.output, -1, 1.0f, depth));
  return PF_Err_OUT_OF_MEMORY;
}

}  // namespace vellumtide
