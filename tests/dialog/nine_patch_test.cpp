// Frames of nine images, and one alpha for all that a bitmap shows.
#include <array>
#include <map>

#include "items/draw_operations.h"
#include "items/nine_patch.h"
#include "support/test_dialog.h"

namespace {

using Gdiplus::RectF;

struct Drawn {
    RectF to, from;
    bool mirrored;  // beyond its source, which keeps a stretched edge clean
};

struct Recorder final : qkui::OperationSink {
    void Add(const qkui::ImageOperation& operation) override {
        drawn[operation.image] = {operation.destination, operation.source,
                                  operation.wrap == Gdiplus::WrapModeTileFlipXY};
        order.push_back(operation.image);
    }
    void Add(const qkui::TextOperation&) override {}
    std::map<Gdiplus::Image*, Drawn> drawn;
    std::vector<Gdiplus::Image*> order;
};

bool Same(const RectF& a, const RectF& b) {
    return a.X == b.X && a.Y == b.Y && a.Width == b.Width && a.Height == b.Height;
}

std::string Text(const RectF& r) {
    return std::to_string(r.X) + ", " + std::to_string(r.Y) + ", " + std::to_string(r.Width) + ", " +
           std::to_string(r.Height);
}

TEST(NinePatch, PlacesNineImages) {
    struct Case {
        const char* name;
        std::array<SIZE, 9> sizes;  // no width: no image
        RectF rect;
        std::map<int, std::pair<RectF, RectF>> wanted;
    };
    const SIZE four = {4, 4}, none = {0, 0};
    const RectF own(0, 0, 4, 4);
    const Case cases[] = {
        {"all of one size",
         {four, four, four, four, four, four, four, four, four},
         RectF(10, 20, 40, 30),
         {{0, {RectF(10, 20, 4, 4), own}},
          {2, {RectF(46, 20, 4, 4), own}},
          {6, {RectF(10, 46, 4, 4), own}},
          {8, {RectF(46, 46, 4, 4), own}},
          {1, {RectF(14, 20, 32, 4), own}},
          {3, {RectF(10, 24, 4, 22), own}},
          {7, {RectF(14, 46, 32, 4), own}},
          {5, {RectF(46, 24, 4, 22), own}},
          {4, {RectF(14, 24, 32, 22), own}}}},
        {"a wide right edge moves the centre",
         {four, four, four, four, SIZE{5, 7}, SIZE{6, 9}, four, four, four},
         RectF(10, 20, 40, 30),
         {{5, {RectF(44, 24, 6, 22), RectF(0, 0, 6, 9)}}, {4, {RectF(16, 24, 30, 22), RectF(0, 0, 5, 9)}}}},
        {"corners alone",
         {four, none, four, none, none, none, four, none, four},
         RectF(0.5F, 0.25F, 20, 20),
         {{0, {RectF(0.5F, 0.25F, 4, 4), own}}, {8, {RectF(16.5F, 16.25F, 4, 4), own}}}},
        {"a centre without its edges",
         {none, none, none, none, SIZE{3, 5}, none, none, none, none},
         RectF(10, 20, 40, 30),
         {{4, {RectF(10, 20, 40, 30), RectF(0, 0, 3, 5)}}}},
        {"smaller than its corners",
         {four, four, four, four, four, four, four, four, four},
         RectF(0, 0, 6, 5),
         {{1, {RectF(4, 0, -2, 4), own}}, {3, {RectF(0, 4, 4, -3), own}}, {4, {RectF(4, 4, -2, -3), own}}}},
        {"corners of all sizes",
         {SIZE{1, 2}, SIZE{9, 3}, SIZE{4, 5}, SIZE{6, 9}, four, SIZE{7, 9}, SIZE{8, 10}, SIZE{9, 11},
          SIZE{12, 13}},
         RectF(0, 0, 100, 100),
         {{1, {RectF(1, 0, 95, 3), RectF(0, 0, 9, 3)}},
          {3, {RectF(0, 2, 6, 88), RectF(0, 0, 6, 9)}},
          {7, {RectF(8, 89, 80, 11), RectF(0, 0, 9, 11)}},
          {5, {RectF(93, 5, 7, 82), RectF(0, 0, 7, 9)}},
          {4, {RectF(7, 3, 87, 86), RectF(0, 0, 4, 9)}}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::array<std::unique_ptr<Gdiplus::Bitmap>, 9> bitmaps;
        std::array<Gdiplus::Image*, 9> images = {};
        std::size_t count = 0;
        for (std::size_t i = 0; i < 9; ++i) {
            if (c.sizes[i].cx == 0) continue;
            bitmaps[i] = std::make_unique<Gdiplus::Bitmap>(c.sizes[i].cx, c.sizes[i].cy);
            images[i] = bitmaps[i].get();
            ++count;
        }
        Recorder recorder;
        qkui::RecordNinePatch(images.data(), c.rect, recorder);
        EXPECT_EQ(recorder.order.size(), count);
        for (const auto& [index, rects] : c.wanted) {
            SCOPED_TRACE(index);
            const Drawn one = recorder.drawn.at(images[static_cast<std::size_t>(index)]);
            EXPECT_TRUE(Same(one.to, rects.first)) << Text(one.to);
            EXPECT_TRUE(Same(one.from, rects.second)) << Text(one.from);
            EXPECT_EQ(one.mirrored, index % 2 == 1 || index == 4);
        }
        if (count == 9) {
            std::vector<Gdiplus::Image*> wanted;
            for (const std::size_t index : {0U, 2U, 1U, 6U, 3U, 8U, 7U, 5U, 4U})
                wanted.push_back(images[index]);
            EXPECT_EQ(recorder.order, wanted);
        }
    }
    Recorder nothing;
    qkui::RecordNinePatch(nullptr, RectF(0, 0, 10, 10), nothing);
    EXPECT_TRUE(nothing.order.empty());
}

TEST(NinePatch, BothFormsDrawTheSame) {
    CQKDialogBase dialog(kit::kDialogTemplate);
    std::array<std::unique_ptr<Gdiplus::Bitmap>, 9> owned;
    std::array<Gdiplus::Bitmap*, 9> bitmaps;
    std::array<Gdiplus::Image*, 9> images;
    for (std::size_t i = 0; i < 9; ++i) {
        // The centre takes its height from a right edge that is higher, and is not hollow.
        owned[i] = std::make_unique<Gdiplus::Bitmap>(4, i == 5 ? 9 : 4);
        Gdiplus::Graphics(owned[i].get()).Clear(Gdiplus::Color(0xFF000000 | (0x10U << i)));
        images[i] = bitmaps[i] = owned[i].get();
    }
    Gdiplus::Bitmap left(40, 30), right(40, 30);
    Gdiplus::Graphics onLeft(&left), onRight(&right);
    dialog.DrawStateImage(&onLeft, images.data(), RectF(2, 3, 30, 20));
    dialog.DrawStateImage(&onRight, bitmaps.data(), RectF(2, 3, 30, 20));
    dialog.DrawStateImage(&onRight, static_cast<Gdiplus::Bitmap**>(nullptr), RectF(0, 0, 9, 9));
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            Gdiplus::Color a, b;
            left.GetPixel(x, y, &a);
            right.GetPixel(x, y, &b);
            ASSERT_EQ(a.GetValue(), b.GetValue());
            const bool inside = x >= 2 && x < 32 && y >= 3 && y < 23;
            ASSERT_EQ(a.GetA(), inside ? 255 : 0) << x << ", " << y;
        }
}

TEST(NinePatch, OneAlphaForAllThatIsNotBlack) {
    CQKDialogBase dialog(kit::kDialogTemplate);
    for (const int alpha : {128, 384, -128}) {
        SCOPED_TRACE(alpha);
        Gdiplus::Bitmap bitmap(4, 1);
        const Gdiplus::ARGB before[] = {0xFFFFFFFF, 0x00000000, 0xFF000000, 0x40FF0000};
        const Gdiplus::ARGB after[] = {0x80FFFFFF, 0x00000000, 0xFF000000, 0x80FF0000};
        for (int x = 0; x < 4; ++x)
            bitmap.SetPixel(x, 0, Gdiplus::Color(before[x]));
        dialog.SetALPH255(&bitmap, alpha);
        for (int x = 0; x < 4; ++x) {
            Gdiplus::Color colour;
            bitmap.GetPixel(x, 0, &colour);
            EXPECT_EQ(colour.GetValue(), after[x]) << x;
        }
    }
    dialog.SetALPH255(nullptr, 128);
}

}  // namespace
