#include "nodes/node.h"

#include <GL/glu.h>

#include "gl/pixel_transfer.h"
#include "nodes/buffer_transfer.h"
#include "nodes/gl_error.h"
#include "nodes/parameter_uniform.h"
#include "nodes/pb_graph.h"
#include "nodes/pixel_format.h"

namespace vellumtide {
namespace {

GLenum drawFormatOf(std::int32_t channels) {
  if (channels == 1) return GL_RED;
  return channels == 2 ? GL_RGB : GL_BGRA;
}

void drawQuad(std::uint32_t width, std::uint32_t height) {
  const auto right = static_cast<GLfloat>(width);
  const auto top = static_cast<GLfloat>(height);
  glViewport(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height));
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluOrtho2D(0.0, right, 0.0, top);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
  glBegin(GL_POLYGON);
  glVertex2f(0.0f, 0.0f);
  glVertex2f(0.0f, top);
  glVertex2f(right, top);
  glVertex2f(right, 0.0f);
  glEnd();
}

}  // namespace

Node::Node(pbGraph* graph, const pbgNodeInfo& node, NodePrograms& programs)
    : NodeBase(graph, node.id), impl(newOrThrow<NodeImpl>(programs.programOf(node))) {
  if (const pbKernelInfo* kernel = programs.kernelOf(node)) addInputs(*kernel);
}

Node::Node(pbGraph* graph, const pbKernelInfo& kernel)
    : NodeBase(graph, kernel.name),
      impl(newOrThrow<NodeImpl>(
          buildNodeProgram(name.str(), &kernel, nullptr, graph->channelOrder))) {
  addInputs(kernel);
}

void Node::addInputs(const pbKernelInfo& kernel) {
  inputs.reserve(kernel.inputs.size());
  for (const pbVariable& input : kernel.inputs)
    inputs.emplace_back(input.sourceName);
}

void Node::evaluate(const RenderContext& context) {
  if (isUpToDate()) return;
  for (const InputSlot& slot : inputs) {
    if (slot.source) slot.source->evaluate(context);
  }
  impl->image.bindForDrawing();
  prepareProgram(context);
  draw(context.output);
  glUseProgram(0);
  impl->image.unbind();
  evaluated = true;
}

// What a program does not take, for instance a value of another type, is not an error of the frame.
// Every frame makes the same calls, so one without errors need not be asked again.
void Node::prepareProgram(const RenderContext& context) {
  if (programMayRefuse) owner->noteGLError();
  glUseProgram(impl->program->id());
  setStandardUniforms(context);
  setParameterUniforms();
  bindInputs(context);
  if (programMayRefuse) programMayRefuse = discardGLErrors();
}

void Node::setStandardUniforms(const RenderContext& context) {
  const ImageDesc& output = context.output;
  const NodeProgram& program = *impl->program;
  glUniform2f(program.outputPixelSize, output.pixelAspect, 1.0f);
  glUniform2f(program.compSize, static_cast<GLfloat>(output.width),
              static_cast<GLfloat>(output.height));
  glUniform2f(program.downsamplingRate, context.downsampleX, context.downsampleY);
}

void Node::setParameterUniforms() {
  const std::vector<GLint>& locations = impl->program->parameterLocations(owner->parameters);
  for (std::size_t i = 0; i < locations.size(); ++i) {
    if (locations[i] >= 0) setParameterUniform(locations[i], *owner->parameters[i]);
  }
}

GLint Node::filterFor(const RenderContext& context) const {
  const bool isFullResolution = context.downsampleX == 1.0f && context.downsampleY == 1.0f;
  const Sampling sampling = impl->program->sampling;
  const bool atCentres = sampling == Sampling::Centres ||
                         (sampling == Sampling::CentresAtFullResolution && isFullResolution);
  return atCentres ? GL_NEAREST : GL_LINEAR;
}

void Node::bindInputs(const RenderContext& context) {
  if (inputs.empty()) return;
  const GLint filter = filterFor(context);
  const GLuint program = impl->program->id();
  std::vector<GLfloat> sizes;
  sizes.reserve(inputs.size() * 2);
  GLint unit = 1;
  for (const InputSlot& slot : inputs) {
    PixelSize size;
    if (slot.source) {
      slot.source->setFilter(filter);
      slot.source->bindAsInput(program, slot.uniformName.c_str(), unit);
      size = slot.source->pixelSize(context);
    } else {
      owner->bindBlankInput(program, slot.uniformName.c_str(), unit);
    }
    sizes.insert(sizes.end(), {size.x, size.y});
    ++unit;
  }
  glUniform2fv(impl->program->texturePixelSize, static_cast<GLsizei>(inputs.size()), sizes.data());
}

void Node::draw(const ImageDesc& output) {
  const PixelFormat format = pixelFormatOf(output.depth);
  impl->image.specify(format.internalFormat, output.width, output.height,
                      drawFormatOf(output.channels), format.type);
  glClear(GL_COLOR_BUFFER_BIT);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_BLEND);
  glDisable(GL_LIGHTING);
  drawQuad(output.width, output.height);
  glFlush();
}

void Node::readback(const RenderContext& context) {
  if (!evaluated) return;
  const ImageDesc& output = context.output;
  impl->image.bindForDrawing();
  glReadBuffer(GL_COLOR_ATTACHMENT0_EXT);
  const ScopedChannelScale scale(output.depth == 2 ? 0.5f : 1.0f);
  readBuffer(output, transferFormatOf(output.channels), impl->image.size());
  impl->image.unbind();
}

void Node::reset() {
  impl->image.shrink();
  evaluated = false;
}

void Node::bindAsInput(GLuint program, const char* uniformName, GLint unit) {
  if (proxy) return proxy->bindAsInput(program, uniformName, unit);
  impl->image.bindToSampler(program, uniformName, unit);
}

void Node::setFilter(GLint filter) {
  if (proxy) return proxy->setFilter(filter);
  impl->image.setFilter(filter);
}

PixelSize Node::pixelSize(const RenderContext& context) const {
  if (proxy) return proxy->pixelSize(context);
  return {context.output.pixelAspect, 1.0f};
}

}  // namespace vellumtide
