#include "cli/sheet/sheet_job.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/control/control_panel.h"
#include "cli/files/file_guard.h"
#include "cli/files/output_target.h"
#include "cli/os/module_file.h"
#include "cli/session/layer_pictures.h"
#include "cli/sheet/sheet_plan.h"
#include "cli/text/failure.h"
#include "cli/text/messages.h"
#include "cli/text/progress.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using headless::World;

constexpr std::size_t kMostInputs = 4;

LayerPictures readLayers(const SheetJob& job) {
  std::vector<LayerSource> sources;
  for (const std::string& input : job.inputs)
    sources.push_back({pathOf(input)});
  LayerPictures layers = readPictures(sources, job.depth);
  if (layers.pictures.empty() && job.width) {
    layers.pictures.push_back({World(*job.width, *job.height, layers.format), {1, 1}, ""});
  }
  return layers;
}

// One source, ready to give the cells that it has.
class Source {
 public:
  virtual ~Source() = default;
  virtual World render(const PlannedCell& cell) = 0;
  virtual void finish() {}
};

class ImageSource : public Source {
 public:
  ImageSource(const std::string& file, const CellOptions& options)
      : image_(readImageFile(pathOf(file))), options_(options) {}
  World render(const PlannedCell&) override {
    return cellPicture(image_.pixels, image_.pixelAspect, options_);
  }

 private:
  ImageFile image_;
  const CellOptions& options_;
};

class ProgramSource : public Source {
 public:
  ProgramSource(const SheetJob& job, const std::string& file, const LayerPictures& layers)
      : job_(job),
        program_(readProgram(pathOf(file))),
        session_(job.module, file, program_, picturesFor(file, layers)),
        panel_(program_, session_.effect()) {
    const PF_RationalScale aspect = layers.pictures.front().pixelAspect;
    pixelAspect_ = static_cast<double>(aspect.num) / aspect.den;
    options_.format = layers.format;
    for (const std::string& setting : job.settings)
      panel_.set(setting);
  }

  World render(const PlannedCell& cell) override {
    for (const SheetLabel& setting : cell.settings) {
      const std::string where = "--sweep " + setting.name + "=" + setting.value;
      const ControlPanel::Target target = panel_.find(setting.name);
      if (target.count == 0) panel_.failUnknown(setting.name, where);
      for (const ControlValue& value : panel_.parse(target, setting.value, where))
        panel_.put(value);
    }
    return cellPicture(*session_.render(session_.effect(), options_), pixelAspect_, job_.cell);
  }

  void finish() override { session_.finish(); }

 private:
  // As many as the program takes; of several programs not all need take every image.
  std::vector<LayerPicture> picturesFor(const std::string& file,
                                        const LayerPictures& layers) const {
    const std::size_t most = std::clamp<std::size_t>(program_.inputs().size(), 1, kMostInputs);
    if (layers.pictures.empty()) {
      throw Failure(ExitStatus::Usage, "no input image: give one with -i, or a size with --size");
    }
    if (layers.pictures.size() > most && job_.sources.size() == 1) {
      throw Failure(ExitStatus::Usage, file + ": takes " + std::to_string(most) +
                                           (most == 1 ? " image" : " images") + ", not " +
                                           std::to_string(layers.pictures.size()));
    }
    const auto end = layers.pictures.begin() +
                     static_cast<std::ptrdiff_t>(std::min(most, layers.pictures.size()));
    return {layers.pictures.begin(), end};
  }

  const SheetJob& job_;
  Program program_;
  RenderSession session_;
  ControlPanel panel_;
  headless::RenderOptions options_;
  double pixelAspect_ = 1;
};

// Wrong usage is wrong for the whole sheet, unless one of several programs lacks a control.
bool endsSheet(const Failure& failure, const SheetJob& job) {
  return failure.status == ExitStatus::NoDevice ||
         (failure.status == ExitStatus::Usage && job.sources.size() == 1);
}

class SheetMaker {
 public:
  SheetMaker(const SheetJob& job, SheetPlan& plan, const LayerPictures& layers)
      : job_(job),
        plan_(plan),
        layers_(layers),
        progress_(plan.cells.size(), standardErrorIsTerminal()) {}

  void renderCells() {
    for (const PlannedCell& cell : plan_.cells) {
      SheetCell& shown = plan_.sheet.cells[cell.place];
      try {
        if (cell.source != current_) start(cell.source);
        if (!source_) throw Failure(broken_->status, broken_->what());
        shown.picture = source_->render(cell);
      } catch (const Failure& failure) {
        progress_.breakLine();
        if (endsSheet(failure, job_)) throw;
        note(failure, cell, shown);
      }
      checkSize(shown);
      progress_.frameDone(nameOf(cell));
    }
    if (source_) source_->finish();
  }

  // Throws when a cell failed; `all` when every one did.
  void reportFailures(bool all) const {
    if (failures_ == 0 || all != (failures_ == plan_.cells.size())) return;
    const ExitStatus status = statuses_.size() == 1 ? *statuses_.begin() : ExitStatus::Failed;
    throw Failure(status, all && messages_.size() == 1
                              ? *messages_.begin()
                              : std::to_string(failures_) + " of " +
                                    std::to_string(plan_.cells.size()) + " cells failed");
  }

 private:
  std::string nameOf(const PlannedCell& cell) const {
    std::string name = job_.sources[cell.source];
    for (const SheetLabel& setting : cell.settings)
      name += " " + setting.name + "=" + setting.value;
    return name;
  }

  void start(std::size_t index) {
    if (source_) source_->finish();
    source_.reset();
    current_ = index;
    const std::string& file = job_.sources[index];
    try {
      if (isProgramName(file)) {
        source_ = std::make_unique<ProgramSource>(job_, file, layers_);
      } else {
        source_ = std::make_unique<ImageSource>(file, job_.cell);
      }
    } catch (const Failure& failure) {
      broken_ = failure;
      throw;
    }
  }

  // A message that every cell of a program shares is said once.
  void note(const Failure& failure, const PlannedCell& cell, SheetCell& shown) {
    const std::string& file = job_.sources[cell.source];
    std::string message = failure.what();
    const std::string prefix = file + ": ";
    shown.error = message.starts_with(prefix) ? message.substr(prefix.size()) : message;
    if (!message.starts_with(prefix)) message = prefix + message;
    statuses_.insert(failure.status);
    ++failures_;
    const bool isNew = messages_.insert(message).second;
    if (isNew && plan_.cells.size() > 1) say(message);
  }

  // Too large a sheet is said as soon as a cell makes it so.
  void checkSize(const SheetCell& shown) {
    const int width = shown.picture.width(), height = shown.picture.height();
    if (width <= largestWidth_ && height <= largestHeight_) return;
    largestWidth_ = std::max(largestWidth_, width);
    largestHeight_ = std::max(largestHeight_, height);
    requireDrawable(layOut(plan_.sheet));
  }

  static void requireDrawable(const SheetLayout& layout) {
    if (!isTooLarge(layout.width, layout.height, 4)) return;
    throw Failure(ExitStatus::Image, "the sheet would be too large (" +
                                         std::to_string(layout.width) + " x " +
                                         std::to_string(layout.height) +
                                         " pixels): make the cells smaller with --cell");
  }

  const SheetJob& job_;
  SheetPlan& plan_;
  const LayerPictures& layers_;
  Progress progress_;
  std::unique_ptr<Source> source_;
  std::size_t current_ = static_cast<std::size_t>(-1);
  std::optional<Failure> broken_;  // why the current source cannot be used
  int largestWidth_ = 0, largestHeight_ = 0;
  std::size_t failures_ = 0;
  std::set<ExitStatus> statuses_;
  std::set<std::string> messages_;
};

nlohmann::ordered_json listing(const SheetJob& job, const SheetPlan& plan,
                               const SheetLayout& layout) {
  using Json = nlohmann::ordered_json;
  Json cells = Json::array();
  for (const PlannedCell& cell : plan.cells) {
    const SheetCell& shown = plan.sheet.cells[cell.place];
    Json settings = Json::object();
    for (const SheetLabel& setting : cell.settings)
      settings[setting.name] = setting.value;
    const SheetPlace place = layout.placeOf(shown);
    Json json = {{"source", job.sources[cell.source]},
                 {"settings", std::move(settings)},
                 {"column", shown.column},
                 {"row", shown.row},
                 {"x", place.left},
                 {"y", place.top},
                 {"width", place.width},
                 {"height", place.height},
                 {"status", shown.error.empty() ? "done" : "failed"}};
    if (!shown.error.empty()) json["error"] = shown.error;
    cells.push_back(std::move(json));
  }
  return {{"file", job.output},        {"width", layout.width},
          {"height", layout.height},   {"columns", plan.sheet.columns()},
          {"rows", plan.sheet.rows()}, {"cells", std::move(cells)}};
}

void requireApart(const SheetJob& job) {
  FileGuard guard;
  for (const std::string& source : job.sources)
    guard.reads("the source", pathOf(source));
  for (const std::string& input : job.inputs)
    guard.reads("the input", pathOf(input));
  if (!job.font.empty()) guard.reads("the font", pathOf(job.font));
  if (const auto module = moduleFile(job.module)) guard.reads("the effect module", *module);
  guard.writes("-o", pathOf(job.output));
}

}  // namespace

void makeSheet(const SheetJob& job) {
  const LabelFonts fonts = findFonts(job.font);
  drawText("", fonts.plain, 1);  // a file that is no font is said before the work
  WriteOptions write;
  write.dropAlpha = true;
  if (job.json && isStandardOutput(pathOf(job.output)))
    throw Failure(ExitStatus::Usage, "-o -: standard output is for the list of --json");
  requireNoTerminal("-o", pathOf(job.output));
  checkWritable(pathOf(job.output), write);
  requireApart(job);
  const LayerPictures layers = readLayers(job);
  double shape = 0.75;
  if (!layers.pictures.empty()) {
    const World& first = layers.pictures.front().pixels;
    shape = static_cast<double>(first.height()) / first.width();
    for (const LayerPicture& picture : layers.pictures)
      requireRoom(picture.pixels, layers.format, 1);
  }
  SheetPlan plan = planSheet(job, shape);
  SheetMaker maker(job, plan, layers);
  maker.renderCells();
  maker.reportFailures(true);

  const SheetLayout layout = layOut(plan.sheet);
  writeImageFile(pathOf(job.output), drawSheet(plan.sheet, layout, fonts), 1, write);
  if (job.json) {
    using Json = nlohmann::ordered_json;
    writeOut(listing(job, plan, layout).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  }
  maker.reportFailures(false);
}

}  // namespace vellumtide::cli
