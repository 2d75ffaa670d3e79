#include "cli/image/image_format.h"
#include "cli/image/image_library.h"

namespace vellumtide::cli {
namespace {

using namespace std::string_view_literals;

const ImageFormat kFormats[] = {
    {"PNG",
     {".png"},
     {SampleType::UInt8, SampleType::UInt16},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::UInt16,
     StraightAlpha::Always,
     {"\x89PNG\r\n\x1A\n"}},
    {"TIFF",
     {".tif", ".tiff"},
     {SampleType::UInt8, SampleType::UInt16, SampleType::Float},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::Float,
     StraightAlpha::OnRequest,
     {"II*"sv, "MM\0*"sv, "II+"sv, "MM\0+"sv}},
    {"OpenEXR",
     {".exr"},
     {SampleType::Half, SampleType::Float},
     SampleType::Half,
     SampleType::Float,
     SampleType::Float,
     StraightAlpha::Never,
     {"\x76\x2F\x31\x01"}},
};

}  // namespace

std::span<const ImageFormat> writtenFormats() {
  return {kFormats, hasImageLibrary() ? std::size(kFormats) : 1};
}

bool isPngFormat(const ImageFormat& format) {
  return &format == &kFormats[0];
}

}  // namespace vellumtide::cli
