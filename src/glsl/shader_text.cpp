#include "glsl/shader_text.h"

#include <cstddef>
#include <iterator>

#include "glsl/names.h"
#include "glsl/prelude.h"

namespace vellumtide {
namespace {

constexpr std::string_view kInputCounts[] = {"1", "1", "2", "3", "4", "5", "6", "7", "8"};

template <typename... Pieces>
void append(std::string& text, const Pieces&... pieces) {
  (text.append(std::string_view(pieces)), ...);
}

/// Calls `visit` for each dependent that crosses the stages in a carrier, in declaration order.
template <typename Visit>
void forEachCarried(const pbKernelInfo& kernel, Visit visit) {
  for (const pbVariable& dependent : kernel.dependents) {
    if (isCarried(dependent.type)) visit(dependent);
  }
}

/// Above eight inputs the definition stays without a value.
std::string_view inputCountText(std::size_t count) {
  return count < std::size(kInputCounts) ? kInputCounts[count] : std::string_view();
}

/// What both shaders share: definitions, preludes, the kernel and its declarations.
OwnTextPlaces appendCommon(std::string& text, const pbKernelInfo& kernel,
                           const NodeShaderInputs* node, ChannelOrder channelOrder) {
  OwnTextPlaces places;
  append(text, node ? "#define parameter\n" : "#define parameter uniform\n");
  append(text, "#define vlmk__INPUT_MAX ", inputCountText(kernel.inputs.size()), "\n");
  const std::string_view swizzle = inputSwizzle(channelOrder);
  if (!swizzle.empty()) append(text, "#define vlmk_SWIZZLE_IN ", swizzle, "\n");
  append(text, typePrelude(), "\n", functionPrelude(), "\n\n");
  places.body = text.size();
  append(text, kernel.body, "\n\n");
  forEachCarried(kernel, [&](const pbVariable& dependent) {
    append(text, "varying ", varyingTypeName(dependent.type), " ",
           prefixedName(dependent.sourceName), ";\n");
  });
  if (!node) return places;
  for (const pbParameter& parameter : node->graphParameters) {
    append(text, "uniform ", typeName(parameter.type), " ", graphParameterPrefix(parameter.name),
           parameter.name, ";\n");
  }
  places.evaluateParameters = text.size();
  append(text, node->evaluateParameters.empty() ? "void evaluateParameters(){}\n"
                                                : node->evaluateParameters);
  return places;
}

void appendVertexMain(std::string& text, const pbKernelInfo& kernel, bool isNode) {
  append(text, "\nvoid main(void)\n{\n");
  if (!kernel.dependents.empty()) {
    if (isNode) append(text, "\tevaluateParameters();\n");
    append(text, "\tevaluateDependents();\n");
    forEachCarried(kernel, [&](const pbVariable& dependent) {
      append(text, "\t", prefixedName(dependent.sourceName), " = ", varyingTypeName(dependent.type),
             "(", dependent.sourceName, ");\n");
    });
  }
  append(text, "\tvlmk_vertexPosition = gl_Vertex;\n", "\tgl_Position = ftransform();\n", "}\n");
}

void appendFragmentMain(std::string& text, const pbKernelInfo& kernel, bool isNode,
                        ChannelOrder channelOrder) {
  append(text, "\nvoid main(void)\n{\n");
  if (isNode) append(text, "\tevaluateParameters();\n");
  forEachCarried(kernel, [&](const pbVariable& dependent) {
    append(text, "\t", dependent.sourceName, " = ", typeName(dependent.type), "(",
           prefixedName(dependent.sourceName), ");\n");
  });
  append(text, "\tevaluatePixel();\n", "\tgl_FragColor = ", kernel.output.sourceName,
         outputSwizzle(channelOrder), ";\n}\n");
}

}  // namespace

int generateShaders(const pbKernelInfo& kernel, const NodeShaderInputs* node,
                    ChannelOrder channelOrder, std::string& vertexText, std::string& fragmentText,
                    ShaderTextPlaces* places) {
  vertexText = "\n#define vlmk_VERTEX_SHADER\n";
  const std::size_t commonBegin = vertexText.size();
  const OwnTextPlaces own = appendCommon(vertexText, kernel, node, channelOrder);
  fragmentText.assign(vertexText, commonBegin);
  appendVertexMain(vertexText, kernel, node != nullptr);
  appendFragmentMain(fragmentText, kernel, node != nullptr, channelOrder);
  if (places) {
    places->vertex = own;
    places->fragment = {own.body - commonBegin,
                        node ? own.evaluateParameters - commonBegin : std::size_t{0}};
  }
  return 0;
}

int generateKernelShaders(const pbKernelInfo& kernel, ChannelOrder channelOrder,
                          std::string& vertexText, std::string& fragmentText,
                          ShaderTextPlaces* places) {
  return generateShaders(kernel, nullptr, channelOrder, vertexText, fragmentText, places);
}

}  // namespace vellumtide
