// What spares a host work: callables, UTF-8, one font, nine parts of one picture, positions of the content.
#include "kit/test_dialog.h"

namespace {

using kit::Solid;
using kit::TestButton;
using kit::TestDialog;

class Ease : public kit::HeadlessTest {};

TEST_F(Ease, AClickIsAnyCallable) {
    TestDialog dialog;
    auto button = std::make_unique<TestButton>(10, 10);
    dialog.AddQKItem(button.get());
    dialog.Open();
    int count = 0;
    // It changes what it holds, replaces itself, and frees its item, all while it runs.
    button->SetCallBack([&, held = std::make_unique<int>(5).release()]() mutable {
        count += (*held)++;
        if (count < 11) return;
        button->SetCallBack(std::function<void()>());
        dialog.RemoveQKItem(button.get());
        button.reset();
        count += *held;
        delete held;
    });
    dialog.Click(20, 20);
    dialog.Click(20, 20);
    EXPECT_EQ(count, 11 + 7);

    // A record and a callable take each other's place; null is a record.
    TestButton other(10, 10);
    dialog.AddQKItem(&other);
    const auto clicks = [&](int record, int callable) {
        dialog.Click(20, 20);
        EXPECT_EQ(other.clicks, record);
        EXPECT_EQ(count, callable);
    };
    count = 0;
    clicks(1, 0);
    other.SetCallBack([&] { return ++count; });
    clicks(1, 1);
    other.SetCallBack(nullptr);
    clicks(1, 1);
}

TEST_F(Ease, TextsAndPathsAreUtf8AsWell) {
    QKStaticText label;
    for (const auto& set : std::vector<std::function<void()>>{
             [&] { label.SetText("è"); }, [&] { label.SetText(std::string("è")); },
             [&] { label.SetText(std::string_view("è!").substr(0, 2)); },
             [&] { label.SetText(CString("è")); }, [&] { label.SetText(u"è"); }}) {
        label.ReleaseBuf();
        set();
        EXPECT_EQ(CString(label.GetText()), u"è");
    }
    label.SetText(nullptr);
    EXPECT_EQ(label.GetTextLen(), -1);
    label.SetText("");
    EXPECT_EQ(label.GetTextLen(), 0);
    label.SetText(static_cast<const char*>(nullptr));
    EXPECT_EQ(label.GetTextLen(), -1);

    const std::string path = ToUtf8(Solid("utf8 è", 0xFF123456, 6, 4));
    QKImage image;
    EXPECT_TRUE(image.SetImage(path));
    EXPECT_EQ(image.GetImage()->GetWidth(), 6u);
    QKButton button;
    EXPECT_TRUE(button.SetImage(path.c_str(), QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL));
    QKCheckBox box;
    EXPECT_TRUE(box.SetImage(path, path, QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL));
    EXPECT_TRUE(box.SetImage(CString(path), CString(path).GetString(), QKButton::QKBT_IMGS_1,
                             QKButton::QKBT_VERTICAL));
    EXPECT_EQ(Gdiplus::Image(path).GetHeight(), 4u);
    EXPECT_EQ(Gdiplus::Font("DejaVu Sans", 9).GetLastStatus(), Gdiplus::Ok);
    EXPECT_EQ(CString(std::string_view("è\0é", 5)).GetLength(), 3);
    CString text;
    text.Format("%s è %d", u"é", 7);
    EXPECT_EQ(text, u"é è 7");

    Gdiplus::Bitmap bitmap(9, 9);
    Gdiplus::Graphics graphics(&bitmap);
    const Gdiplus::Font font("DejaVu Sans", 20);
    Gdiplus::RectF one, two;
    graphics.MeasureString("èè", &font, Gdiplus::RectF(), nullptr, &one);
    graphics.MeasureString(u"èè", 2, &font, Gdiplus::RectF(), nullptr, &two);
    EXPECT_EQ(one.Width, two.Width);
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, "è", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    window.GetWindowText(text);
    EXPECT_EQ(text, u"è");
    window.DestroyWindow();
}

TEST_F(Ease, PicturesComeFromResourcesEverywhere) {
    TestDialog dialog;
    dialog.Open();
    CRect size;
    EXPECT_EQ(dialog.SetBack(9999, u"PNG", 0, 0), 0);
    EXPECT_EQ(dialog.SetBack(9999, "PNG", size), 0);
    EXPECT_EQ(QKLoadImage(9999, "PNG"), nullptr);
    EXPECT_EQ(dialog.SetBack(201, "PNG", size), 1);
    EXPECT_FALSE(size.IsRectEmpty());
    EXPECT_EQ(dialog.SetBack(201, u"PNG", 1, 1), 1);
    EXPECT_EQ(dialog.m_bBackCache, 1);
    dialog.m_bBackCache = 0;
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(100, 80), 0xFF0000FF);
}

TEST_F(Ease, ADialogsFontIsThatOfItemsWithoutOne) {
    TestDialog dialog;
    QKStaticText label, own, later;
    QKTextButton caption;
    QKCheckBox box;
    own.SetFont(Gdiplus::Font(u"DejaVu Serif", 10));
    for (QKItemBase* item : {static_cast<QKItemBase*>(&label), static_cast<QKItemBase*>(&own),
                             static_cast<QKItemBase*>(&caption), static_cast<QKItemBase*>(&box)})
        dialog.AddQKItem(item);
    const float atFirst = caption.GetFont()->GetSize();
    for (const float size : {21.0F, 22.0F}) {
        dialog.SetDefaultFont(Gdiplus::Font("DejaVu Sans", size));
        dialog.AddQKItem(&later);
        for (const Gdiplus::Font* font : {label.GetFont(), caption.GetFont(), box.GetFont(), later.GetFont()})
            EXPECT_EQ(font->GetSize(), size);
        EXPECT_EQ(own.GetFont()->GetSize(), 10);
    }
    EXPECT_EQ(atFirst, 12);
    label.SetFont(Gdiplus::Font("DejaVu Sans", 7));
    dialog.SetDefaultFont(Gdiplus::Font("DejaVu Sans", 23));
    EXPECT_EQ(label.GetFont()->GetSize(), 7);
}

// Margins of four different widths, in a picture whose every part has a colour.
TEST_F(Ease, OnePictureMakesAFrame) {
    constexpr int kLeft = 2, kTop = 3, kRight = 4, kBottom = 5, kSize = 12;
    Headless::Picture picture{kSize, kSize, {}};
    const auto part = [](int at, int first, int last, int size) {
        return at < first ? 0 : at < size - last ? 1 : 2;
    };
    const auto colour = [](int column, int row) {
        return 0xFF000000 | static_cast<std::uint32_t>((column + 1) * 0x300000 + (row + 1) * 0x30);
    };
    for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x)
            picture.argb.push_back(colour(part(x, kLeft, kRight, kSize), part(y, kTop, kBottom, kSize)));
    const CString path = kit::SavePicture("nine", picture);

    TestDialog dialog;
    QKImage frame;
    frame.SetImage(path);
    frame.SetMargins(kLeft, kTop, kRight, kBottom);
    frame.SetRect(20, 30, 70, 50);
    dialog.SetBackColor(Gdiplus::Color(0xFF000000), 1);
    dialog.AddQKItem(&frame);
    dialog.Open();
    const auto expectFrame = [&](const CRect& rect) {
        const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
        for (int y = 0; y < rect.Height(); ++y)
            for (int x = 0; x < rect.Width(); ++x)
                ASSERT_EQ(shown.At(rect.left + x, rect.top + y),
                          colour(part(x, kLeft, kRight, rect.Width()), part(y, kTop, kBottom, rect.Height())))
                    << x << ", " << y;
    };
    expectFrame({20, 30, 90, 80});
    EXPECT_EQ(dialog.Pixel(90, 80), 0xFF000000);

    dialog.RemoveQKItem(&frame);
    dialog.SetBack(path, 1, 0);
    dialog.SetBackMargins(kLeft, kTop, kRight, kBottom);
    dialog.Refresh();
    expectFrame({0, 0, kit::kDialogWidth, kit::kDialogHeight});
    // Less than its corners, margins beyond the picture, a picture of no size: nothing fails.
    QKNineParts parts;
    Gdiplus::Bitmap small(3, 3), broken(u"/nowhere");
    Gdiplus::Graphics graphics(&small);
    for (const RECT& margins : {RECT{2, 3, 4, 5}, RECT{900, -4, 900, 0}, RECT{0, 0, 0, 1}}) {
        parts.SetMargins(margins);
        Gdiplus::Image source(path);
        parts.Draw(graphics, source, Gdiplus::RectF(0, 0, 3, 3));
        parts.Draw(graphics, broken, Gdiplus::RectF(0, 0, 3, 3));
    }
}

TEST_F(Ease, AScrollBarCountsItsContent) {
    const CString cap = Solid("ease_cap", kit::kNormal, 10, 30);
    TestDialog dialog;
    QKVScrollBar bar;
    bar.SetRect(10, 10, 10, 120);
    bar.SetBarImage(cap, cap, cap);  // 100 to travel in, for 100 000 to show
    bar.SetBarLength(1000, 101000);
    EXPECT_EQ(bar.GetScrollMax(), 100000);
    for (const auto& [set, holds] : {std::pair{12345, 12345}, {100000, 100000}, {100001, 100000}, {-1, 0}}) {
        bar.SetScrollPos(set);
        EXPECT_EQ(bar.GetScrollPos(), holds);
    }
    bar.SetScrollPos(99999);
    EXPECT_EQ(bar.GetBarPos(), bar.GetMax());
    bar.SetBarLength(1000, 51000);  // a content that shrinks, and grows again
    EXPECT_EQ(bar.GetScrollPos(), 50000);
    EXPECT_EQ(bar.GetBarPos(), bar.GetMax());
    bar.SetBarLength(1000, 101000);
    EXPECT_EQ(bar.GetScrollPos(), 50000);
    EXPECT_NEAR(bar.GetBarPos(), bar.GetMax() / 2, 1);
    bar.SetBarPos(bar.GetMax());
    EXPECT_EQ(bar.GetScrollPos(), 100000);
    bar.SetBarLength(5, 5);
    bar.SetScrollPos(3);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    bar.SetBarLength(INT32_MIN, INT32_MAX);
    bar.SetScrollPos(INT32_MAX);
    EXPECT_EQ(bar.GetScrollPos(), INT32_MAX);

    bar.SetBarLength(1000, 101000);
    bar.SetScrollPos(0);
    std::vector<int> told;
    bar.SetScrollCallBack([&](int position) { told.push_back(position); });
    dialog.AddQKItem(&bar);
    dialog.Open();
    Headless::Drag(dialog.m_hWnd, 15, 20, 15, 70);
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.back(), bar.GetScrollPos());
    EXPECT_NEAR(told.back(), 50000, 1100);
    Headless::Drag(dialog.m_hWnd, 15, 70, 15, 400);
    EXPECT_EQ(told.back(), 100000);
}

}  // namespace
