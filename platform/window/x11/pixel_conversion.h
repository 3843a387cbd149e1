// Pixels as the core draws them to pixels as a window shows them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/window/x11/display_plan.h"

namespace platform::x11 {

// `key` is 0x00RRGGBB, for KeyToTransparent. Source and target do not overlap.
void ConvertPixels(Conversion conversion, std::uint32_t key, const std::uint32_t* source,
                   std::uint32_t* target, std::size_t count);

}  // namespace platform::x11
