#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace vellumtide {

/// Storage of one value: 16 cells of 4 bytes, all zero at first. Float-based types keep one 32-bit
/// float a cell, int-based types one signed 32-bit integer a cell; bool-based types keep one byte
/// (0 or 1) a component, packed at the start of the cells. Indices are component indices.
class ValueCells {
 public:
  static constexpr std::size_t kCellCount = 16;

  float floatAt(std::size_t i) const { return read<float>(i); }
  std::int32_t intAt(std::size_t i) const { return read<std::int32_t>(i); }
  bool boolAt(std::size_t i) const { return bytes_[i] != 0; }

  void setFloat(std::size_t i, float value) { write(i, value); }
  void setInt(std::size_t i, std::int32_t value) { write(i, value); }
  void setBool(std::size_t i, bool value) { bytes_[i] = value ? 1 : 0; }

  /// All cells read as one kind, in order.
  std::array<float, kCellCount> floats() const {
    return std::bit_cast<std::array<float, kCellCount>>(bytes_);
  }
  std::array<std::int32_t, kCellCount> ints() const {
    return std::bit_cast<std::array<std::int32_t, kCellCount>>(bytes_);
  }

  friend bool operator==(const ValueCells&, const ValueCells&) = default;

 private:
  template <typename T>
  T read(std::size_t i) const {
    T value;
    std::memcpy(&value, &bytes_[i * 4], 4);
    return value;
  }
  template <typename T>
  void write(std::size_t i, T value) {
    std::memcpy(&bytes_[i * 4], &value, 4);
  }

  alignas(4) std::array<std::uint8_t, kCellCount * 4> bytes_{};
};

/// A default, minimum or maximum; `isSet` says that the metadata named it.
struct pbValue {
  bool isSet = false;
  ValueCells cells;
  /// What its author means, where the value rules read something else into the cells.
  std::optional<ValueCells> meant = std::nullopt;
  /// Where a kernel's value begins in its text, in bytes.
  std::size_t place = 0;

  /// What to use: controls, start values and texts for people go by it.
  const ValueCells& meantCells() const { return meant ? *meant : cells; }
};

}  // namespace vellumtide
