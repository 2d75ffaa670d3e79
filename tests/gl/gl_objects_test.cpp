// Resource objects and the shader program, in a real context.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gl/gl_loader.h"
#include "gl/gl_report.h"
#include "gl/kgl_render_buffer.h"
#include "gl/kgl_render_target.h"
#include "gl/kgl_texture_buffer.h"
#include "gl/layer_texture.h"
#include "gl/shader_program.h"
#include "gl/window_device.h"
#include "tests/support/room_host.h"

namespace vellumtide {
namespace {

std::string reported;

class GlObjects : public ::testing::Test {
 protected:
  GlObjects() {
    createWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
    current_ = std::make_unique<ScopedCurrentContext>(device_);
    EXPECT_EQ(initialiseGL(), nullptr);
    reported.clear();
    setReportSink([](const char* text) { reported += text; });
  }
  ~GlObjects() override {
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    setReportSink(nullptr);
    current_.reset();
    destroyWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
  }

  static GLint levelParameter(GLuint texture, GLenum name) {
    GLint value = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, name, &value);
    return value;
  }
  static GLint integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
  }

  WindowDevice device_;
  std::unique_ptr<ScopedCurrentContext> current_;
};

// Runs inside a command, since a target's attachments live in host memory.
TEST_F(GlObjects, RenderTargetIsCompleteFromTheStartAndDeletesWhatItOwns) {
  GLuint color = 0;
  GLuint frame = 0;
  testing::RoomHost room;
  room.run([&](PF_InData*) {
    kglRenderTarget target(AttachmentKind::Texture, AttachmentKind::Texture);
    color = target.colorBuffer().getId();
    frame = target.getId();
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_EQ(levelParameter(color, GL_TEXTURE_INTERNAL_FORMAT), GL_RGBA32F_ARB);
    target.bind();
    EXPECT_EQ(glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT),
              static_cast<GLenum>(GL_FRAMEBUFFER_COMPLETE_EXT));
    kglFrameBuffer::unbind();
    target.resize(640, 480, GL_UNSIGNED_INT);
    for (GLuint texture : {color, target.depthBuffer().getId()}) {
      EXPECT_EQ(levelParameter(texture, GL_TEXTURE_WIDTH), 640);
      EXPECT_EQ(levelParameter(texture, GL_TEXTURE_HEIGHT), 480);
    }
    target.detach(GL_DEPTH_ATTACHMENT_EXT);
    target.bind();
    GLint kind = -1;
    glGetFramebufferAttachmentParameterivEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT,
                                             GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE_EXT, &kind);
    EXPECT_EQ(kind, GL_NONE);
    kglFrameBuffer::unbind();
    kglRenderTarget buffers(AttachmentKind::RenderBuffer, AttachmentKind::RenderBuffer);
    EXPECT_TRUE(glIsRenderbufferEXT(buffers.colorBuffer().getId()));
  });
  EXPECT_FALSE(glIsTexture(color));
  EXPECT_FALSE(glIsFramebufferEXT(frame));
}

TEST_F(GlObjects, OnlyTwoDimensionalTexturesAreSpecified) {
  kglTextureBuffer line(GL_TEXTURE_1D);
  line.setImage(0, GL_RGBA8, 4, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  GLint width = -1;
  glGetTexLevelParameteriv(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH, &width);
  EXPECT_EQ(width, 0);
  EXPECT_EQ(reported, "");
  kglTextureBuffer plane;
  plane.setImage(0, GL_RGBA8, 4, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  EXPECT_EQ(reported, "No Error.\nNo Error.\n");
  plane.resize(8, 3);
  EXPECT_EQ(levelParameter(plane.getId(), GL_TEXTURE_WIDTH), 8);
}

TEST_F(GlObjects, SixteenBitLayersUploadFullRangeFromPaddedRows) {
  // Two rows of one pixel, each followed by a pixel of padding.
  std::vector<A_u_short> pixels = {32768, 0, 16384, 1, 9, 9, 9, 9, 0, 32768, 2, 3, 9, 9, 9, 9};
  PF_EffectWorld world{};
  world.data = reinterpret_cast<PF_PixelPtr>(pixels.data());
  world.rowbytes = 16;
  world.width = 1;
  world.height = 2;
  GLuint texture = 0;
  glGenTextures(1, &texture);
  setUpLayerTexture(GL_TEXTURE_2D, texture);
  uploadLayer(GL_TEXTURE_2D, texture, world, GL_UNSIGNED_SHORT, 8);
  std::vector<A_u_short> read(8);
  glPixelStorei(GL_PACK_ROW_LENGTH, 0);
  glGetTexImage(GL_TEXTURE_2D, 0, GL_ABGR_EXT, GL_UNSIGNED_SHORT, read.data());
  EXPECT_EQ(read, (std::vector<A_u_short>{65535, 0, 32768, 2, 0, 65535, 4, 6}));
  GLfloat scale = 0;
  glGetFloatv(GL_GREEN_SCALE, &scale);
  EXPECT_EQ(scale, 1.0f);
  glDeleteTextures(1, &texture);

  reported.clear();
  world.data = nullptr;
  uploadLayer(GL_TEXTURE_2D, texture, world, GL_UNSIGNED_SHORT, 8);
  EXPECT_EQ(reported, "");
}

TEST_F(GlObjects, ShaderProgramAddsUpWhatFailed) {
  const char* vertex = "void main(){gl_Position = gl_Vertex;}";
  const char* fragment = "void main(){gl_FragColor = vec4(1.0);}";
  ShaderProgram program;
  EXPECT_EQ(program.build(vertex, fragment), 0);
  EXPECT_EQ(reported, "");
  const GLuint first = program.id();
  program.bind();
  EXPECT_EQ(integer(GL_CURRENT_PROGRAM), static_cast<GLint>(first));

  EXPECT_EQ(program.build("nonsense %s %n", fragment), 5);
  EXPECT_NE(reported.find("Compile error in vertex shader.\n"), std::string::npos);
  EXPECT_NE(reported.find("Link error at program " + std::to_string(program.id()) + "\n"),
            std::string::npos);
  EXPECT_EQ(program.build(vertex, "?"), 6);
  EXPECT_EQ(program.build("?", "?"), 7);
  program.release();
  EXPECT_FALSE(glIsProgram(program.id()));
  program.bind();
  EXPECT_EQ(integer(GL_CURRENT_PROGRAM), 0);
  EXPECT_EQ(program.create(), 0);
  EXPECT_TRUE(glIsProgram(program.id()));
}

}  // namespace
}  // namespace vellumtide
