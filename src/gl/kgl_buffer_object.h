#pragma once

// The common base of GL objects that hold image storage. Every operation, construction and
// destruction included, needs the device to be current.

#include <cstdint>

#include "core/ae_base.h"
#include "gl/gl_headers.h"

namespace vellumtide {

// Owns one GL name; the derived class generates it and its destructor deletes it. Without loaded
// entry points the name stays 0 (see glAvailable) and no operation may be called.
class kglBufferObject : public aeBase {
 public:
  ~kglBufferObject() override = default;
  kglBufferObject(const kglBufferObject&) = delete;
  kglBufferObject& operator=(const kglBufferObject&) = delete;

  virtual std::uint32_t getId() const { return id; }
  // (Re)specifies the storage, in pixels; the contents are undefined afterwards.
  virtual void resize(int width, int height) = 0;
  // Attaches this object to a framebuffer; framebuffer 0 is bound afterwards.
  virtual void attach(const kglBufferObject& frameBuffer, GLenum attachment) = 0;
  virtual void setInternalFormat(GLenum format) = 0;
  virtual void setType(GLenum type) = 0;

 protected:
  kglBufferObject() = default;

  std::uint32_t id = 0;
};

}  // namespace vellumtide
