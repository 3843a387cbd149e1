// Regions, held against a plain picture of their pixels.
#include <sys/resource.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <vector>

#include "graphics/picture_kit.h"
#include "platform/graphics/gdi_objects.h"

namespace {

using kit::Pixels;
using kit::Random;
using platform::Region;

constexpr int kSide = 24;

Pixels Painted(const Region& region) {
    Pixels pixels(kSide, kSide);
    int area = 0;
    for (int i = 0; i < region.Count(); ++i) {
        const CRect part = region.Rect(i);
        area += part.Width() * part.Height();
        pixels.Fill(part, 1);
    }
    int painted = 0;
    for (const std::uint32_t word : pixels.words)
        painted += static_cast<int>(word);
    EXPECT_EQ(area, painted) << "parts overlap";
    return pixels;
}

TEST(Region, AlgebraAgreesWithAPictureOfTheRegions) {
    Random random(7);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        Region regions[2];
        Pixels pictures[2] = {Pixels(kSide, kSide), Pixels(kSide, kSide)};
        for (int side = 0; side < 2; ++side)
            for (int i = random.Between(0, 5); i > 0; --i) {
                CRect rect;
                if (!rect.IntersectRect(random.Rect(0, kSide / 2), CRect(0, 0, kSide, kSide))) continue;
                regions[side].Add(rect);
                pictures[side].Fill(rect, 1);
            }
        for (int operation = RGN_AND; operation <= RGN_DIFF; ++operation) {
            Region result = regions[0];
            if (operation == RGN_AND) result.Intersect(regions[1]);
            if (operation == RGN_OR) result.Add(regions[1]);
            if (operation == RGN_XOR) result.Xor(regions[1]);
            if (operation == RGN_DIFF) result.Subtract(regions[1]);
            Pixels expected(kSide, kSide);
            for (std::size_t i = 0; i < expected.words.size(); ++i) {
                const std::uint32_t a = pictures[0].words[i];
                const std::uint32_t b = pictures[1].words[i];
                expected.words[i] = operation == RGN_AND   ? a & b
                                    : operation == RGN_OR  ? a | b
                                    : operation == RGN_XOR ? a ^ b
                                                           : a & ~b & 1;
            }
            EXPECT_TRUE(Same(Painted(result), expected)) << "operation " << operation;
        }
        const RECT window = random.Rect(0, kSide / 2);
        Pixels seen(kSide, kSide);
        regions[0].ForEachIn(window, [&](const CRect& part) { seen.Fill(part, 1); });
        Pixels expected(kSide, kSide);
        bool all = true;
        bool any = false;
        for (int y = window.top; y < window.bottom; ++y)
            for (int x = window.left; x < window.right; ++x) {
                const bool inside = expected.Has(x, y) && pictures[0].At(x, y);
                if (inside) expected.At(x, y) = 1;
                all = all && inside;
                any = any || inside;
                EXPECT_EQ(inside, regions[0].Contains(x, y));
            }
        EXPECT_TRUE(Same(seen, expected));
        EXPECT_EQ(all, regions[0].Covers(window));
        EXPECT_EQ(any, regions[0].Intersects(window));
    }
}

TEST(Region, HandlesCombineIncludingIntoThemselves) {
    const HRGN a = CreateRectRgn(0, 0, 10, 10);
    const HRGN b = CreateRectRgn(15, 8, 5, 0);  // corners in any order
    EXPECT_EQ(NULLREGION, CombineRgn(b, b, b, RGN_DIFF));
    EXPECT_TRUE(SetRectRgn(b, 5, 0, 15, 8));
    EXPECT_EQ(COMPLEXREGION, CombineRgn(a, a, b, RGN_OR));
    RECT box;
    EXPECT_EQ(COMPLEXREGION, GetRgnBox(a, &box));
    EXPECT_EQ(CRect(0, 0, 15, 10), CRect(box));
    ASSERT_EQ(2, GetRgnRectCount(a));
    EXPECT_TRUE(GetRgnRect(a, 0, &box));
    EXPECT_EQ(CRect(0, 0, 15, 8), CRect(box));
    EXPECT_TRUE(GetRgnRect(a, 1, &box));
    EXPECT_EQ(CRect(0, 8, 10, 10), CRect(box));
    EXPECT_FALSE(GetRgnRect(a, 2, &box));
    EXPECT_FALSE(GetRgnRect(a, -1, &box));
    EXPECT_EQ(COMPLEXREGION, OffsetRgn(a, 100, -5));
    EXPECT_TRUE(PtInRegion(a, 114, 2));
    EXPECT_FALSE(PtInRegion(a, 114, 3));
    EXPECT_EQ(SIMPLEREGION, CombineRgn(a, b, HRGN(), RGN_COPY));
    EXPECT_EQ(ERROR_REGION, CombineRgn(a, b, b, 0));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, GetLastError());
    DeleteObject(a);
    DeleteObject(b);
}

TEST(Region, RoundCornersAreSymmetricAndClimbMonotonically) {
    const struct {
        int width, height, ellipseWidth, ellipseHeight;
    } cases[] = {{20, 20, 8, 8},  {21, 13, 9, 5}, {20, 20, 20, 20}, {20, 20, 90, 90},
                 {20, 10, 6, 90}, {1, 1, 5, 5},   {3, 24, 2, 2},    {24, 7, -6, 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << " " << c.ellipseWidth);
        const Pixels round =
            Painted(Region::RoundRect(CRect(0, 0, c.width, c.height), c.ellipseWidth, c.ellipseHeight));
        int above = 0;
        for (int y = 0; y < c.height; ++y) {
            int left = 0;
            while (left < c.width && !round.At(left, y))
                ++left;
            for (int x = 0; x < c.width; ++x) {
                EXPECT_EQ(round.At(x, y), round.At(c.width - 1 - x, y));
                EXPECT_EQ(round.At(x, y), round.At(x, c.height - 1 - y));
            }
            if (y > 0 && y <= c.height / 2) {
                EXPECT_LE(left, above);
            }
            above = left;
        }
        EXPECT_EQ(1U, round.At(c.width / 2, c.height / 2));
    }
    const Region square = Region::RoundRect(CRect(2, 3, 9, 9), 0, 5);
    EXPECT_EQ(Region(CRect(2, 3, 9, 9)), square);
    const Pixels circle = Painted(Region::RoundRect(CRect(0, 0, 20, 20), 20, 20));
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x) {
            const double distance = (x - 9.5) * (x - 9.5) + (y - 9.5) * (y - 9.5);
            if (std::abs(distance - 100) < 1) continue;
            EXPECT_EQ(distance < 100 ? 1U : 0U, circle.At(x, y)) << x << " " << y;
        }
}

TEST(Region, ExtremeCoordinatesAreCutNotWrapped) {
    const int low = std::numeric_limits<int>::min();
    const int high = std::numeric_limits<int>::max();
    Region everything(CRect(low, low, high, high));
    EXPECT_TRUE(everything.Contains(0, 0));
    EXPECT_TRUE(everything.Contains(100000000, -100000000));
    everything.Offset(high, low);
    everything.Offset(high, low);
    EXPECT_EQ(1, everything.Count());
    Region small(CRect(0, 0, 4, 4));
    small.Offset(high, high);
    EXPECT_EQ(4, small.Box().Width());
    small.Offset(low, low);
    EXPECT_EQ(4, small.Box().Height());
    EXPECT_TRUE(Region(CRect(5, 5, 5, 9)).IsEmpty());
    EXPECT_TRUE(Region(CRect(high, 0, low, 9)).IsEmpty());
}

TEST(Region, WhatMemoryDoesNotReachForIsRefusedAsDocumented) {
    const int high = std::numeric_limits<int>::max();
    const struct {
        int height, ellipseHeight;
        bool made;
    } cases[] = {{high, high, false}, {high, -high - 1, false}, {70000, 70000, false},
                 {high, 65534, true}, {65534, high, true},      {32767, 32767, true}};
    for (const auto& c : cases) {
        SetLastError(0);
        const HRGN region = CreateRoundRectRgn(0, 0, high, c.height, high, c.ellipseHeight);
        EXPECT_EQ(c.made, static_cast<bool>(region)) << c.height << " " << c.ellipseHeight;
        EXPECT_EQ(c.made ? 0U : ERROR_NOT_ENOUGH_MEMORY, GetLastError());
        DeleteObject(region);
    }
    EXPECT_TRUE(Region().IsIntact() && !Region::RoundRect(CRect(0, 0, 9, high), 9, high).IsIntact());
}

#if !defined(__SANITIZE_ADDRESS__)  // which has memory of its own
// A lattice of columns and rows has a rectangle for each crossing.
TEST(Region, ALatticeBeyondMemoryLeavesTheTargetAlone) {
    std::vector<RECT> columns, rows;
    for (int i = 0; i < 6000; ++i) {
        columns.push_back({2 * i, 0, 2 * i + 1, 12000});
        rows.push_back({0, 2 * i, 12000, 2 * i + 1});
    }
    const HRGN lattice = CreateRectRgn(1, 2, 3, 4);
    const HRGN bars[] = {CreateRectRgn(0, 0, 0, 0), CreateRectRgn(0, 0, 0, 0)};
    *platform::ShareRegion(bars[0]) = Region(columns);
    *platform::ShareRegion(bars[1]) = Region(rows);
    rlimit before{};
    getrlimit(RLIMIT_AS, &before);
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit tight{pages * 4096 + (rlim_t{64} << 20), before.rlim_max};
    setrlimit(RLIMIT_AS, &tight);
    const int kind = CombineRgn(lattice, bars[0], bars[1], RGN_XOR);
    const DWORD error = GetLastError();
    setrlimit(RLIMIT_AS, &before);
    EXPECT_EQ(ERROR_REGION, kind);
    EXPECT_EQ(ERROR_NOT_ENOUGH_MEMORY, error);
    RECT box;
    EXPECT_EQ(SIMPLEREGION, GetRgnBox(lattice, &box));
    EXPECT_EQ(CRect(1, 2, 3, 4), CRect(box));
    for (const HRGN region : {lattice, bars[0], bars[1]})
        DeleteObject(region);
}
#endif

}  // namespace
