// How much a program may ask for. A program that asks for more is refused as a whole, like a file
// that cannot be read.
#pragma once

#include <cstddef>
#include <string>

namespace vellumtide {

namespace limits {

inline constexpr std::size_t kTextBytes = std::size_t{64} << 20;
inline constexpr std::size_t kXmlDepth = 256;
inline constexpr std::size_t kTagAttributes = 64;
/// Elements, attributes, texts and comments of a graph file.
inline constexpr std::size_t kXmlItems = std::size_t{1} << 22;
/// What the parameters, kernels, connections and other records of a program take.
inline constexpr std::size_t kRecordBytes = std::size_t{256} << 20;
inline constexpr std::size_t kKernelInputs = 1024;
/// Nodes and input images of a graph together.
inline constexpr std::size_t kGraphNodes = 16384;
/// Inputs of all its nodes together.
inline constexpr std::size_t kGraphInputs = 65536;
/// Shader texts of a graph, equal nodes counted once.
inline constexpr std::size_t kShaderBytes = std::size_t{256} << 20;

}  // namespace limits

/// A limit that a program goes beyond.
enum class Limit {
  None,
  TextBytes,
  XmlDepth,
  TagAttributes,
  XmlItems,
  RecordBytes,
  KernelInputs,
  GraphNodes,
  GraphInputs,
  ShaderBytes,
};

/// What there is too much of, such as "more than 1024 inputs in a kernel"; empty for None.
std::string limitText(Limit limit);

}  // namespace vellumtide
