#include "bench/bare_gl.h"

#include <GL/glu.h>

#include <chrono>
#include <stdexcept>

#include "gl/gl_loader.h"
#include "gl/shader_compile.h"

namespace vellumtide::bench {
namespace {

void setScale(float factor) {
  for (const GLenum channel : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
    glPixelTransferf(channel, factor);
}

}  // namespace

BareContext::BareContext() {
  createWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
  if (!makeDeviceCurrent(device_)) throw std::runtime_error("no OpenGL device");
  if (const char* failure = initialiseGL()) throw std::runtime_error(failure);
}

BareContext::~BareContext() {
  restoreCurrentContext({});
  destroyWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
}

GLuint buildProgram(const ShaderTexts& texts) {
  const GLuint program = glCreateProgram();
  const auto attach = [program](GLenum kind, const std::string& text) {
    const GLuint shader = glCreateShader(kind);
    if (!compileShader(shader, text.c_str())) throw std::runtime_error(shaderLog(shader));
    glAttachShader(program, shader);
    glDeleteShader(shader);
  };
  attach(GL_VERTEX_SHADER, texts.vertex);
  attach(GL_FRAGMENT_SHADER, texts.fragment);
  if (!linkProgram(program)) throw std::runtime_error(programLog(program));
  return program;
}

BareFrame::BareFrame(int width, int height, PF_PixelFormat format, const std::vector<Pass>& passes,
                     Storage storage)
    : width_(width),
      height_(height),
      storage_(storage),
      bytesPerPixel_(headless::bytesPerPixel(format)) {
  const bool isFloat = format == PF_PixelFormat_ARGB128;
  const bool isDeep = format == PF_PixelFormat_ARGB64;
  internalFormat_ = isFloat ? GL_RGBA32F_ARB : isDeep ? GL_RGBA16 : GL_RGBA8;
  type_ = isFloat ? GL_FLOAT : isDeep ? GL_UNSIGNED_SHORT : GL_UNSIGNED_BYTE;

  glViewport(0, 0, width, height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluOrtho2D(0, width, 0, height);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();

  makeTexture();
  for (const Pass& pass : passes) {
    Target target;
    glGenFramebuffersEXT(1, &target.framebuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, target.framebuffer);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D,
                              makeTexture(), 0);
    target.program = buildProgram(pass.texts);
    setUniforms(pass, target.program);
    for (const auto& [name, source] : pass.samplers)
      target.sources.push_back(source);
    targets_.push_back(std::move(target));
  }
}

BareFrame::~BareFrame() {
  glUseProgram(0);
  for (const Target& target : targets_) {
    glDeleteProgram(target.program);
    glDeleteFramebuffersEXT(1, &target.framebuffer);
  }
  glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
}

// The kernels measured here read texel centres only, so no filter is needed.
GLuint BareFrame::makeTexture() {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  specify(width_, height_);
  textures_.push_back(texture);
  return texture;
}

void BareFrame::specify(int width, int height) {
  glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(internalFormat_), width, height, 0, GL_RGBA,
               type_, nullptr);
}

void BareFrame::specifyAll(int width, int height) {
  if (storage_ == Storage::Kept) return;
  for (const GLuint texture : textures_) {
    glBindTexture(GL_TEXTURE_2D, texture);
    specify(width, height);
  }
}

void BareFrame::setUniforms(const Pass& pass, GLuint program) {
  const auto at = [program](const std::string& name) {
    return glGetUniformLocation(program, name.c_str());
  };
  glUseProgram(program);
  glUniform2f(at("vlmk_outputPixelSize"), 1, 1);
  glUniform2f(at("vlmk_compSize"), static_cast<float>(width_), static_cast<float>(height_));
  glUniform2f(at("vlmk_downsamplingRate"), 1, 1);
  for (const FloatUniform& parameter : pass.parameters)
    glUniform1f(at(parameter.name), parameter.value);
  GLint unit = 0;
  for (const auto& [name, source] : pass.samplers)
    glUniform1i(at(name), unit++);
}

double BareFrame::draw(const headless::World& input, headless::World& output) {
  glFinish();
  const auto start = std::chrono::steady_clock::now();
  const bool isDeep = type_ == GL_UNSIGNED_SHORT;
  glActiveTexture(GL_TEXTURE0);
  specifyAll(width_, height_);
  glBindTexture(GL_TEXTURE_2D, textures_[0]);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, input.rowBytes() / bytesPerPixel_);
  if (isDeep) setScale(2);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width_, height_, GL_RGBA, type_, input.row(0));
  if (isDeep) setScale(1);
  for (const Target& target : targets_) {
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, target.framebuffer);
    glUseProgram(target.program);
    for (std::size_t unit = 0; unit < target.sources.size(); ++unit) {
      glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
      glBindTexture(GL_TEXTURE_2D, textures_[static_cast<std::size_t>(target.sources[unit])]);
    }
    glBegin(GL_POLYGON);
    glVertex2i(0, 0);
    glVertex2i(0, height_);
    glVertex2i(width_, height_);
    glVertex2i(width_, 0);
    glEnd();
  }
  glPixelStorei(GL_PACK_ROW_LENGTH, output.rowBytes() / bytesPerPixel_);
  if (isDeep) setScale(0.5f);
  glReadPixels(0, 0, width_, height_, GL_RGBA, type_, output.row(0));
  if (isDeep) setScale(1);
  specifyAll(1, 1);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace vellumtide::bench
