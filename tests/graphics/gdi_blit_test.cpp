// Block copies and fills, every pixel held against a plain model.
#include <limits>

#include "graphics/picture_kit.h"

namespace {

using kit::Canvas;
using kit::Dice;
using kit::Pixels;
using platform::Region;

Region RandomClip(Dice& dice, int side) {
    Region clip;
    for (int i = dice.Between(1, 4); i > 0; --i)
        clip.Add(dice.Rect(-4, side));
    return clip;
}

void Model(Pixels& target, const Pixels& source, const Region& clip, const RECT& to, int sourceX,
           int sourceY) {
    for (int y = to.top; y < to.bottom; ++y)
        for (int x = to.left; x < to.right; ++x) {
            const int fromX = x - to.left + sourceX;
            const int fromY = y - to.top + sourceY;
            if (target.Has(x, y) && source.Has(fromX, fromY) && clip.Contains(x, y))
                target.At(x, y) = source.At(fromX, fromY);
        }
}

TEST(BitBlt, CopiesEveryPixelThatSourceAndClipHave) {
    Dice dice(1);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        Canvas target(20, 17);
        Canvas source(14, 22);
        target.Scatter(dice);
        source.Scatter(dice);
        const Region clip = round % 4 == 0 ? Region(CRect(0, 0, 20, 17)) : RandomClip(dice, 20);
        target.Clip(clip);
        const RECT to = dice.Rect(-6, 18);
        const int sourceX = dice.Between(-5, 12);
        const int sourceY = dice.Between(-5, 20);
        Pixels expected = target.Get();
        Model(expected, source.Get(), clip, to, sourceX, sourceY);
        EXPECT_TRUE(BitBlt(target.Context(), to.left, to.top, to.right - to.left, to.bottom - to.top,
                           source.Context(), sourceX, sourceY, SRCCOPY));
        EXPECT_TRUE(Same(target.Get(), expected));
    }
}

TEST(BitBlt, OverlapWithinOneBitmapReadsWhatWasThereBefore) {
    Dice dice(2);
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE(round);
        Canvas canvas(18, 18);
        canvas.Scatter(dice);
        const Region clip = round % 3 == 0 ? Region(CRect(0, 0, 18, 18)) : RandomClip(dice, 18);
        canvas.Clip(clip);
        const RECT to = dice.Rect(-3, 12);
        const int sourceX = to.left + dice.Between(-4, 4);
        const int sourceY = to.top + dice.Between(-4, 4);
        const Pixels before = canvas.Get();
        Pixels expected = before;
        Model(expected, before, clip, to, sourceX, sourceY);
        BitBlt(canvas.Context(), to.left, to.top, to.right - to.left, to.bottom - to.top, canvas.Context(),
               sourceX, sourceY, SRCCOPY);
        EXPECT_TRUE(Same(canvas.Get(), expected));
    }
}

TEST(BitBlt, NothingToCopyChangesNoRevision) {
    Canvas target(8, 8);
    Canvas source(8, 8);
    const std::uint64_t before = GetSurfaceRevision(target.Context());
    const int high = std::numeric_limits<int>::max();
    const int low = std::numeric_limits<int>::min();
    const struct {
        int x, y, width, height, sourceX, sourceY;
    } cases[] = {{0, 0, 0, 8, 0, 0},        {0, 0, 8, -1, 0, 0},     {8, 0, 8, 8, 0, 0},
                 {0, 0, 8, 8, 8, 0},        {0, 0, 8, 8, 0, -8},     {high, high, high, high, 0, 0},
                 {low, low, high, 5, 0, 0}, {0, 0, 8, 8, high, low}, {low, 0, 8, 8, high, 0}};
    for (const auto& c : cases)
        EXPECT_TRUE(BitBlt(target.Context(), c.x, c.y, c.width, c.height, source.Context(), c.sourceX,
                           c.sourceY, SRCCOPY));
    EXPECT_FALSE(BitBlt(target.Context(), 0, 0, 8, 8, source.Context(), 0, 0, 0x42));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, GetLastError());
    EXPECT_EQ(before, GetSurfaceRevision(target.Context()));
    EXPECT_TRUE(BitBlt(target.Context(), low + 1, 0, high, 8, source.Context(), low + 1, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(target.Context(), -3, 0, high, 1, source.Context(), -3, 0, SRCCOPY));
    EXPECT_NE(before, GetSurfaceRevision(target.Context()));
}

TEST(FillRect, FillsOpaqueInsideTheClip) {
    Dice dice(3);
    const HBRUSH brush = CreateSolidBrush(RGB(0x11, 0x22, 0x33));
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        Canvas canvas(16, 16);
        canvas.Scatter(dice);
        const Region clip = RandomClip(dice, 16);
        canvas.Clip(clip);
        const RECT rect = dice.Rect(-4, 14);
        Pixels expected = canvas.Get();
        Model(expected, Pixels(64, 64, 0xFF112233), clip, rect, 0, 0);
        EXPECT_EQ(1, FillRect(canvas.Context(), &rect, brush));
        EXPECT_TRUE(Same(canvas.Get(), expected));
    }
    Canvas canvas(4, 4);
    EXPECT_EQ(0, FillRect(canvas.Context(), nullptr, brush));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, GetLastError());
    DeleteObject(brush);
}

}  // namespace
