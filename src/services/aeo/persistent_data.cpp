#include "services/aeo/persistent_data.h"

namespace vellumtide::AEO {
namespace {

// No path is longer; a size beyond this is a damaged setting.
constexpr A_u_long kLongestText = 1 << 20;

}  // namespace

PersistentData::PersistentData(SPBasicSuite* basic) : suite_(basic), error_(suite_.error()) {
  if (!error_) error_ = suite_->AEGP_GetApplicationBlob(&blob_);
}

std::string PersistentData::getString(const char* section, const char* key) {
  // The first read is only for the size.
  A_char start[4] = "";
  A_u_long size = 0;
  if (!error_) {
    error_ = suite_->AEGP_GetString(blob_, section, key, nullptr, sizeof start, start, &size);
  }
  if (error_ || size == 0 || size > kLongestText) return {};
  std::string text(size, '\0');
  error_ = suite_->AEGP_GetString(blob_, section, key, nullptr, size, text.data(), &size);
  if (error_) return {};
  return text.substr(0, text.find('\0'));
}

}  // namespace vellumtide::AEO
