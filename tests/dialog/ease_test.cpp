// What spares a host work: callables, UTF-8, one font, nine parts of one picture, positions of the content.
#include "support/test_dialog.h"

namespace {

using kit::Solid;
using kit::TestButton;
using kit::TestDialog;

class Ease : public kit::HeadlessTest {};

// A record and a callable take each other's place; a callable keeps what it changes of its own.
TEST_F(Ease, AClickIsAnyCallable) {
    TestButton button(10, 10);
    TestDialog dialog({&button});
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
    QKStaticText before, own, later;
    QKTextButton caption;
    QKCheckBox box;
    own.SetFont(Gdiplus::Font("DejaVu Serif", 10));
    TestDialog dialog({&before, &own, &caption, &box});
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
    const auto colour = [part](int x, int y, const CRect& place) {
        return 0xFF000000 | part(x - place.left, kLeft, kRight, place.Width()) * 0x600000 |
               part(y - place.top, kTop, kBottom, place.Height()) * 0x60;
    };
    Headless::Picture picture{12, 12, {}};
    for (int i = 0; i < 144; ++i)
        picture.argb.push_back(colour(i % 12, i / 12, CRect(0, 0, 12, 12)));
    const CString path = kit::SavePicture("nine", picture);

    const CRect whole(0, 0, kit::kDialogWidth, kit::kDialogHeight), place(20, 30, 90, 80);
    QKImage frame;
    frame.SetImage(path);
    frame.SetMargins(kLeft, kTop, kRight, kBottom);
    frame.SetRect(&place);
    TestDialog dialog({&frame});
    dialog.SetBack(path, 1, 0);
    dialog.SetBackMargins(kLeft, kTop, kRight, kBottom);
    dialog.Open();
    const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            ASSERT_EQ(shown.At(x, y), colour(x, y, place.PtInRect(CPoint(x, y)) ? place : whole))
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
    QKVScrollBar bar;
    bar.SetRect(10, 10, 10, 120);
    bar.SetBarImage(cap, cap, cap);  // 100 to travel in, for 100 000 to show
    // What is given is the content's position, the thumb's, or the lengths of what is visible and of all.
    enum Given { kContent, kThumb, kLengths };
    const struct {
        Given given;
        int value, total, content, thumb;
    } steps[] = {
        {kLengths, 1000, 101000, 0, 0},
        {kContent, 12345, 0, 12345, 12},
        {kContent, -1, 0, 0, 0},
        {kContent, 100001, 0, 100000, 99},
        {kLengths, 1000, 51000, 50000, 98},
        {kLengths, 1000, 101000, 50000, 50},  // shrunk, and grown again
        {kThumb, 99, 0, 100000, 99},
        {kLengths, INT32_MIN, INT32_MAX, 0, 0},
        {kContent, INT32_MAX, 0, INT32_MAX, 0},
        {kLengths, 5, 5, 0, 0},
        {kLengths, 1000, 101000, 0, 0},
    };
    for (const auto& step : steps) {
        if (step.given == kContent) bar.SetScrollPos(step.value);
        if (step.given == kThumb) bar.SetBarPos(step.value);
        if (step.given == kLengths) bar.SetBarLength(step.value, step.total);
        EXPECT_EQ(bar.GetScrollPos(), step.content) << &step - steps;
        EXPECT_TRUE(step.thumb == 0 || bar.GetBarPos() == step.thumb) << &step - steps;
    }
    std::vector<int> reported;
    bar.SetScrollCallBack([&](int position) { reported.push_back(position); });
    TestDialog dialog({&bar});
    dialog.Open();
    Headless::Drag(dialog.m_hWnd, 15, 20, 15, 400);
    ASSERT_GT(reported.size(), 3u);
    EXPECT_EQ(reported.back(), 100000);
}

}  // namespace
