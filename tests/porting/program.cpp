// InitInstance with a dialog in it, the main window, the command line, idle time and the exit code.
#include <afxwin.h>

#include "resource.h"

#include <platform/headless.h>

namespace {

class CMainDlg : public CDialog {
  public:
    CMainDlg() : CDialog(IDD_MAIN) {}

  protected:
    afx_msg void OnTimer(UINT nIDEvent) {
        KillTimer(nIDEvent);
        DestroyWindow();
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        SetIcon(AfxGetApp()->LoadIcon(IDR_MAINFRAME), TRUE);
        SetTimer(1, 20, NULL);
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CMainDlg, CDialog)
ON_WM_TIMER()
END_MESSAGE_MAP()

class CHostApp : public CWinApp {
  public:
    BOOL InitInstance() override {
        Headless::Use();
        if (CString(m_lpCmdLine) != _T("one two")) return FALSE;
        static CMainDlg dialog;
        m_pMainWnd = &dialog;
        if (!dialog.Create(IDD_MAIN)) return FALSE;
        dialog.PostMessage(WM_APP);
        AfxPumpMessage();  // as a modal dialog's loop does
        Headless::WhenIdle([](void*) { Headless::Advance(50); }, nullptr);
        return TRUE;
    }
    BOOL PreTranslateMessage(MSG* message) override {
        if (message->message == WM_APP) ++filtered_;
        return CWinApp::PreTranslateMessage(message);
    }
    BOOL OnIdle(LONG) override {
        ++idle_;
        return FALSE;
    }
    int ExitInstance() override {
        const int code = CWinApp::ExitInstance();
        return code == 0 && m_pMainWnd == nullptr && idle_ > 0 && filtered_ == 1 && AfxGetApp() == this ? 7
                                                                                                        : 1;
    }

  private:
    int idle_ = 0;
    int filtered_ = 0;
};

CHostApp theApp;

}  // namespace
