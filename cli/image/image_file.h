// Image files: PNG, TIFF and OpenEXR (and, for reading, whatever else the image library knows).
// Values are never colour-converted. Every failure is a Failure with ExitStatus::Image that names
// the file and the reason. All of it may be used from several threads at a time.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "headless/world.h"

namespace vellumtide::cli {

enum class SampleType { UInt8, UInt16, Half, Float };

// "uint8", "uint16", "half", "float".
std::string_view name(SampleType type);

// A picture as the host keeps it, and how its file keeps it.
struct ImageFile {
  headless::World pixels{0, 0, 0};
  double pixelAspect = 1.0;  // width of a pixel over its height
  SampleType sampleType = SampleType::UInt8;
  bool straightAlpha = false;  // a TIFF file that keeps colour and alpha apart
};

// Sides and memory (in bytes of 32-bit samples) beyond which a picture is refused.
inline constexpr int kLargestSide = 30000;
inline constexpr std::size_t kLargestImageBytes = std::size_t{4} << 30;
bool isTooLarge(double width, double height, double channels);

// Reads at the file's natural depth: 8-bit integers 8, 16-bit integers 16, all others 32. Alpha
// that the file keeps multiplied in is taken out; where it is 0 the colour stays as it is. Grey
// becomes equal red, green and blue, and missing alpha is opaque. An OpenEXR picture whose pixels
// cover another area than its display window is cut to that window, transparent where it has none.
// ReadAs::Floats reads every file at 32 bits, which keep all 16 bits of an integer apart.
enum class ReadAs { Natural, Floats };
ImageFile readImageFile(const std::filesystem::path& path, ReadAs readAs = ReadAs::Natural);

// What a file says of its picture before the pixels: size, the format that reading gives, samples.
struct ImageShape {
  int width = 0, height = 0;
  PF_PixelFormat format = PF_PixelFormat_ARGB32;
  SampleType sampleType = SampleType::UInt8;
};
ImageShape readImageShape(const std::filesystem::path& path);

struct WriteOptions {
  std::optional<SampleType> sampleType;  // none: the closest to the picture's depth
  bool preferHalf = false;               // OpenEXR: half instead of float
  bool straightAlpha = false;            // TIFF only; PNG always, OpenEXR never keeps it apart
  bool dropAlpha = false;                // write red, green and blue alone, as they are
  // Of PNG and TIFF, from 0 (fast) to 9 (small). Beyond 4, writing takes three times as long for
  // files a tenth smaller.
  int compression = 4;
};

// Whether the file's first bytes are those of the format that its extension stands for.
bool holdsItsFormat(const std::filesystem::path& path);

// The samples that a picture written to `path` gets. Throws as checkWritable() does.
SampleType writtenType(const std::filesystem::path& path, PF_PixelFormat pixels,
                       const WriteOptions& options);

// Checks that `path` can be written with these options as far as that shows without writing: a
// known extension, a sample type it can hold, and what outputTarget() asks for.
void checkWritable(const std::filesystem::path& path, const WriteOptions& options);

// Writes the file whole or not at all, as PendingFile does. The extension decides the format; "-"
// is standard output and gets PNG.
void writeImageFile(const std::filesystem::path& path, const headless::World& pixels,
                    double pixelAspect, const WriteOptions& options);

// The pixels alone, written to `file` right away in the format of `target`, which failures name.
void encodeImageFile(const std::filesystem::path& file, const std::filesystem::path& target,
                     const headless::World& pixels, double pixelAspect,
                     const WriteOptions& options);

}  // namespace vellumtide::cli
