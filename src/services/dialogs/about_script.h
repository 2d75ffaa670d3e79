#pragma once

namespace vellumtide {

// The dialog of the about box, an ExtendScript program (ECMAScript 3). It reads the globals
// g_title, g_version_info, g_img_path and g_URL, which the text in front of it sets.
extern const char* const kAboutDialogScript;

}  // namespace vellumtide
