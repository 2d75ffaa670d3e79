#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vellumtide {

/// Where the characters of a rewritten text come from in its source. Both are counted in bytes from
/// 0. Noted front to back without gaps; what follows on in both texts becomes one segment of eight
/// bytes. From the first gap on, or from 2 GiB, nothing is kept.
class SourceMap {
 public:
  /// The `size` characters from `text` on are those from `source` on.
  void addCopy(std::size_t text, std::size_t source, std::size_t size);

  /// The `size` characters from `text` on were put in place of what stands at `source`.
  void addReplaced(std::size_t text, std::size_t source, std::size_t size);

  /// The map of a text that was appended to this one at `text`.
  void append(const SourceMap& appended, std::size_t text);

  struct Origin {
    std::size_t source;
    bool isCopy;  ///< the very character, not the place of something replaced
  };
  /// Nothing for characters that were not noted.
  std::optional<Origin> originOf(std::size_t text) const;

  /// How much of the text has been noted.
  std::size_t size() const { return end_; }

  std::size_t segmentCount() const { return segments_.size(); }

 private:
  struct Segment {
    std::uint32_t text;
    std::uint32_t source : 31;
    std::uint32_t isCopy : 1;
  };

  bool canHold(std::size_t text, std::size_t source, std::size_t size) const;
  bool continues(std::size_t text, std::size_t source) const;

  /// Each reaches to the next one's text.
  std::vector<Segment> segments_;
  std::size_t end_ = 0;
};

}  // namespace vellumtide
