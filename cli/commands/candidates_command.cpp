// `vellumtide candidates`, which no help shows: what a shell offers where a control is set.
#include <memory>

#include "bank/control_labels.h"
#include "bank/slot_assignment.h"
#include "cli/commands/commands.h"
#include "cli/program/program_file.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

struct CandidateOptions {
  std::string file, mark, word;
};

// The values that the control of a parameter takes, where there are few.
std::vector<std::string> valuesOf(const pbParameter& parameter) {
  std::vector<std::string> values;
  const Bank bank = controlNeed(parameter).bank;
  if (bank == Bank::Checkbox) return {"true", "false"};
  if (bank != Bank::Popup) return values;
  const std::string entries = popupEntries(parameter);
  for (std::size_t start = 0; start < entries.size();) {
    const std::size_t end = std::min(entries.find('|', start), entries.size());
    values.push_back(entries.substr(start, end - start));
    start = end + 1;
  }
  return values;
}

// Labels with the mark behind them; behind a label and '=' the values. A line each.
void printCandidates(const CandidateOptions& options) {
  const Program program = readProgram(pathOf(options.file));
  const ProgramSlots slots = slotsOf(program);
  std::string labels, values;
  for (std::size_t i = 0; i < program.parameters().size(); ++i) {
    const pbParameter& parameter = program.parameters()[i];
    const int count = controlNeed(parameter).count;
    if (slots.parameters[i] < 0) continue;
    for (int component = 0; component < count; ++component) {
      const std::string label = controlLabel(parameter, component, count);
      const std::string start = label + options.mark;
      labels += onOneLine(start) + "\n";
      if (options.mark != "=" || !options.word.starts_with(start)) continue;
      for (const std::string& value : valuesOf(parameter))
        values += onOneLine(start + value) + "\n";
    }
  }
  writeOut(values.empty() ? labels : values);
}

}  // namespace

void addCandidatesCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("candidates")->group("");
  const auto options = std::make_shared<CandidateOptions>();
  command->add_option("PROGRAM", options->file)->required();
  command->add_option("MARK", options->mark)->required();
  command->add_option("WORD", options->word);
  command->callback([options] { printCandidates(*options); });
}

}  // namespace vellumtide::cli
