#include <algorithm>

#include "cli/inspect.h"
#include "cli/number_text.h"
#include "params/control_labels.h"
#include "params/slot_assignment.h"

namespace vellumtide::cli {
namespace {

// Lines of cells set in columns, a blank line before them.
class Table {
 public:
  explicit Table(std::vector<std::string> head) { add(std::move(head)); }
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  std::string text() const {
    std::vector<std::size_t> widths;
    for (const auto& row : rows_) {
      widths.resize(std::max(widths.size(), row.size()));
      for (std::size_t c = 0; c < row.size(); ++c)
        widths[c] = std::max(widths[c], shown(row[c]));
    }
    std::string result = "\n";
    for (const auto& row : rows_) {
      std::string line = " ";
      for (std::size_t c = 0; c < row.size(); ++c) {
        line += " " + row[c] + std::string(widths[c] - shown(row[c]) + 1, ' ');
      }
      line.erase(line.find_last_not_of(' ') + 1);
      result += line + "\n";
    }
    return result;
  }

 private:
  // Characters, not bytes.
  static std::size_t shown(const std::string& text) {
    return std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; });
  }

  std::vector<std::vector<std::string>> rows_;
};

// Control characters, which could drive a terminal, become blanks.
std::string harmless(std::string_view text) {
  std::string result(text);
  std::replace_if(
      result.begin(), result.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
  return result;
}

std::string componentText(const ValueCells& cells, BaseKind kind, int i) {
  if (kind == BaseKind::Int) return std::to_string(cells.intAt(i));
  if (kind == BaseKind::Bool) return cells.boolAt(i) ? "true" : "false";
  return numberText(cells.floatAt(i));
}

std::string valueText(const pbValue& value, pbElementType type) {
  const BaseKind kind = baseKind(type);
  if (!value.isSet || kind == BaseKind::None) return "-";
  std::string text = componentText(value.cells, kind, 0);
  const std::string first = text;
  bool allEqual = true;
  for (int i = 1; i < componentCount(type); ++i) {
    const std::string component = componentText(value.cells, kind, i);
    allEqual = allEqual && component == first;
    text += "," + component;
  }
  return allEqual && componentCount(type) > 1 ? first + " each" : text;
}

std::string controlText(const pbParameter& parameter, int slot) {
  const ControlNeed need = controlNeed(parameter);
  if (slot < 0) return need.count > 0 ? "none left" : "none";
  static constexpr const char* kNames[] = {"none",  "check box", "pop-up", "slider",
                                           "fixed", "point",     "angle",  "colour"};
  const std::string name = kNames[static_cast<int>(need.bank)];
  const std::string first = std::to_string(slot);
  if (need.count == 1) return name + " " + first;
  return name + " " + first + "-" + std::to_string(slot + need.count - 1);
}

// Entry `index` of a list of entries separated by "|"; empty when there is none.
std::string entryText(const std::string& entries, int index) {
  std::size_t start = 0;
  for (; index > 0 && start != std::string::npos; --index) {
    const std::size_t bar = entries.find('|', start);
    start = bar == std::string::npos ? bar : bar + 1;
  }
  if (index < 0 || start == std::string::npos) return {};
  return entries.substr(start, entries.find('|', start) - start);
}

std::string defaultText(const pbParameter& parameter) {
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  if (!parameter.defaultValue.isSet && relative.isSet) {
    return numberText(relative.x * 100) + "%," + numberText(relative.y * 100) + "%";
  }
  if (controlNeed(parameter).bank == Bank::Popup && parameter.defaultValue.isSet) {
    const std::string entry =
        entryText(popupEntries(parameter), parameter.defaultValue.cells.intAt(0));
    if (!entry.empty()) return harmless(entry);
  }
  return valueText(parameter.defaultValue, parameter.type);
}

std::string metadataText(const pbMetadata& metadata, const char* kind) {
  std::string text = std::string(kind) + " " + harmless(metadata.name) + ", version " +
                     std::to_string(metadata.version) + "\n";
  if (!metadata.vendor.empty()) text += "  vendor       " + harmless(metadata.vendor) + "\n";
  if (!metadata.nameSpace.empty()) text += "  namespace    " + harmless(metadata.nameSpace) + "\n";
  if (!metadata.description.empty()) {
    text += "  description  " + harmless(metadata.description) + "\n";
  }
  return text;
}

std::string inputsText(const Program& program, const ProgramSlots& slots) {
  if (program.inputs().empty()) return "\nno inputs\n";
  Table table({"input", "type", "from"});
  for (std::size_t i = 0; i < program.inputs().size(); ++i) {
    const pbVariable& input = program.inputs()[i];
    const int slot = slots.inputs[i];
    table.add({harmless(input.name), std::string(typeName(input.type)),
               slot == 0  ? "the effect's own layer"
               : slot > 0 ? "layer control " + std::to_string(slot)
                          : "nothing: there are only four layers"});
  }
  return table.text();
}

std::string parametersText(const Program& program, const ProgramSlots& slots) {
  if (program.parameters().empty()) return "\nno parameters\n";
  Table table({"label", "parameter", "type", "control", "default", "from", "to"});
  std::string entries;
  for (std::size_t i = 0; i < program.parameters().size(); ++i) {
    const pbParameter& parameter = program.parameters()[i];
    const std::string label = harmless(controlLabel(parameter, 0, 1));
    table.add({label, harmless(parameter.name), std::string(typeName(parameter.type)),
               controlText(parameter, slots.parameters[i]), defaultText(parameter),
               valueText(parameter.minValue, parameter.type),
               valueText(parameter.maxValue, parameter.type)});
    const std::string choices = popupEntries(parameter);
    if (controlNeed(parameter).bank == Bank::Popup && !choices.empty()) {
      entries += "  " + label + ": " + harmless(choices) + "\n";
    }
  }
  if (entries.empty()) return table.text();
  return table.text() + "\nentries of pop-ups\n" + entries;
}

std::string graphText(const pbGraphInfo& graph) {
  Table nodes({"node", "kernel"});
  for (const pbgNodeInfo& node : graph.nodes)
    nodes.add({harmless(node.id), harmless(node.name)});
  Table connections({"from", "to", "input"});
  for (const pbgConnection& connection : graph.connections) {
    connections.add(
        {harmless(connection.from), harmless(connection.to),
         connection.kind == ConnectionKind::ToOutput ? "(output)" : harmless(connection.toInput)});
  }
  return nodes.text() + connections.text();
}

}  // namespace

std::string inspectionText(const Program& program) {
  const ProgramSlots slots = slotsOf(program);
  std::string text = metadataText(program.metadata(), program.kernel() ? "kernel" : "graph");
  text += "  output       " + std::string(typeName(program.output().type)) + " " +
          harmless(program.output().name) + "\n";
  text += inputsText(program, slots) + parametersText(program, slots);
  if (const pbGraphInfo* graph = program.graph()) text += graphText(*graph);
  return text;
}

}  // namespace vellumtide::cli
