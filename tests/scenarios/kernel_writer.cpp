#include <cstdio>

#include "tests/scenarios/program_writer.h"

namespace vellumtide::scenarios {
namespace {

using Words = std::vector<std::string>;

const Words kTypes = {"int",    "int2",     "int3",     "int4",   "float",  "float2", "float3",
                      "float4", "float2x2", "float3x3", "bool",   "bool2",  "bool3",  "bool4",
                      "float",  "float4x4", "pixel1",   "pixel2", "pixel3", "pixel4"};

bool isMatrix(const std::string& type) {
  return type.starts_with("float") && type.find('x') != std::string::npos;
}

int componentsOf(const std::string& type) {
  const char last = type.back();
  const int side = last >= '1' && last <= '4' ? last - '0' : 1;
  return isMatrix(type) ? side * side : side;
}

// A number of about 0 to 1 from any parameter or dependent, without a jump.
std::string scalarOf(const std::string& type, const std::string& name) {
  const int count = componentsOf(type);
  const bool isBool = type.starts_with("bool"), isInt = type.starts_with("int");
  std::string one = name, two = name;
  if (isMatrix(type)) {
    one += "[0][1]", two += "[1][0]";
  } else if (count > 1) {
    one += ".x", two += count > 2 ? ".z" : ".y";
  }
  if (isBool) return "((" + one + " ? 0.25 : 0.5) + (" + two + " ? 0.125 : 0.0))";
  if (isInt) return "(float(" + one + ") * 0.0625 + float(" + two + ") * 0.03125)";
  return "(" + one + " * 0.5 + " + two + " * 0.25)";
}

class KernelWriter {
 public:
  explicit KernelWriter(Dice& dice) : dice_(dice) {}

  KernelText write(const std::string& name) {
    text_.name = name;
    head();
    declarations();
    functions();
    dependents();
    pixel();
    line("}");
    return std::move(text_);
  }

 private:
  void line(const std::string& text, int copies = 1) { text_.lines.push_back({text, copies}); }

  void head() {
    line("<languageVersion : 1.0;>");
    if (dice_.oneIn(12)) line("#define HALF 0.5 /* a comment");
    if (text_.lines.size() > 1) line("that goes on */");
    line("kernel " + text_.name);
    line("< namespace : \"" + anyText(dice_) + "\"; vendor : \"v\"; version : 1; description : \"" +
         anyText(dice_) + "\"; >");
    line("{");
  }

  void declarations() {
    const int inputs = dice_.oneIn(30) ? 9 : dice_.oneIn(3) ? dice_.between(0, 4) : 1;
    for (int i = 0; i < inputs; ++i) {
      text_.inputs.push_back(identifier(dice_, static_cast<char>('a' + i)));
      line("input image" + std::to_string(dice_.oneIn(4) ? dice_.between(1, 4) : 4) + " " +
           text_.inputs.back() + ";");
    }
    output_ = dice_.oneIn(4) ? identifier(dice_, 'o') : "dst";
    line("output " + dice_.pick<std::string>({"pixel4", "pixel4", "float4"}) + " " + output_ + ";");
    const int parameters = dice_.oneIn(20) ? 60 : dice_.between(0, 4);
    for (int i = 0; i < parameters; ++i)
      parameter();
    for (int i = dice_.oneIn(3) ? dice_.between(1, 3) : 0; i > 0; --i) {
      dependents_.emplace_back(dice_.pick(Words{"int", "int2", "bool", "bool3", "float", "float4"}),
                               identifier(dice_, static_cast<char>('A' + i)));
      line("dependent " + dependents_.back().first + " " + dependents_.back().second + ";");
    }
  }

  void parameter() {
    const std::string type = dice_.pick(kTypes);
    const std::string name = identifier(dice_, 'p');
    std::string text = "parameter " + type + " " + name;
    if (!dice_.oneIn(3)) {
      text += " <";
      for (const auto& [key, value] : metadata(dice_, type, false))
        text += " " + key + ": " + value + ";";
      text += " >";
    }
    line(text + ";");
    text_.parameters.emplace_back(type, name);
  }

  void functions() {
    const auto way = [this](const std::string& text) { ways_.insert(ways_.end(), 6, text); };
    if (dice_.oneIn(4)) {
      line(dice_.pick(Words{"#define MOVE(q) q += 0.5", "#define MOVE(q) (q).x += 0.25",
                            "#define MOVE(q) q = q + float2(0.5, 0.25)"}));
      way("MOVE(#);");
    }
    if (dice_.oneIn(6)) {
      hasTap_ = true;
      line(dice_.pick(Words{"#define TAP(i) { sum += 0.125 * (i); }",
                            "#define TAP(i) sum += 0.125 * (i)",
                            "#define TAP(i) do { sum += (i) * 0.125; } \\"}));
      if (text_.lines.back().text.back() == '\\') line("  while (false)");
    }
    if (dice_.oneIn(6)) {
      line("void move(inout float2 q) { q.y += 0.5; }");
      way("move(#);");
    }
    if (dice_.oneIn(6)) {
      line("float2 moved(float2 pos) { pos -= 0.25; return pos; }");
      way("# = moved(#);");
    }
  }

  void dependents() {
    if (dependents_.empty()) return;
    // In one line: without one of them the others would be left without a value.
    std::string statements;
    for (const auto& [type, name] : dependents_) {
      const std::string from =
          "(0.5 + " + (text_.parameters.empty() ? "0.25" : parameterValue()) + ")";
      const std::string value = type.starts_with("float") ? from
                                : type.starts_with("int") ? "int(clamp(" + from + ", 0.0, 9.0))"
                                                          : "(" + from + " > 0.7)";
      statements += name + " = " + type + "(" + value + "); ";
    }
    line("void evaluateDependents() { " + statements + "}");
  }

  std::string parameterValue() {
    const auto& [type, name] = dice_.pick(text_.parameters);
    return scalarOf(type, name);
  }

  void pixel() {
    line("void evaluatePixel() { float4 sum = float4(" + dice_.number(0, 1) + ");");
    const int taps = text_.inputs.empty() ? 0 : dice_.between(1, 4);
    for (int i = 0; i < taps; ++i)
      tap(i, taps);
    for (int i = dice_.between(0, 2); i > 0; --i)
      colour();
    for (const auto& [type, name] : dependents_)
      if (dice_.oneIn(2)) line("sum += 0.0625 * float4(" + scalarOf(type, name) + ");");
    if (!text_.parameters.empty())
      line("sum += 0.125 * float4(" + parameterValue() + ", 0.25, " + parameterValue() + ", 0.0);");
    if (dice_.oneIn(40)) line("sum += nothing;");
    line(output_ + " = sum; }");
  }

  void tap(int number, int taps) {
    char weight[16];
    std::snprintf(weight, sizeof weight, "%.4f", 0.99 / taps);
    const std::string pos = "pos" + std::to_string(number);
    const bool moves = dice_.oneIn(2);
    std::string at = dice_.oneIn(4) && !moves ? "outCoord()" : pos;
    if (at == pos) line("float2 " + pos + " = outCoord();");
    if (moves) move(pos);
    const std::string input = dice_.pick(text_.inputs);
    const std::string how =
        dice_.pick(Words{"sample", "sampleLinear", "sampleLinear", "sampleNearest", "texture2D"});
    if (how == "texture2D") at += " * vlmk_downsamplingRate / vlmk_compSize";
    if (dice_.oneIn(12) && at == pos) at = "outCoord() + float2(" + dice_.number(-3, 3) + ", 0.5)";
    const std::string read = how + "(" + input + ", " + at + ")";
    const bool taps8 = hasTap_ && dice_.oneIn(2);
    line(taps8 ? "TAP(" + read + ");" : "sum += " + std::string(weight) + " * " + read + ";");
  }

  void move(const std::string& pos) {
    const std::string by = dice_.oneIn(3) ? "0.5" : dice_.number(-3, 3);
    std::string text;
    for (const char c : dice_.pick(ways_))
      text += c == '#' ? pos : c == '$' ? by : std::string(1, c);
    line(text);
  }

  void colour() {
    line("sum = " +
         dice_.pick(Words{"min(sum, float4(0.75))", "abs(sum)", "sum.bgra", "sum.aarg",
                          "clamp(sum, -0.5, 0.9)", "mix(sum, float4(0.5), 0.25)", "sum * 0.5",
                          "float4(1.0) - sum", "max(sum, sum.gbra)"}) +
         ";");
  }

  Dice& dice_;
  KernelText text_;
  std::string output_;
  std::vector<std::pair<std::string, std::string>> dependents_;
  // The many ways to change a variable "#" by "$".
  Words ways_ = {"# += $;",
                 "(#) += $;",
                 "#.x += $;",
                 "#.xy.x += $;",
                 "#.yx = #.yx + $;",
                 "(#.y) -= $;",
                 "# = # * 0.75;",
                 "#[1] += $;",
                 "#++;",
                 "++#.x;",
                 "if (#.x > 2.37) #.y += $;",
                 "for (int i = 0; i < 2; ++i) #.x += 0.25;",
                 "# /= pixelSize(#) * 1.5;",
                 "#.s += $, #.t -= 0.25;",
                 "float2 #b = #, #c = #b; # = #c + $;"};
  bool hasTap_ = false;
};

}  // namespace

KernelText writeKernel(Dice& dice, const std::string& name) {
  return KernelWriter(dice).write(name);
}

std::string identifier(Dice& dice, char first) {
  static const std::string kLetters =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const int size = dice.oneIn(6) ? dice.pick({2, 30, 31, 32, 33, 40, 64, 100}) : dice.between(4, 9);
  std::string name(1, first);
  if (dice.oneIn(12)) name.insert(0, "_");
  name += std::to_string(dice.below(1000));
  while (static_cast<int>(name.size()) < size)
    name += kLetters[static_cast<std::size_t>(dice.below(static_cast<int>(kLetters.size())))];
  return name;
}

std::string anyText(Dice& dice) {
  std::string text;
  const int size = dice.oneIn(4) ? dice.between(0, 100) : dice.between(0, 12);
  const int kind = dice.below(6);
  while (static_cast<int>(text.size()) < size) {
    if (kind == 0) text += static_cast<char>(dice.pick({0xE9, 0xE0, 0xC0, 0x80, 0xFF, 0xF0}));
    if (kind == 1)
      text += dice.pick<std::string>({"é", "試", "😀", "\xED\xA0\x80", "\xC0\xAF", "a"});
    if (kind == 2) text += static_cast<char>(dice.between(0x80, 0xFF));
    if (kind > 2)
      text += static_cast<char>(dice.pick({'a', 'Z', ' ', '|', '.', '>', ';', '/', '{'}));
  }
  return text;
}

namespace {

std::string numberText(Dice& dice, bool inGraph) {
  if (!dice.oneIn(6)) return dice.number(-2, 2);
  if (inGraph && dice.oneIn(2)) return dice.pick(Words{"nan", "inf", "-inf", "1e39", "x"});
  return dice.pick(Words{"40000.0", "-40000.0", "105.0/255.0", "1e-3", "99999999999", "0x1F", ".5f",
                         "1.0.0", "-", "true", "nan", "1" + std::string(400, '0') + ".0"});
}

std::string valueText(Dice& dice, const std::string& type, bool inGraph) {
  const int count = dice.oneIn(8) ? dice.between(0, 5) : componentsOf(type);
  const bool isBool = type.starts_with("bool");
  std::string list;
  for (int i = 0; i < count; ++i) {
    list += i ? (inGraph ? "," : ", ") : "";
    list +=
        isBool && !dice.oneIn(6) ? dice.pick(Words{"true", "false"}) : numberText(dice, inGraph);
  }
  return inGraph || count == 1 ? list : type + "(" + list + ")";
}

}  // namespace

std::vector<std::pair<std::string, std::string>> metadata(Dice& dice, const std::string& type,
                                                          bool inGraph) {
  const auto quoted = [&](const std::string& text) { return inGraph ? text : '"' + text + '"'; };
  std::vector<std::pair<std::string, std::string>> made;
  for (const char* key : {"minValue", "maxValue", "defaultValue"})
    if (!dice.oneIn(4)) made.emplace_back(key, valueText(dice, type, inGraph));
  if (dice.oneIn(2)) {
    made.emplace_back("aeUIControl",
                      quoted(dice.pick(Words{"aePopup", "aeAngle", "aePercentSlider", "aePoint",
                                             "aeOneChannelColor", "aeColor", "none"})));
  }
  if (dice.oneIn(3)) {
    made.emplace_back("parameterType",
                      quoted(dice.pick(Words{"angleDegrees", "angleRadians", "percentage", "time",
                                             "inputSize", "position", "colorLAB", "colorRGB",
                                             "colorCMYK", "colorRGBA", "enum", "frame", "Time"})));
  }
  for (const char* key : {"displayName", "aeDisplayName", "enumValues", "aePopupString"})
    if (dice.oneIn(5)) made.emplace_back(key, quoted(anyText(dice)));
  if (dice.oneIn(5)) {
    made.emplace_back("aePointRelativeDefaultValue", valueText(dice, "float2", inGraph));
  }
  return made;
}

}  // namespace vellumtide::scenarios
