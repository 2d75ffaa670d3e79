#pragma once

#include <string_view>

namespace vellumtide {

/// Where a kernel reads its inputs. At the centre of a texel a filtered read is the texel itself in
/// exact arithmetic; a rasteriser that filters with rounded weights mixes a trace of the
/// neighbours in, which an unfiltered read there does not.
enum class Sampling {
  Anywhere,                 ///< may lie between texels: filtering is needed
  Centres,                  ///< only at texel centres
  CentresAtFullResolution,  ///< likewise, as long as the host does not downsample
};

/// Told from a rewritten kernel body and the `evaluateParameters` of its node. Cautious: whatever
/// is not plainly a read at `outCoord()`, at a variable that only ever holds it, or by
/// `sampleNearest`, counts as Anywhere, and so does an image in the hands of a function that is not
/// known.
Sampling samplingOf(std::string_view body, std::string_view function = {});

}  // namespace vellumtide
