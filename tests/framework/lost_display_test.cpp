// What becomes of loops and objects when the display server or the window system goes away under them.
#include "framework/dialog_fixture.h"
#include "platform/window/core/control.h"
#include "platform/window/core/display.h"

namespace {

class LostDisplay : public DialogTest {
  protected:
    void SetUp() override {
        platform::ShutDownWindows();
        DialogTest::SetUp();
        UsePlainTemplate();
    }
    void TearDown() override {
        platform::ShutDownWindows();
        module_.reset();
    }
};

TEST_F(LostDisplay, EveryLoopReturnsTheError) {
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, u"owner", WS_POPUP | WS_VISIBLE, CRect(0, 0, 90, 90), nullptr, 0));
    CDialog outer(PlainTemplate, &owner);
    CDialog inner(PlainTemplate, &outer);
    WhenIdle([&] {
        WhenIdle([] { platform::MarkSystemLost(); });
        EXPECT_EQ(inner.DoModal(), -1);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
    });
    EXPECT_EQ(outer.DoModal(), -1);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
    EXPECT_FALSE(outer.m_hWnd);
    EXPECT_FALSE(inner.m_hWnd);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(AfxRunMessageLoop(), -1);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
    EXPECT_FALSE(AfxPumpMessage());
    CDialog late(PlainTemplate);
    EXPECT_EQ(late.DoModal(), -1);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
}

// Windows that were taken away without a word leave objects that may be used again.
TEST_F(LostDisplay, ObjectsOutliveAShutDown) {
    CDialog dialog;
    CWnd window, never;
    ASSERT_TRUE(dialog.Create(PlainTemplate));
    ASSERT_TRUE(window.CreateEx(0, u"w", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    ASSERT_TRUE(never.CreateEx(0, u"n", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    const HWND stale = window.m_hWnd;
    platform::ShutDownWindows();
    ASSERT_TRUE(Headless::Use());
    EXPECT_EQ(CWnd::FromHandlePermanent(stale), nullptr);
    EXPECT_FALSE(never.DestroyWindow());
    EXPECT_TRUE(dialog.Create(PlainTemplate));
    EXPECT_TRUE(window.CreateEx(0, u"w", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    EXPECT_EQ(CWnd::FromHandlePermanent(window.m_hWnd), &window);
}

}  // namespace
