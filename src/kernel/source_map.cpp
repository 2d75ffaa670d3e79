#include "kernel/source_map.h"

#include <algorithm>

namespace vellumtide {
namespace {

constexpr std::size_t kLimit = std::size_t{1} << 31;

}  // namespace

/// Whether the piece can be kept: in range and right behind the last.
bool SourceMap::canHold(std::size_t text, std::size_t source, std::size_t size) const {
  return size > 0 && text == end_ && text + size < kLimit && source + size < kLimit;
}

bool SourceMap::continues(std::size_t text, std::size_t source) const {
  if (segments_.empty()) return false;
  const Segment& segment = segments_.back();
  return segment.isCopy && source - segment.source == text - segment.text;
}

void SourceMap::addCopy(std::size_t text, std::size_t source, std::size_t size) {
  if (!canHold(text, source, size)) return;
  if (!continues(text, source)) {
    segments_.push_back(
        {static_cast<std::uint32_t>(text), static_cast<std::uint32_t>(source), true});
  }
  end_ = text + size;
}

void SourceMap::addReplaced(std::size_t text, std::size_t source, std::size_t size) {
  if (!canHold(text, source, size)) return;
  const bool isSame =
      !segments_.empty() && !segments_.back().isCopy && segments_.back().source == source;
  if (!isSame) {
    segments_.push_back(
        {static_cast<std::uint32_t>(text), static_cast<std::uint32_t>(source), false});
  }
  end_ = text + size;
}

void SourceMap::append(const SourceMap& appended, std::size_t text) {
  for (std::size_t i = 0; i < appended.segments_.size(); ++i) {
    const Segment& segment = appended.segments_[i];
    const std::size_t end =
        i + 1 < appended.segments_.size() ? appended.segments_[i + 1].text : appended.end_;
    if (segment.isCopy) {
      addCopy(text + segment.text, segment.source, end - segment.text);
    } else {
      addReplaced(text + segment.text, segment.source, end - segment.text);
    }
  }
}

std::optional<SourceMap::Origin> SourceMap::originOf(std::size_t text) const {
  if (text >= end_) return std::nullopt;
  const auto behind = std::upper_bound(
      segments_.begin(), segments_.end(), text,
      [](std::size_t place, const Segment& segment) { return place < segment.text; });
  if (behind == segments_.begin()) return std::nullopt;
  const Segment& segment = *(behind - 1);
  const std::size_t ahead = segment.isCopy ? text - segment.text : 0;
  return Origin{segment.source + ahead, segment.isCopy == 1};
}

}  // namespace vellumtide
