// The XML tree of a graph file and how its parts are found.
#pragma once

#include <tinyxml.h>

#include <string>

#include "kernel/limits.h"

namespace vellumtide {

/// Builds the tree of a text unless it goes beyond a limit, which is the answer. Only with
/// `positions` the tree knows where in the text its parts begin, which takes longer.
Limit buildDocument(std::string text, TiXmlDocument& document, bool positions = false);

/// The text of an element whose first child is text; null otherwise.
const TiXmlText* leadingText(const TiXmlElement& element);

/// Calls `visit` for each child element of that name, in document order.
template <typename Visit>
void forEachChild(const TiXmlElement& parent, const char* name, Visit visit) {
  for (const TiXmlElement* child = parent.FirstChildElement(name); child;
       child = child->NextSiblingElement(name)) {
    visit(*child);
  }
}

}  // namespace vellumtide
