#pragma once

#include <cstddef>
#include <string_view>

#include "kernel/kernel_info.h"
#include "kernel/shader_reader.h"

namespace vellumtide {

/// Memory that the records of one program may take. A few bytes of source make a record of half a
/// kilobyte, and a declaration can hand a long text to each of its parameters, so a hostile file
/// could ask for thousands of times its own size.
class RecordBudget {
 public:
  /// False, with nothing taken, when fewer than `bytes` are left.
  bool take(std::size_t bytes) {
    if (bytes > left_) return false;
    left_ -= bytes;
    return true;
  }

 private:
  std::size_t left_ = limits::kRecordBytes;
};

/// Reads the source of one kernel. Nothing is rejected: what is not recognised is dropped outside
/// the kernel's braces and copied inside them, and shows up as a shader compile error.
class PBKParser : public ShaderReader {
 public:
  class GlobalParser;
  class MappedGlobalParser;
  class MetaDataParser;
  class InputsParser;
  class DependentsParser;
  class ParameterParser;
  class ParameterMetaDataParser;
  class ParameterMetaDataValueParser;
  class EvaluateDependentsParser;

  /// Kernels of one graph share a budget; it must outlive the parser.
  explicit PBKParser(std::string_view text, RecordBudget* budget = nullptr);

  /// Fills a fresh `kernel`: metadata, inputs, output, dependents, parameters and body, or only the
  /// limit that the source goes beyond. A `bodyMap` learns where the body comes from.
  void parse(pbKernelInfo& kernel, SourceMap* bodyMap = nullptr);

 private:
  RecordBudget ownBudget_;
  RecordBudget* budget_;
};

}  // namespace vellumtide
