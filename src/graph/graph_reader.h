#pragma once

#include "graph/graph_info.h"

class TiXmlDocument;

namespace vellumtide {

/// Reads a graph from zero-terminated UTF-8 XML into a fresh `info`. Returns 0, or 1 when there is
/// no "graph" element, or when the graph goes beyond a limit, which `info.beyond` then names.
/// Errors behind the start of that element are not reported: what was read before them counts.
int readGraphText(const char* text, pbGraphInfo& info);

/// The same from a file; a file with any XML error is refused (1).
int readGraphFile(const char* path, pbGraphInfo& info);

/// The same from a document in memory.
int readGraphDocument(const TiXmlDocument& document, pbGraphInfo& info);

}  // namespace vellumtide
