// Hover, press, release, clicks, the hand cursor, window dragging and the rubber band.
#include "support/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

constexpr auto kNormal = QKItemBase::QK_NORMAL;
constexpr auto kOver = QKItemBase::QK_MOUSEON;
constexpr auto kDown = QKItemBase::QK_MOUSEDOWN;

class DialogPointer : public kit::HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        a.reset(new TestButton(10, 10));
        b.reset(new TestButton(100, 10));
        dialog.reset(new TestDialog);
        dialog->SetBackColor(Gdiplus::Color(0xFF202020), 1);
        dialog->AddQKItem(a.get());
        dialog->AddQKItem(b.get());
        dialog->Open();
    }
    std::unique_ptr<TestButton> a, b;
    std::unique_ptr<TestDialog> dialog;
};

TEST_F(DialogPointer, StatesAndClicksOfEveryGesture) {
    enum Step { kMove, kPress, kRelease };
    struct Act {
        Step step;
        int x, y;
        QKItemBase::QK_STATUS a, b;
        int clicksA, clicksB;
    };
    struct Case {
        const char* name;
        std::vector<Act> acts;
    };
    const Case cases[] = {
        {"click",
         {{kMove, 5, 5, kNormal, kNormal, 0, 0},
          {kMove, 10, 10, kOver, kNormal, 0, 0},
          {kPress, 10, 10, kDown, kNormal, 0, 0},
          {kRelease, 10, 10, kOver, kNormal, 1, 0},
          {kMove, 50, 40, kNormal, kNormal, 1, 0}}},
        {"edges",
         {{kMove, 49, 39, kOver, kNormal, 0, 0},
          {kMove, 50, 39, kNormal, kNormal, 0, 0},
          {kMove, 49, 40, kNormal, kNormal, 0, 0},
          {kMove, 100, 10, kNormal, kOver, 0, 0},
          {kMove, 500, 300, kNormal, kNormal, 0, 0}}},
        {"released outside",
         {{kPress, 20, 20, kDown, kNormal, 0, 0},
          {kMove, 70, 80, kDown, kNormal, 0, 0},
          {kRelease, 70, 80, kNormal, kNormal, 0, 0},
          {kMove, 20, 20, kOver, kNormal, 0, 0}}},
        {"back inside",
         {{kPress, 20, 20, kDown, kNormal, 0, 0},
          {kMove, 70, 80, kDown, kNormal, 0, 0},
          {kMove, 30, 30, kDown, kNormal, 0, 0},
          {kRelease, 30, 30, kOver, kNormal, 1, 0}}},
        {"released on another",
         {{kPress, 20, 20, kDown, kNormal, 0, 0},
          {kMove, 110, 20, kDown, kNormal, 0, 0},
          {kRelease, 110, 20, kNormal, kOver, 0, 0}}},
        {"outside the window",
         {{kPress, 110, 20, kNormal, kDown, 0, 0},
          {kMove, 300, -50, kNormal, kDown, 0, 0},
          {kRelease, 300, -50, kNormal, kNormal, 0, 0}}},
        {"double click",
         {{kPress, 20, 20, kDown, kNormal, 0, 0},
          {kRelease, 20, 20, kOver, kNormal, 1, 0},
          {kPress, 20, 20, kDown, kNormal, 1, 0},
          {kRelease, 20, 20, kOver, kNormal, 2, 0}}},
    };
    for (const Case& c : cases) {
        Headless::MovePointer(600, 400);
        Headless::Advance(1000);
        a->clicks = b->clicks = 0;
        for (std::size_t i = 0; i < c.acts.size(); ++i) {
            SCOPED_TRACE(testing::Message() << c.name << ", act " << i);
            const Act& act = c.acts[i];
            if (act.step == kMove)
                dialog->Move(act.x, act.y);
            else if (act.step == kPress)
                dialog->Press(act.x, act.y);
            else
                dialog->Release(act.x, act.y);
            EXPECT_EQ(a->GetStatus(), act.a);
            EXPECT_EQ(b->GetStatus(), act.b);
            EXPECT_EQ(a->clicks, act.clicksA);
            EXPECT_EQ(b->clicks, act.clicksB);
            const std::uint32_t shown[] = {kit::kNormal, kit::kOver, kit::kPressed};
            EXPECT_EQ(dialog->Pixel(10, 10), shown[a->GetStatus()]);
            EXPECT_EQ(dialog->Pixel(100, 10), shown[b->GetStatus()]);
        }
        EXPECT_EQ(GetCapture(), HWND());
        EXPECT_EQ(dialog->m_pDownItem, nullptr);
        EXPECT_EQ(a->GetCaptrue() + b->GetCaptrue(), 0);
    }
}

TEST_F(DialogPointer, OverlappingButtonsLightTogetherAndTheLaterOneTakesThePress) {
    TestButton top(30, 20);
    dialog->AddQKItem(&top);
    dialog->Move(35, 25);
    EXPECT_EQ(a->GetStatus(), kOver);
    EXPECT_EQ(top.GetStatus(), kOver);
    dialog->Click(35, 25);
    EXPECT_EQ(top.clicks, 1);
    EXPECT_EQ(a->clicks, 0);
    top.SetEnable(0);
    dialog->Click(35, 25);
    EXPECT_EQ(a->clicks, 1);
    a->SetShow(0);
    dialog->Press(35, 25);
    Headless::ButtonUp();
    EXPECT_EQ(top.clicks + a->clicks, 2);
}

TEST_F(DialogPointer, RefreshesOneRectangleForAPress) {
    dialog->Move(20, 20);
    dialog->refreshedRects.clear();
    dialog->refreshes = 0;
    Headless::ButtonDown();
    EXPECT_EQ(dialog->refreshedRects, std::vector<CRect>{CRect(10, 10, 50, 40)});
    Headless::ButtonUp();
    EXPECT_EQ(dialog->refreshedRects.size(), 2U);
    EXPECT_EQ(dialog->refreshes, 0);
    dialog->Move(21, 21);
    EXPECT_EQ(dialog->refreshes, 0);  // nothing changed
}

TEST_F(DialogPointer, TheHandShowsOnlyOverItemsThatAskForIt) {
    a->SetMouseMoveHand(1);
    dialog->Move(20, 20);
    EXPECT_EQ(Headless::CursorShown(), 32649U);
    dialog->Move(60, 60);
    EXPECT_EQ(Headless::CursorShown(), 32512U);
    dialog->Move(110, 20);
    EXPECT_EQ(Headless::CursorShown(), 32512U);
}

TEST_F(DialogPointer, EmptySpaceDragsTheWindowUnlessForbidden) {
    for (const int noMove : {0, 1}) {
        SCOPED_TRACE(noMove);
        dialog->SetNoMove(noMove);
        CRect before, after;
        dialog->GetWindowRect(before);
        dialog->Press(60, 100);
        Headless::MovePointer(before.left + 60 + 37, before.top + 100 + 11);
        Headless::ButtonUp();
        dialog->GetWindowRect(after);
        CRect moved(before);
        if (!noMove) moved.OffsetRect(37, 11);
        EXPECT_EQ(after, moved);
        EXPECT_EQ(GetCapture(), HWND());
        dialog->Click(20, 20);
        EXPECT_EQ(a->clicks, noMove + 1);
    }
}

TEST_F(DialogPointer, AMinimiseButtonIsNormalAfterwards) {
    dialog->SetMinMaxStyle();
    a->onClick = [this] { dialog->MinQKDlg(); };
    dialog->Click(20, 20);
    EXPECT_TRUE(IsIconic(dialog->m_hWnd));
    EXPECT_EQ(a->GetStatus(), kNormal);
    EXPECT_EQ(dialog->m_bMinimized, 0);
    Headless::MovePointer(600, 400);
    ShowWindow(dialog->m_hWnd, SW_RESTORE);
    Headless::RunPending();
    EXPECT_EQ(dialog->Pixel(20, 20), kit::kNormal);
}

TEST_F(DialogPointer, TheRubberBandFollowsThePointer) {
    dialog->SetNoMove(1);
    dialog->SetSelRect(1);
    dialog->Click(60, 60);
    EXPECT_EQ(dialog->m_bSelecting, 0);  // a single press on empty space starts none
    Headless::ButtonDown();
    EXPECT_EQ(dialog->m_bSelecting, 1);
    struct Case {
        int x, y;
        CRect band;
    };
    const Case cases[] = {{120, 90, {60, 60, 120, 90}},
                          {20, 30, {20, 30, 60, 60}},
                          {-15, 200, {-15, 60, 60, 200}},
                          {60, 60, {60, 60, 60, 60}},
                          {100, 100, {60, 60, 100, 100}}};
    for (const Case& c : cases) {
        dialog->Move(c.x, c.y);
        EXPECT_EQ(dialog->m_rcSel, c.band);
    }
    EXPECT_EQ(dialog->Pixel(60, 60), 0xFF3399FFU);
    EXPECT_EQ(dialog->Pixel(100, 100), 0xFF3399FFU);
    EXPECT_EQ(dialog->Pixel(101, 101), 0xFF202020U);
    // 0x643399FF over 0xFF202020
    const std::uint32_t inside = dialog->Pixel(80, 80);
    EXPECT_NEAR(static_cast<int>(inside & 0xFF), 255 * 100 / 255 + 0x20 * 155 / 255, 1);
    EXPECT_NEAR(static_cast<int>((inside >> 16) & 0xFF), 0x33 * 100 / 255 + 0x20 * 155 / 255, 1);
    Headless::ButtonUp();
    EXPECT_EQ(dialog->m_bSelecting, 0);
    EXPECT_EQ(dialog->m_rcSel, CRect(0, 0, 0, 0));
    EXPECT_EQ(dialog->Pixel(80, 80), 0xFF202020U);
}

TEST_F(DialogPointer, RightButtonsNeverReachItems) {
    dialog->Move(20, 20);
    Headless::ButtonDown(3);
    EXPECT_EQ(a->GetStatus(), kOver);
    Headless::ButtonUp(3);
    dialog->OnRButtonDown(0, CPoint(20, 20));
    EXPECT_EQ(a->clicks, 0);
    EXPECT_EQ(a->GetStatus(), kOver);
}

TEST_F(DialogPointer, EventsGivenDirectlyToOneItem) {
    QKButton& button = *a;
    const CRect rect(10, 10, 50, 40);
    EXPECT_EQ(dialog->MoveLeaveItem(&button, rect), 0);
    EXPECT_EQ(dialog->MoveUpItem(&button, rect, CPoint(0, 0)), 0);
    EXPECT_EQ(dialog->MoveOnItem(&button, rect, CPoint(12, 12)), 1);
    EXPECT_EQ(dialog->MoveOnItem(&button, rect, CPoint(13, 13)), 0);
    EXPECT_EQ(dialog->MoveDownItem(&button, rect, CPoint(0, 0)), 0);
    EXPECT_EQ(dialog->MoveDownItem(&button, rect, CPoint(12, 12)), 1);
    EXPECT_EQ(dialog->MoveDownItem(&button, rect, CPoint(12, 12)), 0);
    EXPECT_EQ(dialog->MoveOnItem(&button, rect, CPoint(0, 0)), 0);  // captured
    EXPECT_EQ(button.GetStatus(), kDown);
    EXPECT_EQ(dialog->MoveLeaveItem(&button, rect), 1);
    EXPECT_EQ(dialog->MoveUpItem(&button, rect, CPoint(12, 12)), 1);  // pressed no more: no click
    EXPECT_EQ(a->clicks, 0);
    dialog->OnLButtonUp(0, CPoint(0, 0));
    EXPECT_EQ(GetCapture(), HWND());
}

}  // namespace
