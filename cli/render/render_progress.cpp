#include "cli/render/render_progress.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/text/failure.h"
#include "cli/text/messages.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

std::string lineOf(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

ProgressStyle chosen(ProgressStyle style, bool isSequence) {
  if (style != ProgressStyle::Auto) return style;
  if (!isSequence) return ProgressStyle::None;
  return standardErrorIsTerminal() ? ProgressStyle::Bar : ProgressStyle::Plain;
}

bool hasLines(ProgressStyle style) {
  return style == ProgressStyle::Bar || style == ProgressStyle::Plain;
}

}  // namespace

RenderProgress::RenderProgress(ProgressStyle style, std::size_t total, bool isSequence)
    : style_(chosen(style, isSequence)),
      total_(total),
      lines_(total, hasLines(style_), style_ == ProgressStyle::Bar) {
  if (style_ == ProgressStyle::Json) put(lineOf({{"event", "start"}, {"total", total_}}));
  if (style_ == ProgressStyle::OpenJd) {
    put("openjd_status: Rendering " + std::to_string(total_) +
        (total_ == 1 ? " frame\n" : " frames\n"));
  }
}

void RenderProgress::frame(const Frame& frame) {
  ++done_;
  if (style_ == ProgressStyle::Json) {
    Json line = {{"event", "frame"}, {"frame", nullptr}, {"status", frame.status},
                 {"done", done_},    {"total", total_},  {"file", frame.file}};
    if (frame.number) line["frame"] = *frame.number;
    if (!frame.error.empty()) line["error"] = frame.error;
    put(lineOf(line));
  } else if (style_ == ProgressStyle::OpenJd) {
    char line[64];
    std::snprintf(line, sizeof line, "openjd_progress: %.2f\n",
                  100.0 * static_cast<double>(done_) / static_cast<double>(total_));
    put(line);
  } else {
    lines_.frameDone(onOneLine(frame.file) + (frame.status == "done" ? "" : "  " + frame.status),
                     frame.worked);
  }
}

void RenderProgress::end(const std::string& status, int exitStatus, const std::string& failure) {
  lines_.breakLine();
  if (style_ == ProgressStyle::Json) {
    Json line = {{"event", "end"}, {"status", status}, {"exitStatus", exitStatus}};
    if (!failure.empty()) line["error"] = failure;
    put(lineOf(line));
  } else if (style_ == ProgressStyle::OpenJd) {
    put(failure.empty() ? "openjd_status: Done\n" : "openjd_fail: " + onOneLine(failure) + "\n");
  }
}

void RenderProgress::put(const std::string& text) {
  if (!heard_) return;
  try {
    writeOut(text);
  } catch (const ReaderGone&) {
    heard_ = false;
  } catch (const Failure& failure) {
    heard_ = false;
    say(std::string(failure.what()) + "; the progress ends here, the job goes on");
  }
}

}  // namespace vellumtide::cli
