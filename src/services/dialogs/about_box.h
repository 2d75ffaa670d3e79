// The about box: a script dialog with the splash picture, and the driver's lines in the Info panel.
#pragma once

#include <string>

#include "services/dialogs/error_log.h"

namespace vellumtide {

// `splashWritten` is kept for as long as the host runs: the picture is written once. The error-log
// export follows the dialog. Always 0.
PF_Err showAbout(PF_InData* in_data, bool& splashWritten, std::string& errorLog,
                 const DriverStrings& driver);

}  // namespace vellumtide
