// Rendering files: from the options of the command to written pictures.
#pragma once

#include "cli/render/render_options.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

// Renders everything; frames are read ahead and written behind on threads, the module is called
// from this one. Throws Failure when nothing can be rendered and, at the end, when a frame failed:
// that frame's own failure, or with keepGoing one that lists the frames. An interruption ends the
// process by its signal. Whatever the end, the report and the progress tell it.
void runRenderJob(const RenderJob& job);

// Has the report and the progress tell that the job failed before it began. Does not throw.
void tellFailure(const RenderJob& job, const Failure& failure);

}  // namespace vellumtide::cli
