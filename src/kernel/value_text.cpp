#include "kernel/value_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "kernel/characters.h"
#include "kernel/number_text.h"

namespace vellumtide {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// The conversions of formatted scanning, one at a time. Each returns nothing when the text does
/// not match; a scan ends there.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool literal(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  /// "%d"
  std::optional<std::int32_t> integer() {
    const bool isPositive = beginNumber();
    const std::string_view digits = rest_.substr(0, digitCount(0, isDigit));
    if (digits.empty()) return std::nullopt;
    rest_.remove_prefix(digits.size());
    return decimalInt(digits, isPositive);
  }

  /// "%f"
  std::optional<float> number() {
    const bool isPositive = beginNumber();
    const std::optional<float> magnitude = unsignedNumber();
    if (!magnitude || isPositive) return magnitude;
    return -*magnitude;
  }

  /// "%[^...]": at least one character that is not in `ends`.
  std::optional<std::string_view> wordUpTo(std::string_view ends) {
    const std::string_view word = rest_.substr(0, rest_.find_first_of(ends));
    if (word.empty()) return std::nullopt;
    rest_.remove_prefix(word.size());
    return word;
  }

  /// "%s"
  std::optional<std::string_view> word() {
    skipBlanks();
    return wordUpTo(kBlanks);
  }

 private:
  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
  }

  /// Skips blanks and a sign; false for a minus.
  bool beginNumber() {
    skipBlanks();
    const bool isPositive = !rest_.starts_with('-');
    if (!isPositive || rest_.starts_with('+')) rest_.remove_prefix(1);
    return isPositive;
  }

  char at(std::size_t i) const { return i < rest_.size() ? rest_[i] : '\0'; }

  template <typename Predicate>
  std::size_t digitCount(std::size_t from, Predicate isWanted) const {
    std::size_t end = from;
    while (end < rest_.size() && isWanted(rest_[end]))
      ++end;
    return end - from;
  }

  /// Consumes `lowerCaseWord` in any case.
  bool keyword(std::string_view lowerCaseWord) {
    for (std::size_t i = 0; i < lowerCaseWord.size(); ++i) {
      if ((at(i) | 0x20) != lowerCaseWord[i]) return false;
    }
    rest_.remove_prefix(lowerCaseWord.size());
    return true;
  }

  std::optional<float> unsignedNumber() {
    if (keyword("nan")) return std::numeric_limits<float>::quiet_NaN();
    if (keyword("inf")) {
      // A scan cannot step back over more than one character: a begun "infinity" must be finished.
      if ((at(0) | 0x20) == 'i' && !keyword("inity")) return std::nullopt;
      return std::numeric_limits<float>::infinity();
    }
    const bool isHex = at(0) == '0' && (at(1) | 0x20) == 'x';
    if (isHex) rest_.remove_prefix(2);
    const auto isWanted = isHex ? isHexDigit : isDigit;
    std::size_t length = digitCount(0, isWanted);
    std::size_t digits = length;
    if (at(length) == '.') {
      const std::size_t fraction = digitCount(length + 1, isWanted);
      length += 1 + fraction;
      digits += fraction;
    }
    if (digits == 0) return std::nullopt;
    if ((at(length) | 0x20) == (isHex ? 'p' : 'e')) {
      const bool isSigned = at(length + 1) == '+' || at(length + 1) == '-';
      const std::size_t exponent = digitCount(length + 1 + isSigned, isDigit);
      if (exponent == 0) return std::nullopt;
      length += 1 + isSigned + exponent;
    }
    const float value = exactNumber<float>(rest_.substr(0, length), isHex);
    rest_.remove_prefix(length);
    return value;
  }

  std::string_view rest_;
};

void scanInts(Scanner& scanner, std::size_t count, ValueCells& cells) {
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 && !scanner.literal(',')) return;
    const auto value = scanner.integer();
    if (!value) return;
    cells.setInt(i, *value);
  }
}

void scanFloats(Scanner& scanner, std::size_t count, ValueCells& cells) {
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 && !scanner.literal(',')) return;
    const auto value = scanner.number();
    if (!value) return;
    cells.setFloat(i, *value);
  }
}

/// "%[^\t\r\n ,]," for all but the last component, "%s" for the last.
void scanBools(Scanner& scanner, std::size_t count, ValueCells& cells) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool isLast = i + 1 == count;
    const auto word = isLast ? scanner.word() : scanner.wordUpTo("\t\r\n ,");
    if (!word) return;
    cells.setBool(i, *word == "true");
    if (!isLast && !scanner.literal(',')) return;
  }
}

}  // namespace

ValueCells valueFromText(std::string_view text, pbElementType type) {
  ValueCells cells;
  Scanner scanner(text);
  const auto count = static_cast<std::size_t>(componentCount(type));
  switch (baseKind(type)) {
    case BaseKind::Int:
      scanInts(scanner, count, cells);
      break;
    case BaseKind::Float:
      scanFloats(scanner, count, cells);
      break;
    case BaseKind::Bool:
      if (type == pbElementType::Bool) {
        cells.setBool(0, text == "true");
      } else {
        scanBools(scanner, count, cells);
      }
      break;
    case BaseKind::None:
      break;
  }
  return cells;
}

}  // namespace vellumtide
