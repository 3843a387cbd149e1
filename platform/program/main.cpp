// The `main` of programs that have none: for hosts with a global CWinApp, or with a WinMain.
#include <platform/application.h>

// One of these, if the host has it; a CWinApp comes first.
int WinMain(HINSTANCE module, HINSTANCE before, LPSTR commandLine, int show) __attribute__((weak));
int wWinMain(HINSTANCE module, HINSTANCE before, LPWSTR commandLine, int show) __attribute__((weak));

int main(int argc, char** argv) {
    if (AfxGetApp()) return AfxWinMain(argc, argv);
    std::string arguments;
    for (int i = 1; i < argc; ++i)
        arguments += (i > 1 ? " " : "") + std::string(argv[i]);
    if (WinMain) return WinMain(AfxGetInstanceHandle(), {}, arguments.data(), SW_SHOWNORMAL);
    CString text = FromUtf8(arguments);
    return wWinMain ? wWinMain(AfxGetInstanceHandle(), {}, text.GetBuffer(), SW_SHOWNORMAL) : 1;
}
