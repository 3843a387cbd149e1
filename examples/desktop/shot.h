// A picture of the desktop, made without a display.
#pragma once

#include <string>

namespace desktop {

// The folder's icons as a user may leave them: some selected, a menu open on one. An exit code.
int Shoot(const std::string& folder, const std::string& file);

}  // namespace desktop
