// Items under the keyboard, and the texts that show when the pointer rests on one.
#include <algorithm>

#include "kit/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

constexpr std::uint32_t kRing = 0xFF3399FF;

class TabKeys : public kit::HeadlessTest {
  public:
    void SetUp() override {
        HeadlessTest::SetUp();
        box.SetRect(20, 100, 40, 20);
        for (QKItemBase* item : {static_cast<QKItemBase*>(&first), static_cast<QKItemBase*>(&label),
                                 static_cast<QKItemBase*>(&second), static_cast<QKItemBase*>(&box)})
            dialog.AddQKItem(item);
        dialog.SetBackColor(Gdiplus::Color(0xFF000000), 1);
        dialog.Open();
    }
    static void Key(UINT key, bool shift = false) {
        if (shift) Headless::KeyDown(VK_SHIFT);
        Headless::KeyDown(key);
        Headless::KeyUp(key);
        if (shift) Headless::KeyUp(VK_SHIFT);
    }
    // Whether the frame is around an item, or around none.
    bool IsFramed(const QKItemBase* item) {
        Headless::RunPending();
        const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
        const auto ring = std::count(shown.argb.begin(), shown.argb.end(), kRing);
        if (!item) return ring == 0;
        CRect rect;
        item->GetRect(&rect);
        const int around = 2 * 2 * (rect.Width() + 2 + rect.Height() + 2) + 4 * 2 * 2;
        return ring == around && shown.At(rect.left - 2, rect.top) == kRing &&
               shown.At(rect.right + 2, rect.bottom) == kRing &&
               shown.At(rect.left - 4, rect.top) == 0xFFFFFFFF;
    }

    TestDialog dialog;
    TestButton first{20, 20}, second{80, 20};
    QKStaticText label;
    QKCheckBox box;
};

TEST_F(TabKeys, AreTheHostsUntilTheyAreAskedFor) {
    Headless::Type("\t \r");
    EXPECT_TRUE(IsFramed(nullptr));
    EXPECT_EQ(first.clicks, 0);
    dialog.SetTabKeys(1);
    Headless::Type(" \r");
    EXPECT_EQ(first.clicks, 0) << "nothing has the focus";
}

TEST_F(TabKeys, WalkOverWhatCanBeClicked) {
    dialog.SetTabKeys(1);
    const struct {
        const char* what;
        std::function<void()> act;
        const QKItemBase* framed;
    } steps[] = {
        {"the first", [] { Key(VK_TAB); }, &first},
        {"no labels", [] { Key(VK_TAB); }, &second},
        {"the last", [] { Key(VK_TAB); }, &box},
        {"around", [] { Key(VK_TAB); }, &first},
        {"and back", [] { Key(VK_TAB, true); }, &box},
        {"disabled", [&] { second.SetEnable(0), Key(VK_TAB, true); }, &first},
        {"hidden meanwhile", [&] { first.SetShow(0), dialog.Refresh(); }, nullptr},
        {"on from there", [] { Key(VK_TAB); }, &box},
        {"shown again", [&] { first.SetShow(1), second.SetEnable(1), Key(VK_TAB); }, &first},
        {"no tab stop", [&] { second.SetTabStop(0), Key(VK_TAB); }, &box},
        {"taken off", [&] { dialog.RemoveQKItem(&box), dialog.Refresh(); }, nullptr},
        {"one alone", [] { Key(VK_TAB); }, &first},
        {"and again", [] { Key(VK_TAB); }, &first},
        {"a press hides the frame", [&] { dialog.Click(30, 30); }, nullptr},
        {"by the host", [&] { dialog.SetFocusItem(&first); }, &first},
        {"not that one", [&] { EXPECT_EQ(dialog.SetFocusItem(&label), 0); }, &first},
        {"nor a stranger", [&] { EXPECT_EQ(dialog.SetFocusItem(&box), 0); }, &first},
        {"switched off", [&] { dialog.SetTabKeys(0); }, nullptr},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_TRUE(IsFramed(step.framed)) << step.what;
    }
    dialog.RemoveAllQKItem();
    dialog.SetTabKeys(1);
    Key(VK_TAB);
    EXPECT_EQ(dialog.GetFocusItem(), nullptr);
}

TEST_F(TabKeys, ClickWhatHasTheFocus) {
    dialog.SetTabKeys(1);
    second.onClick = [&] { EXPECT_EQ(dialog.m_pDownItem, nullptr); };
    Headless::Type("\t\t ");
    EXPECT_EQ(second.clicks, 1);
    Headless::KeyDown(VK_RETURN);
    Headless::KeyDown(VK_RETURN);  // repeats
    EXPECT_EQ(second.clicks, 2);
    Headless::KeyUp(VK_RETURN);
    Headless::Type("\t ");
    EXPECT_EQ(box.GetCheck(), 1);
    // From where the mouse went on.
    dialog.Click(30, 30);
    Headless::Type(" ");
    EXPECT_EQ(first.clicks, 1) << "without a frame, none";
    Headless::Type("\t ");
    EXPECT_EQ(second.clicks, 3);
    // Another window is active, and this one again.
    TestDialog other;
    other.Open(400, 100);
    EXPECT_TRUE(IsFramed(nullptr));
    other.DestroyWindow();
    Headless::Type("\t ");
    EXPECT_EQ(box.GetCheck(), 0);
    second.onClick = [&] { dialog.DestroyWindow(); };
    dialog.SetFocusItem(&second);
    Headless::Type(" \t ");
    EXPECT_EQ(second.clicks, 4);
}

class Tooltips : public TabKeys {
  public:
    void SetUp() override {
        TabKeys::SetUp();
        first.SetTooltip("Plays\nthe piece");
        second.SetTooltip(u"Stops");
    }
    // The place of the window with the text, or nothing.
    static CRect Place() {
        CRect rect;
        const HWND window = FindWindowExW(HWND(), HWND(), u"QKTooltip", nullptr);
        if (window && IsWindowVisible(window)) GetWindowRect(window, rect);
        return rect;
    }
    static bool Shows() { return !Place().IsRectEmpty(); }
};

TEST_F(Tooltips, ShowWhenThePointerRests) {
    dialog.Move(30, 30);
    Headless::Advance(400);
    dialog.Move(31, 30);
    Headless::Advance(400);
    EXPECT_FALSE(Shows());
    Headless::Advance(100);
    ASSERT_TRUE(Shows());
    const CRect place = Place();
    EXPECT_EQ(place.TopLeft(), CPoint(131, 150));
    EXPECT_GT(place.Height(), 30) << "two lines";
    const Headless::Picture shown = Headless::CaptureScreen();
    EXPECT_EQ(shown.At(place.left + 2, place.top + 2), 0xFFFFFDF4);
    EXPECT_EQ(GetActiveWindow(), dialog.m_hWnd);
    dialog.Move(35, 30);
    EXPECT_EQ(Place(), place) << "it does not follow";
    dialog.Move(90, 30);
    EXPECT_FALSE(Shows());
    Headless::Advance(100);  // the next one comes sooner
    EXPECT_TRUE(Shows());
    Headless::Advance(8000);
    EXPECT_FALSE(Shows());
    dialog.Move(91, 30);
    Headless::Advance(1000);
    EXPECT_FALSE(Shows()) << "it has been read";
}

TEST_F(Tooltips, GoWithWhatTheyBelongTo) {
    QKStaticText cover;
    TestDialog owner;
    const struct {
        const char* what;
        std::function<void()> act;
    } ends[] = {
        {"a press", [&] { dialog.Press(30, 30); }},
        {"a key", [] { Key('A'); }},
        {"leaving", [] { Headless::MovePointer(639, 479); }},
        {"the window moves", [&] { dialog.SetWindowPos(HWND(), 90, 90, 0, 0, SWP_NOSIZE); }},
        {"another window", [&] { owner.Open(400, 300); }},
        {"the item is taken off", [&] { dialog.RemoveQKItem(&first); }},
        {"the window is hidden", [&] { dialog.ShowWindow(SW_HIDE); }},
        {"the window is gone", [&] { dialog.DestroyWindow(); }},
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(end.what);
        Headless::MovePointer(639, 479);
        if (owner.m_hWnd) owner.DestroyWindow();
        dialog.AddQKItem(&first);
        dialog.SetWindowPos(HWND(), 100, 100, 0, 0, SWP_NOSIZE);
        dialog.Show();
        dialog.Move(30, 30);
        Headless::Advance(500);
        ASSERT_TRUE(Shows());
        end.act();
        Headless::RunPending();
        EXPECT_FALSE(Shows());
        Headless::ButtonUp();
        Headless::Advance(1000);
        EXPECT_FALSE(Shows());
    }
}

TEST_F(Tooltips, StayOnTheScreenAndBelongToTheTopmost) {
    label.SetRect(80, 20, 40, 30);  // below `second` in the order, without a tooltip of its own
    dialog.SetWindowPos(HWND(), 560, 430, 0, 0, SWP_NOSIZE);
    dialog.Move(30, 30);
    Headless::Advance(500);
    EXPECT_LE(Place().right, 640);
    EXPECT_LT(Place().bottom, 460) << "above the pointer";
    box.SetRect(80, 20, 40, 30);
    dialog.SetWindowPos(HWND(), 100, 100, 0, 0, SWP_NOSIZE);
    dialog.Move(90, 30);
    Headless::Advance(500);
    EXPECT_FALSE(Shows()) << "covered";
    box.SetShow(0);
    dialog.Move(91, 30);
    Headless::Advance(500);
    EXPECT_TRUE(Shows());
}

}  // namespace
