// Check boxes and radio buttons: where mark and text lie, which colour, and what a click does.
#include "support/test_dialog.h"

namespace {

using Gdiplus::Color;
using kit::Solid;
using kit::Strip;
using kit::TestDialog;

class CheckBox : public kit::HeadlessTest {};

constexpr std::uint32_t kMark = 0xFFFFFF00;

// A box of three stacked frames of 20 by 20 with a mark of 8 by 8, and 60 pixels for the text.
template <class Box>
struct Marked : Box {
    Marked(int x, int y) {
        EXPECT_EQ(this->SetImage(Strip("box", {kit::kNormal, kit::kOver, kit::kPressed}, 20, 20, true),
                                 Solid("mark", kMark, 8, 8), QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL),
                  1);
        this->SetRect(x, y, 80, 20);
    }
};

TEST_F(CheckBox, TheMarkIsCentredOnTheDrawnFrame) {
    struct Case {
        int width, height, buttonHeight;
        int left, top;  // of the mark
    };
    // The division truncates toward zero, for a mark larger than its frame, too.
    for (const Case& c : {Case{8, 8, -1, 56, 56}, Case{7, 5, -1, 56, 57}, Case{25, 31, -1, 48, 45},
                          Case{8, 8, 10, 56, 51}, Case{20, 20, -1, 50, 50}}) {
        SCOPED_TRACE(testing::Message() << c.width << " by " << c.height);
        TestDialog dialog;
        QKCheckBox box;
        box.SetImage(Strip("box", {kit::kNormal, kit::kOver, kit::kPressed}, 20, 20, true),
                     Solid("mark_sized", kMark, c.width, c.height), QKButton::QKBT_IMGS_3,
                     QKButton::QKBT_VERTICAL);
        box.SetRect(50, 50, 80, 20);
        box.SetButtonHeight(c.buttonHeight);
        dialog.AddQKItem(&box);
        dialog.Open();
        const auto marks = [&] {
            const Headless::Picture picture = Headless::Capture(dialog.m_hWnd);
            return std::count(picture.argb.begin(), picture.argb.end(), kMark);
        };
        EXPECT_EQ(marks(), 0);
        box.SetCheck(7);
        dialog.Refresh();
        EXPECT_EQ(marks(), c.width * c.height);
        EXPECT_EQ(dialog.Pixel(c.left, c.top), kMark);
        EXPECT_EQ(dialog.Pixel(c.left + c.width - 1, c.top + c.height - 1), kMark);
        box.DestroyCheckImage();
        dialog.Refresh();
        EXPECT_EQ(marks(), 0);
    }
}

TEST_F(CheckBox, TheTextStartsRightOfTheWholeStripInTheMiddleOfAFrame) {
    struct Case {
        const char* name;
        bool image, vertical;
        int innerLeft, innerTop;
        int x;  // where the layout starts, seen from the item
    };
    for (const Case& c : {Case{"stacked", true, true, 0, 0, 20}, Case{"side by side", true, false, 0, 0, 40},
                          Case{"shifted", true, false, 6, -3, 46}, Case{"no strip", false, true, 6, -3, 0}}) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        dialog.SetBackColor(Color(0xFF000000), 1);
        QKCheckBox box;
        if (c.image)
            box.SetImage(
                Strip(c.vertical ? "two_v" : "two_h", {kit::kNormal, kit::kOver}, 20, 20, c.vertical),
                u"none", QKButton::QKBT_IMGS_2,
                c.vertical ? QKButton::QKBT_VERTICAL : QKButton::QKBT_HORIZONTAL);
        box.SetRect(10, 30, 120, 40);
        box.SetText(u"Iglp");
        box.SetTextInerLeft(c.innerLeft);
        box.SetTextInerTop(c.innerTop);
        dialog.AddQKItem(&box);
        dialog.Open();
        // What the drawn text has to equal: the same text at the place that follows from its measure.
        const Gdiplus::RectF wide(0, 0, 120, 40);
        const float height = Gdiplus::GetTextExtent(u"Iglp", -1, box.GetFont(), wide, nullptr).box.Height;
        const float y = c.image ? 30 + (20 - height) * 0.5F + static_cast<float>(c.innerTop) : 30;
        Gdiplus::Bitmap expected(kit::kDialogWidth, kit::kDialogHeight);
        Gdiplus::Graphics graphics(&expected);
        graphics.Clear(Color(0xFF000000));
        const Gdiplus::SolidBrush brush{Color(0xFEFFFFFF)};
        graphics.DrawString(u"Iglp", -1, box.GetFont(),
                            Gdiplus::RectF(static_cast<float>(10 + c.x), y, 120, 40), nullptr, &brush);
        int ink = 0;
        const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
        for (int py = 0; py < kit::kDialogHeight; ++py)
            for (int px = 10 + c.x; px < kit::kDialogWidth; ++px) {
                Color colour;
                expected.GetPixel(px, py, &colour);
                ASSERT_EQ(shown.At(px, py) & 0xFFFFFF, colour.GetValue() & 0xFFFFFF) << px << ", " << py;
                ink += (colour.GetValue() & 0xFFFFFF) != 0;
            }
        EXPECT_GT(ink, 20);
    }
}

TEST_F(CheckBox, TheTextTakesTheColourOfTheState) {
    QKCheckBox box;
    const auto colour = [&](QKItemBase::QK_STATUS status) {
        box.SetStatus(status);
        return box.GetTextStateColor().GetValue();
    };
    EXPECT_EQ(colour(QKItemBase::QK_MOUSEON), 0xFEFFFFFFU);
    box.SetTextColor(Color(0xFF000001));
    box.SetTextMouseOnColor(Color(0xFF000002));
    box.SetTextMouseDownColor(Color(0x80000003));
    EXPECT_EQ(colour(QKItemBase::QK_NORMAL), 0xFE000001U);
    EXPECT_EQ(colour(QKItemBase::QK_MOUSEON), 0xFE000002U);
    EXPECT_EQ(colour(QKItemBase::QK_MOUSEDOWN), 0x80000003U);
    box.SetTextMouseOnColor(Color(0x00123456));
    EXPECT_EQ(colour(QKItemBase::QK_MOUSEON), 0xFE000001U);
}

TEST_F(CheckBox, AFailedStripLeavesTheCheckImageAlone) {
    Marked<QKCheckBox> box(0, 0);
    box.SetCheck(1);
    EXPECT_EQ(box.SetImage(9999U, 9998U, u"PNG", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 0);
    EXPECT_EQ(box.GetImage(), nullptr);
    EXPECT_EQ(box.SetImage(Solid("mark", kMark, 8, 8), u"nowhere", static_cast<QKButton::QKBT_IMGS>(0),
                           QKButton::QKBT_VERTICAL),
              0);
}

TEST_F(CheckBox, AClickInvertsABoxAndOnlyChecksARadio) {
    TestDialog dialog;
    Marked<QKCheckBox> box(0, 0);
    Marked<QKRadio> first(0, 30), second(0, 60), other(0, 90);
    first.SetGroupID(1);
    second.SetGroupID(1);
    other.SetGroupID(2);
    int calls = 0;
    const QKCallbacks callbacks = {[](LPVOID count) { ++*static_cast<int*>(count); }, &calls};
    for (QKCheckBox* item : std::initializer_list<QKCheckBox*>{&box, &first, &second, &other}) {
        item->SetCallBack(&callbacks);
        dialog.AddQKItem(item);
    }
    dialog.Open();
    struct Case {
        const char* name;
        int x, y;
        int box, first, second, other;
        int calls;
    };
    const Case cases[] = {
        {"box", 5, 5, 1, 0, 0, 0, 1},
        {"box by its text", 70, 5, 0, 0, 0, 0, 2},
        {"right of the box", 81, 5, 0, 0, 0, 0, 2},
        {"first", 5, 35, 0, 1, 0, 0, 3},
        {"of another group", 5, 95, 0, 1, 0, 1, 4},
        {"second", 5, 65, 0, 0, 1, 1, 5},
        {"second again", 5, 65, 0, 0, 1, 1, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        dialog.refreshedRects.clear();
        dialog.Click(c.x, c.y);
        EXPECT_EQ(box.GetCheck(), c.box);
        EXPECT_EQ(first.GetCheck(), c.first);
        EXPECT_EQ(second.GetCheck(), c.second);
        EXPECT_EQ(other.GetCheck(), c.other);
        EXPECT_EQ(calls, c.calls);
    }
    // The unchecked one's mark is gone from the screen without a refresh by the host.
    Headless::RunPending();
    EXPECT_NE(dialog.Pixel(10, 40), kMark);
    EXPECT_EQ(dialog.Pixel(10, 70), kMark);
    // Pressed inside and released outside: nothing.
    dialog.Press(5, 5);
    dialog.Release(150, 150);
    EXPECT_EQ(box.GetCheck(), 0);
    // Several checked by the host stay so until the next click on an unchecked one.
    box.SetCheck(5);
    first.SetCheck(1);
    dialog.Click(5, 5);
    EXPECT_EQ(box.GetCheck(), 0);
    dialog.Click(5, 65);
    EXPECT_EQ(first.GetCheck() + second.GetCheck(), 2);
}

TEST_F(CheckBox, GroupsEndAtTheDialogAndARadiosOwnCallbackMayClearIt) {
    TestDialog left, right;
    Marked<QKRadio> here(0, 0), alsoHere(0, 30), there(0, 0);
    left.AddQKItem(&here);
    left.AddQKItem(&alsoHere);
    right.AddQKItem(&there);
    left.Open(0, 0);
    right.Open(300, 0);
    there.SetCheck(1);
    left.Click(5, 5);
    EXPECT_EQ(here.GetCheck(), 1);
    EXPECT_EQ(there.GetCheck(), 1);
    const QKCallbacks clearing = {[](LPVOID radio) { static_cast<QKRadio*>(radio)->SetCheck(0); }, &alsoHere};
    alsoHere.SetCallBack(&clearing);
    left.Click(5, 35);
    Headless::RunPending();
    EXPECT_EQ(here.GetCheck(), 0);
    EXPECT_EQ(alsoHere.GetCheck(), 0);
    EXPECT_NE(left.Pixel(10, 40), kMark);
    EXPECT_EQ(alsoHere.GetStatus(), QKItemBase::QK_MOUSEON);
}

TEST_F(CheckBox, APerPixelDialogRefreshesOnceForAWholeGroup) {
    TestDialog dialog;
    std::vector<std::unique_ptr<Marked<QKRadio>>> radios;
    for (int i = 0; i < 5; ++i) {
        radios.push_back(std::make_unique<Marked<QKRadio>>(0, 30 * i));
        radios.back()->SetCheck(i > 0);
        dialog.AddQKItem(radios.back().get());
    }
    dialog.Open();
    dialog.Set_OPAQUEDlg(255);
    dialog.Refresh();
    dialog.Press(5, 5);
    dialog.refreshedRects.clear();
    Headless::ButtonUp();
    EXPECT_EQ(dialog.refreshedRects.size(), 1U);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(dialog.Pixel(10, 30 * i + 10) == kMark, i == 0) << i;
}

}  // namespace
