// Pixels as the core draws them to pixels as a window shows them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/window/x11/display_plan.h"

namespace platform::x11 {

// As the plan has it. Source and target do not overlap.
void ConvertPixels(const DisplayPlan& plan, const std::uint32_t* source, std::uint32_t* target,
                   std::size_t count);

// Premultiplied pixels over those behind them, which are opaque whatever their alpha says.
void BlendOver(const std::uint32_t* behind, std::uint32_t* pixels, std::size_t count);

}  // namespace platform::x11
