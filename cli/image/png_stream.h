// libpng on a C++ stream: its failures are exceptions here.
#pragma once

#include <png.h>

#include <iosfwd>
#include <stdexcept>

namespace vellumtide::cli {

struct PngError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Owns libpng's two records. Every call that is given them may throw PngError.
class PngReader {
 public:
  explicit PngReader(std::istream& stream);
  ~PngReader();
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  png_structp png;
  png_infop info;
};

class PngWriter {
 public:
  explicit PngWriter(std::ostream& stream);
  ~PngWriter();
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  png_structp png;
  png_infop info;
};

}  // namespace vellumtide::cli
