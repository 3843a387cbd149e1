// Hosts on a real screen when keys, the window manager or the server want to end them.
#include <QKUILib.h>
#include <gtest/gtest.h>

#include "x11/x_session.h"

namespace {

// Acts while its modal loop runs: the step is called on a timer until it answers true.
class Acting : public CQKDialogBase {
  public:
    explicit Acting(std::function<bool(Acting&)> step) : CQKDialogBase(101), step_(std::move(step)) {}
    BOOL OnInitDialog() override {
        CQKDialogBase::OnInitDialog();
        SetWindowText(u"acting");
        SetWindowPos(HWND(), 100, 100, 200, 150, SWP_NOZORDER);
        SetBackColor(Gdiplus::Color(0xFF00FF00), 1);
        SetTimer(1, 20);
        return TRUE;
    }

  protected:
    void OnTimer(UINT_PTR id) {
        if (step_(*this)) KillTimer(1);
        CQKDialogBase::OnTimer(id);
    }
    DECLARE_MESSAGE_MAP()

  private:
    std::function<bool(Acting&)> step_;
};

BEGIN_MESSAGE_MAP(Acting, CQKDialogBase)
ON_WM_TIMER()
END_MESSAGE_MAP()

// One server for all of it: a process that lost its server stays without one.
TEST(Host, IgnoresKeysHeedsTheManagerAndOutlivesTheServer) {
    auto session = xtest::XSession::Start();
    ASSERT_TRUE(session);

    // No window manager: the keys come to the dialog itself.
    {
        int turn = 0;
        Acting dialog([&](Acting& self) {
            const char* keys[] = {"Return", "Escape", "alt+F4"};
            if (session->PixelAt(150, 150) != 0x00FF00) return false;
            if (turn < 3) {
                ::SetFocus(self.m_hWnd);
                session->Xdotool({"key", keys[turn]});
            } else if (turn == 10) {
                self.EndDialog(42);  // reached only if none of them closed it
            }
            return ++turn > 10;
        });
        EXPECT_EQ(dialog.DoModal(), 42);
    }

    ASSERT_TRUE(session->StartWindowManager());
    {
        Acting dialog([&](Acting&) {
            const xcb_window_t window = session->FindByTitle("acting");
            if (window == 0 || session->PixelAt(150, 150) != 0x00FF00) return false;
            session->Send(session->Root(), window, "_NET_CLOSE_WINDOW");
            return true;
        });
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_FALSE(dialog.m_hWnd);
    }

    Acting other([](Acting&) { return true; });
    ASSERT_TRUE(other.Create(101));
    other.ShowWindow(SW_SHOW);
    Acting dialog([&](Acting&) {
        if (session->PixelAt(150, 150) != 0x00FF00) return false;
        session->KillServer();
        return true;
    });
    SetLastError(0);
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    other.UpdateView();
    other.Set_OPAQUEDlg(255);
    other.UpdateView();
    EXPECT_TRUE(other.DestroyWindow());
    EXPECT_EQ(AfxRunMessageLoop(), -1);

    // In order, and in memory from here on.
    ASSERT_TRUE(Headless::Use(320, 240));
    CQKDialogBase after(101);
    after.SetBackColor(Gdiplus::Color(0xFFFF0000), 1);
    ASSERT_TRUE(after.Create(101));
    after.ShowWindow(SW_SHOW);
    Headless::RunPending();
    EXPECT_EQ(Headless::Capture(after.m_hWnd).At(5, 5), 0xFFFF0000U);
}

}  // namespace
