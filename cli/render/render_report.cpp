#include "cli/render/render_report.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "cli/files/pending_file.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

[[noreturn]] void fail(const std::string& file, const std::string& reason) {
  throw Failure(ExitStatus::Failed, "--report " + file + ": cannot be written: " + reason);
}

}  // namespace

void checkReport(const std::string& file) {
  try {
    outputTarget(pathOf(file));
  } catch (const WriteRefusal& refusal) {
    fail(file, refusal.what());
  }
}

bool mayHoldReport(const std::string& file) {
  const fs::path path = pathOf(file);
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored) || fs::file_size(path, ignored) == 0) return true;
  std::ifstream stream(path, std::ios::binary);
  const Json old = Json::parse(stream, nullptr, false);
  // In a file of keyframes a control of that name holds a list.
  return old.is_object() && old.contains("status") && old["status"].is_string();
}

void writeReport(const std::string& file, const std::string& program, const RenderRecords& records,
                 const std::string& status, int exitStatus, const std::string& failure,
                 double milliseconds) {
  Json report = {{"program", program}, {"status", status}, {"exitStatus", exitStatus}};
  if (!failure.empty()) report["error"] = failure;
  report["milliseconds"] = milliseconds;
  report["total"] = records.total();
  report["done"] = records.count(FrameStatus::Done);
  report["skipped"] = records.count(FrameStatus::Skipped);
  report["failed"] = records.count(FrameStatus::Failed);
  report["frames"] = records.json();

  try {
    writeFile(pathOf(file), report.dump(1, ' ', false, Json::error_handler_t::replace) + "\n");
  } catch (const WriteRefusal& refusal) {
    fail(file, refusal.what());
  }
}

}  // namespace vellumtide::cli
