// State outside the project: the read-only preference for a root folder of program files, and the
// folder for files that scripts need by path.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "aeapi/effect_data.h"

namespace vellumtide {

// The folder under which the user keeps program files; empty when there is none.
std::string readRootFolder(PF_InData* in_data);

// Full path of the first file with exactly this name under the root folder: the files of a folder
// first, then its sub-folders, down to two levels below the root, all in listing order.
std::optional<std::string> findUnderRootFolder(std::string_view root, std::string_view fileName);

// The maker's folder in the user's data folder, whether or not it exists, as the scripting engine
// reports it. `path` stays as it was when there is no answer. Returns the host's error.
PF_Err getWorkingFolder(PF_InData* in_data, std::string& path);

// Write a file into a sub-folder of the working folder, both made when missing. A file that exists
// is left as it is. Returns 1 when the working folder is unknown or cannot be made, else the host's
// error of the look-up.
PF_Err writeWorkingFile(PF_InData* in_data, std::string_view subFolder, std::string_view fileName,
                        const void* data, std::size_t size);

// Removes the file and then both folders as far as they are empty. Returns the host's error of the
// look-up.
PF_Err removeWorkingFile(PF_InData* in_data, std::string_view subFolder, std::string_view fileName);

}  // namespace vellumtide
