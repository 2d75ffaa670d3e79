#include "graph/node_program.h"

#include <cstdio>

#include "core/message_channels.h"
#include "gl/gl_loader.h"
#include "gl/shader_compile.h"

namespace vellumtide {

NodeProgram::NodeProgram(const std::string& vertexText, const std::string& fragmentText) {
  constexpr Stage kVertex = {GL_VERTEX_SHADER, " vertex shader failed to compile\n",
                             "*********** vglsl **********\n", "(v)\n"};
  constexpr Stage kFragment = {GL_FRAGMENT_SHADER, " fragment shader failed to compile\n",
                               "*********** fglsl **********\n", "(f)\n"};
  if (glAvailable()) program_ = glCreateProgram();
  compile(kVertex, vertexText);
  compile(kFragment, fragmentText);
  if (!program_) return;
  if (!linkProgram(program_)) {
    failures_.push_back({" program failed to link\n", "(l)\n" + programLog(program_) + "\n\n", ""});
  }
  outputPixelSize = glGetUniformLocation(program_, "vlmk_outputPixelSize");
  texturePixelSize = glGetUniformLocation(program_, "vlmk_texturePixelSize");
  compSize = glGetUniformLocation(program_, "vlmk_compSize");
  downsamplingRate = glGetUniformLocation(program_, "vlmk_downsamplingRate");
}

NodeProgram::~NodeProgram() {
  if (program_) glDeleteProgram(program_);
}

void NodeProgram::compile(const Stage& stage, const std::string& text) {
  std::string log = "No OpenGL shader support.";
  if (program_) {
    const GLuint shader = glCreateShader(stage.kind);
    const bool compiled = compileShader(shader, text.c_str());
    if (compiled) {
      glAttachShader(program_, shader);
    } else {
      log = shaderLog(shader);
    }
    glDeleteShader(shader);
    if (compiled) return;
  }
  failures_.push_back({stage.failure, stage.mark + log + "\n\n",
                       stage.banner + text + "****************************\n" + log});
}

void NodeProgram::reportFailures(const std::string& label) const {
  for (const Failure& failure : failures_) {
    const std::string notice = "!!!" + label + failure.notice;
    sendMessage(Channel::Ignored, notice);
    sendMessage(Channel::Debug, notice);
    std::fwrite(failure.dump.data(), 1, failure.dump.size(), stdout);
    sendMessage(Channel::ErrorLog, label + failure.log);
  }
  if (!failures_.empty()) std::fflush(stdout);
}

const std::vector<GLint>& NodeProgram::parameterLocations(
    const std::vector<std::unique_ptr<pbGraphParameter>>& parameters) {
  if (!located_) {
    parameterLocations_.reserve(parameters.size());
    for (const auto& record : parameters) {
      parameterLocations_.push_back(glGetUniformLocation(program_, record->uniformName.c_str()));
    }
    located_ = true;
  }
  return parameterLocations_;
}

std::shared_ptr<NodeProgram> NodePrograms::get(const std::string& vertexText,
                                               const std::string& fragmentText) {
  std::weak_ptr<NodeProgram>& known = byTexts_[vertexText + '\0' + fragmentText];
  std::shared_ptr<NodeProgram> program = known.lock();
  if (!program) {
    program = std::make_shared<NodeProgram>(vertexText, fragmentText);
    known = program;
  }
  return program;
}

}  // namespace vellumtide
