// Icon and cursor files: several pictures of one thing, of which the largest is taken.
#pragma once

#include <memory>
#include <span>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/decode/signature.h"

namespace platform {

// The largest sound entry, by the size that the entry's own picture tells (directories lie); among equals
// the one with the most colours. Null with `status` set when there is none.
std::shared_ptr<Surface> DecodeIcon(PictureKind kind, std::span<const std::uint8_t> bytes,
                                    Gdiplus::Status& status);

}  // namespace platform
