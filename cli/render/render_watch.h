// Rendering while a program is being written: once, and again whenever a file changes.
#pragma once

#include "cli/render/render_job.h"

namespace vellumtide::cli {

// Renders the job, then watches the program, the animation files and the inputs and renders again,
// until a signal ends the process. Standard error tells what changed in the program, what is wrong
// and how long each pass took; pictures stay where a pass fails. Throws Failure when the first pass
// shows that no change of a file could help: wrong usage, no module, no GL device, an output that
// is watched itself.
[[noreturn]] void watchRenderJob(RenderJob job);

}  // namespace vellumtide::cli
