// A dialog with the handlers of every kind, driven as a user would.
#include <afxwin.h>
#include <gdiplus.h>

#include <gtest/gtest.h>

#include <platform/headless.h>

#include "resource.h"

namespace {

class CHostDlg : public CDialog {
  public:
    explicit CHostDlg(CWnd* pParent = NULL) : CDialog(IDD_MAIN, pParent) {}
    CString log_;

  protected:
    void DoDataExchange(CDataExchange* pDX) override { CDialog::DoDataExchange(pDX); }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        ModifyStyle(WS_CAPTION, 0);  // a skin has no frame
        m_hIcon = AfxGetApp() ? AfxGetApp()->LoadIcon(IDR_MAINFRAME)
                              : ::LoadIcon(AfxGetInstanceHandle(), MAKEINTRESOURCE(IDR_MAINFRAME));
        SetIcon(m_hIcon, TRUE);
        SetIcon(m_hIcon, FALSE);
        return TRUE;
    }

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct) {
        log_.AppendFormat(_T("create %s;"), lpCreateStruct->lpszName);
        return CDialog::OnCreate(lpCreateStruct);
    }
    afx_msg void OnPaint() {
        CPaintDC dc(this);
        CRect rect;
        GetClientRect(&rect);
        dc.FillSolidRect(&rect, RGB(0, 0, 255));
        Gdiplus::Graphics graphics(dc.GetSafeHdc());
        Gdiplus::SolidBrush brush(Gdiplus::Color::Yellow);
        graphics.FillRectangle(&brush, 10, 10, 5, 5);
    }
    afx_msg BOOL OnEraseBkgnd(CDC* pDC) { return pDC->GetSafeHdc() ? TRUE : FALSE; }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI) {
        lpMMI->ptMinTrackSize.x = 120;
        lpMMI->ptMaxTrackSize.x = 600;
        CDialog::OnGetMinMaxInfo(lpMMI);
    }
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt) {
        log_.AppendFormat(_T("wheel %d %d at %d;"), nFlags, zDelta, pt.x);
        return TRUE;
    }
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point) {
        log_.AppendFormat(_T("menu %d %d,%d;"), pWnd == this, point.x, point.y);
    }
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
        log_.AppendFormat(_T("key %d %d %x;"), nChar, nRepCnt, nFlags);
        CDialog::OnKeyDown(nChar, nRepCnt, nFlags);
    }
    afx_msg void OnChar(UINT nChar, UINT, UINT) { log_.AppendFormat(_T("char %c;"), nChar); }
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized) {
        CDialog::OnActivate(nState, pWndOther, bMinimized);
        log_ += nState == WA_INACTIVE ? _T("inactive;") : _T("active;");
    }
    afx_msg void OnSetFocus(CWnd* pOldWnd) {
        CDialog::OnSetFocus(pOldWnd);
        log_ += "focus;";
    }
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message) {
        if (nHitTest != HTCLIENT) return CDialog::OnSetCursor(pWnd, nHitTest, message);
        ::SetCursor(::LoadCursor(NULL, IDC_HAND));
        return TRUE;
    }
    afx_msg void OnSize(UINT nType, int cx, int cy) {
        CDialog::OnSize(nType, cx, cy);
        if (nType == SIZE_MAXIMIZED) log_.AppendFormat(_T("maximised %dx%d;"), cx, cy);
    }
    afx_msg void OnTimer(UINT_PTR nIDEvent) {
        log_.AppendFormat(_T("timer %d;"), static_cast<int>(nIDEvent));
        KillTimer(nIDEvent);
    }
    afx_msg void OnRButtonDblClk(UINT nFlags, CPoint point) {
        log_ += "double;";
        CDialog::OnRButtonDblClk(nFlags, point);
    }
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point) { CDialog::OnMButtonDown(nFlags, point); }
    afx_msg void OnBnClickedCheck() { log_ += "check;"; }
    afx_msg LRESULT OnAnswer(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }
    DECLARE_MESSAGE_MAP()

  private:
    HICON m_hIcon;
};

BEGIN_MESSAGE_MAP(CHostDlg, CDialog)
//{{AFX_MSG_MAP(CHostDlg)
ON_WM_CREATE()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_GETMINMAXINFO()
ON_WM_MOUSEWHEEL()
ON_WM_CONTEXTMENU()
ON_WM_KEYDOWN()
ON_WM_CHAR()
ON_WM_ACTIVATE()
ON_WM_SETFOCUS()
ON_WM_SETCURSOR()
ON_WM_SIZE()
ON_WM_TIMER()
ON_WM_RBUTTONDBLCLK()
ON_WM_MBUTTONDOWN()
ON_BN_CLICKED(IDC_CHECK, &CHostDlg::OnBnClickedCheck)
ON_MESSAGE(WM_USER + 5, OnAnswer)
//}}AFX_MSG_MAP
END_MESSAGE_MAP()

class PortingDialog : public testing::Test {
  protected:
    PortingDialog() {
        Headless::Use(800, 600);
        Headless::SetMonitors({{CRect(0, 0, 800, 600), CRect(0, 20, 800, 600)}});
        EXPECT_TRUE(dialog_.Create(IDD_MAIN));
        dialog_.MoveWindow(CRect(100, 100, 300, 250));
        Headless::RunPending();
    }
    void Drag(CPoint from, CPoint to) {
        Headless::MovePointer(from.x, from.y);
        Headless::ButtonDown();
        Headless::MovePointer(to.x, to.y);
        Headless::ButtonUp();
    }
    CRect Place() const {
        CRect rect;
        dialog_.GetWindowRect(&rect);
        return rect;
    }

    CHostDlg dialog_;
};

TEST_F(PortingDialog, HandlersOfEveryForm) {
    EXPECT_EQ(ToUtf8(dialog_.log_), "create Host;focus;active;");
    dialog_.log_.Empty();
    const HWND window = dialog_.GetSafeHwnd();
    ::PostMessage(window, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, -120), MAKELPARAM(150, 150));
    Headless::RunPending();
    Headless::MovePointer(150, 140);
    Headless::ButtonDown(3);
    Headless::ButtonUp(3);
    Headless::KeyDown(VK_APPS);
    Headless::KeyUp(VK_APPS);
    Headless::KeyDown('A');
    Headless::KeyUp('A');
    dialog_.SetTimer(3, 50, NULL);
    Headless::Advance(200);
    dialog_.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_CHECK, 0), 0);
    dialog_.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_CHECK, 5), 0);  // not a click
    EXPECT_EQ(ToUtf8(dialog_.log_),
              "wheel 8 -120 at 150;menu 1 150,140;key 93 1 0;menu 1 -1,-1;key 65 1 0;char a;timer 3;"
              "check;");
    EXPECT_EQ(::SendMessage(window, WM_USER + 5, 2, 3), 5);
    // Keys as of now, and as of the message.
    Headless::KeyDown(VK_SHIFT);
    EXPECT_TRUE((::GetAsyncKeyState(VK_SHIFT) & 0x8000) && (::GetKeyState(VK_SHIFT) & 0x8000));
    Headless::KeyUp(VK_SHIFT);
    EXPECT_EQ(::GetAsyncKeyState(VK_SHIFT), 0);
}

TEST_F(PortingDialog, RepeatsAreNoPressesAndLateClicksNotDouble) {
    const auto toggled = [] { return ::GetKeyState('B') & 1; };
    const int before = toggled();
    Headless::KeyDown('B');
    Headless::KeyDown('B');
    Headless::RunPending();
    EXPECT_NE(toggled(), before);
    Headless::KeyUp('B');
    Headless::MovePointer(150, 140);
    for (const UINT late : {0U, 1U}) {
        dialog_.log_.Empty();
        for (int press = 0; press < 2; ++press) {
            Headless::ButtonDown(3);
            Headless::ButtonUp(3);
            Headless::Advance(::GetDoubleClickTime() + late);
        }
        EXPECT_EQ(dialog_.log_.Find("double") >= 0, late == 0);
        Headless::Advance(::GetDoubleClickTime());
    }
}

TEST_F(PortingDialog, PaintsIconsAndPlaceholders) {
    const Headless::Picture shown = Headless::Capture(dialog_);
    EXPECT_EQ(shown.At(12, 12), 0xFFFFFF00);
    EXPECT_EQ(shown.At(30, 30), 0xFF0000FF);
    EXPECT_EQ(Headless::CaptureIcon(dialog_).At(5, 5), 0xFFFF0000);
    // Controls are places, with numbers and texts.
    CRect place;
    TCHAR text[16];
    EXPECT_TRUE(::GetWindowRect(dialog_.GetDlgItem(IDC_LIST), &place));
    EXPECT_GT(place.Width(), 60);
    EXPECT_EQ(::GetWindowText(dialog_.GetDlgItem(IDC_CHECK), text, 16), 5);
    EXPECT_EQ(CString(text), "Check");
}

TEST_F(PortingDialog, IsSizedByItsBorder) {
    const struct {
        CPoint place;
        UINT cursor;
    } cases[] = {{{298, 180}, 32644}, {{101, 102}, 32642}, {{200, 248}, 32645}, {{200, 170}, 32649}};
    for (const auto& one : cases) {
        Headless::MovePointer(one.place.x, one.place.y);
        EXPECT_EQ(Headless::CursorShown(), one.cursor);
    }
    Drag({298, 102}, {308, 122});
    EXPECT_EQ(Headless::CursorShown(), 32643U);
    EXPECT_EQ(Place(), CRect(100, 120, 310, 250));
    // Not smaller and not larger than it says; the other edge stays.
    Drag({102, 180}, {252, 180});
    EXPECT_EQ(Place(), CRect(190, 120, 310, 250));
    Drag({308, 180}, {800, 180});
    EXPECT_EQ(Place(), CRect(190, 120, 790, 250));
    Drag({200, 170}, {250, 220});
    EXPECT_EQ(Place(), CRect(190, 120, 790, 250));
}

TEST_F(PortingDialog, FillsTheMonitor) {
    dialog_.log_.Empty();
    dialog_.ShowWindow(SW_MAXIMIZE);
    EXPECT_EQ(Place(), CRect(0, 20, 800, 600));
    EXPECT_TRUE(dialog_.IsZoomed() && dialog_.GetStyle() & WS_MAXIMIZE);
    EXPECT_EQ(ToUtf8(dialog_.log_), "maximised 800x580;");
    // No border to size it by, nothing to move; minimised and back it is what it was.
    Drag({798, 300}, {700, 300});
    EXPECT_EQ(Place(), CRect(0, 20, 800, 600));
    dialog_.ShowWindow(SW_MINIMIZE);
    EXPECT_TRUE(dialog_.IsIconic());
    dialog_.ShowWindow(SW_RESTORE);
    EXPECT_TRUE(dialog_.IsZoomed());
    dialog_.ShowWindow(SW_RESTORE);
    EXPECT_EQ(Place(), CRect(100, 100, 300, 250));
    EXPECT_FALSE(dialog_.IsZoomed());
    // A double click on what moves it does the same, and undoes it.
    for (const bool zoomed : {true, false}) {
        ::SendMessage(dialog_, WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
        EXPECT_EQ(dialog_.IsZoomed(), zoomed);
    }
}

}  // namespace
