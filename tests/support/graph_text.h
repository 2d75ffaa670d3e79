// Texts of graph files, put together element by element.
#pragma once

#include <set>
#include <string>

namespace vellumtide::end_to_end {

class GraphText {
 public:
  explicit GraphText(std::string name = "graph") : name_(std::move(name)) {}

  GraphText& parameter(const std::string& name, const std::string& type,
                       const std::string& defaultValue = "");
  GraphText& kernel(const std::string& source);
  // A node with the statements of its evaluateParameters.
  GraphText& node(const std::string& id, const std::string& kernelName,
                  const std::string& statements = "");
  // Images, nodes and connections, a word each: "a=image", "n=Blur" (a node n on the kernel Blur),
  // "a>n.src" (from an image or a node to a node's input), "n>out" (to the graph's output).
  GraphText& wire(const std::string& words);
  GraphText& raw(const std::string& xml);

  std::string str() const;

 private:
  void addConnection(const std::string& from, const std::string& to);

  std::string name_;
  std::string elements_;
  std::set<std::string> images_;
};

// "chain": nodes in a row on the kernel "Step" (input "src"), whose source text is `step`.
GraphText chain(int nodes, const std::string& step);
// "ladder": rungs of two nodes on the kernel "Rung" (inputs "a" and "b"), each feeding both nodes
// of the next rung; the last left one is the result.
GraphText ladder(int rungs, const std::string& rung);

}  // namespace vellumtide::end_to_end
