#include "cli/image/png_stream.h"

#include <cerrno>
#include <istream>
#include <ostream>

#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

// libpng must not go on after an error; an exception leaves its functions as a long jump would.
[[noreturn]] void throwError(png_structp, png_const_charp message) {
  throw PngError(message);
}

void ignoreWarning(png_structp, png_const_charp) {}

void readBytes(png_structp png, png_bytep bytes, std::size_t count) {
  auto& stream = *static_cast<std::istream*>(png_get_io_ptr(png));
  if (!stream.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count))) {
    png_error(png, "the file ends too early");
  }
}

void writeBytes(png_structp png, png_bytep bytes, std::size_t count) {
  auto& stream = *static_cast<std::ostream*>(png_get_io_ptr(png));
  errno = 0;
  if (!stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count))) {
    png_error(png, lastReason().c_str());
  }
}

void flush(png_structp png) {
  static_cast<std::ostream*>(png_get_io_ptr(png))->flush();
}

}  // namespace

PngReader::PngReader(std::istream& stream)
    : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, throwError, ignoreWarning)),
      info(png ? png_create_info_struct(png) : nullptr) {
  if (!info) throw std::bad_alloc();
  png_set_read_fn(png, &stream, readBytes);
}

PngReader::~PngReader() {
  png_destroy_read_struct(&png, &info, nullptr);
}

PngWriter::PngWriter(std::ostream& stream)
    : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, throwError, ignoreWarning)),
      info(png ? png_create_info_struct(png) : nullptr) {
  if (!info) throw std::bad_alloc();
  png_set_write_fn(png, &stream, writeBytes, flush);
}

PngWriter::~PngWriter() {
  png_destroy_write_struct(&png, &info);
}

}  // namespace vellumtide::cli
