#include <platform/application.h>

#include <thread>

#include "platform/framework/program.h"
#include "platform/window/core/control.h"

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

namespace {

CWinApp* application = nullptr;
std::thread::id itsThread;

}  // namespace

CWinApp::CWinApp(LPCWSTR name) : m_hInstance(AfxGetResourceHandle()), name_(name) {
    WCHAR path[4096] = {};
    if (GetModuleFileNameW({}, path, std::size(path))) file_ = path;
    file_ = file_.Mid(file_.ReverseFind(u'/') + 1);
    if (!name) name_ = file_;
    m_pszAppName = name_;
    m_pszExeName = file_;
    m_lpCmdLine = commandLine_.GetBuffer();
    if (application) return;
    application = this;
    itsThread = std::this_thread::get_id();
    platform::SetMessageFilter(&platform::TakenBefore);
}

CWinApp::~CWinApp() {
    if (application == this) application = nullptr;
}

BOOL CWinApp::InitInstance() {
    return TRUE;
}

BOOL CWinApp::OnIdle(LONG) {
    return FALSE;
}

BOOL CWinApp::PreTranslateMessage(MSG* message) {
    return CWnd::WalkPreTranslateTree(message);
}

int CWinApp::Run() {
    for (;;) {
        MSG message{};
        LONG idle = 0;
        while (!PeekMessageW(&message, {}, 0, 0, PM_NOREMOVE) && OnIdle(idle))
            ++idle;
        const int got = GetMessageW(&message, {}, 0, 0);
        if (got <= 0) {
            exitCode_ = got < 0 ? -1 : static_cast<int>(message.wParam);
            return ExitInstance();
        }
        platform::DeliverMessage(message);
    }
}

int CWinApp::ExitInstance() {
    return exitCode_;
}

CWinApp* AfxGetApp() {
    return application;
}

CWnd* AfxGetMainWnd() {
    return application ? application->m_pMainWnd : nullptr;
}

HINSTANCE AfxGetInstanceHandle() {
    return AfxGetResourceHandle();
}

LPCWSTR AfxGetAppName() {
    return application ? application->m_pszAppName : nullptr;
}

void AfxPostQuitMessage(int exitCode) {
    PostQuitMessage(exitCode);
}

int AfxWinMain(int argc, char** argv) {
    CWinApp* const program = application;
    if (!program) return 1;
    // Resources register themselves in the order of linking, perhaps after the object was made.
    program->m_hInstance = AfxGetResourceHandle();
    for (int i = 1; i < argc; ++i)
        program->commandLine_ += (i > 1 ? CString(u" ") : CString()) + FromUtf8(argv[i]);
    program->m_lpCmdLine = program->commandLine_.GetBuffer();
    if (program->InitInstance()) return program->Run();
    if (program->m_pMainWnd) program->m_pMainWnd->DestroyWindow();
    return program->ExitInstance();
}

namespace platform {

bool TakenBefore(MSG& message) {
    const bool asked = application && itsThread == std::this_thread::get_id();
    return (asked ? application->PreTranslateMessage(&message) : CWnd::WalkPreTranslateTree(&message)) != 0;
}

void MainWindowLeaves(const CWnd& object) {
    if (!application || application->m_pMainWnd != &object) return;
    application->m_pMainWnd = nullptr;
    PostQuitMessage(0);
}

}  // namespace platform
