// Block copies and fills, every pixel held against a plain model.
#include <limits>

#include "graphics/picture_kit.h"

namespace {

using kit::Canvas;
using kit::Pixels;
using kit::Random;
using platform::Region;

Region RandomClip(Random& random, int side) {
    Region clip;
    for (int i = random.Between(1, 4); i > 0; --i)
        clip.Add(random.Rect(-4, side));
    return clip;
}

// From another bitmap; within one, where what is read is what was there before; and fills.
TEST(BitBlt, CopiesEveryPixelThatSourceAndClipHave) {
    Random random(1);
    const HBRUSH brush = CreateSolidBrush(RGB(0x11, 0x22, 0x33));
    for (int round = 0; round < 1100; ++round) {
        SCOPED_TRACE(round);
        const Pixels before = random.Scattered(20, 17);
        Canvas target(before);
        const Canvas other(random.Scattered(14, 22));
        Region clip(CRect(0, 0, 20, 17));
        if (round % 8 == 2)
            clip.Subtract(Region(CRect(9, 0, 10, 17)));  // two parts side by side
        else if (round % 4 != 0)
            clip = RandomClip(random, 20);
        target.Clip(clip);
        const RECT to = random.Rect(-6, 18);
        if (round % 11 == 0) {
            EXPECT_EQ(1, FillRect(target.Context(), &to, brush));
            EXPECT_TRUE(
                Same(target.Get(), kit::Copied(before, Pixels(64, 64, 0xFF112233), clip, to, POINT{0, 0})));
            continue;
        }
        const bool overlaps = round % 2 == 0;
        const Canvas& source = overlaps ? target : other;
        const POINT from = overlaps ? POINT{to.left + random.Between(-4, 4), to.top + random.Between(-4, 4)}
                                    : POINT{random.Between(-5, 12), random.Between(-5, 20)};
        const Pixels expected = kit::Copied(before, source.Get(), clip, to, from);
        EXPECT_TRUE(BitBlt(target.Context(), to.left, to.top, to.right - to.left, to.bottom - to.top,
                           source.Context(), from.x, from.y, SRCCOPY));
        EXPECT_TRUE(Same(target.Get(), expected));
    }
    const Canvas canvas(4, 4);
    EXPECT_EQ(0, FillRect(canvas.Context(), nullptr, brush));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, GetLastError());
    DeleteObject(brush);
}

TEST(BitBlt, NothingToCopyChangesNoRevision) {
    const Canvas target(8, 8);
    const Canvas source(8, 8);
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

}  // namespace
