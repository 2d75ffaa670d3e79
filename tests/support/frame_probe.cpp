#include "tests/support/frame_probe.h"

#include <GL/glew.h>

namespace vellumtide::end_to_end {
namespace {

constexpr GLuint kTextureNames = 20000;

// The frame under way, between the two callbacks, and the host's own callbacks.
struct {
  FrameProbe* probe = nullptr;
  GLuint query = 0;
  PF_InteractCallbacks host{};
} frame;

void countTextures(FrameProbe& probe) {
  GLint bound = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
  for (GLuint name = 1; name < kTextureNames; ++name) {
    if (!glIsTexture(name)) continue;
    GLint width = 0, height = 0;
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    ++probe.textures;
    if (width > 1 || height > 1) ++probe.largeTextures;
  }
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
}

PF_Err startAtCheckout(PF_ProgPtr effect, PF_ParamIndex index, A_long time, A_long step,
                       A_u_long scale, PF_ParamDef* param) {
  if (frame.probe && frame.query == 0) {
    glewInit();
    glGenQueries(1, &frame.query);
    glBeginQuery(GL_SAMPLES_PASSED, frame.query);
  }
  return frame.host.checkout_param(effect, index, time, step, scale, param);
}

PF_Err finishAtCheckin(PF_ProgPtr effect, PF_ParamDef* param) {
  if (frame.probe && frame.query != 0) {
    glEndQuery(GL_SAMPLES_PASSED);
    GLuint samples = 0;
    glGetQueryObjectuiv(frame.query, GL_QUERY_RESULT, &samples);
    glDeleteQueries(1, &frame.query);
    frame.probe->samples = samples;
    countTextures(*frame.probe);
    frame.probe->finished = true;
    frame.query = 0;
    frame.probe = nullptr;
  }
  return frame.host.checkin_param(effect, param);
}

}  // namespace

headless::RenderOptions probed(FrameProbe& probe, headless::RenderOptions options) {
  options.adjust = [&probe](PF_InData& in, PF_OutData&) {
    frame.probe = &probe;
    frame.host = in.inter;
    in.inter.checkout_param = startAtCheckout;
    in.inter.checkin_param = finishAtCheckin;
  };
  return options;
}

}  // namespace vellumtide::end_to_end
