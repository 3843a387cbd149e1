// The cache is stored upside down, as one run of pixels that fills the surface from its bottom row upwards,
// each row from left to right. So a cache as wide as the surface lies upright on its lower edge, and one of
// another width (the window was resized since) shears; what does not fit is left out. Surface and copy are
// both premultiplied: a cached background shows the same pixels as a drawn one.
#include "dialog/underlay.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace qkui {

namespace {

std::uint32_t* At(const Underlay::Pixels& surface, int x, int y) {
    return surface.first + static_cast<std::ptrdiff_t>(y) * surface.width + x;
}

void Clear(const Underlay::Pixels& surface, const CRect& rect) {
    const std::size_t bytes = static_cast<std::size_t>(rect.Width()) * sizeof(std::uint32_t);
    for (int y = rect.top; y < rect.bottom; ++y)
        std::memset(At(surface, rect.left, y), 0, bytes);
}

}  // namespace

void Underlay::Restore(const Pixels& surface, const CRect& rect) const {
    if (cache_ && Width() == surface.width) return CopyRows(surface, rect);
    Clear(surface, rect);
    if (cache_) CopySheared(surface, rect);
}

void Underlay::CopyRows(const Pixels& surface, const CRect& rect) const {
    const int top = std::clamp(surface.height - Height(), rect.top, rect.bottom);
    Clear(surface, CRect(rect.left, rect.top, rect.right, top));
    if (top == rect.bottom) return;
    const Gdiplus::Rect from(rect.left, surface.height - rect.bottom, rect.Width(), rect.bottom - top);
    Copy(from, At(surface, rect.left, rect.bottom - 1), -surface.width);
}

void Underlay::CopySheared(const Pixels& surface, const CRect& rect) const {
    const std::int64_t width = Width();
    const std::int64_t count = width * Height();
    for (int y = rect.top; y < rect.bottom; ++y) {
        const std::int64_t row = static_cast<std::int64_t>(surface.height - 1 - y) * surface.width;
        const std::int64_t end = std::min(row + rect.right, count);
        for (std::int64_t at = row + rect.left; at < end;) {
            const std::int64_t run = std::min(end - at, width - at % width);
            const Gdiplus::Rect from(static_cast<int>(at % width), static_cast<int>(at / width),
                                     static_cast<int>(run), 1);
            Copy(from, At(surface, static_cast<int>(at - row), y), surface.width);
            at += run;
        }
    }
}

// `stride` in pixels.
void Underlay::Copy(const Gdiplus::Rect& from, std::uint32_t* to, int stride) const {
    Gdiplus::BitmapData data = {};
    data.Width = static_cast<UINT>(from.Width);
    data.Height = static_cast<UINT>(from.Height);
    data.Stride = stride * static_cast<int>(sizeof(std::uint32_t));
    data.PixelFormat = Gdiplus::PixelFormat32bppPARGB;
    data.Scan0 = to;
    cache_->LockBits(&from, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                     Gdiplus::PixelFormat32bppPARGB, &data);
    cache_->UnlockBits(&data);
}

}  // namespace qkui
