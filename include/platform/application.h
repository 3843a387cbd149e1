/// @file
/// A program as an object.
#pragma once

#include <platform/framework.h>

/// One object of a class derived from this, made before `main` begins (a global variable), is the program.
/// `main` is `return AfxWinMain(argc, argv);`, or the ready one in an archive of its own, which a host links.
class PLATFORM_API CWinApp : public CCmdTarget {
    DECLARE_DYNAMIC(CWinApp)
  public:
    ///@{
    /// The name is taken as it is; null: that of the program's file.
    explicit CWinApp(LPCWSTR name = nullptr);
    ~CWinApp() override;
    CWinApp(const CWinApp&) = delete;
    ///@}
    CWinApp& operator=(const CWinApp&) = delete;

    /// The window that the program is about: where it ends, the program's loop does.
    CWnd* m_pMainWnd = nullptr;
    HINSTANCE m_hInstance;           ///< the program's own resources
    LPWSTR m_lpCmdLine;              ///< the arguments after the program's name, with a blank between them
    int m_nCmdShow = SW_SHOWNORMAL;  ///< how the first window is to be shown
    LPCWSTR m_pszAppName;
    LPCWSTR m_pszExeName;  ///< of the program's file, without its folder

    /// Makes the first window. FALSE ends the program: after a modal dialog, or where something is missing.
    virtual BOOL InitInstance();
    /// Runs messages until WM_QUIT; the result is that of ExitInstance.
    virtual int Run();
    /// Last of all; returns the exit code: that of PostQuitMessage, or 0.
    virtual int ExitInstance();
    /// No message waits. TRUE asks to be called again, `count` one more, before any message is waited for.
    virtual BOOL OnIdle(LONG count);
    /// TRUE takes a message out before it is translated and dispatched. Asked by all loops of the framework
    /// on the program's thread, those of modal dialogs among them.
    virtual BOOL PreTranslateMessage(MSG* message);

    HCURSOR LoadCursor(LPCWSTR name) const { return LoadCursorW({}, name); }
    HCURSOR LoadStandardCursor(LPCWSTR name) const { return LoadCursorW({}, name); }
    ///@{
    /// The icon of the resources, to be destroyed by the caller; see LoadIconW.
    HICON LoadIcon(LPCWSTR name) const { return LoadIconW({}, name); }
    HICON LoadIcon(UINT id) const { return LoadIconW({}, MAKEINTRESOURCE(id)); }
    ///@}

  private:
    friend PLATFORM_API int AfxWinMain(int argc, char** argv);
    CString name_, file_, commandLine_;
    int exitCode_ = 0;
};

/// The program's object, or null.
PLATFORM_API CWinApp* AfxGetApp();
///@{
/// Its main window, or null.
PLATFORM_API CWnd* AfxGetMainWnd();
PLATFORM_API HINSTANCE AfxGetInstanceHandle();
PLATFORM_API LPCWSTR AfxGetAppName();
///@}
PLATFORM_API void AfxPostQuitMessage(int exitCode);
/// Runs the program's object: InitInstance, Run, ExitInstance. Returns the exit code; 1 without an object.
PLATFORM_API int AfxWinMain(int argc, char** argv);
