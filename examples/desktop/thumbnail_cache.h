// Thumbnails that the programs of a user share on disk, as the desktops have agreed.
#pragma once

#include <cstdint>
#include <string>

#include "examples/desktop/picture.h"

namespace desktop {

// The picture of a file within a square of `side` pixels: from the shared cache while that is fresh, else
// made from the file and put there. Null for what is no picture. For any thread.
Pixels LoadThumbnail(const std::string& path, std::int64_t modified, int side);

}  // namespace desktop
