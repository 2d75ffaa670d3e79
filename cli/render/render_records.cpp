#include "cli/render/render_records.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/text/messages.h"

namespace vellumtide::cli {
namespace {

const char* statusName(FrameStatus status) {
  constexpr const char* kNames[] = {"waiting", "done", "skipped", "failed"};
  return kNames[static_cast<int>(status)];
}

// "frame 12: " in front of what failed in a sequence.
Failure located(const FrameRecord& record) {
  const std::string where = record.frame ? "frame " + std::to_string(*record.frame) + ": " : "";
  return {record.failure->status, where + record.failure->what()};
}

}  // namespace

RenderRecords::RenderRecords(std::vector<FrameRecord> frames, RenderProgress& progress,
                             bool saysFailures)
    : frames_(std::move(frames)), progress_(progress), saysFailures_(saysFailures) {}

void RenderRecords::end(std::size_t index, FrameRecord record) {
  const std::lock_guard lock(mutex_);
  if (record.failure && !firstFailure_) firstFailure_ = located(record);
  frames_[index] = std::move(record);
  ended_.push_back(index);
}

void RenderRecords::show() {
  std::unique_lock lock(mutex_);
  while (shown_ < ended_.size()) {
    const FrameRecord record = frames_[ended_[shown_++]];
    lock.unlock();
    if (record.failure && saysFailures_) {
      progress_.breakLine();
      say(located(record).what());
    }
    progress_.frame({record.frame, record.file, statusName(record.status),
                     record.failure ? record.failure->what() : "",
                     record.status == FrameStatus::Done});
    lock.lock();
  }
}

std::size_t RenderRecords::count(FrameStatus status) const {
  const std::lock_guard lock(mutex_);
  return std::count_if(frames_.begin(), frames_.end(),
                       [&](const FrameRecord& record) { return record.status == status; });
}

std::size_t RenderRecords::total() const {
  return frames_.size();
}

std::vector<int> RenderRecords::frames(std::initializer_list<FrameStatus> statuses) const {
  const std::lock_guard lock(mutex_);
  std::vector<int> frames;
  for (const FrameRecord& record : frames_) {
    const bool has = std::find(statuses.begin(), statuses.end(), record.status) != statuses.end();
    if (record.frame && has) frames.push_back(*record.frame);
  }
  return frames;
}

std::optional<Failure> RenderRecords::firstFailure() const {
  const std::lock_guard lock(mutex_);
  return firstFailure_;
}

nlohmann::ordered_json RenderRecords::json() const {
  const std::lock_guard lock(mutex_);
  auto list = nlohmann::ordered_json::array();
  for (const FrameRecord& record : frames_) {
    nlohmann::ordered_json entry = {{"frame", nullptr},
                                    {"status", statusName(record.status)},
                                    {"file", record.file},
                                    {"readMs", record.readMs},
                                    {"renderMs", record.renderMs},
                                    {"writeMs", record.writeMs}};
    if (record.frame) entry["frame"] = *record.frame;
    if (record.failure) entry["error"] = record.failure->what();
    list.push_back(std::move(entry));
  }
  return list;
}

}  // namespace vellumtide::cli
