// Pictures in tests: a memory context with its bitmap, a plain copy of pixels, and a comparison that names
// the first pixel that differs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/gdi.h>
#include <platform/geometry.h>

#include "platform/graphics/device_context.h"
#include "platform/graphics/gdi_objects.h"

inline std::ostream& operator<<(std::ostream& out, const RECT& r) {
    return out << r.left << "," << r.top << " - " << r.right << "," << r.bottom;
}

namespace kit {

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> words;  // top-down

    Pixels(int w, int h, std::uint32_t fill = 0)
        : width(w), height(h), words(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), fill) {}
    // With rectangles of other colours, painted in their order.
    Pixels(int w, int h, std::initializer_list<std::pair<CRect, std::uint32_t>> parts) : Pixels(w, h) {
        for (const auto& [rect, pixel] : parts)
            Fill(rect, pixel);
    }
    bool Has(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    std::uint32_t& At(int x, int y) {
        return words[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x)];
    }
    std::uint32_t At(int x, int y) const { return const_cast<Pixels*>(this)->At(x, y); }
    void Fill(const RECT& rect, std::uint32_t pixel) {
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                if (Has(x, y)) At(x, y) = pixel;
    }
};

inline Pixels PixelsOf(const platform::Surface& surface) {
    Pixels pixels(surface.Width(), surface.Height());
    for (int y = 0; y < pixels.height; ++y)
        std::copy_n(surface.Row(y), pixels.width, &pixels.At(0, y));
    return pixels;
}

inline void Put(platform::Surface& surface, const Pixels& pixels) {
    for (int y = 0; y < pixels.height; ++y)
        std::copy_n(&pixels.words[static_cast<std::size_t>(y * pixels.width)], pixels.width, surface.Row(y));
    surface.Touch();
}

inline std::shared_ptr<platform::Surface> SurfaceOf(const Pixels& pixels) {
    auto surface = platform::Surface::Create(pixels.width, pixels.height);
    Put(*surface, pixels);
    return surface;
}

inline testing::AssertionResult Same(const Pixels& actual, const Pixels& expected) {
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << actual.width << "x" << actual.height << " instead of "
                                           << expected.width << "x" << expected.height;
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x)
            if (actual.At(x, y) != expected.At(x, y))
                return testing::AssertionFailure() << "(" << x << ", " << y << ") is " << std::hex
                                                   << actual.At(x, y) << " instead of " << expected.At(x, y);
    return testing::AssertionSuccess();
}

// `before`, where clip and source allow it, with a block of the source copied over it, or mixed with it.
inline Pixels Copied(const Pixels& before, const Pixels& source, const platform::Region& clip, const RECT& to,
                     POINT from, std::uint32_t (*mix)(std::uint32_t from, std::uint32_t to) = nullptr) {
    Pixels target = before;
    for (int y = to.top; y < to.bottom; ++y)
        for (int x = to.left; x < to.right; ++x) {
            const int fromX = x - to.left + from.x;
            const int fromY = y - to.top + from.y;
            if (!target.Has(x, y) || !source.Has(fromX, fromY) || !clip.Contains(x, y)) continue;
            const std::uint32_t pixel = source.At(fromX, fromY);
            target.At(x, y) = mix ? mix(pixel, before.At(x, y)) : pixel;
        }
    return target;
}

// Around every pixel that is not `background`.
inline CRect InkOf(const Pixels& pixels, std::uint32_t background = 0) {
    CRect box;
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            if (pixels.At(x, y) != background) box.UnionRect(CRect(box), CRect(x, y, x + 1, y + 1));
    return box;
}

// A small generator of its own, so that a failing seed fails everywhere.
class Random {
  public:
    explicit Random(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}
    std::uint32_t Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return state_;
    }
    int Between(int low, int high) {
        return low + static_cast<int>(Next() % static_cast<std::uint32_t>(high - low + 1));
    }
    RECT Rect(int low, int high) {
        const int x = Between(low, high);
        const int y = Between(low, high);
        return {x, y, x + Between(0, high - low), y + Between(0, high - low)};
    }
    // A premultiplied colour of any alpha.
    std::uint32_t Premultiplied() {
        const std::uint32_t alpha = Next() & 0xFF;
        std::uint32_t pixel = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            pixel |= (Next() % (alpha + 1)) << shift;
        return pixel;
    }
    Pixels Scattered(int width, int height, bool opaque = false) {
        Pixels pixels(width, height);
        for (std::uint32_t& word : pixels.words)
            word = opaque ? Next() | 0xFF000000U : Premultiplied();
        return pixels;
    }

  private:
    std::uint32_t state_;
};

// A memory context with a bitmap of its own.
class Canvas {
  public:
    Canvas(int width, int height)
        : context_(CreateCompatibleDC(nullptr)), bitmap_(CreateCompatibleBitmap(nullptr, width, height)) {
        SelectObject(context_, bitmap_);
    }
    explicit Canvas(const Pixels& pixels) : Canvas(pixels.width, pixels.height) { Put(Surface(), pixels); }
    ~Canvas() {
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Context() const { return context_; }
    HBITMAP Bitmap() const { return bitmap_; }
    platform::Surface& Surface() const { return *platform::SurfaceOf(context_); }
    Pixels Get() const { return PixelsOf(Surface()); }
    std::uint32_t At(int x, int y) const { return Surface().Row(y)[x]; }
    void Clip(const platform::Region& region) {
        const HRGN handle = CreateRectRgn(0, 0, 0, 0);
        *platform::ShareRegion(handle) = region;
        SelectClipRgn(context_, handle);
        DeleteObject(handle);
    }

  private:
    HDC context_;
    HBITMAP bitmap_;
};

}  // namespace kit
