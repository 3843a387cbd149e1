// Items under the keyboard, and the texts that show when the pointer rests on one.
#include <algorithm>

#include "support/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

constexpr std::uint32_t kRing = 0xFF3399FF;

class TabKeys : public kit::HeadlessTest {
  public:
    void SetUp() override {
        HeadlessTest::SetUp();
        box.SetRect(20, 100, 40, 20);
        dialog.Add({&first, &label, &second, &box});
        dialog.Open();
    }
    // Back.
    static void ShiftTab() {
        Headless::KeyDown(VK_SHIFT);
        Headless::Type("\t");
        Headless::KeyUp(VK_SHIFT);
    }
    // Whether the frame is around an item and nowhere else; null: nowhere at all.
    bool IsFramed(const QKItemBase* item) {
        Headless::RunPending();
        const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
        const auto ring = std::count(shown.argb.begin(), shown.argb.end(), kRing);
        if (!item) return ring == 0;
        CRect rect;
        item->GetRect(&rect);
        return ring == 4 * (rect.Width() + rect.Height() + 4) + 16 &&
               shown.At(rect.left - 2, rect.top) == kRing && shown.At(rect.left - 4, rect.top) == 0xFFFFFFFF;
    }

    TestDialog dialog;
    TestButton first{20, 20}, second{80, 20};
    QKStaticText label;
    QKCheckBox box;
};

TEST_F(TabKeys, WalkOverWhatCanBeClicked) {
    const auto tab = [] { Headless::Type("\t"); };
    const struct {
        const char* what;
        std::function<void()> act;
        const QKItemBase* framed;
    } steps[] = {
        {"the host's, until they are asked for", tab, nullptr},
        {"the first", [&] { dialog.SetTabKeys(1), tab(); }, &first},
        {"no labels", tab, &second},
        {"the last", tab, &box},
        {"around", tab, &first},
        {"and back", ShiftTab, &box},
        {"disabled", [&] { second.SetEnable(0), ShiftTab(); }, &first},
        {"hidden meanwhile", [&] { first.SetShow(0), dialog.Refresh(); }, nullptr},
        {"on from there", tab, &box},
        {"shown again", [&] { first.SetShow(1), second.SetEnable(1), tab(); }, &first},
        {"no tab stop", [&] { second.SetTabStop(0), tab(); }, &box},
        {"taken off", [&] { dialog.RemoveQKItem(&box), dialog.Refresh(); }, nullptr},
        {"one alone", tab, &first},
        {"a press hides the frame", [&] { dialog.Click(30, 30); }, nullptr},
        {"by the host", [&] { dialog.SetFocusItem(&first); }, &first},
        {"not a label, nor a stranger",
         [&] { EXPECT_EQ(dialog.SetFocusItem(&label) + dialog.SetFocusItem(&box), 0); }, &first},
        {"switched off", [&] { dialog.SetTabKeys(0); }, nullptr},
        {"nobody left", [&] { dialog.RemoveAllQKItem(), dialog.SetTabKeys(1), tab(); }, nullptr},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_TRUE(IsFramed(step.framed)) << step.what;
    }
}

TEST_F(TabKeys, ClickWhatHasTheFocus) {
    dialog.SetTabKeys(1);
    Headless::Type(" \t\t ");
    Headless::KeyDown(VK_RETURN);
    Headless::KeyDown(VK_RETURN);  // repeats
    Headless::KeyUp(VK_RETURN);
    Headless::Type("\t ");
    EXPECT_EQ(first.clicks * 100 + second.clicks * 10 + box.GetCheck(), 21);
    // From where the mouse was pressed; without a frame, no key clicks.
    dialog.Click(30, 30);
    Headless::Type(" \t ");
    EXPECT_EQ(first.clicks * 100 + second.clicks * 10 + box.GetCheck(), 131);
    TestDialog other;
    other.Open(400, 100);
    EXPECT_TRUE(IsFramed(nullptr)) << "another window is active";
}

class Tooltips : public TabKeys {
  public:
    void SetUp() override {
        TabKeys::SetUp();
        first.SetTooltip("Plays\nthe piece");
        second.SetTooltip(u"Stops");
    }
    // Of the window with the text; empty while none shows.
    static CRect Place() {
        CRect rect;
        const HWND window = FindWindowExW(HWND(), HWND(), u"QKTooltip", nullptr);
        if (window && IsWindowVisible(window)) GetWindowRect(window, rect);
        return rect;
    }
    bool ShowsAfter(int x, unsigned milliseconds) {
        dialog.Move(x, 30);
        Headless::Advance(milliseconds);
        return !Place().IsRectEmpty();
    }
};

TEST_F(Tooltips, ShowWhenThePointerRests) {
    EXPECT_FALSE(ShowsAfter(30, 400));
    EXPECT_FALSE(ShowsAfter(31, 499));
    EXPECT_TRUE(ShowsAfter(31, 500));
    const CRect place = Place();
    EXPECT_EQ(place.TopLeft(), CPoint(131, 150));
    EXPECT_EQ(Headless::CaptureScreen().At(place.left + 2, place.top + 2), 0xFFFFFDF4);
    EXPECT_EQ(GetActiveWindow(), dialog.m_hWnd);
    EXPECT_TRUE(ShowsAfter(35, 0) && Place() == place) << "it does not follow";
    EXPECT_FALSE(ShowsAfter(90, 99));
    EXPECT_TRUE(ShowsAfter(90, 500));
    EXPECT_FALSE(ShowsAfter(90, 8000));
    EXPECT_FALSE(ShowsAfter(91, 1000)) << "it has been read";
    // The topmost counts, and the screen's edge.
    box.SetRect(80, 20, 40, 30);
    EXPECT_FALSE(ShowsAfter(95, 1000)) << "covered";
    dialog.SetWindowPos(HWND(), 560, 430, 0, 0, SWP_NOSIZE);
    EXPECT_TRUE(ShowsAfter(30, 1000));
    EXPECT_TRUE(Place().right <= 640 && Place().bottom < 460);
}

TEST_F(Tooltips, GoWithWhatTheyBelongTo) {
    TestDialog other;
    const struct {
        const char* what;
        std::function<void()> act;
    } ends[] = {
        {"a press", [&] { dialog.Press(30, 30); }},
        {"a key", [] { Headless::Type("a"); }},
        {"leaving", [] { Headless::MovePointer(639, 479); }},
        {"the window moves", [&] { dialog.SetWindowPos(HWND(), 90, 90, 0, 0, SWP_NOSIZE); }},
        {"another window", [&] { other.Open(400, 300); }},
        {"the item is taken off", [&] { dialog.RemoveQKItem(&first); }},
        {"the window is hidden", [&] { dialog.ShowWindow(SW_HIDE); }},
        {"the window is gone", [&] { dialog.DestroyWindow(); }},
    };
    for (const auto& end : ends) {
        Headless::MovePointer(639, 479);
        if (other.m_hWnd) other.DestroyWindow();
        dialog.AddQKItem(&first);
        dialog.Show();
        EXPECT_TRUE(ShowsAfter(30, 500)) << end.what;
        end.act();
        Headless::ButtonUp();
        EXPECT_TRUE(Place().IsRectEmpty()) << end.what;
    }
}

}  // namespace
