#include "services/aeo/marker_comment.h"

#include "core/command_scope.h"
#include "core/utf.h"
#include "services/aeo/effect_layer.h"
#include "services/aeo/memory.h"
#include "services/aeo/stream.h"
#include "services/basic_suite.h"

namespace vellumtide {

std::optional<std::string> firstMarkerComment(PF_InData* in_data) {
  SPBasicSuite* basic = basicSuiteOf(in_data);
  const AEGP_LayerH layer = AEO::effectLayer(in_data);
  if (!layer) return std::nullopt;
  const AEO::Stream markers(basic, layer, AEGP_LayerStream_MARKER);
  if (AEO::keyframeCount(markers) < 1) return std::nullopt;
  const AEO::StreamValue first(markers, AEGP_KeyframeIndex{0});
  const AEGP_MarkerValP marker = first.error() ? nullptr : first.value().markerP;
  const ScopedSuite<AEGP_MarkerSuite1> suite(basic);
  AEO::Memory comment(basic);
  if (!marker || !suite || comment.error()) return std::nullopt;
  const A_Err error = suite->AEGP_GetMarkerString(currentPluginId, marker,
                                                  AEGP_MarkerString_COMMENT, comment.receive());
  const auto text = error ? std::nullopt : comment.utf16Text();
  if (!text) return std::nullopt;
  return toUtf8(*text);
}

}  // namespace vellumtide
