// The JSON file that --report asks for.
#pragma once

#include <string>

#include "cli/render/render_records.h"

namespace vellumtide::cli {

// Throws Failure (ExitStatus::Failed) when a report could not be written to that place as far as
// that shows without writing; for the start of a job, so that its end is no surprise.
void checkReport(const std::string& file);

// Whether a job that was not looked through yet may write its report there: any file but one that
// holds something else than a report, which may be what the job reads.
bool mayHoldReport(const std::string& file);

// Writes the file whole or not at all. `status` is "done", "failed" or "interrupted"; `failure` the
// message that the program ends with, "" when all is well. Throws Failure (ExitStatus::Failed).
void writeReport(const std::string& file, const std::string& program, const RenderRecords& records,
                 const std::string& status, int exitStatus, const std::string& failure,
                 double milliseconds);

}  // namespace vellumtide::cli
