// Owned texts and sequences over a given allocator, with splitting, joining and widening.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/utf.h"

namespace vellumtide::_JST {

// An allocator of the same kind for elements of another type.
template <class Allocator, class T>
using Rebound = typename std::allocator_traits<Allocator>::template rebind_alloc<T>;

// The root of the namespace's classes.
class Object {
 public:
  virtual ~Object() = default;

 protected:
  Object() = default;
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
};

// An owned sequence. What the allocator throws when memory runs out passes to the caller.
template <class T, class Allocator>
class Array : public Object {
 public:
  void push(T element) { elements_.push_back(std::move(element)); }
  std::size_t size() const { return elements_.size(); }
  bool empty() const { return elements_.empty(); }
  const T& operator[](std::size_t index) const { return elements_[index]; }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  std::vector<T, Rebound<Allocator, T>> elements_;
};

// An owned UTF-8 text.
template <class Allocator>
class String : public Object {
 public:
  String() = default;
  String(std::string_view text) : text_(text) {}
  String(const char* text) : text_(text) {}
  String(const std::string& text) : text_(std::string_view(text)) {}

  const char* c_str() const { return text_.c_str(); }
  std::string_view view() const { return text_; }
  std::string str() const { return std::string(view()); }
  std::size_t size() const { return text_.size(); }
  bool empty() const { return text_.empty(); }
  operator std::string_view() const { return view(); }

  String& operator+=(std::string_view more) {
    text_.append(more);
    return *this;
  }
  friend bool operator==(const String& a, std::string_view b) { return a.view() == b; }

  // Cuts the text at every occurrence of the separator; an empty piece stands where two separators
  // meet. A text without the separator, or an empty separator, gives the whole text.
  Array<String, Allocator> split(std::string_view separator) const {
    Array<String, Allocator> pieces;
    std::size_t start = 0;
    while (!separator.empty()) {
      const std::size_t cut = text_.find(separator, start);
      if (cut == text_.npos) break;
      pieces.push(view().substr(start, cut - start));
      start = cut + separator.size();
    }
    pieces.push(view().substr(start));
    return pieces;
  }

 private:
  std::basic_string<char, std::char_traits<char>, Rebound<Allocator, char>> text_;
};

// The pieces one behind the other with the glue between them.
template <class Allocator>
String<Allocator> join(const Array<String<Allocator>, Allocator>& pieces, std::string_view glue) {
  String<Allocator> text;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) text += glue;
    text += pieces[i];
  }
  return text;
}

// Widens a text for the platform's wide-character functions. Bytes that can stand nowhere but
// inside a character (0x80 to 0xBF), or nowhere at all (0xFE, 0xFF), are skipped where they begin
// something; what else is not UTF-8 becomes U+FFFD.
inline Utf16Text toUTF16(std::string_view utf8) {
  return toUtf16(utf8, StrayBytes::Skipped);
}

}  // namespace vellumtide::_JST
