#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace vellumtide {

/// A zero-terminated text field of N bytes: it holds at most N - 1 bytes, longer text is cut there.
/// Text ends at its first zero byte. The bytes after the text are always zero.
template <std::size_t N>
class FixedText {
 public:
  static constexpr std::size_t kCapacity = N - 1;

  FixedText() = default;
  FixedText(std::string_view text) { assign(text); }
  FixedText(const char* text) { assign(text); }
  FixedText(const std::string& text) { assign(text); }

  void assign(std::string_view text) {
    text = text.substr(0, kCapacity);
    text = text.substr(0, text.find('\0'));
    bytes_ = {};
    if (!text.empty()) std::memcpy(bytes_.data(), text.data(), text.size());
  }
  /// A missing text leaves the field empty.
  void assign(const char* text) { assign(text ? std::string_view(text) : std::string_view()); }
  void clear() { bytes_ = {}; }

  bool empty() const { return bytes_[0] == '\0'; }
  const char* c_str() const { return bytes_.data(); }
  std::string_view view() const { return bytes_.data(); }
  std::string str() const { return std::string(view()); }
  operator std::string_view() const { return view(); }

  friend bool operator==(const FixedText& a, const FixedText& b) { return a.bytes_ == b.bytes_; }
  friend bool operator==(const FixedText& a, std::string_view b) { return a.view() == b; }
  friend bool operator==(const FixedText& a, const char* b) { return a.view() == b; }
  friend bool operator==(const FixedText& a, const std::string& b) { return a.view() == b; }

 private:
  std::array<char, N> bytes_{};
};

/// The field that names in kernel and graph records are kept in.
using NameText = FixedText<32>;

}  // namespace vellumtide
