#include "cli/image_format.h"
#include "cli/image_library.h"

namespace vellumtide::cli {
namespace {

const ImageFormat kFormats[] = {
    {"PNG",
     {".png"},
     {SampleType::UInt8, SampleType::UInt16},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::UInt16,
     StraightAlpha::Always},
    {"TIFF",
     {".tif", ".tiff"},
     {SampleType::UInt8, SampleType::UInt16, SampleType::Float},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::Float,
     StraightAlpha::OnRequest},
    {"OpenEXR",
     {".exr"},
     {SampleType::Half, SampleType::Float},
     SampleType::Half,
     SampleType::Float,
     SampleType::Float,
     StraightAlpha::Never},
};

}  // namespace

std::span<const ImageFormat> writtenFormats() {
  return {kFormats, hasImageLibrary() ? std::size(kFormats) : 1};
}

bool isPngFormat(const ImageFormat& format) {
  return &format == &kFormats[0];
}

}  // namespace vellumtide::cli
