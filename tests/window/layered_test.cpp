// Layered windows and shapes: the exact pixels on the screen, and what catches the pointer.
#include "window/window_kit.h"

namespace windowtest {
namespace {

// source over destination, each channel rounded to nearest.
std::uint32_t Blend(std::uint32_t premultiplied, std::uint32_t below) {
    const std::uint32_t rest = 255 - (premultiplied >> 24);
    std::uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t channel = (premultiplied >> shift) & 0xFF;
        result |= (channel + (((below >> shift) & 0xFF) * rest + 127) / 255) << shift;
    }
    return result;
}

std::uint32_t Times(std::uint32_t pixel, std::uint32_t alpha) {
    std::uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= ((((pixel >> shift) & 0xFF) * alpha + 127) / 255) << shift;
    return result;
}

// A picture to push, top-down.
class Source {
  public:
    Source(int width, int height) : width_(width) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection({}, &info, DIB_RGB_COLORS, &bits_);
        context_ = CreateCompatibleDC({});
        SelectObject(context_, bitmap_);
    }
    ~Source() {
        SelectObject(context_, HBITMAP());
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }
    std::uint32_t& At(int x, int y) { return static_cast<std::uint32_t*>(bits_)[y * width_ + x]; }
    HDC Context() const {
        GdiFlush();
        return context_;
    }

  private:
    int width_;
    void* bits_ = nullptr;
    HBITMAP bitmap_;
    HDC context_;
};

BLENDFUNCTION PixelAlpha(BYTE alpha = 255) {
    return {AC_SRC_OVER, 0, alpha, AC_SRC_ALPHA};
}

class LayeredTest : public WindowTest {
  protected:
    BOOL Push(HWND window, const Source& source, SIZE size, BLENDFUNCTION blend = PixelAlpha(),
              POINT from = {0, 0}) {
        return UpdateLayeredWindow(window, {}, nullptr, &size, source.Context(), &from, 0, &blend, ULW_ALPHA);
    }
};

TEST_F(LayeredTest, EachModeShowsItsPixels) {
    const HWND window = Open(100, 100, 20, 20, kRed);
    OpenChild(window, 0, 0, 10, 20, kBlue);
    const auto left = [&] { return ScreenColour(105, 110); };
    const auto right = [&] { return ScreenColour(115, 110); };
    EXPECT_EQ(right(), kRedPixel);
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    User().Settle();
    EXPECT_EQ(right(), kDesktopColour) << "layered and not fed";
    EXPECT_EQ(WindowFromPoint(POINT{115, 110}), HWND());
    EXPECT_TRUE(SetLayeredWindowAttributes(window, 0, 100, 4)) << "neither bit: no attributes";
    User().Settle();
    EXPECT_EQ(right(), kDesktopColour);
    const struct {
        const char* what;
        COLORREF key;
        BYTE alpha;
        DWORD flags;
        std::uint32_t left, right;
    } cases[] = {
        {"key", kBlue, 7, LWA_COLORKEY, kDesktopColour, kRedPixel},
        {"another key", kGreen, 7, LWA_COLORKEY, kBluePixel, kRedPixel},
        {"alpha", kBlue, 100, LWA_ALPHA, Blend(Times(0xFF0000FF, 100), kDesktopColour),
         Blend(Times(0xFFFF0000, 100), kDesktopColour)},
        {"both", kRed, 200, LWA_ALPHA | LWA_COLORKEY, Blend(Times(0xFF0000FF, 200), kDesktopColour),
         kDesktopColour},
        {"no alpha", 0, 0, LWA_ALPHA, kDesktopColour, kDesktopColour},
        {"full alpha", 0, 255, LWA_ALPHA, kBluePixel, kRedPixel},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_TRUE(SetLayeredWindowAttributes(window, one.key, one.alpha, one.flags));
        User().Settle();
        EXPECT_EQ(left(), one.left);
        EXPECT_EQ(right(), one.right);
        EXPECT_EQ(static_cast<bool>(WindowFromPoint(POINT{105, 110})), one.left != kDesktopColour);
        EXPECT_EQ(static_cast<bool>(WindowFromPoint(POINT{115, 110})), one.right != kDesktopColour);
    }
    SetWindowLongPtrW(window, GWL_EXSTYLE, 0);
    User().Settle();
    EXPECT_EQ(right(), kRedPixel);
    EXPECT_FALSE(SetLayeredWindowAttributes(window, 0, 0, LWA_ALPHA)) << "not layered";
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(LayeredTest, PushedPixelsBlendAndCatchByAlpha) {
    const HWND below = Open(100, 100, 40, 10, kGreen);
    const HWND window = Create(100, 100, 40, 10, WS_EX_LAYERED);
    ShowWindow(window, SW_SHOWNA);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    User().Settle();
    EXPECT_EQ(ScreenColour(105, 105), kGreenPixel);
    Source source(40, 10);
    const std::uint32_t pixels[] = {0xFFFF0000, 0x80800000, 0x01010101, 0x00000000};
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 40; ++x)
            source.At(x, y) = pixels[x / 10];
    for (const int alpha : {255, 128, 1}) {
        SCOPED_TRACE(alpha);
        ASSERT_TRUE(Push(window, source, {40, 10}, PixelAlpha(static_cast<BYTE>(alpha))));
        User().Settle();
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(ScreenColour(105 + i * 10, 105),
                      Blend(Times(pixels[i], static_cast<std::uint32_t>(alpha)), kGreenPixel));
            EXPECT_EQ(WindowFromPoint(POINT{105 + i * 10, 105}), i < 3 ? window : below);
        }
    }
    ASSERT_TRUE(Push(window, source, {40, 10}, PixelAlpha(0)));
    User().Settle();
    EXPECT_EQ(WindowFromPoint(POINT{105, 105}), below);
}

TEST_F(LayeredTest, APushPlacesSizesAndCuts) {
    const HWND window = Open(100, 100, 10, 10, kRed, {}, WS_EX_LAYERED);
    Source source(20, 20);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            source.At(x, y) = 0xFF000000U | static_cast<unsigned>(x << 8 | y);
    Forget();
    const POINT position = {200, 150};
    const SIZE size = {20, 20};
    const POINT from = {-5, 12};
    const BLENDFUNCTION blend = PixelAlpha();
    ASSERT_TRUE(
        UpdateLayeredWindow(window, {}, &position, &size, source.Context(), &from, 0, &blend, ULW_ALPHA));
    User().Settle();
    EXPECT_EQ(RectOf(window), CRect(200, 150, 220, 170));
    EXPECT_EQ(NamesOf(Log().Of(window, {WM_MOVE, WM_SIZE})), "MOVE SIZE");
    const Headless::Picture screen = User().Screen();
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x) {
            const bool inside = x >= 5 && y < 8;
            ASSERT_EQ(screen.At(200 + x, 150 + y) & 0xFFFFFF,
                      inside ? static_cast<unsigned>((x - 5) << 8 | (y + 12)) : kDesktopColour)
                << x << ", " << y;
        }
    // Pushing again with other pixels replaces all of them; WM_PAINT has no say in it.
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            source.At(x, y) = x == 3 && y == 4 ? 0xFFFFFFFF : 0;
    ASSERT_TRUE(Push(window, source, size));
    InvalidateRect(window, nullptr, TRUE);
    User().Settle();
    EXPECT_EQ(ScreenColour(203, 154), 0xFFFFFFu);
    EXPECT_EQ(ScreenColour(210, 154), kDesktopColour);
    // Without a source the window only moves.
    const POINT back = {100, 100};
    ASSERT_TRUE(UpdateLayeredWindow(window, {}, &back, nullptr, {}, nullptr, 0, nullptr, 0));
    User().Settle();
    EXPECT_EQ(ScreenColour(103, 104), 0xFFFFFFu);
}

TEST_F(LayeredTest, PushesOfOtherKinds) {
    const HWND window = Open(100, 100, 20, 10, kRed, {}, WS_EX_LAYERED);
    Source source(20, 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 20; ++x)
            source.At(x, y) = x < 10 ? 0x00FF0000 : 0x0000FF00;
    const SIZE size = {20, 10};
    const POINT from = {0, 0};
    const BLENDFUNCTION constant = {AC_SRC_OVER, 0, 100, 0};
    const auto push = [&](COLORREF key, const BLENDFUNCTION* blend, DWORD flags) {
        return UpdateLayeredWindow(window, {}, nullptr, &size, source.Context(), &from, key, blend, flags);
    };
    ASSERT_TRUE(push(0, nullptr, ULW_OPAQUE));
    EXPECT_EQ(ScreenColour(105, 105), kRedPixel);
    ASSERT_TRUE(push(kRed, nullptr, ULW_COLORKEY));
    EXPECT_EQ(ScreenColour(105, 105), kDesktopColour);
    EXPECT_EQ(ScreenColour(115, 105), kGreenPixel);
    ASSERT_TRUE(push(0, &constant, ULW_ALPHA));
    EXPECT_EQ(ScreenColour(115, 105), Blend(Times(0xFF00FF00, 100), kDesktopColour));
}

TEST_F(LayeredTest, BadPushesFailAndChangeNothing) {
    const HWND plain = Open(300, 100, 10, 10, kRed);
    const HWND window = Open(100, 100, 10, 10, kRed, {}, WS_EX_LAYERED);
    Source source(10, 10);
    const HDC empty = CreateCompatibleDC({});
    const HDC gone = CreateCompatibleDC({});
    DeleteDC(gone);
    const SIZE size = {10, 10}, none = {0, 10}, huge = {40000, 10}, vast = {32767, 32767};
    const POINT from = {0, 0};
    const BLENDFUNCTION blend = PixelAlpha(), badOperation = {1, 0, 255, 1}, badFlags = {0, 1, 255, 1};
    const struct {
        const char* what;
        HWND window;
        const SIZE* size;
        HDC source;
        const BLENDFUNCTION* blend;
        DWORD flags;
        DWORD error;
    } cases[] = {
        {"not layered", plain, &size, source.Context(), &blend, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"no width", window, &none, source.Context(), &blend, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"too wide", window, &huge, source.Context(), &blend, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"no memory", window, &vast, source.Context(), &blend, ULW_ALPHA, ERROR_NOT_ENOUGH_MEMORY},
        {"no blend", window, &size, source.Context(), nullptr, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"operation", window, &size, source.Context(), &badOperation, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"blend flags", window, &size, source.Context(), &badFlags, ULW_ALPHA, ERROR_INVALID_PARAMETER},
        {"flags", window, &size, source.Context(), &blend, 8, ERROR_INVALID_PARAMETER},
        {"empty source", window, &size, empty, &blend, ULW_ALPHA, ERROR_INVALID_HANDLE},
        {"stale source", window, &size, gone, &blend, ULW_ALPHA, ERROR_INVALID_HANDLE},
        {"size without source", window, &size, {}, &blend, ULW_ALPHA, ERROR_INVALID_PARAMETER},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        SetLastError(0);
        EXPECT_FALSE(UpdateLayeredWindow(one.window, {}, nullptr, one.size, one.source, &from, 0, one.blend,
                                         one.flags));
        EXPECT_EQ(GetLastError(), one.error);
        RECT rect;
        GetClientRect(window, &rect);
        EXPECT_LT(rect.right, 1000) << "what is refused changes nothing";
    }
    DeleteDC(empty);
    EXPECT_EQ(ScreenColour(105, 105), kDesktopColour);
    // Attributes and pushes exclude each other until the attributes are taken off or the style is set anew.
    ASSERT_TRUE(SetLayeredWindowAttributes(window, 0, 255, LWA_ALPHA));
    EXPECT_FALSE(Push(window, source, size));
    SetWindowLongPtrW(window, GWL_EXSTYLE, 0);
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    EXPECT_TRUE(Push(window, source, size));
    ASSERT_TRUE(SetLayeredWindowAttributes(window, 0, 255, LWA_ALPHA));
    ASSERT_TRUE(SetLayeredWindowAttributes(window, 0, 0, 0));
    EXPECT_TRUE(Push(window, source, size));
    // Flags without either bit do the same.
    ASSERT_TRUE(SetLayeredWindowAttributes(window, 0, 255, LWA_ALPHA));
    User().Settle();
    EXPECT_EQ(ScreenColour(105, 105), kRedPixel);
    ASSERT_TRUE(SetLayeredWindowAttributes(window, 0, 255, 4));
    User().Settle();
    EXPECT_EQ(ScreenColour(105, 105), kDesktopColour) << "what was pushed before is not shown again";
    EXPECT_TRUE(Push(window, source, size));
}

TEST_F(LayeredTest, ContextsOfAPushedWindowDrawNowhere) {
    const HWND window = Open(100, 100, 10, 10, kRed, {}, WS_EX_LAYERED);
    Source source(10, 10);
    source.At(5, 5) = 0xFFFFFFFF;
    ASSERT_TRUE(Push(window, source, {10, 10}));
    const HDC context = GetDC(window);
    ASSERT_TRUE(context);
    RECT box;
    EXPECT_EQ(GetClipBox(context, &box), NULLREGION);
    ReleaseDC(window, context);
    User().Settle();
    EXPECT_EQ(ScreenColour(105, 105), 0xFFFFFFu);
}

TEST_F(LayeredTest, AShapeClipsPixelsAndPointer) {
    const HWND below = Open(100, 100, 60, 40, kGreen);
    const HWND window = Open(100, 100, 60, 40, kRed);
    const HRGN region = CreateRoundRectRgn(0, 0, 60, 40, 20, 20);
    const HRGN hole = CreateRectRgn(20, 10, 40, 20);
    CombineRgn(region, region, hole, RGN_DIFF);
    const HRGN copy = CreateRectRgn(0, 0, 0, 0);
    CombineRgn(copy, region, HRGN(), RGN_COPY);
    EXPECT_TRUE(SetWindowRgn(window, region, TRUE));
    EXPECT_FALSE(DeleteObject(region)) << "the window took it";
    EXPECT_FALSE(SetWindowRgn(window, region, TRUE));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    User().Settle();
    const Headless::Picture screen = User().Screen();
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 60; ++x) {
            const bool inside = PtInRegion(copy, x, y) != FALSE;
            ASSERT_EQ(screen.At(100 + x, 100 + y) & 0xFFFFFF, inside ? kRedPixel : kGreenPixel)
                << x << ", " << y;
            if (x % 7 == 0 && y % 3 == 0) {
                EXPECT_EQ(WindowFromPoint(POINT{100 + x, 100 + y}), inside ? window : below);
            }
        }
    EXPECT_TRUE(SetWindowRgn(window, HRGN(), TRUE));
    User().Settle();
    EXPECT_EQ(WindowFromPoint(POINT{100, 100}), window);
    EXPECT_EQ(ScreenColour(130, 115), kRedPixel);
    DeleteObject(hole);
    DeleteObject(copy);
}

}  // namespace
}  // namespace windowtest
