// How the pixels of a window become visible, and which of them the pointer meets.
#pragma once

#include <cstdint>

#include "platform/graphics/surface.h"

namespace platform {

struct Compositing {
    enum class Mode {
        Nothing,   // layered and not fed yet: invisible, and the pointer passes
        Opaque,    // alpha channel ignored
        Constant,  // opaque pixels under `alpha`, without those of the key's colour
        PerPixel   // premultiplied pixels under `alpha`
    };
    Mode mode = Mode::Opaque;
    std::uint32_t key = 0;  // 0x00RRGGBB
    std::uint8_t alpha = 255;
    bool hasKey = false;  // with Constant
    friend bool operator==(const Compositing&, const Compositing&) = default;

    bool IsInvisible() const { return mode == Mode::Nothing || (mode != Mode::Opaque && alpha == 0); }
    bool LeavesOut(std::uint32_t pixel) const {
        return mode == Mode::Constant && hasKey && (pixel & 0xFFFFFF) == key;
    }
    // Any trace of alpha catches the pointer, also one that the constant alpha rounds away.
    bool CatchesPointer(std::uint32_t pixel) const {
        return !IsInvisible() && !LeavesOut(pixel) && (mode != Mode::PerPixel || pixel >> 24 != 0);
    }
    // At a pixel of a window that shows `surface` (null: nothing yet). Opaque windows need no pixels.
    bool CatchesPointer(const Surface* surface, int x, int y) const {
        if (mode == Mode::Opaque) return true;
        const bool drawn = surface && x < surface->Width() && y < surface->Height();
        return CatchesPointer(drawn ? surface->Row(y)[x] : 0);
    }
};

}  // namespace platform
