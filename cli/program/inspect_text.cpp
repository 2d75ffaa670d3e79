#include <algorithm>

#include "bank/control_labels.h"
#include "bank/slot_assignment.h"
#include "cli/program/inspect.h"
#include "cli/program/parameter_text.h"
#include "cli/program/value_notes.h"
#include "cli/text/messages.h"

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

std::string controlText(const pbParameter& parameter, int slot) {
  const ControlNeed need = controlNeed(parameter);
  if (slot < 0) return need.count > 0 ? "none left" : "none";
  const std::string name = controlKind(parameter);
  const std::string first = std::to_string(slot);
  if (need.count == 1) return name + " " + first;
  return name + " " + first + "-" + std::to_string(slot + need.count - 1);
}

std::string metadataText(const pbMetadata& metadata, const char* kind) {
  std::string text = std::string(kind) + " " + onOneLine(metadata.name) + ", version " +
                     std::to_string(metadata.version) + "\n";
  if (!metadata.vendor.empty()) text += "  vendor       " + onOneLine(metadata.vendor) + "\n";
  if (!metadata.nameSpace.empty()) text += "  namespace    " + onOneLine(metadata.nameSpace) + "\n";
  if (!metadata.description.empty()) {
    text += "  description  " + onOneLine(metadata.description) + "\n";
  }
  return text;
}

std::string inputsText(const Program& program, const ProgramSlots& slots) {
  if (program.inputs().empty()) return "\nno inputs\n";
  Table table({"input", "type", "from"});
  for (std::size_t i = 0; i < program.inputs().size(); ++i) {
    const pbVariable& input = program.inputs()[i];
    const int slot = slots.inputs[i];
    table.add({onOneLine(input.name), std::string(typeName(input.type)),
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
    const std::string label = onOneLine(controlLabel(parameter, 0, 1));
    table.add({label, onOneLine(parameter.name), std::string(typeName(parameter.type)),
               controlText(parameter, slots.parameters[i]), defaultText(parameter),
               valueText(parameter.minValue, parameter.type),
               valueText(parameter.maxValue, parameter.type)});
    const std::string choices = popupEntries(parameter);
    if (controlNeed(parameter).bank == Bank::Popup && !choices.empty()) {
      entries += "  " + label + ": " + onOneLine(choices) + "\n";
    }
  }
  if (entries.empty()) return table.text();
  return table.text() + "\nentries of pop-ups\n" + entries;
}

// Values that other readers of the format may take otherwise.
std::string notesText(const Program& program) {
  const std::vector<ValueNote> notes = valueNotes(program);
  std::string text = notes.empty() ? "" : "\nvalues that mean more than their cells hold\n";
  for (const ValueNote& note : notes) {
    text += "  line " + std::to_string(note.place.line) + ", column " +
            std::to_string(note.place.column) + ": " + noteText(note, program) + "\n";
  }
  return text;
}

std::string graphText(const pbGraphInfo& graph) {
  Table nodes({"node", "kernel"});
  for (const pbgNodeInfo& node : graph.nodes)
    nodes.add({onOneLine(node.id), onOneLine(node.name)});
  Table connections({"from", "to", "input"});
  for (const pbgConnection& connection : graph.connections) {
    connections.add(
        {onOneLine(connection.from), onOneLine(connection.to),
         connection.kind == ConnectionKind::ToOutput ? "(output)" : onOneLine(connection.toInput)});
  }
  return nodes.text() + connections.text();
}

}  // namespace

std::string inspectionText(const Program& program) {
  const ProgramSlots slots = slotsOf(program);
  std::string text = metadataText(program.metadata(), program.kernel() ? "kernel" : "graph");
  text += "  output       " + std::string(typeName(program.output().type)) + " " +
          onOneLine(program.output().name) + "\n";
  text += inputsText(program, slots) + parametersText(program, slots) + notesText(program);
  if (const pbGraphInfo* graph = program.graph()) text += graphText(*graph);
  return text;
}

}  // namespace vellumtide::cli
