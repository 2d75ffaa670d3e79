#include "cli/image_file.h"

#include "cli/image_format.h"
#include "cli/pending_file.h"

namespace vellumtide::cli {

void writeImageFile(const std::filesystem::path& path, const headless::World& pixels,
                    double pixelAspect, const WriteOptions& options) {
  checkWritable(path, options);
  PendingFile pending(path);
  encodeImageFile(pending.path(), path, pixels, pixelAspect, options);
  try {
    pending.commit();
  } catch (const std::filesystem::filesystem_error& error) {
    failImage(path, "cannot be written: " + error.code().message());
  }
}

}  // namespace vellumtide::cli
