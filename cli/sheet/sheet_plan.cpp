#include "cli/sheet/sheet_plan.h"

#include <algorithm>
#include <cmath>

#include "cli/control/sweep.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kMostCells = 4096;
constexpr int kMostInOneRow = 4;
constexpr double kSheetShape = 1.7;   // width over height that a sheet is brought close to
constexpr double kLabelShape = 0.14;  // height of a label over the width of its cell

std::string fileName(const std::string& path) {
  return utf8(pathOf(path).filename());
}

std::string join(const std::vector<std::string>& texts, const std::string& between) {
  std::string result;
  for (const std::string& text : texts)
    result += (result.empty() ? "" : between) + text;
  return result;
}

std::vector<Sweep> readSweeps(const SheetJob& job) {
  std::vector<Sweep> sweeps;
  if (job.sweeps.empty()) return sweeps;
  const bool several = job.sources.size() > 1;
  if (job.sweeps.size() > (several ? 1 : 2)) {
    failUsage(several ? "--sweep: several programs take one sweep"
                      : "--sweep: a sheet has two directions, so no more than two sweeps");
  }
  for (const std::string& source : job.sources) {
    if (!isProgramName(source)) failUsage("--sweep: " + source + " is no program (.pbk or .pbg)");
  }
  const Program program = readProgram(pathOf(job.sources.front()));
  for (const std::string& text : job.sweeps)
    sweeps.push_back(parseSweep(text, program));
  return sweeps;
}

// Close to the wanted shape, with few places left empty in the last row.
int columnsFor(std::size_t count, double cellShape) {
  const int cells = static_cast<int>(count);
  if (cells <= kMostInOneRow) return cells;
  int best = 1;
  double leastCost = 1e9;
  for (int columns = 1; columns <= cells; ++columns) {
    const int rows = (cells + columns - 1) / columns;
    const double shape = columns / (rows * (cellShape + kLabelShape));
    const double empty = static_cast<double>(rows * columns - cells) / columns;
    const double cost = std::abs(std::log(shape / kSheetShape)) + empty / 2;
    if (cost < leastCost) best = columns, leastCost = cost;
  }
  return best;
}

// Names that appear twice are shown as they were typed.
std::vector<std::string> sourceNames(const std::vector<std::string>& sources) {
  std::vector<std::string> names;
  for (const std::string& source : sources) {
    const std::string name = fileName(source);
    const auto same = std::count_if(sources.begin(), sources.end(),
                                    [&](const std::string& s) { return fileName(s) == name; });
    names.push_back(same > 1 ? source : name);
  }
  return names;
}

void addTitle(const SheetJob& job, Sheet& sheet) {
  std::vector<std::string> images, facts;
  for (const std::string& input : job.inputs)
    images.push_back(fileName(input));
  const bool anyProgram = std::any_of(job.sources.begin(), job.sources.end(), isProgramName);
  if (job.sources.size() == 1) {
    sheet.title = fileName(job.sources.front());
    if (!images.empty()) facts.push_back(join(images, ", "));
  } else if (anyProgram) {
    sheet.title = join(images, ", ");
  }
  if (anyProgram && job.width)
    facts.push_back(std::to_string(*job.width) + " \u00D7 " + std::to_string(*job.height));
  if (anyProgram) facts.insert(facts.end(), job.settings.begin(), job.settings.end());
  sheet.subtitle = join(facts, "   \u00B7   ");
  if (sheet.title.empty()) sheet.title.swap(sheet.subtitle);
  if (!job.title) return;
  sheet.title = *job.title;
  if (job.title->empty()) sheet.subtitle.clear();
}

}  // namespace

bool isProgramName(const std::string& name) {
  std::string ending = utf8(pathOf(name).extension());
  for (char& c : ending)
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return ending == ".pbk" || ending == ".pbg";
}

SheetPlan planSheet(const SheetJob& job, double cellShape) {
  const std::vector<Sweep> sweeps = readSweeps(job);
  const std::size_t across = sweeps.empty() ? 1 : sweeps[0].values.size();
  const std::size_t down = sweeps.size() > 1 ? sweeps[1].values.size() : 1;
  const std::size_t count = job.sources.size() * across * down;
  if (count > kMostCells) {
    failUsage("the sheet would have " + std::to_string(count) + " cells, more than " +
              std::to_string(kMostCells));
  }
  // Two directions that both mean something keep their grid.
  const bool isGrid = across > 1 && count > across;
  if (isGrid && job.columns) failUsage("--columns: the first sweep gives the columns");
  const int columns =
      isGrid ? static_cast<int>(across) : job.columns.value_or(columnsFor(count, cellShape));

  SheetPlan plan;
  addTitle(job, plan.sheet);
  const std::vector<std::string> names = sourceNames(job.sources);
  for (std::size_t i = 0; i < count; ++i) {
    PlannedCell cell{i / (across * down), {}, i};
    const std::size_t index[] = {i % across, i / across % down};
    for (std::size_t s = 0; s < sweeps.size(); ++s)
      cell.settings.push_back({sweeps[s].name, sweeps[s].values[index[s]]});
    SheetCell shown;
    shown.column = static_cast<int>(i) % columns;
    shown.row = static_cast<int>(i) / columns;
    if (job.sources.size() > 1 || sweeps.empty()) shown.labels.push_back({"", names[cell.source]});
    shown.labels.insert(shown.labels.end(), cell.settings.begin(), cell.settings.end());
    plan.cells.push_back(std::move(cell));
    plan.sheet.cells.push_back(std::move(shown));
  }
  return plan;
}

}  // namespace vellumtide::cli
