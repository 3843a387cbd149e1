// Hover, press, release, clicks, the hand cursor, window dragging and the rubber band.
#include "support/test_dialog.h"

namespace {

using kit::Line;
using kit::TestButton;
using kit::TestDialog;

constexpr auto kNormal = QKItemBase::QK_NORMAL;
constexpr auto kOver = QKItemBase::QK_MOUSEON;
constexpr auto kDown = QKItemBase::QK_MOUSEDOWN;

class DialogPointer : public kit::HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        dialog.SetBackColor(Gdiplus::Color(0xFF202020), 1);
        dialog.Open();
    }
    // How a button looks, which is what it knows of itself: normal, over or down.
    char Look(const TestButton& button, int x) {
        constexpr std::uint32_t kShown[] = {kit::kNormal, kit::kOver, kit::kPressed};
        EXPECT_EQ(dialog.Pixel(x, 10), kShown[button.GetStatus()]);
        return "nod"[button.GetStatus()];
    }
    TestButton a{10, 10}, b{100, 10};
    TestDialog dialog{{&a, &b}};
};

TEST_F(DialogPointer, StatesAndClicksOfEveryGesture) {
    const struct {
        const char* name;
        const char* acts;    // move, press or release, and where
        const char* states;  // after each: looks and clicks of both
    } cases[] = {
        {"click", "m 5 5 m 10 10 p 10 10 r 10 10 m 50 40", "nn00 on00 dn00 on10 nn10 "},
        {"edges", "m 49 39 m 50 39 m 49 40 m 100 10 m 500 300", "on00 nn00 nn00 no00 nn00 "},
        {"released outside", "p 20 20 m 70 80 r 70 80 m 20 20", "dn00 dn00 nn00 on00 "},
        {"back inside", "p 20 20 m 70 80 m 30 30 r 30 30", "dn00 dn00 dn00 on10 "},
        {"released on another", "p 20 20 m 110 20 r 110 20", "dn00 dn00 no00 "},
        {"outside the window", "p 110 20 m 300 -50 r 300 -50", "nd00 nd00 nn00 "},
        {"double click", "p 20 20 r 20 20 p 20 20 r 20 20", "dn00 on10 dn10 on20 "},
    };
    for (const auto& [name, acts, states] : cases) {
        SCOPED_TRACE(name);
        Headless::MovePointer(600, 400);
        Headless::Advance(1000);
        a.clicks = b.clicks = 0;
        std::istringstream steps(acts);
        std::string seen;
        char act;
        for (int x, y; steps >> act >> x >> y;) {
            dialog.Move(x, y);
            if (act == 'p') Headless::ButtonDown();
            if (act == 'r') Headless::ButtonUp();
            seen += {Look(a, 10), Look(b, 100)};
            seen += std::to_string(a.clicks) + std::to_string(b.clicks) + " ";
        }
        EXPECT_EQ(seen, states);
        EXPECT_EQ(GetCapture(), HWND());
        EXPECT_EQ(dialog.m_pDownItem, nullptr);
        EXPECT_EQ(a.GetCaptrue() + b.GetCaptrue(), 0);
    }
}

TEST_F(DialogPointer, OverlappingButtonsLightTogetherAndTheLaterOneTakesThePress) {
    TestButton top(30, 20);
    dialog.AddQKItem(&top);
    dialog.Click(35, 25);
    EXPECT_EQ(Line(a.GetStatus() == kOver, top.GetStatus() == kOver, a.clicks, top.clicks), "1 1 0 1");
    top.SetEnable(0);
    dialog.Click(35, 25);
    EXPECT_EQ(Line(a.clicks, top.clicks), "1 1");
    a.SetShow(0);
    dialog.Click(35, 25);
    EXPECT_EQ(Line(a.clicks, top.clicks), "1 1");
}

TEST_F(DialogPointer, RefreshesOneRectangleForAPress) {
    dialog.Move(20, 20);
    dialog.refreshedRects.clear();
    dialog.refreshes = 0;
    Headless::ButtonDown();
    EXPECT_EQ(dialog.refreshedRects, std::vector<CRect>{CRect(10, 10, 50, 40)});
    Headless::ButtonUp();
    EXPECT_EQ(dialog.refreshedRects.size(), 2U);
    dialog.Move(21, 21);
    EXPECT_EQ(dialog.refreshes, 0);  // nothing changed
}

TEST_F(DialogPointer, TheHandShowsOnlyOverItemsThatAskForIt) {
    a.SetMouseMoveHand(1);
    for (const auto& [x, y, cursor] : {std::tuple(20, 20, 32649U), {60, 60, 32512U}, {110, 20, 32512U}}) {
        dialog.Move(x, y);
        EXPECT_EQ(Headless::CursorShown(), cursor) << x;
    }
}

TEST_F(DialogPointer, EmptySpaceDragsTheWindowUnlessForbidden) {
    CRect rect;
    for (const int noMove : {0, 1}) {
        dialog.SetNoMove(noMove);
        Headless::Drag(dialog.m_hWnd, 60, 100, 97, 111);
        dialog.GetWindowRect(rect);
        EXPECT_EQ(Line(rect), "137 111 337 271") << noMove;
        EXPECT_EQ(GetCapture(), HWND());
        dialog.Click(20, 20);
        EXPECT_EQ(a.clicks, noMove + 1);
    }
}

TEST_F(DialogPointer, AMinimiseButtonIsNormalAfterwards) {
    dialog.SetMinMaxStyle();
    a.onClick = [this] { dialog.MinQKDlg(); };
    dialog.Click(20, 20);
    EXPECT_TRUE(IsIconic(dialog.m_hWnd));
    EXPECT_EQ(a.GetStatus(), kNormal);
    EXPECT_EQ(dialog.m_bMinimized, 0);
    Headless::MovePointer(600, 400);
    ShowWindow(dialog.m_hWnd, SW_RESTORE);
    Headless::RunPending();
    EXPECT_EQ(dialog.Pixel(20, 20), kit::kNormal);
}

TEST_F(DialogPointer, TheRubberBandFollowsThePointer) {
    dialog.SetNoMove(1);
    dialog.SetSelRect(1);
    dialog.Click(60, 60);
    EXPECT_EQ(dialog.m_bSelecting, 0);  // a single press on empty space starts none
    Headless::ButtonDown();
    EXPECT_EQ(dialog.m_bSelecting, 1);
    const std::pair<CPoint, CRect> bands[] = {{{120, 90}, {60, 60, 120, 90}},
                                              {{20, 30}, {20, 30, 60, 60}},
                                              {{-15, 200}, {-15, 60, 60, 200}},
                                              {{60, 60}, {60, 60, 60, 60}},
                                              {{100, 100}, {60, 60, 100, 100}}};
    for (const auto& [pointer, band] : bands) {
        dialog.Move(pointer.x, pointer.y);
        EXPECT_EQ(dialog.m_rcSel, band);
    }
    dialog.ExpectPixels({{60, 60, 0xFF3399FF}, {100, 100, 0xFF3399FF}, {101, 101, 0xFF202020}});
    kit::ExpectNear(dialog.Pixel(80, 80), 0xFF274F77);  // 0x643399FF over 0xFF202020
    Headless::ButtonUp();
    EXPECT_EQ(dialog.m_bSelecting, 0);
    EXPECT_EQ(dialog.m_rcSel, CRect(0, 0, 0, 0));
    EXPECT_EQ(dialog.Pixel(80, 80), 0xFF202020U);
}

TEST_F(DialogPointer, RightButtonsNeverReachItems) {
    dialog.Move(20, 20);
    Headless::ButtonDown(3);
    EXPECT_EQ(a.GetStatus(), kOver);
    Headless::ButtonUp(3);
    dialog.OnRButtonDown(0, CPoint(20, 20));
    EXPECT_EQ(Line(a.clicks, a.GetStatus() == kOver), "0 1");
}

TEST_F(DialogPointer, EventsGivenDirectlyToOneItem) {
    const CRect rect(10, 10, 50, 40);
    const CPoint in(12, 12), out(0, 0);
    const std::vector<int> taken = {dialog.MoveLeaveItem(&a, rect),
                                    dialog.MoveUpItem(&a, rect, out),
                                    dialog.MoveOnItem(&a, rect, in),
                                    dialog.MoveOnItem(&a, rect, in + CPoint(1, 1)),
                                    dialog.MoveDownItem(&a, rect, out),
                                    dialog.MoveDownItem(&a, rect, in),
                                    dialog.MoveDownItem(&a, rect, in),
                                    dialog.MoveOnItem(&a, rect, out),  // captured
                                    a.GetStatus() == kDown,
                                    dialog.MoveLeaveItem(&a, rect),
                                    dialog.MoveUpItem(&a, rect, in)};  // pressed no more: no click
    EXPECT_EQ(taken, (std::vector<int>{0, 0, 1, 0, 0, 1, 0, 0, 1, 1, 1}));
    EXPECT_EQ(a.clicks, 0);
    dialog.OnLButtonUp(0, out);
    EXPECT_EQ(GetCapture(), HWND());
}

}  // namespace
