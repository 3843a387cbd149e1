// Where a text says that it lies, against where it is drawn.
#include "graphics/gdiplus_kit.h"
#include "graphics/text_kit.h"

namespace {

using namespace Gdiplus;

struct Place {
    RectF layout;
    const char* what;
};

const Place kPlaces[] = {
    {{20, 20, 60, 34}, "some lines"},       {{20.3F, 19.7F, 60.5F, 33.4F}, "between pixels"},
    {{40, 30, 0, 0}, "around a point"},     {{20, 30, 60, 0}, "no height"},
    {{40, 20, 0, 20}, "no width"},          {{30, 30, 3, 40}, "narrower than a letter"},
    {{20, 30, 60, 5}, "lower than a line"}, {{30.5F, 30.5F, 0.3F, 0.3F}, "less than a pixel"},
    {{-30, -9, 60, 34}, "half outside"},
};

// Every way to lay a text into every kind of rectangle.
template <class Check>
void ForEachFormat(const Check& check) {
    for (const INT flags : {0, int{StringFormatFlagsNoWrap}, int{StringFormatFlagsLineLimit},
                            StringFormatFlagsNoClip | StringFormatFlagsDirectionRightToLeft,
                            StringFormatFlagsNoClip | StringFormatFlagsNoWrap})
        for (const auto trimming : {StringTrimmingNone, StringTrimmingCharacter, StringTrimmingEllipsisWord})
            for (int places = 0; places < 9; ++places) {
                StringFormat format(flags);
                format.SetTrimming(trimming);
                format.SetAlignment(static_cast<StringAlignment>(places % 3));
                format.SetLineAlignment(static_cast<StringAlignment>(places / 3));
                SCOPED_TRACE(testing::Message() << std::hex << flags << " " << trimming << " " << places);
                check(format);
            }
}

TEST(TextExtent, HoldsEveryPixelThatIsDrawn) {
    const LPCWSTR text = u"jÅ字 fine words\nשלום";
    const Font fonts[] = {{u"宋体", 12, FontStyleUnderline, UnitPixel},
                          {u"DejaVu Serif", 13.5F, FontStyleBoldItalic, UnitPixel}};
    const SolidBrush brush(Color(0xFF, 0, 0, 0));
    for (const Font& font : fonts)
        for (const Place& place : kPlaces) {
            SCOPED_TRACE(place.what);
            ForEachFormat([&](const StringFormat& format) {
                Bitmap bitmap(200, 120);
                Graphics graphics(&bitmap);
                RectF box;
                ASSERT_EQ(graphics.DrawString(text, -1, &font, place.layout, &format, &brush), Ok);
                ASSERT_EQ(graphics.MeasureString(text, -1, &font, place.layout, &format, &box), Ok);
                const TextExtent extent = GetTextExtent(text, -1, &font, place.layout, &format);
                EXPECT_TRUE(extent.box.X == box.X && extent.box.Y == box.Y && extent.box.Width == box.Width &&
                            extent.box.Height == box.Height);
                const CRect ink(extent.ink.X, extent.ink.Y, extent.ink.GetRight(), extent.ink.GetBottom());
                const CRect painted = kit::InkOf(kit::PixelsOf(bitmap));
                CRect both;
                both.UnionRect(ink, painted);
                EXPECT_EQ(both, ink) << painted << " in " << ink;
                // Nor does it promise much more, where nothing is cut off.
                both.UnionRect(ink, CRect(0, 0, 200, 120));
                const bool cut = (format.GetFormatFlags() & StringFormatFlagsNoClip) == 0;
                if (cut || both != CRect(0, 0, 200, 120) || painted.IsRectEmpty()) return;
                EXPECT_LE(ink.Width(), painted.Width() + 8);
                EXPECT_LE(ink.Height(), painted.Height() + 8);
            });
        }
}

}  // namespace
