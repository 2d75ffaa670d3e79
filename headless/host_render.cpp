// A frame: smart pre-render, then smart render into a world of the size that pre-render promised.
#include <utility>

#include "headless/call_frame.h"
#include "headless/host.h"
#include "headless/tables.h"

namespace vellumtide::headless {
namespace {

bool isEmpty(const PF_LRect& rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}

bool contains(const PF_LRect& outer, const PF_LRect& inner) {
  return isEmpty(inner) || (inner.left >= outer.left && inner.top >= outer.top &&
                            inner.right <= outer.right && inner.bottom <= outer.bottom);
}

bool same(const PF_LRect& a, const PF_LRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

std::string text(const PF_LRect& rect) {
  std::string listed;
  for (A_long edge : {rect.left, rect.top, rect.right, rect.bottom}) {
    listed += (listed.empty() ? "" : ", ") + std::to_string(edge);
  }
  return listed;
}

PF_RenderRequest requestOf(Effect& effect, const RenderOptions& options) {
  PF_RenderRequest request{};
  request.rect = options.request
                     ? *options.request
                     : effect.layer()
                           .pixelsFor(options.format, options.downsampleX, options.downsampleY)
                           .rect();
  request.field = options.field;
  request.channel_mask = options.channelMask;
  return request;
}

// What is wrong with the rectangles of a pre-render, "" when nothing is.
std::string faultOf(const PF_PreRenderOutput& output, const PF_LRect& request) {
  if (!contains(output.max_result_rect, output.result_rect)) {
    return "the result rectangle (" + text(output.result_rect) +
           ") lies outside the maximal one (" + text(output.max_result_rect) + ")";
  }
  const bool extra = (output.flags & PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS) != 0;
  if (!extra && !contains(request, output.result_rect)) {
    return "the result rectangle (" + text(output.result_rect) + ") lies outside the request (" +
           text(request) + ")";
  }
  return "";
}

// Reports what was written to the worlds of a frame that should not have been, and takes back the
// layer pixels that are still out, as the host does at the end of a frame.
void closePass(Host& host, RenderPass& pass, PF_Cmd command) {
  Books& books = host.books();
  const std::string outerCommand = books.command();
  books.setCommand(commandName(command));
  for (auto& [id, checkout] : pass.layers) {
    if (checkout.pixelsOut) --books.holdings.pixels;
    if (!checkout.world || !host.options().checkInputPixels) continue;
    if (checkout.world->checksum() != checkout.checksum) {
      books.fault("the input pixels of checkout id " + std::to_string(id) + " were written");
    }
  }
  HostState& state = host.state();
  for (auto it = state.worldFormats.begin(); it != state.worldFormats.end();) {
    if (state.newWorlds.count(it->first) != 0) {
      ++it;
      continue;
    }
    const auto* world = static_cast<const World*>(it->first);
    const std::string damage = world->damage();
    if (!damage.empty()) {
      books.fault(std::string(world == pass.output ? "the output" : "an input") +
                  " world was written " + damage);
    }
    it = state.worldFormats.erase(it);
  }
  books.setCommand(outerCommand);
}

// Puts a frame in force for as long as the object lives, and then the one around it again.
class PassScope {
 public:
  PassScope(HostState& state, RenderPass* pass)
      : state_(state), outer_(std::exchange(state.pass, pass)), outerFormats_(state.worldFormats) {}
  ~PassScope() {
    state_.pass = outer_;
    if (outer_) state_.worldFormats.insert(outerFormats_.begin(), outerFormats_.end());
  }
  PassScope(const PassScope&) = delete;
  PassScope& operator=(const PassScope&) = delete;

 private:
  HostState& state_;
  RenderPass* outer_;
  std::map<const void*, PF_PixelFormat> outerFormats_;
};

}  // namespace

PF_Err Host::preRender(Effect& effect, const RenderOptions& options, PF_PreRenderOutput& output) {
  PF_PreRenderInput input{};
  input.output_request = requestOf(effect, options);
  input.bitdepth = static_cast<A_short>(depthOfPixelFormat(options.format));
  PF_PreRenderExtra extra{&input, &output, &preRenderCallbacks()};
  CallArguments arguments;
  arguments.extra = &extra;
  arguments.frame = &options;
  arguments.adjust = options.adjust;
  const PF_Err error = call(PF_Cmd_SMART_PRE_RENDER, &effect, arguments);
  if (error != PF_Err_NONE) return error;
  const std::string wrong = faultOf(output, input.output_request.rect);
  if (!wrong.empty()) books_.fault("PF_Cmd_SMART_PRE_RENDER gave wrong rectangles: " + wrong);
  return error;
}

RenderResult Host::render(Effect& effect, const RenderOptions& options) {
  RenderResult result;
  RenderPass pass;
  pass.options = &options;
  const PassScope scope(*state_, &pass);
  PF_PreRenderOutput promised{};
  result.error = preRender(effect, options, promised);
  result.preRenderSeconds = lastCall_.seconds;
  result.resultRect = promised.result_rect;
  result.maxResultRect = promised.max_result_rect;
  if (result.error == PF_Err_NONE) {
    const PF_LRect rect = isEmpty(promised.result_rect) ? PF_LRect{} : promised.result_rect;
    if (options.output && options.output->format() == options.format &&
        same(options.output->rect(), rect)) {
      pass.output = options.output;
    } else {
      result.output =
          std::make_shared<World>(rect.right - rect.left, rect.bottom - rect.top, options.format,
                                  WorldLayout{options.outputPadding, rect.left, rect.top});
      pass.output = result.output.get();
    }
    pass.output->def().pix_aspect_ratio = effect.layer().pixelAspect();
    // Nothing to render: the host does not ask for the frame.
    if (!isEmpty(rect)) {
      PF_SmartRenderInput input{};
      input.output_request = requestOf(effect, options);
      input.bitdepth = static_cast<A_short>(depthOfPixelFormat(options.format));
      input.pre_render_data = promised.pre_render_data;
      PF_SmartRenderExtra extra{&input, &smartRenderCallbacks()};
      CallArguments arguments;
      arguments.extra = &extra;
      arguments.frame = &options;
      arguments.adjust = options.adjust;
      result.error = call(PF_Cmd_SMART_RENDER, &effect, arguments);
      result.renderSeconds = lastCall_.seconds;
    }
  }
  closePass(*this, pass, PF_Cmd_SMART_RENDER);
  if (promised.delete_pre_render_data_func) {
    CallFrame frame(*this, &effect, PF_Cmd_SMART_RENDER, &options);
    promised.delete_pre_render_data_func(promised.pre_render_data);
  }
  return result;
}

PF_Err Host::plainRender(Effect& effect, const RenderOptions& options) {
  World& input = effect.layer().pixelsFor(options.format, options.downsampleX, options.downsampleY);
  World output(input.width(), input.height(), options.format, {options.outputPadding, 0, 0});
  RenderPass pass;
  const PassScope scope(*state_, &pass);
  World* target = options.output ? options.output : &output;
  CallArguments arguments;
  arguments.frame = &options;
  arguments.output = state_->lend(*target);
  const PF_Err error = call(PF_Cmd_RENDER, &effect, arguments);
  pass.output = target;
  closePass(*this, pass, PF_Cmd_RENDER);
  return error;
}

}  // namespace vellumtide::headless
