#include "kernel/limits.h"

namespace vellumtide {
namespace {

std::string moreThan(std::size_t count, const char* what) {
  return "more than " + std::to_string(count) + what;
}

std::string megabytes(std::size_t bytes, const char* what) {
  return moreThan(bytes >> 20, " MiB") + what;
}

}  // namespace

std::string limitText(Limit limit) {
  switch (limit) {
    case Limit::None:
      break;
    case Limit::TextBytes:
      return megabytes(limits::kTextBytes, " of text");
    case Limit::XmlDepth:
      return moreThan(limits::kXmlDepth, " elements inside one another");
    case Limit::TagAttributes:
      return moreThan(limits::kTagAttributes, " attributes of one element");
    case Limit::XmlItems:
      return moreThan(limits::kXmlItems, " elements, attributes and texts");
    case Limit::RecordBytes:
      return megabytes(limits::kRecordBytes, " of parameters and other records");
    case Limit::KernelInputs:
      return moreThan(limits::kKernelInputs, " inputs of a kernel");
    case Limit::GraphNodes:
      return moreThan(limits::kGraphNodes, " nodes and images in a graph");
    case Limit::GraphInputs:
      return moreThan(limits::kGraphInputs, " inputs of a graph's nodes together");
    case Limit::ShaderBytes:
      return megabytes(limits::kShaderBytes, " of shader texts for a graph");
  }
  return {};
}

}  // namespace vellumtide
