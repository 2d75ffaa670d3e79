// The files that a render job reads and writes, known before any of them is opened.
#pragma once

#include "cli/render/render_options.h"

namespace vellumtide::cli {

// Throws Failure (ExitStatus::Usage) when the report would be written over a file that the job
// reads, or over one of its pictures: then no report can tell of the failure either.
void requireReportApart(const RenderJob& job);

// Likewise for the pictures, each against all that is read, the report and each other.
void requirePicturesApart(const RenderJob& job);

// Says on standard error which files of the inputs' folders belong to no frame, because their
// numbers are spelled otherwise: "in.7.png" for "in.####.png".
void sayOtherSpellings(const FrameOptions& job);

}  // namespace vellumtide::cli
