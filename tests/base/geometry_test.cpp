// Points and rectangles: saturating arithmetic, and the set operations held against pixels.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include <platform/geometry.h>

namespace {

constexpr int kMost = INT_MAX;
constexpr int kLeast = INT_MIN;

TEST(Geometry, ArithmeticStopsAtTheEnds) {
    const CRect all(kLeast, kLeast, kMost, kMost);
    EXPECT_EQ(all.Width(), kMost);
    EXPECT_EQ(CRect(kMost, 0, kLeast, 0).Width(), kLeast);
    EXPECT_TRUE(all.CenterPoint() == CPoint(0, 0));
    EXPECT_TRUE(CRect(kMost, kMost, kMost, kMost).CenterPoint() == CPoint(kMost, kMost));
    EXPECT_TRUE(CRect(CPoint(kMost - 1, -5), CSize(10, 3)) == CRect(kMost - 1, -5, kMost, -2));

    CRect moved(1, 2, kMost - 1, kMost);
    moved.OffsetRect(5, kLeast);
    EXPECT_TRUE(moved == CRect(6, kLeast + 2, kMost, -1));
    CRect grown(0, kLeast, 0, kMost);
    grown.InflateRect(kLeast, 1);
    EXPECT_TRUE(grown == CRect(kMost, kLeast, kLeast, kMost));
    CRect shrunk(0, 0, 10, 10);
    shrunk.DeflateRect(kLeast, 2);
    EXPECT_TRUE(shrunk == CRect(kLeast, 2, kMost, 8));
    CPoint point(kMost, kLeast);
    point.Offset(1, -1);
    EXPECT_TRUE(point == CPoint(kMost, kLeast));
    CRect reversed(5, 1, 2, 3);
    reversed.NormalizeRect();
    EXPECT_TRUE(reversed == CRect(2, 1, 5, 3));
}

// Every pair of small rectangles, empty and reversed ones too: the common part holds exactly the pixels of
// both, the joint one is the smallest that holds the pixels of either.
TEST(Geometry, IntersectionAndUnionAgreeWithTheirPixels) {
    std::mt19937 random(7);
    const auto coordinate = [&] { return static_cast<int>(random() % 7); };
    for (int round = 0; round < 3000; ++round) {
        const CRect a(coordinate(), coordinate(), coordinate(), coordinate());
        const CRect b(coordinate(), coordinate(), coordinate(), coordinate());
        CRect common = a;  // also an operand of its own
        const bool meets = common.IntersectRect(common, b);
        CRect joint = b;
        const bool any = joint.UnionRect(a, joint);
        CRect bounds(99, 99, -99, -99);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 7; ++x) {
                const CPoint pixel(x, y);
                ASSERT_EQ(common.PtInRect(pixel), a.PtInRect(pixel) && b.PtInRect(pixel));
                if (a.PtInRect(pixel) || b.PtInRect(pixel))
                    bounds = CRect(std::min<int>(bounds.left, x), std::min<int>(bounds.top, y),
                                   std::max<int>(bounds.right, x + 1), std::max<int>(bounds.bottom, y + 1));
            }
        ASSERT_EQ(meets, !common.IsRectNull());
        ASSERT_EQ(any, bounds.right > bounds.left);
        ASSERT_TRUE(joint == (any ? bounds : CRect()));
    }
}

}  // namespace
