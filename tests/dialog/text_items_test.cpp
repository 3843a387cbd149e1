// Labels, captions and glowing texts: what they keep, where their ink lies, what is rendered again.
#include <platform/gdi.h>

#include "support/test_dialog.h"

namespace {

using Gdiplus::Color;
using Gdiplus::RectF;
using kit::Line;
using kit::TestDialog;

class TextItems : public kit::HeadlessTest {};

// Bitmap and graphics to draw on, transparent at first.
struct Canvas {
    Canvas(int width, int height) : bitmap(width, height), graphics(&bitmap) {}
    Headless::Picture Show() {
        Gdiplus::BitmapData data = {};
        bitmap.LockBits(nullptr, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppARGB, &data);
        const auto* first = static_cast<const std::uint32_t*>(data.Scan0);
        const auto width = static_cast<int>(data.Width), height = static_cast<int>(data.Height);
        const Headless::Picture picture = {width, height, {first, first + width * height}};
        bitmap.UnlockBits(&data);
        return picture;
    }
    CRect Ink() {
        const Headless::Picture picture = Show();
        return kit::InkOf(picture, CRect(0, 0, picture.width, picture.height),
                          [](std::uint32_t pixel) { return pixel >> 24 != 0; });
    }
    Gdiplus::Bitmap bitmap;
    Gdiplus::Graphics graphics;
};

TEST_F(TextItems, KeepTextFontColourAndFormat) {
    QKStaticText label;
    QKTextButton button;
    QKCheckBox box;
    QKRadio radio;
    const auto format = [](QKItemText& item) {
        const Gdiplus::StringFormat& kept = item.GetFormat();
        return Line(item.GetFont()->GetSize(), item.GetFont()->GetUnit(), kept.GetAlignment(),
                    kept.GetLineAlignment());
    };
    const auto text = [](const QKItemText& item) {
        return item.GetText() ? Line("'" + ToUtf8(item.GetText()) + "'", item.GetTextLen())
                              : Line("none", item.GetTextLen());
    };
    const struct {
        QKItemText* item;
        const char *initially, *changed;  // size, points (3) or pixels (2), alignments
    } cases[] = {{&label, "9 3 0 0", "30 3 2 0"},
                 {&button, "12 2 1 1", "30 3 2 1"},
                 {&box, "12 2 0 0", "30 3 2 0"},
                 {&radio, "12 2 0 0", "30 3 2 0"}};
    for (const auto& [kept, initially, changed] : cases) {
        SCOPED_TRACE(initially);
        QKItemText& item = *kept;
        EXPECT_EQ(format(item), initially);
        EXPECT_EQ(text(item), "none -1");
        CString given(u"草莓 berry");
        item.SetText(given);
        given = u"changed";
        EXPECT_EQ(text(item), "'草莓 berry' 8");
        item.SetText(item.GetText() + 3);  // a part of its own
        EXPECT_EQ(text(item), "'berry' 5");
        item.SetText(u"");
        EXPECT_EQ(text(item), "'' 0");
        item.ReleaseBuf();
        EXPECT_EQ(text(item), "none -1");
        EXPECT_EQ(item.GetTextColor().GetValue(), 0xFEFFFFFFU);
        for (const auto& [set, colour] :
             {std::pair(0xFF102030U, 0xFE102030U), {0x80102030, 0x80102030}, {0x00102030, 0x00102030}}) {
            item.SetTextColor(Color(set));
            EXPECT_EQ(item.GetTextColor().GetValue(), colour);
        }
        {
            const Gdiplus::Font font(u"DejaVu Sans", 30);
            item.SetFont(font);
        }
        item.SetTextFormat(Gdiplus::StringAlignmentFar);
        EXPECT_EQ(format(item), changed);
    }
}

// Nine points and twelve pixels are the same size, and the Chinese face is there: ideographs fill their box.
TEST_F(TextItems, TheDefaultFontsShowIdeographs) {
    QKStaticText label;
    QKTextButton button;
    const auto ink = [](const QKItemText& item) {
        Canvas canvas(40, 40);
        const Gdiplus::SolidBrush brush(item.GetTextColor());
        canvas.graphics.DrawString(u"国国", 2, item.GetFont(), Gdiplus::PointF(5, 5), &brush);
        return canvas.Ink();
    };
    EXPECT_EQ(ink(label), ink(button));
    EXPECT_NEAR(ink(label).Width(), 23, 3);
}

TEST_F(TextItems, InkLiesWhereTheItemSays) {
    QKStaticText label;
    label.SetText(u"Hello");
    label.SetTextColor(Color(0xFFFF0000));
    label.SetRect(20, 10, 100, 40);
    QKTextButton button;
    button.SetImage(kit::Strip("caption", {0xFF202020, 0xFF404040, 0xFF606060}, 80, 40, true),
                    QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
    button.SetText(u"O");
    button.SetRect(20, 80, 1, 1);
    TestDialog dialog({&label, &button});
    dialog.Open();
    const auto ink = [&](const CRect& in, std::uint32_t ground) {
        dialog.Refresh();
        return kit::InkOf(Headless::Capture(dialog.m_hWnd), in,
                          [=](std::uint32_t pixel) { return pixel != ground; });
    };
    const CRect upper(0, 0, 200, 79), lower(20, 80, 100, 120);
    const struct {
        Gdiplus::StringAlignment alignment;
        int least, most;  // of the ink's left edge
    } cases[] = {{Gdiplus::StringAlignmentNear, 20, 23},
                 {Gdiplus::StringAlignmentCenter, 50, 60},
                 {Gdiplus::StringAlignmentFar, 84, 96}};
    for (const auto& [alignment, least, most] : cases) {
        label.SetTextFormat(alignment);
        const CRect found = ink(upper, 0xFF000000);
        EXPECT_TRUE(found.left >= least && found.left <= most) << alignment << ": " << found.left;
        EXPECT_TRUE(found.right <= 120 && found.top >= 10) << Line(found);
    }
    label.SetShow(0);
    EXPECT_TRUE(ink(upper, 0xFF000000).IsRectEmpty());

    const CPoint middle = ink(lower, 0xFF202020).CenterPoint();
    EXPECT_NEAR(middle.x, 60, 1);
    EXPECT_NEAR(middle.y, 100, 2);
    button.SetButtonHeight(20);  // the caption goes with the drawn height
    EXPECT_NEAR(ink(CRect(20, 80, 100, 100), 0xFF202020).CenterPoint().y, 90, 2);
    button.DestroyImag();
    EXPECT_TRUE(ink(lower, 0xFF000000).IsRectEmpty());
}

TEST_F(TextItems, AGlowIsWiderThanItsTextAndOfWholePixels) {
    TestDialog dialog;
    const auto draw = [&](float size, Color textColour, Color glow, RectF rect, float factor) {
        Canvas canvas(160, 60);
        const Gdiplus::Font font(u"DejaVu Sans", size, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
        dialog.DrawShadowText(&canvas.graphics, CString(u"Glow"), font, Gdiplus::StringFormat(), textColour,
                              glow, rect, Gdiplus::PointF(1, 1), factor);
        return canvas.Show().argb;
    };
    const auto count = [](const std::vector<std::uint32_t>& pixels) {
        return std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t p) { return p >> 24; });
    };
    const RectF rect(10, 10, 120, 40);
    const Color none(0), white(0xFEFFFFFF), dark(0xB4323232);
    const auto plain = draw(20, white, none, rect, 3);
    const auto glow = draw(20, none, dark, rect, 3);
    EXPECT_GT(count(plain), 50);
    EXPECT_GT(count(draw(20, white, dark, rect, 3)), count(plain) * 3 / 2);
    EXPECT_GT(count(draw(20, none, dark, rect, 4)), count(draw(20, none, dark, rect, 1)));
    // The outline takes the font's size as whole pixels, and the rectangle as whole pixels.
    EXPECT_EQ(draw(20.9F, none, dark, rect, 3), glow);
    EXPECT_EQ(draw(20, none, dark, RectF(10, 10, 120.7F, 40.9F), 3), glow);
    // A factor without a bitmap leaves the text alone.
    for (const float factor : {0.0F, -2.0F, 1e9F, 1e-9F, std::numeric_limits<float>::quiet_NaN()})
        EXPECT_EQ(draw(20, white, dark, rect, factor), plain) << factor;
}

TEST_F(TextItems, AnEntrysCaptionIsRenderedOncePerText) {
    TestDialog dialog;
    QKListItem entry;
    const Gdiplus::Font font(u"DejaVu Sans", 12), other(u"DejaVu Sans", 16);
    const RectF rect(5, 5, 60, 20), wide(5, 5, 90, 30);
    const struct {
        const char* name;
        CString text;
        const Gdiplus::Font* font;
        Gdiplus::ARGB colour;
        RectF rect;
        bool rendersAgain;
        bool empties = false;
    } steps[] = {
        {"first", u"one", &font, 0xFEFFFFFF, rect, true},
        {"same", u"one", &font, 0xFEFFFFFF, rect, false},
        {"another font and colour", u"one", &other, 0xFEFF0000, rect, false},
        {"another size", u"one", &font, 0xFEFFFFFF, wide, false},
        {"another text", u"One", &font, 0xFEFFFFFF, wide, true},
        {"emptied", u"One", &font, 0xFEFFFFFF, rect, true, true},
        {"259 units", CString(u'w', 259), &font, 0xFEFFFFFF, rect, true},
        {"259 units again", CString(u'w', 259), &font, 0xFEFFFFFF, rect, false},
        {"more than fit", CString(u'm', 400), &font, 0xFEFFFFFF, rect, true},
        {"no room", u"two", &font, 0xFEFFFFFF, RectF(5, 5, 0, 20), false},
        {"room at last", u"two", &font, 0xFEFFFFFF, rect, true},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        if (step.empties) entry.szTextCath[0] = 0;
        Canvas canvas(120, 50);
        const auto revision = [&entry] { return entry.pTextImage ? entry.pTextImage->GetRevision() : 0; };
        const std::uint64_t before = revision();
        const std::uint64_t layouts = Gdiplus::GetDrawingCounters().textLayouts;
        dialog.DrawShadowText(&canvas.graphics, &entry, step.text, *step.font, Gdiplus::StringFormat(),
                              Color(step.colour), Color(0xB4323232), step.rect, Gdiplus::PointF(1, 1), 3);
        if (step.rect.Width == 0) {
            EXPECT_EQ(entry.pTextImage, nullptr);
            continue;
        }
        EXPECT_EQ(revision() != before, step.rendersAgain);
        EXPECT_TRUE(step.rendersAgain || Gdiplus::GetDrawingCounters().textLayouts == layouts);
        const CRect ink = canvas.Ink();
        EXPECT_GT(ink.Width(), 15);
        EXPECT_GE(ink.left, 5);
        EXPECT_LE(ink.right, static_cast<int>(step.rect.GetRight()));
        EXPECT_TRUE(!step.rendersAgain || entry.pTextImage->GetWidth() == static_cast<UINT>(step.rect.Width));
    }
    delete entry.pTextImage;
}

}  // namespace
