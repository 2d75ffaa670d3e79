#include "tests/scenarios/scenario.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace vellumtide::scenarios {
namespace {

std::string copyOf(const std::string& line, int number) {
  std::string copy;
  for (const char c : line)
    copy += c == '#' ? std::to_string(number) : std::string(1, c);
  return copy;
}

ProgramLine readLine(const std::string& line) {
  const std::size_t bar = line.find('|');
  if (bar == std::string::npos) throw std::runtime_error("no program line: " + line);
  ProgramLine read;
  if (line[0] == '*') read.copies = std::atoi(line.c_str() + 1);
  read.text = unescaped(std::string_view(line).substr(bar + (bar + 1 < line.size() ? 2 : 1)));
  return read;
}

Step wordsOf(const std::string& line) {
  std::istringstream stream(line);
  Step words;
  for (std::string word; stream >> word;)
    words.push_back(unescaped(word));
  return words;
}

}  // namespace

std::string ProgramFile::text() const {
  std::string all;
  for (const ProgramLine& line : lines) {
    if (line.copies == 1) all += line.text + "\n";
    for (int i = 0; line.copies != 1 && i < line.copies; ++i)
      all += copyOf(line.text, i) + "\n";
  }
  return all;
}

std::string Scenario::text() const {
  std::string all;
  for (const ProgramFile& file : files) {
    all += "file " + escaped(file.name, false) + "\n";
    for (const ProgramLine& line : file.lines) {
      all += line.copies == 1 ? "| " : "*" + std::to_string(line.copies) + "| ";
      all += escaped(line.text) + "\n";
    }
  }
  all += "steps\n";
  for (const Step& step : steps) {
    for (std::size_t i = 0; i < step.size(); ++i)
      all += (i ? " " : "") + escaped(step[i], false);
    all += "\n";
  }
  return all;
}

Scenario Scenario::read(std::string_view text) {
  Scenario scenario;
  std::istringstream stream{std::string(text)};
  bool inSteps = false;
  for (std::string line; std::getline(stream, line);) {
    if (line.empty() || line.starts_with("# ")) continue;
    if (inSteps) {
      scenario.steps.push_back(wordsOf(line));
    } else if (line == "steps") {
      inSteps = true;
    } else if (line.starts_with("file ")) {
      scenario.files.push_back({unescaped(line.substr(5)), {}});
    } else if (!scenario.files.empty()) {
      scenario.files.back().lines.push_back(readLine(line));
    } else {
      throw std::runtime_error("not a line of a scenario: " + line);
    }
  }
  return scenario;
}

std::string escaped(std::string_view bytes, bool keepBlanks) {
  std::string text;
  for (const char c : bytes) {
    const bool plain = c > ' ' && c < 0x7F && c != '\\';
    char code[5];
    std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(c));
    text += plain || (keepBlanks && c == ' ') ? std::string(1, c) : std::string(code);
  }
  return text.empty() && !keepBlanks ? "\\" : text;
}

std::string unescaped(std::string_view text) {
  if (text == "\\") return "";
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) == "\\x" && i + 3 < text.size()) {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(i + 2, 2)), nullptr, 16));
      i += 3;
    } else {
      bytes += text[i];
    }
  }
  return bytes;
}

}  // namespace vellumtide::scenarios
