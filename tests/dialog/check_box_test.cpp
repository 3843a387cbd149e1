// Check boxes and radio buttons: where mark and text lie, which colour, and what a click does.
#include <random>

#include "support/test_dialog.h"

namespace {

using Gdiplus::Color;
using kit::Line;
using kit::Solid;
using kit::Strip;
using kit::TestDialog;

class CheckBox : public kit::HeadlessTest {};

constexpr std::uint32_t kMark = 0xFFFFFF00;

// A box of three stacked frames of 20 by 20, and 60 pixels for the text.
template <class Box>
struct Marked : Box {
    Marked(int x, int y, CSize mark = CSize(8, 8)) {
        EXPECT_EQ(this->SetImage(Strip("box", {kit::kNormal, kit::kOver, kit::kPressed}, 20, 20, true),
                                 Solid("mark", kMark, mark.cx, mark.cy), QKButton::QKBT_IMGS_3,
                                 QKButton::QKBT_VERTICAL),
                  1);
        this->SetRect(x, y, 80, 20);
    }
};

TEST_F(CheckBox, TheMarkIsCentredOnTheDrawnFrame) {
    const struct {
        CSize mark;
        int buttonHeight, left, top;
    } cases[] = {{{8, 8}, -1, 56, 56},
                 {{7, 5}, -1, 56, 57},
                 {{25, 31}, -1, 48, 45},  // the division truncates toward zero
                 {{8, 8}, 10, 56, 51},
                 {{20, 20}, -1, 50, 50}};
    for (const auto& [mark, buttonHeight, left, top] : cases) {
        SCOPED_TRACE(Line(mark.cx, mark.cy));
        Marked<QKCheckBox> box(50, 50, mark);
        box.SetButtonHeight(buttonHeight);
        TestDialog dialog({&box});
        dialog.Open();
        const auto marks = [&dialog] {
            dialog.Refresh();
            const Headless::Picture picture = Headless::Capture(dialog.m_hWnd);
            return std::count(picture.argb.begin(), picture.argb.end(), kMark);
        };
        EXPECT_EQ(marks(), 0);
        box.SetCheck(7);
        EXPECT_EQ(marks(), mark.cx * mark.cy);
        dialog.ExpectPixels({{left, top, kMark}, {left + mark.cx - 1, top + mark.cy - 1, kMark}});
        box.DestroyCheckImage();
        EXPECT_EQ(marks(), 0);
    }
}

TEST_F(CheckBox, TheTextStartsRightOfTheWholeStripInTheMiddleOfAFrame) {
    const struct {
        const char* name;
        bool image, vertical;
        int innerLeft, innerTop;
        int x;  // where the layout starts
    } cases[] = {{"stacked", true, true, 0, 0, 30},
                 {"side by side", true, false, 0, 0, 50},
                 {"shifted", true, false, 6, -3, 56},
                 {"no strip", false, true, 6, -3, 10}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        QKCheckBox box;
        const auto strip = Strip("two", {kit::kNormal, kit::kOver}, 20, 20, c.vertical);
        const auto layout = c.vertical ? QKButton::QKBT_VERTICAL : QKButton::QKBT_HORIZONTAL;
        if (c.image) box.SetImage(strip, u"none", QKButton::QKBT_IMGS_2, layout);
        box.SetRect(10, 30, 120, 40);
        box.SetText(u"Iglp");
        box.SetTextInerLeft(c.innerLeft);
        box.SetTextInerTop(c.innerTop);
        TestDialog dialog({&box});
        dialog.Open();
        // What the drawn text has to equal: a label at the place that follows from the text's measure.
        const Gdiplus::RectF wide(0, 0, 120, 40);
        const float height = Gdiplus::GetTextExtent(u"Iglp", -1, box.GetFont(), wide, nullptr).box.Height;
        const float y = c.image ? 30 + (20 - height) * 0.5F + static_cast<float>(c.innerTop) : 30;
        Gdiplus::Bitmap expected(kit::kDialogWidth, kit::kDialogHeight);
        Gdiplus::Graphics graphics(&expected);
        graphics.Clear(Color(0xFF000000));
        const Gdiplus::SolidBrush brush{Color(0xFEFFFFFF)};
        graphics.DrawString(u"Iglp", -1, box.GetFont(), Gdiplus::RectF(static_cast<float>(c.x), y, 120, 40),
                            nullptr, &brush);
        int ink = 0;
        const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
        for (int py = 0; py < kit::kDialogHeight; ++py)
            for (int px = c.x; px < kit::kDialogWidth; ++px) {
                Color colour;
                expected.GetPixel(px, py, &colour);
                ASSERT_EQ(shown.At(px, py) & 0xFFFFFF, colour.GetValue() & 0xFFFFFF) << px << ", " << py;
                ink += (colour.GetValue() & 0xFFFFFF) != 0;
            }
        EXPECT_GT(ink, 20);
    }
}

// One change after another gives what a new box shows.
TEST_F(CheckBox, TheTextLiesWhereThatOfANewBoxDoes) {
    std::mt19937 random(3);
    const LPCWSTR texts[] = {u"", u"one", u"two\nlines", u"a text that wraps"};
    unsigned look[3] = {};
    const auto give = [&](QKCheckBox& box) {
        box.SetText(texts[look[0]]);
        box.SetFont(Gdiplus::Font(u"DejaVu Sans", 8 + 6.0F * static_cast<float>(look[1])));
        box.SetRect(10, 40, 60 + 60 * static_cast<int>(look[2]), 70);
    };
    Marked<QKCheckBox> box(10, 40);
    TestDialog dialog({&box});
    dialog.Open();
    for (int step = 0; step < 100; ++step) {
        const std::size_t what = random() % 3;
        look[what] = static_cast<unsigned>(random() % (what ? 2 : 4));
        Marked<QKCheckBox> fresh(10, 40);
        TestDialog other({&fresh});
        other.Open();
        for (const auto& [one, in] : {std::pair<QKCheckBox*, TestDialog*>(&box, &dialog), {&fresh, &other}}) {
            give(*one);
            in->Refresh();
        }
        ASSERT_EQ(Headless::Capture(dialog.m_hWnd).argb, Headless::Capture(other.m_hWnd).argb) << step;
    }
}

TEST_F(CheckBox, TheTextTakesTheColourOfTheState) {
    QKCheckBox box;
    const auto expect = [&](std::initializer_list<Gdiplus::ARGB> colours) {
        int status = QKItemBase::QK_NORMAL;  // over, down
        for (const Gdiplus::ARGB colour : colours) {
            box.SetStatus(static_cast<QKItemBase::QK_STATUS>(status++));
            EXPECT_EQ(box.GetTextStateColor().GetValue(), colour) << status;
        }
    };
    expect({0xFEFFFFFF, 0xFEFFFFFF});
    box.SetTextColor(Color(0xFF000001));
    box.SetTextMouseOnColor(Color(0xFF000002));
    box.SetTextMouseDownColor(Color(0x80000003));
    expect({0xFE000001, 0xFE000002, 0x80000003});
    box.SetTextMouseOnColor(Color(0x00123456));
    expect({0xFE000001, 0xFE000001});
}

TEST_F(CheckBox, AFailedStripLeavesTheCheckImageAlone) {
    Marked<QKCheckBox> box(0, 0);
    EXPECT_EQ(box.SetImage(9999U, 9998U, u"PNG", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL), 0);
    EXPECT_EQ(box.GetImage(), nullptr);
    EXPECT_EQ(box.SetImage(Solid("mark", kMark, 8, 8), u"nowhere", static_cast<QKButton::QKBT_IMGS>(0),
                           QKButton::QKBT_VERTICAL),
              0);
}

TEST_F(CheckBox, AClickInvertsABoxAndOnlyChecksARadio) {
    Marked<QKCheckBox> box(0, 0);
    Marked<QKRadio> first(0, 30), second(0, 60), other(0, 90);
    first.SetGroupID(1);
    second.SetGroupID(1);
    other.SetGroupID(2);
    int calls = 0;
    for (QKItemBase* item : std::initializer_list<QKItemBase*>{&box, &first, &second, &other})
        item->SetCallBack([&calls] { ++calls; });
    TestDialog dialog({&box, &first, &second, &other});
    dialog.Open();
    const struct {
        const char* name;
        int x, y;
        const char* checked;  // box, first, second, other; and the calls
    } clicks[] = {
        {"box", 5, 5, "1 0 0 0, 1"},
        {"box by its text", 70, 5, "0 0 0 0, 2"},
        {"right of the box", 81, 5, "0 0 0 0, 2"},
        {"first", 5, 35, "0 1 0 0, 3"},
        {"of another group", 5, 95, "0 1 0 1, 4"},
        {"second", 5, 65, "0 0 1 1, 5"},
        {"second again", 5, 65, "0 0 1 1, 6"},
    };
    const auto checked = [&] {
        return Line(box.GetCheck(), first.GetCheck(), second.GetCheck(), other.GetCheck());
    };
    for (const auto& click : clicks) {
        dialog.Click(click.x, click.y);
        EXPECT_EQ(checked() + ", " + std::to_string(calls), click.checked) << click.name;
    }
    // The unchecked one's mark is gone from the screen without a refresh by the host.
    Headless::RunPending();
    dialog.ExpectPixels({{10, 40, kit::kNormal}, {10, 70, kMark}});
    // Pressed inside and released outside: nothing.
    dialog.Press(5, 5);
    dialog.Release(150, 150);
    EXPECT_EQ(checked(), "0 0 1 1");
    // Several checked by the host stay so until the next click on an unchecked one.
    box.SetCheck(5);
    first.SetCheck(1);
    dialog.Click(5, 5);
    dialog.Click(5, 65);
    EXPECT_EQ(checked(), "0 1 1 1");
}

TEST_F(CheckBox, GroupsEndAtTheDialogAndARadiosOwnCallbackMayClearIt) {
    Marked<QKRadio> here(0, 0), alsoHere(0, 30), there(0, 0);
    TestDialog left({&here, &alsoHere}), right({&there});
    left.Open(0, 0);
    right.Open(300, 0);
    there.SetCheck(1);
    left.Click(5, 5);
    EXPECT_EQ(Line(here.GetCheck(), there.GetCheck()), "1 1");
    alsoHere.SetCallBack([&] { alsoHere.SetCheck(0); });
    left.Click(5, 35);
    Headless::RunPending();
    EXPECT_EQ(Line(here.GetCheck(), alsoHere.GetCheck()), "0 0");
    EXPECT_EQ(left.Pixel(10, 40), kit::kOver);
}

TEST_F(CheckBox, APerPixelDialogRefreshesOnceForAWholeGroup) {
    Marked<QKRadio> radios[] = {{0, 0}, {0, 30}, {0, 60}, {0, 90}, {0, 120}};
    TestDialog dialog;
    for (QKRadio& radio : radios) {
        radio.SetCheck(&radio != radios);
        dialog.AddQKItem(&radio);
    }
    dialog.OpenAs(LAY_OPAQUE);
    dialog.Press(5, 5);
    dialog.refreshedRects.clear();
    Headless::ButtonUp();
    EXPECT_EQ(dialog.refreshedRects.size(), 1U);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(dialog.Pixel(10, 30 * i + 10) == kMark, i == 0) << i;
}

}  // namespace
