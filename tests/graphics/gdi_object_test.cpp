// Handles of contexts, bitmaps and brushes: who holds whom, and what stale handles do.
#include <limits>

#include "graphics/picture_kit.h"

namespace {

using kit::Canvas;

TEST(GdiObjects, ABitmapBelongsToOneContextAtATime) {
    const HDC first = CreateCompatibleDC(nullptr);
    const HDC second = CreateCompatibleDC(first);
    const HBITMAP a = CreateCompatibleBitmap(first, 8, 8);
    const HBITMAP b = CreateCompatibleBitmap(first, 4, 4);
    EXPECT_FALSE(SelectObject(first, a));
    EXPECT_EQ(a, SelectObject(first, b));
    EXPECT_EQ(b, SelectObject(first, a));

    SetLastError(0);
    EXPECT_FALSE(SelectObject(second, a)) << "held by the first";
    EXPECT_EQ(ERROR_INVALID_HANDLE, GetLastError());
    EXPECT_FALSE(platform::SurfaceOf(second));
    EXPECT_FALSE(DeleteObject(a));
    EXPECT_TRUE(platform::SurfaceOf(first));

    EXPECT_EQ(a, SelectObject(first, nullptr));
    EXPECT_FALSE(platform::SurfaceOf(first));
    EXPECT_FALSE(SelectObject(second, a));
    EXPECT_TRUE(platform::SurfaceOf(second));
    EXPECT_TRUE(DeleteDC(second));
    EXPECT_TRUE(DeleteObject(a)) << "a deleted context lets go of its bitmap";
    EXPECT_TRUE(DeleteObject(b));
    EXPECT_TRUE(DeleteDC(first));
}

TEST(GdiObjects, StaleHandlesFailEverywhere) {
    const HDC context = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(nullptr, 2, 2);
    const HBRUSH brush = CreateSolidBrush(0);
    const HRGN region = CreateRectRgn(0, 0, 1, 1);
    ASSERT_TRUE(DeleteDC(context) && DeleteObject(bitmap) && DeleteObject(brush) && DeleteObject(region));
    // New objects in the same slots must not be mistaken for the old ones.
    const Canvas live(8, 8);
    const HBRUSH liveBrush = CreateSolidBrush(0x123456);
    const HRGN liveRegion = CreateRectRgn(0, 0, 4, 4);
    const RECT rect{0, 0, 4, 4};
    RECT out;

    const struct {
        const char* call;
        bool failed;
    } cases[] = {
        {"CreateCompatibleDC", !CreateCompatibleDC(context)},
        {"DeleteDC", !DeleteDC(context)},
        {"CreateCompatibleBitmap", !CreateCompatibleBitmap(context, 2, 2)},
        {"SelectObject context", !SelectObject(context, live.Bitmap())},
        {"SelectObject bitmap", !SelectObject(live.Context(), bitmap)},
        {"DeleteObject bitmap", !DeleteObject(bitmap)},
        {"DeleteObject brush", !DeleteObject(brush)},
        {"DeleteObject region", !DeleteObject(region)},
        {"BitBlt to", !BitBlt(context, 0, 0, 1, 1, live.Context(), 0, 0, SRCCOPY)},
        {"BitBlt from", !BitBlt(live.Context(), 0, 0, 1, 1, context, 0, 0, SRCCOPY)},
        {"FillRect context", !FillRect(context, &rect, liveBrush)},
        {"FillRect brush", !FillRect(live.Context(), &rect, brush)},
        {"SetRectRgn", !SetRectRgn(region, 0, 0, 1, 1)},
        {"CombineRgn target", CombineRgn(region, liveRegion, liveRegion, RGN_OR) == ERROR_REGION},
        {"CombineRgn first", CombineRgn(liveRegion, region, liveRegion, RGN_OR) == ERROR_REGION},
        {"CombineRgn second", CombineRgn(liveRegion, liveRegion, region, RGN_OR) == ERROR_REGION},
        {"OffsetRgn", OffsetRgn(region, 1, 1) == ERROR_REGION},
        {"GetRgnBox", GetRgnBox(region, &out) == ERROR_REGION},
        {"PtInRegion", !PtInRegion(region, 0, 0)},
        {"RectInRegion", !RectInRegion(region, &rect)},
        {"GetRgnRectCount", GetRgnRectCount(region) == 0},
        {"GetRgnRect", !GetRgnRect(region, 0, &out)},
        {"SelectClipRgn context", SelectClipRgn(context, liveRegion) == ERROR_REGION},
        {"SelectClipRgn region", SelectClipRgn(live.Context(), region) == ERROR_REGION},
        {"IntersectClipRect", IntersectClipRect(context, 0, 0, 1, 1) == ERROR_REGION},
        {"GetClipBox", GetClipBox(context, &out) == ERROR_REGION},
        {"GetDrawableRgn context", GetDrawableRgn(context, liveRegion) == ERROR_REGION},
        {"GetDrawableRgn region", GetDrawableRgn(live.Context(), region) == ERROR_REGION},
        {"GetSurfaceRevision", GetSurfaceRevision(context) == 0},
        {"SetFirstUseProc", !SetFirstUseProc(context, nullptr, nullptr)},
        {"GetClipRgn context", GetClipRgn(context, liveRegion) == -1},
        {"GetClipRgn region", GetClipRgn(live.Context(), region) == -1},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(c.failed) << c.call;
    EXPECT_EQ(ERROR_INVALID_HANDLE, GetLastError());
    EXPECT_EQ(64U, live.Get().words.size());
    EXPECT_EQ(0U, live.At(0, 0)) << "nothing was drawn";
    DeleteObject(liveBrush);
    DeleteObject(liveRegion);
}

TEST(GdiObjects, ASectionShowsTheMemoryOfItsCaller) {
    for (const bool bottomUp : {true, false}) {
        SCOPED_TRACE(bottomUp);
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = 3;
        info.bmiHeader.biHeight = bottomUp ? 2 : -2;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits);
        ASSERT_TRUE(bitmap);
        auto* const words = static_cast<std::uint32_t*>(bits);
        for (std::uint32_t i = 0; i < 6; ++i) {
            EXPECT_EQ(0U, words[i]);
            words[i] = 0xFF000000 | i;
        }
        const HDC context = CreateCompatibleDC(nullptr);
        SelectObject(context, bitmap);
        const std::uint64_t before = GetSurfaceRevision(context);
        GdiFlush();
        EXPECT_EQ(before, GetSurfaceRevision(context)) << "only drawing counts";

        const Canvas canvas(3, 2);
        EXPECT_TRUE(BitBlt(canvas.Context(), 0, 0, 3, 2, context, 0, 0, SRCCOPY));
        EXPECT_EQ(bottomUp ? 0xFF000003 : 0xFF000000, canvas.At(0, 0));
        EXPECT_EQ(bottomUp ? 0xFF000002 : 0xFF000005, canvas.At(2, 1));
        const RECT corner{0, 0, 1, 1};
        const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
        FillRect(context, &corner, brush);
        EXPECT_EQ(0xFF010203, words[bottomUp ? 3 : 0]);
        DeleteObject(brush);
        DeleteDC(context);
        EXPECT_TRUE(DeleteObject(bitmap));
    }
}

TEST(GdiObjects, SectionsOfOtherFormatsAreRefused) {
    const struct {
        LONG width, height;
        WORD planes, bits;
        DWORD compression;
        UINT usage;
        bool made;
    } cases[] = {{4, 4, 1, 32, BI_RGB, DIB_RGB_COLORS, true},
                 {4, 4, 1, 24, BI_RGB, DIB_RGB_COLORS, false},
                 {4, 4, 2, 32, BI_RGB, DIB_RGB_COLORS, false},
                 {4, 4, 1, 32, 3, DIB_RGB_COLORS, false},
                 {4, 4, 1, 32, BI_RGB, 1, false},
                 {-4, 4, 1, 32, BI_RGB, DIB_RGB_COLORS, false},
                 {4, 0, 1, 32, BI_RGB, DIB_RGB_COLORS, false},
                 {4, std::numeric_limits<LONG>::min(), 1, 32, BI_RGB, DIB_RGB_COLORS, false},
                 {40000, 4, 1, 32, BI_RGB, DIB_RGB_COLORS, false}};
    for (const auto& c : cases) {
        BITMAPINFO info{};
        info.bmiHeader = {
            sizeof info.bmiHeader, c.width, c.height, c.planes, c.bits, c.compression, 0, 0, 0, 0, 0};
        int dummy = 0;
        void* memory = &dummy;
        const HBITMAP bitmap = CreateDIBSection(nullptr, &info, c.usage, &memory);
        EXPECT_EQ(c.made, static_cast<bool>(bitmap)) << &c - cases;
        EXPECT_EQ(c.made, memory != nullptr);
        if (bitmap) DeleteObject(bitmap);
    }
    EXPECT_EQ(ERROR_INVALID_PARAMETER, GetLastError());
    void* bits = nullptr;
    EXPECT_FALSE(CreateDIBSection(nullptr, nullptr, DIB_RGB_COLORS, &bits));
}

TEST(GdiObjects, AWindowContextIsNotAMemoryContext) {
    const auto surface = platform::Surface::Create(8, 8);
    const HDC window = platform::MakeDeviceContext(surface, {0, 0}, platform::Region(CRect(0, 0, 8, 8)));
    const HBITMAP bitmap = CreateCompatibleBitmap(window, 2, 2);
    EXPECT_FALSE(DeleteDC(window));
    EXPECT_FALSE(SelectObject(window, bitmap));
    EXPECT_EQ(surface, platform::SurfaceOf(window));
    const HDC memory = CreateCompatibleDC(window);
    platform::DeleteDeviceContext(memory);
    EXPECT_TRUE(DeleteDC(memory)) << "only a window's context is deleted that way";
    platform::DeleteDeviceContext(window);
    EXPECT_FALSE(platform::SurfaceOf(window));
    EXPECT_TRUE(DeleteObject(bitmap));
}

}  // namespace
