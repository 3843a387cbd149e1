// What spares a host work: callables, UTF-8, one font, nine parts of one picture, positions of the content.
#include "support/test_dialog.h"

namespace {

using kit::Solid;
using kit::TestButton;
using kit::TestDialog;

class Ease : public kit::HeadlessTest {};

// A record and a callable take each other's place; a callable keeps what it changes of its own.
TEST_F(Ease, AClickIsAnyCallable) {
    TestDialog dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    int sum = 0;
    const std::function<void()> steps[] = {
        [] {}, [&] { button.SetCallBack([&, n = 5]() mutable { return sum += n++; }); }, [] {},
        [&] { button.SetCallBack(nullptr); }};
    std::string seen;
    for (const auto& step : steps) {
        step();
        dialog.Click(20, 20);
        seen += std::to_string(button.clicks) + "," + std::to_string(sum) + " ";
    }
    EXPECT_EQ(seen, "1,0 1,5 1,11 1,11 ");
}

TEST_F(Ease, TextsAndPathsAreUtf8AsWell) {
    QKStaticText label;
    const auto shows = [&label](const auto& text) {
        return label.SetText(text), CString(label.GetText()) == u"è";
    };
    EXPECT_TRUE(shows("è") && shows(std::string("è")) && shows(std::string_view("è!", 2)) && shows(u"è") &&
                shows(CString("è")));
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        label.SetText(none);
        EXPECT_EQ(label.GetTextLen(), none ? 0 : -1);
    }
    label.SetText(nullptr);
    EXPECT_EQ(label.GetTextLen(), -1);

    const std::string path = ToUtf8(Solid("utf8 è", 0xFF123456, 6, 4));
    QKImage image;
    QKCheckBox box;
    EXPECT_TRUE(image.SetImage(path) && image.GetImage()->GetWidth() == 6);
    EXPECT_TRUE(box.SetImage(path, path.c_str(), QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL));
    EXPECT_TRUE(box.SetImage(CString(path), CString(path).GetString(), QKButton::QKBT_IMGS_1,
                             QKButton::QKBT_VERTICAL));
    CString text;
    text.Format("%s è %d", u"é", 7);
    EXPECT_EQ(text, u"é è 7");
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, "è", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    EXPECT_EQ(window.GetWindowText(), u"è");
    window.DestroyWindow();
}

TEST_F(Ease, BackgroundsComeFromResources) {
    TestDialog dialog;
    dialog.Open();
    CRect size;
    EXPECT_EQ(dialog.SetBack(9999, u"PNG", 0, 0) + dialog.SetBack(9999, "PNG", size), 0);
    EXPECT_EQ(dialog.SetBack(201, "PNG", size), 1);
    EXPECT_EQ(size, CRect(0, 0, 8, 8));
    EXPECT_EQ(dialog.SetBack(201, u"PNG", 1, 0), 1);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(100, 80), 0xFF0000FF);
}

TEST_F(Ease, ADialogsFontIsThatOfItemsWithoutOne) {
    TestDialog dialog;
    QKStaticText before, own, later;
    QKTextButton caption;
    QKCheckBox box;
    own.SetFont(Gdiplus::Font("DejaVu Serif", 10));
    for (QKItemBase* item : std::initializer_list<QKItemBase*>{&before, &own, &caption, &box})
        dialog.AddQKItem(item);
    for (const float size : {21.0F, 22.0F}) {
        dialog.SetDefaultFont(Gdiplus::Font("DejaVu Sans", size));
        dialog.AddQKItem(&later);
        for (const QKItemText* text : std::initializer_list<QKItemText*>{&before, &caption, &box, &later})
            EXPECT_EQ(text->GetFont()->GetSize(), size);
        EXPECT_EQ(own.GetFont()->GetSize(), 10);
    }
}

// Margins of four different widths, in a picture whose every part has a colour.
TEST_F(Ease, OnePictureMakesAFrame) {
    constexpr int kLeft = 2, kTop = 3, kRight = 4, kBottom = 5;
    const auto part = [](int at, int first, int last, int size) {
        return at < first ? 0U : at < size - last ? 1U : 2U;
    };
    const auto colour = [part](int x, int y, CSize size) {
        return 0xFF000000 | part(x, kLeft, kRight, size.cx) * 0x600000 |
               part(y, kTop, kBottom, size.cy) * 0x60;
    };
    Headless::Picture picture{12, 12, {}};
    for (int i = 0; i < 144; ++i)
        picture.argb.push_back(colour(i % 12, i / 12, {12, 12}));
    const CString path = kit::SavePicture("nine", picture);

    TestDialog dialog;
    QKImage frame;
    frame.SetImage(path);
    frame.SetMargins(kLeft, kTop, kRight, kBottom);
    frame.SetRect(20, 30, 70, 50);
    dialog.SetBack(path, 1, 0);
    dialog.SetBackMargins(kLeft, kTop, kRight, kBottom);
    dialog.AddQKItem(&frame);
    dialog.Open();
    const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            ASSERT_EQ(shown.At(x, y), CRect(20, 30, 90, 80).PtInRect(CPoint(x, y))
                                          ? colour(x - 20, y - 30, {70, 50})
                                          : colour(x, y, {shown.width, shown.height}))
                << x << ", " << y;
    // Margins beyond the picture, a place smaller than the corners, a picture of no size: nothing fails.
    QKNineParts parts;
    Gdiplus::Bitmap small(3, 3), source(path), broken(u"/nowhere");
    Gdiplus::Graphics graphics(&small);
    for (const RECT& margins : {RECT{2, 3, 4, 5}, RECT{900, -4, 900, 0}}) {
        parts.SetMargins(margins);
        for (Gdiplus::Bitmap* one : {&source, &broken})
            parts.Draw(graphics, *one, Gdiplus::RectF(0, 0, 3, 3));
    }
}

TEST_F(Ease, AScrollBarCountsItsContent) {
    const CString cap = Solid("ease_cap", kit::kNormal, 10, 30);
    TestDialog dialog;
    QKVScrollBar bar;
    bar.SetRect(10, 10, 10, 120);
    bar.SetBarImage(cap, cap, cap);  // 100 to travel in, for 100 000 to show
    const auto lengths = [&](int visible, int total) {
        return [&bar, visible, total] { bar.SetBarLength(visible, total); };
    };
    const auto set = [&](int position) { return [&bar, position] { bar.SetScrollPos(position); }; };
    const struct {
        std::function<void()> act;
        int content, thumb;
    } steps[] = {
        {lengths(1000, 101000), 0, 0},
        {set(12345), 12345, 12},
        {set(-1), 0, 0},
        {set(100001), 100000, 99},
        {lengths(1000, 51000), 50000, 98},
        {lengths(1000, 101000), 50000, 50},  // shrunk, and grown again
        {[&] { bar.SetBarPos(99); }, 100000, 99},
        {lengths(INT32_MIN, INT32_MAX), 0, 0},
        {set(INT32_MAX), INT32_MAX, 0},
        {lengths(5, 5), 0, 0},
        {lengths(1000, 101000), 0, 0},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_EQ(bar.GetScrollPos(), step.content) << &step - steps;
        EXPECT_TRUE(step.thumb == 0 || bar.GetBarPos() == step.thumb) << &step - steps;
    }
    std::vector<int> told;
    bar.SetScrollCallBack([&](int position) { told.push_back(position); });
    dialog.AddQKItem(&bar);
    dialog.Open();
    Headless::Drag(dialog.m_hWnd, 15, 20, 15, 400);
    ASSERT_GT(told.size(), 3u);
    EXPECT_EQ(told.back(), 100000);
}

}  // namespace
