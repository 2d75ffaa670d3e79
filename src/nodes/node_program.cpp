#include "nodes/node_program.h"

#include <cstdio>

#include "core/message_channels.h"
#include "gl/gl_loader.h"
#include "gl/shader_compile.h"

namespace vellumtide {
namespace {

// `what` and `log` follow the label.
void report(const std::string& label, const std::string& what, const std::string& dump,
            const std::string& log) {
  const std::string notice = "!!!" + label + what;
  sendMessage(Channel::Ignored, notice);
  sendMessage(Channel::Debug, notice);
  std::fwrite(dump.data(), 1, dump.size(), stdout);
  std::fflush(stdout);
  sendMessage(Channel::ErrorLog, label + log);
}

}  // namespace

NodeProgram::NodeProgram(const std::string& label, const std::string& vertexText,
                         const std::string& fragmentText) {
  constexpr Stage kVertex = {GL_VERTEX_SHADER, " vertex shader failed to compile\n",
                             "*********** vglsl **********\n", "(v)\n"};
  constexpr Stage kFragment = {GL_FRAGMENT_SHADER, " fragment shader failed to compile\n",
                               "*********** fglsl **********\n", "(f)\n"};
  if (glAvailable()) program_ = glCreateProgram();
  compile(kVertex, label, vertexText);
  compile(kFragment, label, fragmentText);
  if (!program_) return;
  if (!linkProgram(program_)) {
    report(label, " program failed to link\n", "", "(l)\n" + programLog(program_) + "\n\n");
  }
  outputPixelSize = glGetUniformLocation(program_, "vlmk_outputPixelSize");
  texturePixelSize = glGetUniformLocation(program_, "vlmk_texturePixelSize");
  compSize = glGetUniformLocation(program_, "vlmk_compSize");
  downsamplingRate = glGetUniformLocation(program_, "vlmk_downsamplingRate");
}

NodeProgram::~NodeProgram() {
  if (program_) glDeleteProgram(program_);
}

void NodeProgram::compile(const Stage& stage, const std::string& label, const std::string& text) {
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
  report(label, stage.failure, stage.banner + text + "****************************\n" + log,
         stage.mark + log + "\n\n");
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

std::shared_ptr<NodeProgram> buildNodeProgram(const std::string& label, const pbKernelInfo* kernel,
                                              const NodeShaderInputs* node,
                                              ChannelOrder channelOrder) {
  std::string vertexText;
  std::string fragmentText;
  if (kernel) generateShaders(*kernel, node, channelOrder, vertexText, fragmentText);
  auto program = std::make_shared<NodeProgram>(label, vertexText, fragmentText);
  if (kernel) {
    program->sampling =
        samplingOf(kernel->body, node ? node->evaluateParameters : std::string_view());
  }
  return program;
}

std::shared_ptr<NodeProgram> NodePrograms::programOf(const pbgNodeInfo& node) {
  const pbKernelInfo* kernel = kernelOf(node);
  const std::string_view function = kernel ? node.evaluateParameters : std::string_view();
  std::shared_ptr<NodeProgram>& program = programs_[{kernel, function}];
  if (!program) {
    const NodeShaderInputs inputs{info_.parameters, function};
    program = buildNodeProgram(node.id.str(), kernel, &inputs, channelOrder_);
  }
  return program;
}

}  // namespace vellumtide
