// Pictures of the pages and the specimens, made on the headless window system.
#pragma once

#include <string>

namespace gallery {

// From now on with twice the pixels each way.
void ShootDense();
// Each returns the program's exit code: 1, and a line on standard error, when a picture cannot be made.
int ShootPage(std::size_t page, const std::string& file);
// FOLDER/NAME.png for each page, printed as they are written. The folder is made if need be.
int ShootAllPages(const std::string& folder);
// The same for each specimen.
int ShootSpecimens(const std::string& folder);

}  // namespace gallery
