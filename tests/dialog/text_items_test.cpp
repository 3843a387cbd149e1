// Labels, captions and glowing texts: what they keep, where their ink lies, what is rendered again.
#include <platform/gdi.h>

#include "support/test_dialog.h"

namespace {

using Gdiplus::Color;
using Gdiplus::RectF;
using kit::TestDialog;

class TextItems : public kit::HeadlessTest {};

// Bitmap and graphics to draw on, transparent at first.
struct Canvas {
    Canvas(int width, int height) : bitmap(width, height), graphics(&bitmap) {}
    std::vector<std::uint32_t> Pixels() {
        Gdiplus::BitmapData data = {};
        bitmap.LockBits(nullptr, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppARGB, &data);
        const auto* first = static_cast<const std::uint32_t*>(data.Scan0);
        std::vector<std::uint32_t> pixels(first, first + data.Width * data.Height);
        bitmap.UnlockBits(&data);
        return pixels;
    }
    // The box of all pixels that are not clear.
    CRect Ink() {
        CRect ink;
        const std::vector<std::uint32_t> pixels = Pixels();
        const int width = static_cast<int>(bitmap.GetWidth());
        for (int i = 0; i < static_cast<int>(pixels.size()); ++i)
            if (pixels[static_cast<std::size_t>(i)] >> 24)
                ink.UnionRect(CRect(ink), CRect(CPoint(i % width, i / width), CSize(1, 1)));
        return ink;
    }
    Gdiplus::Bitmap bitmap;
    Gdiplus::Graphics graphics;
};

TEST_F(TextItems, KeepTextFontColourAndFormat) {
    QKStaticText label;
    QKTextButton button;
    QKCheckBox box;
    QKRadio radio;
    struct Case {
        const char* name;
        QKItemText* item;
        float size;
        Gdiplus::Unit unit;
        Gdiplus::StringAlignment alignment, lineAlignment;
    };
    const Case cases[] = {
        {"label", &label, 9, Gdiplus::UnitPoint, Gdiplus::StringAlignmentNear, Gdiplus::StringAlignmentNear},
        {"button", &button, 12, Gdiplus::UnitPixel, Gdiplus::StringAlignmentCenter,
         Gdiplus::StringAlignmentCenter},
        {"box", &box, 12, Gdiplus::UnitPixel, Gdiplus::StringAlignmentNear, Gdiplus::StringAlignmentNear},
        {"radio", &radio, 12, Gdiplus::UnitPixel, Gdiplus::StringAlignmentNear, Gdiplus::StringAlignmentNear},
    };
    const std::pair<Gdiplus::ARGB, Gdiplus::ARGB> colours[] = {
        {0xFF102030, 0xFE102030}, {0x80102030, 0x80102030}, {0x00102030, 0x00102030}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QKItemText& item = *c.item;
        EXPECT_EQ(item.GetTextColor().GetValue(), 0xFEFFFFFFU);
        EXPECT_EQ(item.GetFont()->GetSize(), c.size);
        EXPECT_EQ(item.GetFont()->GetUnit(), c.unit);
        EXPECT_EQ(item.GetFormat().GetAlignment(), c.alignment);
        EXPECT_EQ(item.GetFormat().GetLineAlignment(), c.lineAlignment);
        EXPECT_EQ(item.GetText(), nullptr);
        EXPECT_EQ(item.GetTextLen(), -1);
        CString text(u"草莓 berry");
        item.SetText(text);
        text = u"changed";
        EXPECT_EQ(CString(item.GetText()), u"草莓 berry");
        EXPECT_EQ(item.GetTextLen(), 8);
        item.SetText(item.GetText() + 3);  // a part of its own
        EXPECT_EQ(CString(item.GetText()), u"berry");
        item.SetText(u"");
        EXPECT_EQ(item.GetTextLen(), 0);
        item.ReleaseBuf();
        EXPECT_EQ(item.GetTextLen(), -1);
        for (const auto& [set, kept] : colours) {
            item.SetTextColor(Color(set));
            EXPECT_EQ(item.GetTextColor().GetValue(), kept);
        }
        {
            const Gdiplus::Font font(u"DejaVu Sans", 30);
            item.SetFont(font);
        }
        EXPECT_EQ(item.GetFont()->GetSize(), 30);
        item.SetTextFormat(Gdiplus::StringAlignmentFar);
        EXPECT_EQ(item.GetFormat().GetAlignment(), Gdiplus::StringAlignmentFar);
        EXPECT_EQ(item.GetFormat().GetLineAlignment(), c.lineAlignment);
    }
}

// Nine points and twelve pixels are the same size, and the Chinese face is there: ideographs fill their box.
TEST_F(TextItems, TheDefaultFontsShowIdeographs) {
    QKStaticText label;
    QKTextButton button;
    label.SetText(u"国");
    const auto ink = [](const QKItemText& item) {
        Canvas canvas(40, 40);
        const Gdiplus::SolidBrush brush(item.GetTextColor());
        canvas.graphics.DrawString(u"国国", 2, item.GetFont(), Gdiplus::PointF(5, 5), &brush);
        return canvas.Ink();
    };
    EXPECT_EQ(ink(label), ink(button));
    EXPECT_GE(ink(label).Width(), 20);
    EXPECT_LE(ink(label).Width(), 26);
}

TEST_F(TextItems, InkLiesWhereTheItemSays) {
    TestDialog dialog;
    dialog.SetBackColor(Color(0xFF000000), 1);
    QKStaticText label;
    label.SetText(u"Hello");
    label.SetTextColor(Color(0xFFFF0000));
    label.SetRect(20, 10, 100, 40);
    QKTextButton button;
    button.SetImage(kit::Strip("caption", {0xFF202020, 0xFF404040, 0xFF606060}, 80, 40, true),
                    QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
    button.SetText(u"O");
    button.SetRect(20, 80, 1, 1);
    dialog.AddQKItem(&label);
    dialog.AddQKItem(&button);
    dialog.Open();
    const auto ink = [&](const CRect& in, std::uint32_t ground) {
        CRect box;
        const Headless::Picture picture = Headless::Capture(dialog.m_hWnd);
        for (int y = in.top; y < in.bottom; ++y)
            for (int x = in.left; x < in.right; ++x)
                if (picture.At(x, y) != ground) box.UnionRect(CRect(box), CRect(CPoint(x, y), CSize(1, 1)));
        return box;
    };
    const CRect upper(0, 0, 200, 79), lower(20, 80, 100, 120);
    struct Case {
        Gdiplus::StringAlignment alignment;
        int least, most;  // of the ink's left edge
    };
    for (const auto& [alignment, least, most] :
         {Case{Gdiplus::StringAlignmentNear, 20, 23}, Case{Gdiplus::StringAlignmentCenter, 50, 60},
          Case{Gdiplus::StringAlignmentFar, 84, 96}}) {
        SCOPED_TRACE(alignment);
        label.SetTextFormat(alignment);
        dialog.Refresh();
        const CRect found = ink(upper, 0xFF000000);
        EXPECT_GE(found.left, least);
        EXPECT_LE(found.left, most);
        EXPECT_LE(found.right, 120);
        EXPECT_GE(found.top, 10);
    }
    label.GetFormat().SetLineAlignment(Gdiplus::StringAlignmentFar);
    label.SetShow(0);
    dialog.Refresh();
    EXPECT_TRUE(ink(upper, 0xFF000000).IsRectEmpty());

    const CPoint middle = ink(lower, 0xFF202020).CenterPoint();
    EXPECT_NEAR(middle.x, 60, 1);
    EXPECT_NEAR(middle.y, 100, 2);
    button.SetButtonHeight(20);  // the caption goes with the drawn height
    dialog.Refresh();
    EXPECT_NEAR(ink(CRect(20, 80, 100, 100), 0xFF202020).CenterPoint().y, 90, 2);
    button.DestroyImag();
    dialog.Refresh();
    EXPECT_TRUE(ink(lower, 0xFF000000).IsRectEmpty());
}

TEST_F(TextItems, AGlowIsWiderThanItsTextAndOfWholePixels) {
    TestDialog dialog;
    const Gdiplus::StringFormat format;
    const CString text(u"Glow");
    const auto draw = [&](float size, Color textColour, Color glow, RectF rect, float factor) {
        Canvas canvas(160, 60);
        const Gdiplus::Font font(u"DejaVu Sans", size, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
        dialog.DrawShadowText(&canvas.graphics, text, font, format, textColour, glow, rect,
                              Gdiplus::PointF(1, 1), factor);
        return canvas.Pixels();
    };
    const auto count = [](const std::vector<std::uint32_t>& pixels) {
        return std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t p) { return p >> 24; });
    };
    const RectF rect(10, 10, 120, 40);
    const Color none(0), white(0xFEFFFFFF), dark(0xB4323232);
    const auto plain = draw(20, white, none, rect, 3);
    const auto glowing = draw(20, white, dark, rect, 3);
    EXPECT_GT(count(plain), 50);
    EXPECT_GT(count(glowing), count(plain) * 3 / 2);
    EXPECT_GT(count(draw(20, none, dark, rect, 4)), count(draw(20, none, dark, rect, 1)));
    // The outline takes the font's size as whole pixels, and the rectangle as whole pixels.
    EXPECT_EQ(draw(20.9F, none, dark, rect, 3), draw(20, none, dark, rect, 3));
    EXPECT_EQ(draw(20, none, dark, RectF(10, 10, 120.7F, 40.9F), 3),
              draw(20, none, dark, RectF(10, 10, 120.2F, 40.1F), 3));
    // A factor without a bitmap leaves the text alone.
    for (const float factor : {0.0F, -2.0F, 1e9F, 1e-9F, std::numeric_limits<float>::quiet_NaN()}) {
        SCOPED_TRACE(factor);
        EXPECT_EQ(draw(20, white, dark, rect, factor), plain);
    }
}

TEST_F(TextItems, AnEntrysCaptionIsRenderedOncePerText) {
    TestDialog dialog;
    QKListItem entry;
    const Gdiplus::Font font(u"DejaVu Sans", 12), other(u"DejaVu Sans", 16);
    const Gdiplus::StringFormat format;
    struct Step {
        const char* name;
        CString text;
        const Gdiplus::Font* font;
        Gdiplus::ARGB colour;
        RectF rect;
        bool rendersAgain;
        bool empties = false;
    };
    const RectF rect(5, 5, 60, 20), wide(5, 5, 90, 30);
    const Step steps[] = {
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
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        if (step.empties) entry.szTextCath[0] = 0;
        Canvas canvas(120, 50);
        const std::uint64_t before = entry.pTextImage ? entry.pTextImage->GetRevision() : 0;
        const std::uint64_t layouts = Gdiplus::GetDrawingCounters().textLayouts;
        dialog.DrawShadowText(&canvas.graphics, &entry, step.text, *step.font, format, Color(step.colour),
                              Color(0xB4323232), step.rect, Gdiplus::PointF(1, 1), 3);
        const std::uint64_t after = entry.pTextImage ? entry.pTextImage->GetRevision() : 0;
        if (step.rect.Width == 0) {
            EXPECT_EQ(entry.pTextImage, nullptr);
            continue;
        }
        EXPECT_EQ(after != before, step.rendersAgain);
        if (!step.rendersAgain) {
            EXPECT_EQ(Gdiplus::GetDrawingCounters().textLayouts, layouts);
        }
        const CRect ink = canvas.Ink();
        EXPECT_GT(ink.Width(), 15);
        EXPECT_GE(ink.left, 5);
        EXPECT_LE(ink.right, static_cast<int>(step.rect.GetRight()));
        EXPECT_EQ(entry.pTextImage->GetWidth(),
                  step.rendersAgain ? static_cast<UINT>(step.rect.Width) : entry.pTextImage->GetWidth());
    }
    delete entry.pTextImage;
}

}  // namespace
