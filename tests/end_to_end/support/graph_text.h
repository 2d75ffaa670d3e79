// Texts of graph files, put together element by element.
#pragma once

#include <string>

namespace vellumtide::end_to_end {

class GraphText {
 public:
  explicit GraphText(std::string name = "graph") : name_(std::move(name)) {}

  // Each adds one element; kernel and statement texts may hold any characters but "]]>".
  GraphText& parameter(const std::string& name, const std::string& type,
                       const std::string& defaultValue = "");
  GraphText& input(const std::string& name);
  GraphText& kernel(const std::string& source);
  // A node with the statements of its evaluateParameters.
  GraphText& node(const std::string& id, const std::string& kernelName,
                  const std::string& statements = "");
  GraphText& connectImage(const std::string& image, const std::string& to,
                          const std::string& input = "src");
  GraphText& connect(const std::string& from, const std::string& to,
                     const std::string& input = "src");
  GraphText& output(const std::string& from);
  GraphText& raw(const std::string& xml);

  std::string str() const;

 private:
  std::string name_;
  std::string elements_;
};

// `count` nodes in a row on the kernel "Step" (input "src"); `step` is its source text.
std::string chainText(int count, const std::string& step);
// Rungs of two nodes on the kernel "Rung" (inputs "a" and "b"), each feeding both of the next.
std::string ladderText(int rungs, const std::string& rung);

}  // namespace vellumtide::end_to_end
