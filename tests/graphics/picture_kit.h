// Pictures in tests: a memory context with its bitmap, a plain copy of pixels, and a comparison that names
// the first pixel that differs.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <platform/gdi.h>
#include <platform/geometry.h>

#include "platform/graphics/device_context.h"

namespace kit {

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> words;  // top-down

    Pixels(int w, int h, std::uint32_t fill = 0)
        : width(w), height(h), words(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), fill) {}
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
        for (int x = 0; x < pixels.width; ++x)
            pixels.At(x, y) = surface.Row(y)[x];
    return pixels;
}

inline testing::AssertionResult Same(const Pixels& actual, const Pixels& expected) {
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << actual.width << "x" << actual.height << " instead of "
                                           << expected.width << "x" << expected.height;
    int differing = 0;
    std::string first;
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x) {
            if (actual.At(x, y) == expected.At(x, y)) continue;
            char text[96];
            std::snprintf(text, sizeof text, "(%d, %d) is %08X instead of %08X", x, y, actual.At(x, y),
                          expected.At(x, y));
            if (differing++ == 0) first = text;
        }
    if (differing == 0) return testing::AssertionSuccess();
    return testing::AssertionFailure() << first << ", " << differing << " pixels differ";
}

// A small generator of its own, so that a failing seed fails everywhere.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}
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
    void Set(const Pixels& pixels) {
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x)
                Surface().Row(y)[x] = pixels.At(x, y);
        Surface().Touch();
    }
    void Scatter(Dice& dice) {
        Pixels pixels(Surface().Width(), Surface().Height());
        for (std::uint32_t& word : pixels.words)
            word = dice.Premultiplied();
        Set(pixels);
    }
    void Clip(const platform::Region& region) {
        const HRGN handle = CreateRectRgn(0, 0, 0, 0);
        for (int i = 0; i < region.Count(); ++i) {
            const CRect part = region.Rect(i);
            const HRGN one = CreateRectRgn(part.left, part.top, part.right, part.bottom);
            CombineRgn(handle, handle, one, RGN_OR);
            DeleteObject(one);
        }
        SelectClipRgn(context_, handle);
        DeleteObject(handle);
    }

  private:
    HDC context_;
    HBITMAP bitmap_;
};

}  // namespace kit
