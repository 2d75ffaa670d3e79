#include "tests/scenarios/second_opinion.h"

#include <algorithm>
#include <stdexcept>

#include "gl/gl_loader.h"
#include "gl/shader_compile.h"
#include "tests/scenarios/plain_reading.h"

namespace vellumtide::scenarios {
namespace {

struct Format {
  GLint internal;
  GLenum type;
};

Format formatOf(PF_PixelFormat format) {
  if (format == PF_PixelFormat_ARGB128) return {GL_RGBA32F_ARB, GL_FLOAT};
  if (format == PF_PixelFormat_ARGB64) return {GL_RGBA16, GL_UNSIGNED_SHORT};
  return {GL_RGBA8, GL_UNSIGNED_BYTE};
}

// The host's 16 bits run to 32768, those of GL to 65535.
void setScale(float factor) {
  for (const GLenum channel : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
    glPixelTransferf(channel, factor);
}

GLuint makeTexture(Format format, int width, int height, GLint filter) {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
  glTexImage2D(GL_TEXTURE_2D, 0, format.internal, width, height, 0, GL_RGBA, format.type, nullptr);
  return texture;
}

// A framebuffer around a texture, bound while it lives.
struct Target {
  explicit Target(GLuint texture, bool clears = true) {
    glGenFramebuffersEXT(1, &name);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, name);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, texture,
                              0);
    glClearColor(0, 0, 0, 0);
    if (clears) glClear(GL_COLOR_BUFFER_BIT);
  }
  ~Target() {
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    glDeleteFramebuffersEXT(1, &name);
  }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;
  GLuint name = 0;
};

// What feeds an image node; an image without pixels when nothing does.
FrameImage imageOf(const PlanNode& node, const FrameRequest& request) {
  const auto found = std::find_if(request.images.begin(), request.images.end(),
                                  [&](const FrameImage& each) { return each.index == node.image; });
  return found == request.images.end() ? FrameImage() : *found;
}

GLuint imageTexture(const FrameImage& image, const FrameRequest& request, GLint filter) {
  const bool hasPixels = image.pixels != nullptr;
  const Format format = formatOf(hasPixels ? request.format : 0);
  const GLuint texture = makeTexture(format, request.width, request.height, filter);
  { const Target cleared(texture); }
  if (!hasPixels) return texture;
  const int skipX = std::max(-image.x, 0), skipY = std::max(-image.y, 0);
  const int x = std::max(image.x, 0), y = std::max(image.y, 0);
  const int width = std::min(image.width - skipX, request.width - x);
  const int height = std::min(image.height - skipY, request.height - y);
  if (width <= 0 || height <= 0) return texture;
  glBindTexture(GL_TEXTURE_2D, texture);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, image.rowLength);
  // The software rasteriser forgets what is to be skipped when it scales.
  const auto skipped = (static_cast<std::ptrdiff_t>(skipY) * image.rowLength + skipX) *
                       headless::bytesPerPixel(request.format);
  if (format.type == GL_UNSIGNED_SHORT) setScale(2);
  glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, GL_RGBA, format.type,
                  static_cast<const std::uint8_t*>(image.pixels) + skipped);
  setScale(1);
  return texture;
}

// The sampler whose name is, or cut to 31 bytes would be, the slot's.
GLint samplerOf(GLuint program, const std::string& name) {
  GLint count = 0;
  glGetProgramiv(program, GL_ACTIVE_UNIFORMS, &count);
  for (GLint i = 0; i < count; ++i) {
    char text[256] = "";
    GLint size = 0;
    GLenum type = 0;
    glGetActiveUniform(program, static_cast<GLuint>(i), sizeof text, nullptr, &size, &type, text);
    if (type == GL_SAMPLER_2D && std::string(text).substr(0, 31) == name) {
      return glGetUniformLocation(program, text);
    }
  }
  return -1;
}

// The type whose setter a parameter's value goes through, None when nothing is set.
pbElementType setterOf(const pbParameter& parameter) {
  const int count = componentCount(parameter.type);
  switch (parameter.aeUIControl) {
    case pbUIControl::Popup:
      return pbElementType::Int;
    case pbUIControl::Angle:
    case pbUIControl::PercentSlider:
    case pbUIControl::OneChannelColor:
      return pbElementType::Float;
    case pbUIControl::Point:
      return pbElementType::Float2;
    case pbUIControl::Color: {
      const bool isColor = (count == 3 || count == 4) && parameter.type != pbElementType::Float2x2;
      return isColor && baseKind(parameter.type) == BaseKind::Float ? parameter.type
                                                                    : pbElementType::None;
    }
    case pbUIControl::None:
      break;
  }
  const pbParameterType kind = parameter.parameterType;
  if (kind == pbParameterType::AngleDegrees) return pbElementType::Float;
  if (kind == pbParameterType::Position) return pbElementType::Float2;
  if (kind == pbParameterType::ColorRGB) return pbElementType::Float3;
  if (kind == pbParameterType::ColorRGBA) return pbElementType::Float4;
  return kind == pbParameterType::Enum ? pbElementType::Int : parameter.type;
}

void setParameter(GLint at, const pbParameter& parameter, const ValueCells& value) {
  const pbElementType type = setterOf(parameter);
  const auto floats = value.floats();
  const float* f = floats.data();
  const bool isBool = baseKind(type) == BaseKind::Bool;
  GLint i[16] = {};
  for (std::size_t c = 0; c < 16; ++c)
    i[c] = isBool ? value.boolAt(c) : value.intAt(c);
  if (type == pbElementType::Float2x2) return glUniformMatrix2fv(at, 1, GL_FALSE, f);
  if (type == pbElementType::Float3x3) return glUniformMatrix3fv(at, 1, GL_FALSE, f);
  if (type == pbElementType::Float4x4) return glUniformMatrix4fv(at, 1, GL_FALSE, f);
  if (baseKind(type) == BaseKind::None) return;
  const bool isFloat = baseKind(type) == BaseKind::Float;
  const int count = componentCount(type);
  if (count == 1) isFloat ? glUniform1fv(at, 1, f) : glUniform1iv(at, 1, i);
  if (count == 2) isFloat ? glUniform2fv(at, 1, f) : glUniform2iv(at, 1, i);
  if (count == 3) isFloat ? glUniform3fv(at, 1, f) : glUniform3iv(at, 1, i);
  if (count == 4) isFloat ? glUniform4fv(at, 1, f) : glUniform4iv(at, 1, i);
}

bool attach(GLuint program, GLenum kind, const std::string& text) {
  const GLuint shader = glCreateShader(kind);
  const bool compiled = compileShader(shader, text.c_str());
  glAttachShader(program, shader);
  glDeleteShader(shader);
  return compiled;
}

// Nine inputs and more never do.
bool shouldBuild(const PlanNode& node) {
  const std::string plain = plainFragment(node.source);
  if (plain.empty() || node.slots.size() > 8) return false;
  const GLuint program = glCreateProgram();
  const bool compiles = attach(program, GL_FRAGMENT_SHADER, plain);
  glDeleteProgram(program);
  return compiles;
}

GLuint build(const PlanNode& node) {
  const GLuint program = glCreateProgram();
  const bool compiles = attach(program, GL_VERTEX_SHADER, node.vertex);
  if (attach(program, GL_FRAGMENT_SHADER, node.fragment) && compiles && linkProgram(program))
    return program;
  glDeleteProgram(program);
  return 0;
}

}  // namespace

struct SecondOpinion::Bracket : ScopedCurrentContext {
  explicit Bracket(const SecondOpinion& opinion) : ScopedCurrentContext(opinion.device_) {
    if (!isCurrent()) throw std::runtime_error("the second opinion has no device");
  }
};

SecondOpinion::SecondOpinion() {
  createWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
  const Bracket bracket(*this);
  if (const char* failure = initialiseGL()) throw std::runtime_error(failure);
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largestTexture_);
}

SecondOpinion::~SecondOpinion() {
  destroyWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
}

GLuint SecondOpinion::program(const PlanNode& node) {
  const auto [known, isNew] = programs_.try_emplace(node.vertex + '\0' + node.fragment, 0);
  if (isNew) known->second = build(node);
  return known->second;
}

bool SecondOpinion::canDraw(const Plan& plan, std::string& wronged) {
  const Bracket bracket(*this);
  bool canDraw = true;
  for (const int index : plan.order) {
    const PlanNode& node = plan.nodes[static_cast<std::size_t>(index)];
    if (node.image >= 0 || (!node.fragment.empty() && program(node))) continue;
    canDraw = false;
    if (wronged.empty() && shouldBuild(node)) wronged = node.name;
  }
  return canDraw;
}

void SecondOpinion::drawNode(const Plan& plan, int index, const FrameRequest& request,
                             std::map<int, GLuint>& textures, GLint filter) {
  const PlanNode& node = plan.nodes[static_cast<std::size_t>(index)];
  const GLuint name = program(node);
  glUseProgram(name);
  const auto at = [name](const char* uniform) { return glGetUniformLocation(name, uniform); };
  const auto width = static_cast<float>(request.width), height = static_cast<float>(request.height);
  glUniform2f(at("vlmk_outputPixelSize"), request.pixelAspect, 1);
  glUniform2f(at("vlmk_compSize"), width, height);
  glUniform2f(at("vlmk_downsamplingRate"), request.downsampleX, request.downsampleY);
  for (std::size_t i = 0; i < plan.parameters.size(); ++i)
    setParameter(at(plan.parameters[i].uniform.c_str()), plan.parameters[i].parameter,
                 request.values[i]);
  std::vector<float> sizes;
  GLint unit = 0;
  for (const PlanSlot& slot : node.slots) {
    const PlanNode* source =
        slot.source >= 0 ? &plan.nodes[static_cast<std::size_t>(slot.source)] : nullptr;
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(++unit));
    glBindTexture(GL_TEXTURE_2D, textures.at(slot.source));
    glUniform1i(samplerOf(name, slot.name), unit);
    sizes.push_back(!source             ? 1.0f
                    : source->image < 0 ? request.pixelAspect
                                        : imageOf(*source, request).pixelAspect);
    sizes.push_back(1);
  }
  if (unit > 0) glUniform2fv(at("vlmk_texturePixelSize"), unit, sizes.data());
  glActiveTexture(GL_TEXTURE0);
  textures[index] = makeTexture(formatOf(request.format), request.width, request.height, filter);
  const Target target(textures[index]);
  glViewport(0, 0, request.width, request.height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, width, 0, height, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glBegin(GL_POLYGON);
  for (const auto& [x, y] : {std::pair(0.0f, 0.0f), {0.0f, height}, {width, height}, {width, 0.0f}})
    glVertex2f(x, y);
  glEnd();
  glUseProgram(0);
}

void SecondOpinion::readBack(GLuint texture, bool isImage, headless::World& output, int width,
                             int height) {
  output.fillBytes(0);
  // An input image of the buffer's size is taken as a whole, whatever the buffer's place.
  const bool isWhole = isImage && output.width() == width && output.height() == height;
  const PF_LRect rect = isWhole ? PF_LRect{0, 0, width, height} : output.rect();
  const int left = std::max(rect.left, 0), top = std::max(rect.top, 0);
  const int columns = std::min(rect.right, width) - left,
            rows = std::min(rect.bottom, height) - top;
  if (columns <= 0 || rows <= 0) return;
  const Format format = formatOf(output.format());
  const Target target(texture, false);
  const int pixelBytes = headless::bytesPerPixel(output.format());
  glPixelStorei(GL_PACK_ROW_LENGTH, output.rowBytes() / pixelBytes);
  if (format.type == GL_UNSIGNED_SHORT) setScale(0.5f);
  // An input image that is the output comes back in the other order of channels.
  glReadPixels(
      left, top, columns, rows, isImage ? GL_ABGR_EXT : GL_RGBA, format.type,
      output.row(top - rect.top) + static_cast<std::ptrdiff_t>(left - rect.left) * pixelBytes);
  setScale(1);
}

void SecondOpinion::draw(const Plan& plan, const FrameRequest& request, GLint filter,
                         headless::World& output) {
  const Bracket bracket(*this);
  std::map<int, GLuint> textures;
  textures[-1] = makeTexture(formatOf(0), 1, 1, filter);
  { const Target cleared(textures[-1]); }
  for (const int index : plan.order) {
    const PlanNode& node = plan.nodes[static_cast<std::size_t>(index)];
    if (node.image >= 0) {
      textures[index] = imageTexture(imageOf(node, request), request, filter);
    } else {
      drawNode(plan, index, request, textures, filter);
    }
  }
  const bool isImage = plan.nodes[static_cast<std::size_t>(plan.output)].image >= 0;
  readBack(textures[plan.output], isImage, output, request.width, request.height);
  for (const auto& [index, texture] : textures)
    glDeleteTextures(1, &texture);
  while (glGetError() != GL_NO_ERROR) {
  }
}

}  // namespace vellumtide::scenarios
