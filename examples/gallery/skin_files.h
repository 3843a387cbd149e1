// Where the gallery's picture files lie.
#pragma once

#include <string>

#include <platform/text.h>

namespace gallery {

// The folder, looked for beside the program: as the build leaves it, then as it is installed. Empty when it
// is in neither place.
const std::string& SkinFolder();
CString SkinFile(const char* name);

}  // namespace gallery
