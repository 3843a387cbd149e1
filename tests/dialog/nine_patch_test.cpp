// Frames of nine images, and one alpha for all that a bitmap shows.
#include <array>

#include "items/draw_operations.h"
#include "items/nine_patch.h"
#include "support/test_dialog.h"

namespace {

using Gdiplus::RectF;
using kit::Line;

// Nine images in rows; those of no size are left out.
struct Nine {
    explicit Nine(const std::array<SIZE, 9>& sizes) {
        for (std::size_t i = 0; i < 9; ++i) {
            if (sizes[i].cx == 0) continue;
            owned[i] = std::make_unique<Gdiplus::Bitmap>(sizes[i].cx, sizes[i].cy);
            images[i] = bitmaps[i] = owned[i].get();
            Gdiplus::Graphics(bitmaps[i]).Clear(Gdiplus::Color(0xFF000000 | (0x10U << i)));
        }
    }
    std::array<std::unique_ptr<Gdiplus::Bitmap>, 9> owned;
    std::array<Gdiplus::Bitmap*, 9> bitmaps = {};
    std::array<Gdiplus::Image*, 9> images = {};
};

// Which image is drawn where, and "of" what size of it; ~: mirrored beyond its source, which keeps a
// stretched edge clean.
struct Recorder final : qkui::OperationSink {
    explicit Recorder(const Nine& of) : nine(of) {}
    void Add(const qkui::ImageOperation& operation) override {
        const auto index = std::find(nine.images.begin(), nine.images.end(), operation.image);
        const RectF &to = operation.destination, &from = operation.source;
        if (!drawn.empty()) drawn += "; ";
        drawn += Line(index - nine.images.begin());
        drawn += operation.wrap == Gdiplus::WrapModeTileFlipXY ? "~ " : ": ";
        drawn += Line(to.X, to.Y, to.Width, to.Height, "of", from.Width, from.Height);
        EXPECT_EQ(from.X + from.Y, 0);
    }
    void Add(const qkui::TextOperation&) override {}
    const Nine& nine;
    std::string drawn;
};

TEST(NinePatch, PlacesNineImages) {
    const SIZE s = {4, 4}, no = {0, 0};
    const struct {
        const char* name;
        std::array<SIZE, 9> sizes;
        RectF rect;
        const char* drawn;
    } cases[] = {
        {"all of one size",
         {s, s, s, s, s, s, s, s, s},
         RectF(10, 20, 40, 30),
         "0: 10 20 4 4 of 4 4; 2: 46 20 4 4 of 4 4; 1~ 14 20 32 4 of 4 4; 6: 10 46 4 4 of 4 4; "
         "3~ 10 24 4 22 of 4 4; 8: 46 46 4 4 of 4 4; 7~ 14 46 32 4 of 4 4; 5~ 46 24 4 22 of 4 4; "
         "4~ 14 24 32 22 of 4 4"},
        {"a wide right edge moves the centre",
         {s, s, s, s, SIZE{5, 7}, SIZE{6, 9}, s, s, s},
         RectF(10, 20, 40, 30),
         "0: 10 20 4 4 of 4 4; 2: 46 20 4 4 of 4 4; 1~ 14 20 32 4 of 4 4; 6: 10 46 4 4 of 4 4; "
         "3~ 10 24 4 22 of 4 4; 8: 46 46 4 4 of 4 4; 7~ 14 46 32 4 of 4 4; 5~ 44 24 6 22 of 6 9; "
         "4~ 16 24 30 22 of 5 9"},
        {"corners alone",
         {s, no, s, no, no, no, s, no, s},
         RectF(0.5F, 0.25F, 20, 20),
         "0: 0.5 0.25 4 4 of 4 4; 2: 16.5 0.25 4 4 of 4 4; 6: 0.5 16.25 4 4 of 4 4; "
         "8: 16.5 16.25 4 4 of 4 4"},
        {"a centre without its edges",
         {no, no, no, no, SIZE{3, 5}, no, no, no, no},
         RectF(10, 20, 40, 30),
         "4~ 10 20 40 30 of 3 5"},
        {"smaller than its corners",
         {s, s, s, s, s, s, s, s, s},
         RectF(0, 0, 6, 5),
         "0: 0 0 4 4 of 4 4; 2: 2 0 4 4 of 4 4; 1~ 4 0 -2 4 of 4 4; 6: 0 1 4 4 of 4 4; "
         "3~ 0 4 4 -3 of 4 4; 8: 2 1 4 4 of 4 4; 7~ 4 1 -2 4 of 4 4; 5~ 2 4 4 -3 of 4 4; "
         "4~ 4 4 -2 -3 of 4 4"},
        {"corners of all sizes",
         {SIZE{1, 2}, {9, 3}, {4, 5}, {6, 9}, s, {7, 9}, {8, 10}, {9, 11}, {12, 13}},
         RectF(0, 0, 100, 100),
         "0: 0 0 1 2 of 1 2; 2: 96 0 4 5 of 4 5; 1~ 1 0 95 3 of 9 3; 6: 0 90 8 10 of 8 10; "
         "3~ 0 2 6 88 of 6 9; 8: 88 87 12 13 of 12 13; 7~ 8 89 80 11 of 9 11; 5~ 93 5 7 82 of 7 9; "
         "4~ 7 3 87 86 of 4 9"},
    };
    for (const auto& c : cases) {
        Nine nine(c.sizes);
        Recorder recorder(nine);
        qkui::RecordNinePatch(nine.images.data(), c.rect, recorder);
        EXPECT_EQ(recorder.drawn, c.drawn) << c.name;
    }
    const Nine none({});
    Recorder nothing(none);
    qkui::RecordNinePatch(nullptr, RectF(0, 0, 10, 10), nothing);
    EXPECT_EQ(nothing.drawn, "");
}

TEST(NinePatch, BothFormsDrawTheSame) {
    CQKDialogBase dialog(kit::kDialogTemplate);
    // The centre takes its height from a right edge that is higher, and is not hollow.
    const SIZE s = {4, 4};
    Nine nine({s, s, s, s, s, SIZE{4, 9}, s, s, s});
    Gdiplus::Bitmap left(40, 30), right(40, 30);
    Gdiplus::Graphics onLeft(&left), onRight(&right);
    dialog.DrawStateImage(&onLeft, nine.images.data(), RectF(2, 3, 30, 20));
    dialog.DrawStateImage(&onRight, nine.bitmaps.data(), RectF(2, 3, 30, 20));
    dialog.DrawStateImage(&onRight, static_cast<Gdiplus::Bitmap**>(nullptr), RectF(0, 0, 9, 9));
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            Gdiplus::Color a, b;
            left.GetPixel(x, y, &a);
            right.GetPixel(x, y, &b);
            ASSERT_EQ(a.GetValue(), b.GetValue());
            ASSERT_EQ(a.GetA(), CRect(2, 3, 32, 23).PtInRect(CPoint(x, y)) ? 255 : 0) << x << ", " << y;
        }
}

TEST(NinePatch, OneAlphaForAllThatIsNotBlack) {
    CQKDialogBase dialog(kit::kDialogTemplate);
    const Gdiplus::ARGB before[] = {0xFFFFFFFF, 0x00000000, 0xFF000000, 0x40FF0000};
    const Gdiplus::ARGB after[] = {0x80FFFFFF, 0x00000000, 0xFF000000, 0x80FF0000};
    for (const int alpha : {128, 384, -128}) {
        Gdiplus::Bitmap bitmap(4, 1);
        for (int x = 0; x < 4; ++x)
            bitmap.SetPixel(x, 0, Gdiplus::Color(before[x]));
        dialog.SetALPH255(&bitmap, alpha);
        Gdiplus::Color colour;
        for (int x = 0; x < 4; ++x) {
            bitmap.GetPixel(x, 0, &colour);
            EXPECT_EQ(colour.GetValue(), after[x]) << alpha << ", " << x;
        }
    }
    dialog.SetALPH255(nullptr, 128);
}

}  // namespace
