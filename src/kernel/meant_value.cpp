#include "kernel/meant_value.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "kernel/characters.h"
#include "kernel/number_text.h"

namespace vellumtide {
namespace {

constexpr int kDeepest = 32;

bool isMatrix(pbElementType type) {
  return type >= pbElementType::Float2x2 && type <= pbElementType::Float4x4;
}

/// What a part of the text amounts to: one component or more of a kind.
struct Operand {
  std::array<double, ValueCells::kCellCount> components{};
  std::size_t count = 0;
  BaseKind kind = BaseKind::None;
  bool isMatrix = false;

  static Operand scalar(double value, BaseKind kind) { return {{value}, 1, kind}; }
};

double converted(double value, BaseKind kind) {
  if (kind == BaseKind::Bool) return value != 0;
  return kind == BaseKind::Int ? std::trunc(value) : value;
}

/// What a constructor of the type makes of its arguments' components.
Operand construct(pbElementType type, const Operand& arguments) {
  Operand result{
      {}, static_cast<std::size_t>(componentCount(type)), baseKind(type), isMatrix(type)};
  const bool fills = arguments.count == 1;
  // The diagonal of an n by n matrix is every (n + 1)-th of its components.
  const std::size_t step =
      fills && result.isMatrix ? static_cast<std::size_t>(std::sqrt(result.count)) + 1 : 1;
  for (std::size_t i = 0; i < result.count; i += step)
    result.components[i] = converted(arguments.components[fills ? 0 : i], result.kind);
  return result;
}

/// Recursive descent over the text, once. Every function leaves the reader behind what it has read
/// and gives nothing for a text that is not one of its kind.
class Reader {
 public:
  Reader(std::string_view text, pbElementType type)
      : rest_(text), dividesWhole_(baseKind(type) == BaseKind::Int) {}

  /// arguments := sum { "," sum }, up to `end`
  std::optional<Operand> arguments(char end) {
    Operand result;
    do {
      const auto part = sum();
      if (!part) return std::nullopt;
      for (std::size_t i = 0; i < part->count && result.count < result.components.size(); ++i)
        result.components[result.count++] = part->components[i];
    } while (take(','));
    return take(end) ? std::optional(result) : std::nullopt;
  }

 private:
  /// sum := product { ("+" | "-") product }
  std::optional<Operand> sum() {
    auto left = product();
    while (left) {
      const char sign = takeOneOf("+-");
      if (sign == '\0') break;
      left = computed(*left, sign, product());
    }
    return left;
  }

  /// product := signed { ("*" | "/") signed }
  std::optional<Operand> product() {
    auto left = withSign();
    while (left) {
      const char sign = takeOneOf("*/");
      if (sign == '\0') break;
      left = computed(*left, sign, withSign());
    }
    return left;
  }

  /// signed := { "+" | "-" } primary
  std::optional<Operand> withSign() {
    bool isNegative = false;
    bool isSigned = false;
    while (const char sign = takeOneOf("+-")) {
      isSigned = true;
      if (sign == '-') isNegative = !isNegative;
    }
    auto operand = primary();
    if (!operand || !isSigned) return operand;
    if (operand->kind == BaseKind::Bool) return std::nullopt;
    if (!isNegative) return operand;
    for (double& component : operand->components)
      component = -component;
    return operand;
  }

  /// primary := number | "true" | "false" | [ type ] "(" ... ")"
  std::optional<Operand> primary() {
    skipBlanks();
    if (isDigit(at(0)) || (at(0) == '.' && isDigit(at(1)))) return number();
    const std::string_view word = takeWord();
    if (word == "true" || word == "false") return Operand::scalar(word == "true", BaseKind::Bool);
    const pbElementType type = typeFromName(word);
    if (!word.empty() && baseKind(type) == BaseKind::None) return std::nullopt;
    if (depth_ == kDeepest || !take('(')) return std::nullopt;
    ++depth_;
    auto inner = word.empty() ? sum() : arguments(')');
    --depth_;
    if (!inner || !word.empty()) return inner ? std::optional(construct(type, *inner)) : inner;
    return take(')') ? inner : std::nullopt;
  }

  std::optional<Operand> number() {
    const bool isHex = at(0) == '0' && (at(1) | 0x20) == 'x';
    if (isHex) rest_.remove_prefix(2);
    std::size_t length = digits(0, isHex ? isHexDigit : isDigit);
    bool isWhole = true;
    if (!isHex && at(length) == '.') {
      isWhole = false;
      length += 1 + digits(length + 1, isDigit);
    }
    if (!isHex && (at(length) | 0x20) == 'e') {
      const std::size_t sign = at(length + 1) == '+' || at(length + 1) == '-';
      const std::size_t exponent = digits(length + 1 + sign, isDigit);
      isWhole = false;
      length += exponent > 0 ? 1 + sign + exponent : 0;
    }
    if (length == 0) return std::nullopt;
    const double value = exactNumber<double>(rest_.substr(0, length), isHex);
    rest_.remove_prefix(length);
    const char suffix = at(0) | 0x20;
    if (suffix == 'f' || suffix == 'l' || suffix == 'u') rest_.remove_prefix(1);
    if (isWordCharacter(at(0)) || at(0) == '.') return std::nullopt;
    isWhole = isWhole && suffix != 'f';
    return Operand::scalar(value, isWhole ? BaseKind::Int : BaseKind::Float);
  }

  /// Componentwise; one number goes with each component of the other side. Nothing for products of
  /// matrices, which are something else, and for sides of different lengths.
  std::optional<Operand> computed(const Operand& left, char sign,
                                  const std::optional<Operand>& right) const {
    if (!right || left.kind == BaseKind::Bool || right->kind == BaseKind::Bool) return std::nullopt;
    const bool leftIsLonger = left.count > right->count;
    if (left.count != right->count && std::min(left.count, right->count) > 1) return std::nullopt;
    if (left.isMatrix != right->isMatrix && left.count > 1 && right->count > 1) return std::nullopt;
    if (left.isMatrix && right->isMatrix && (sign == '*' || sign == '/')) return std::nullopt;
    Operand result = leftIsLonger ? left : *right;
    result.kind = left.kind == right->kind ? left.kind : BaseKind::Float;
    for (std::size_t i = 0; i < result.count; ++i) {
      const double a = left.components[left.count > 1 ? i : 0];
      const double b = right->components[right->count > 1 ? i : 0];
      if (sign == '/' && b == 0) return std::nullopt;
      double value = sign == '+' ? a + b : sign == '-' ? a - b : sign == '*' ? a * b : a / b;
      if (std::isnan(value)) return std::nullopt;
      if (sign == '/' && dividesWhole_ && result.kind == BaseKind::Int) value = std::trunc(value);
      result.components[i] = value;
    }
    return result;
  }

  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n\v\f"), rest_.size()));
  }

  /// Blanks and that character; a '\0' stands for the end of the text.
  bool take(char wanted) {
    skipBlanks();
    if (wanted == '\0') return rest_.empty();
    if (at(0) != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }

  char takeOneOf(std::string_view wanted) {
    for (const char c : wanted) {
      if (take(c)) return c;
    }
    return '\0';
  }

  std::string_view takeWord() {
    const std::string_view word = rest_.substr(0, digits(0, isWordCharacter));
    rest_.remove_prefix(word.size());
    return word;
  }

  template <typename Predicate>
  std::size_t digits(std::size_t from, Predicate isWanted) const {
    std::size_t end = from;
    while (end < rest_.size() && isWanted(rest_[end]))
      ++end;
    return end - from;
  }

  char at(std::size_t i) const { return i < rest_.size() ? rest_[i] : '\0'; }

  std::string_view rest_;
  bool dividesWhole_;  ///< as whole numbers do in the language; elsewhere 105/255 means a fraction
  int depth_ = 0;
};

std::int32_t saturated(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp(value, double{Limits::min()}, double{Limits::max()}));
}

/// Equal but for the last digit: a number may have been rounded once or twice.
bool isSame(float a, float b) {
  return std::nextafter(a, b) == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const ValueCells& a, const ValueCells& b, pbElementType type) {
  if (baseKind(type) != BaseKind::Float) return a == b;
  const auto left = a.floats(), right = b.floats();
  return std::equal(left.begin(), left.end(), right.begin(),
                    [](float x, float y) { return isSame(x, y); });
}

}  // namespace

std::optional<ValueCells> meantValue(std::string_view text, pbElementType type) {
  const BaseKind kind = baseKind(type);
  if (kind == BaseKind::None || text.size() > kMeantValueLimit) return std::nullopt;
  const auto arguments = Reader(text, type).arguments('\0');
  if (!arguments) return std::nullopt;
  const Operand value = construct(type, *arguments);
  ValueCells cells;
  for (std::size_t i = 0; i < value.count; ++i) {
    const double component = value.components[i];
    if (kind == BaseKind::Int) cells.setInt(i, saturated(component));
    if (kind == BaseKind::Float) cells.setFloat(i, static_cast<float>(component));
    if (kind == BaseKind::Bool) cells.setBool(i, component != 0);
  }
  return cells;
}

pbValue valueOf(const ValueCells& cells, std::string_view text, pbElementType type) {
  pbValue value{true, cells};
  const auto meant = meantValue(text, type);
  if (meant && !isSame(*meant, cells, type)) value.meant = meant;
  return value;
}

}  // namespace vellumtide
