// Pictures of files, decoded once for all images that show them.
#pragma once

#include <memory>

#include <platform/types.h>

#include "platform/graphics/image_data.h"

namespace platform {

// With as many pixels to a unit as `scale` says; in an error status as well where its sides are no multiples
// of that. Of an animated picture each image gets a decoder of its own, as each is at another frame. A file
// that was written to since is read anew, and nothing is kept longer than an image shows it. From every
// thread. Never null.
std::shared_ptr<ImageData> LoadPictureFile(LPCWSTR path, int scale);

}  // namespace platform
