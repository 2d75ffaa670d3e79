#include <OpenImageIO/imagebufalgo.h>

#include "cli/image/picture_drawing.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

headless::World scaledPicture(const headless::World& picture, int width, int height) {
  using namespace OIIO;
  const auto bufferOf = [](const headless::World& world) {
    return ImageSpec(world.width(), world.height(), 4, TypeDesc::FLOAT);
  };
  ImageBuf from(bufferOf(picture));
  from.set_pixels(from.roi(), TypeDesc::FLOAT, picture.row(0), 4 * sizeof(float),
                  picture.rowBytes());
  headless::World result(width, height, PF_PixelFormat_ARGB128);
  ImageBuf to(bufferOf(result));
  if (!ImageBufAlgo::resize(to, from) || !to.get_pixels(to.roi(), TypeDesc::FLOAT, result.row(0),
                                                        4 * sizeof(float), result.rowBytes())) {
    throw Failure(ExitStatus::Failed, "a picture cannot be scaled: " + to.geterror());
  }
  return result;
}

}  // namespace vellumtide::cli
