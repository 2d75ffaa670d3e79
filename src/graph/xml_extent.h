#pragma once

#include <cstddef>
#include <string_view>

#include "kernel/limits.h"

namespace vellumtide {

/// How large the tree of an XML text gets.
struct XmlExtent {
  /// Elements inside one another.
  std::size_t depth = 0;
  /// Most attributes of one tag.
  std::size_t attributes = 0;
  /// Elements, attributes, texts, comments and everything else that becomes an object.
  std::size_t items = 0;
};

/// What TinyXML would build of `text`, in one pass without building it. Up to the first error,
/// where TinyXML stops, tags, comments, quotes, character references and bytes above 127 are passed
/// over exactly as it does, so that a text cannot look flat here and be deep there. UTF-8 only.
XmlExtent measureXml(std::string_view text);

/// The limit that a tree of that extent goes beyond. Within all of them it is safe to build:
/// TinyXML descends into elements on the stack and compares each attribute of a tag with all before
/// it.
Limit limitOf(const XmlExtent& extent);

}  // namespace vellumtide
