// Fonts, formats, and arguments that texts cannot be drawn with.
#include "graphics/gdiplus_kit.h"
#include "graphics/text_kit.h"

namespace {

using namespace Gdiplus;
using kit::kInfinity;
using kit::kNan;

// Each is refused by whatever takes a text; outlines can lie less far away than text can be drawn.
TEST(TextArguments, BadOnesAreRefusedAndDrawNothing) {
    const Font font(u"DejaVu Sans", 12);
    const Font bad(u"DejaVu Sans", 0);
    const FontFamily family(u"DejaVu Sans");
    const SolidBrush brush(Color(0, 0, 0));
    const RectF box(0, 0, 50, 50);
    const struct {
        LPCWSTR text;
        INT length;
        const Font* font;
        const FontFamily* family;
        REAL size;
        RectF layout;
    } cases[] = {{nullptr, -1, &font, &family, 12, box},
                 {u"a", -2, &font, &family, 12, box},
                 {u"a", -1, nullptr, nullptr, 12, box},
                 {u"a", -1, &bad, &family, 0, box},
                 {u"a", -1, &bad, &family, kNan, box},
                 {u"a", -1, &font, &family, 12, RectF(kNan, 0, 50, 50)},
                 {u"a", -1, &font, &family, 12, RectF(0, 0, kInfinity, 50)}};
    Bitmap bitmap(50, 50);
    Graphics graphics(&bitmap);
    RectF measured;
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        EXPECT_EQ(graphics.DrawString(c.text, c.length, c.font, c.layout, nullptr, &brush), InvalidParameter);
        EXPECT_EQ(graphics.GetLastStatus(), InvalidParameter);
        measured = RectF(1, 2, 3, 4);
        EXPECT_EQ(graphics.MeasureString(c.text, c.length, c.font, c.layout, nullptr, &measured),
                  InvalidParameter);
        EXPECT_EQ(measured.Width, 0) << "nothing is measured of nothing";
        const TextExtent extent = GetTextExtent(c.text, c.length, c.font, c.layout, nullptr);
        EXPECT_EQ(extent.box.Width, 0);
        EXPECT_EQ(extent.ink.Width, 0);
        GraphicsPath path;
        EXPECT_EQ(path.AddString(c.text, c.length, c.family, 0, c.size, c.layout, nullptr), InvalidParameter);
        path.GetBounds(&measured);
        EXPECT_EQ(measured.Width, 0);
    }
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, box, nullptr, nullptr), InvalidParameter);
    EXPECT_EQ(graphics.MeasureString(u"a", -1, &font, box, nullptr, nullptr), InvalidParameter);
    GraphicsPath path;
    EXPECT_EQ(path.AddString(u"a", -1, &family, 0, 20, RectF(0, 1e8F, 0, 0), nullptr), InvalidParameter)
        << "as far as a rectangle's outline cannot lie either";
    const FontFamily none;
    EXPECT_EQ(path.AddString(u"a", -1, &none, 0, 20, box, nullptr), FontFamilyNotFound);
    for (const float far : {1e7F, -1e7F, 3e38F, -3e38F}) {
        EXPECT_EQ(graphics.DrawString(u"a", -1, &font, RectF(far, far, 50, 50), nullptr, &brush), Ok);
        EXPECT_EQ(graphics.DrawString(u"a", -1, &font, PointF(0, far), &brush), Ok);
    }
    EXPECT_EQ(graphics.DrawString(u"", -1, &font, box, nullptr, &brush), Ok);
    EXPECT_EQ(GetTextExtent(u"", -1, &font, RectF(), nullptr).box.Width, 0);
    EXPECT_TRUE(kit::InkOf(kit::PixelsOf(bitmap)).IsRectEmpty());
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, box, nullptr, &brush), Ok);
    EXPECT_FALSE(kit::InkOf(kit::PixelsOf(bitmap)).IsRectEmpty());
    // Too far for any pixel, but measured all the same.
    const TextExtent far = GetTextExtent(u"a", -1, &font, RectF(0, 1e8F, 50, 50), nullptr);
    EXPECT_EQ(far.ink.Width, 0);
    EXPECT_GT(far.box.Width, 0);
}

TEST(TextArguments, LengthsCountUnits) {
    const Font font(u"DejaVu Sans", 12);
    Bitmap bitmap(5, 5);
    const Graphics graphics(&bitmap);
    const auto width = [&](LPCWSTR text, INT length) {
        RectF box;
        EXPECT_EQ(graphics.MeasureString(text, length, &font, RectF(3, 4, 0, 0), nullptr, &box), Ok);
        EXPECT_EQ(box.X, 3);
        EXPECT_EQ(box.Y, 4);
        return box.Width;
    };
    EXPECT_EQ(width(u"abcdef", 3), width(u"abc", -1));
    EXPECT_EQ(width(u"ab\0cd", -1), width(u"ab", -1));
    EXPECT_EQ(width(u"ab\0cd", 5), width(u"abcd", -1));
    EXPECT_EQ(width(u"abc", 0), 0);
    EXPECT_LT(width(u"abc", 2), width(u"abc", 3));
}

TEST(TextFont, SizesUnitsAndCopies) {
    const Font points(u"DejaVu Sans", 12);
    const Font pixels(u"DejaVu Sans", 16, FontStyleRegular, UnitPixel);
    const Font world(u"DejaVu Sans", 16, FontStyleRegular, UnitWorld);
    const std::unique_ptr<Font> clone(points.Clone());
    EXPECT_NEAR(pixels.GetHeight(), 19, 1);
    for (const Font* const alike : {&pixels, &world, static_cast<const Font*>(clone.get())}) {
        EXPECT_EQ(alike->GetRevision(), points.GetRevision()) << "points are 4/3 pixels";
        EXPECT_EQ(alike->GetHeight(), points.GetHeight());
    }
    EXPECT_EQ(clone->GetSize(), 12);
    EXPECT_EQ(clone->GetUnit(), UnitPoint);
    const Font bold(u"DejaVu Sans", 12, FontStyleBold);
    EXPECT_NE(bold.GetRevision(), points.GetRevision());
    EXPECT_EQ(bold.GetStyle(), FontStyleBold);
    EXPECT_NE(Font(u"DejaVu Sans", 12.5F).GetRevision(), points.GetRevision());

    FontFamily family;
    EXPECT_FALSE(family.IsAvailable());
    EXPECT_EQ(Font(u"宋体", 9).GetFamily(&family), Ok);
    EXPECT_EQ(family.GetFamilyName(), u"宋体");
    EXPECT_TRUE(family.IsAvailable());
    EXPECT_EQ(points.GetFamily(nullptr), InvalidParameter);
    EXPECT_EQ(Font(LPCWSTR{}, 9).GetLastStatus(), Ok) << "some face always shows";
    EXPECT_EQ(Font(LPCWSTR{}, 9).GetFamily(&family), Ok);
    EXPECT_TRUE(family.IsAvailable());
}

TEST(TextFont, BadFontsSaySo) {
    const FontFamily none;
    const FontFamily family(u"DejaVu Sans");
    for (const float size : {0.0F, -1.0F, kNan, kInfinity, 1e9F}) {
        const Font font(u"DejaVu Sans", size);
        const std::unique_ptr<Font> clone(font.Clone());
        EXPECT_EQ(font.GetLastStatus(), InvalidParameter) << size;
        EXPECT_EQ(font.GetHeight(), 0);
        EXPECT_EQ(font.Data(), nullptr);
        EXPECT_EQ(clone->GetLastStatus(), InvalidParameter);
        FontFamily found;
        EXPECT_EQ(font.GetFamily(&found), InvalidParameter);
    }
    EXPECT_EQ(Font(&none, 9).GetLastStatus(), FontFamilyNotFound);
    EXPECT_EQ(Font(static_cast<const FontFamily*>(nullptr), 9).GetLastStatus(), InvalidParameter);
    EXPECT_EQ(Font(&family, 9, 0, static_cast<Unit>(1)).GetLastStatus(), InvalidParameter);
    EXPECT_EQ(Font(&family, 9).GetLastStatus(), Ok);
}

TEST(TextFormat, CopiesKeepEverythingAndBadValuesAreRefused) {
    StringFormat format(StringFormatFlagsNoWrap);
    EXPECT_EQ(format.GetTrimming(), StringTrimmingCharacter);
    EXPECT_EQ(format.SetAlignment(StringAlignmentFar), Ok);
    EXPECT_EQ(format.SetLineAlignment(StringAlignmentCenter), Ok);
    EXPECT_EQ(format.SetTrimming(StringTrimmingEllipsisWord), Ok);
    EXPECT_EQ(format.SetAlignment(static_cast<StringAlignment>(3)), InvalidParameter);
    EXPECT_EQ(format.SetLineAlignment(static_cast<StringAlignment>(3)), InvalidParameter);
    EXPECT_EQ(format.SetTrimming(static_cast<StringTrimming>(7)), InvalidParameter);
    const std::unique_ptr<StringFormat> clone(format.Clone());
    EXPECT_EQ(format.SetFormatFlags(0), Ok);
    EXPECT_EQ(clone->GetFormatFlags(), StringFormatFlagsNoWrap);
    EXPECT_EQ(clone->GetAlignment(), StringAlignmentFar);
    EXPECT_EQ(clone->GetLineAlignment(), StringAlignmentCenter);
    EXPECT_EQ(clone->GetTrimming(), StringTrimmingEllipsisWord);
    EXPECT_EQ(StringFormat(static_cast<const StringFormat*>(nullptr)).GetFormatFlags(), 0);
}

}  // namespace
