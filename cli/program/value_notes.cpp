#include "cli/program/value_notes.h"

#include <algorithm>
#include <tuple>

#include "cli/program/parameter_text.h"
#include "cli/text/messages.h"
#include "graph/graph_text_map.h"

namespace vellumtide::cli {
namespace {

ValueCells cellsOf(float x, float y) {
  ValueCells cells;
  cells.setFloat(0, x);
  cells.setFloat(1, y);
  return cells;
}

using Places = std::vector<GraphValuePlaces>;

// Adds the values of one parameter that differ. `places` are those of a graph's values, null for a
// kernel, which knows its own.
void addNotes(std::vector<ValueNote>& notes, const Program& program, std::size_t index,
              const SourceLines& lines, const Places* places) {
  const pbParameter& parameter = program.parameters()[index];
  const auto add = [&](const char* key, std::size_t own, std::size_t GraphValuePlaces::*inGraph,
                       pbElementType type, const ValueCells& cells, const ValueCells& meant) {
    const std::size_t place = places ? (*places)[index].*inGraph : own;
    notes.push_back({index, key, lines.placeOf(place), type, cells, meant});
  };
  const auto addValue = [&](const char* key, const pbValue& value,
                            std::size_t GraphValuePlaces::*inGraph) {
    if (!value.isSet || !value.meant) return;
    add(key, value.place, inGraph, parameter.type, value.cells, *value.meant);
  };
  addValue("defaultValue", parameter.defaultValue, &GraphValuePlaces::defaultValue);
  addValue("minValue", parameter.minValue, &GraphValuePlaces::minValue);
  addValue("maxValue", parameter.maxValue, &GraphValuePlaces::maxValue);
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  if (relative.isSet && relative.meant) {
    const auto [x, y] = *relative.meant;
    add("aePointRelativeDefaultValue", relative.place, &GraphValuePlaces::relativeDefault,
        pbElementType::Float2, cellsOf(relative.x, relative.y), cellsOf(x, y));
  }
}

bool hasDifference(const pbParameter& parameter) {
  return parameter.defaultValue.meant || parameter.minValue.meant || parameter.maxValue.meant ||
         parameter.aePointRelativeDefaultValue.meant;
}

}  // namespace

std::vector<ValueNote> valueNotes(const Program& program) {
  std::vector<ValueNote> notes;
  const std::vector<pbParameter>& parameters = program.parameters();
  if (std::none_of(parameters.begin(), parameters.end(), hasDifference)) return notes;
  Places places;
  if (program.graph()) {
    places = mapGraphTexts(program.text.c_str()).parameterValues;
    places.resize(parameters.size());
  }
  const SourceLines lines(program.text);
  for (std::size_t i = 0; i < parameters.size(); ++i)
    addNotes(notes, program, i, lines, program.graph() ? &places : nullptr);
  std::stable_sort(notes.begin(), notes.end(), [](const ValueNote& a, const ValueNote& b) {
    return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
  });
  return notes;
}

std::string noteText(const ValueNote& note, const Program& program) {
  const pbParameter& parameter = program.parameters()[note.parameter];
  return std::string(note.key) + " of \"" + onOneLine(parameter.name) + "\" is meant as " +
         cellsText(note.meant, note.type) + ", its cells read " + cellsText(note.cells, note.type);
}

}  // namespace vellumtide::cli
