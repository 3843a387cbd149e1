#include "window/window_kit.h"

#include <algorithm>

namespace windowtest {

std::unique_ptr<Driver> WindowTest::driver_;

namespace {

const std::map<UINT, const char*>& Names() {
    static const std::map<UINT, const char*> names = {{WM_CREATE, "CREATE"},
                                                      {WM_DESTROY, "DESTROY"},
                                                      {WM_MOVE, "MOVE"},
                                                      {WM_SIZE, "SIZE"},
                                                      {WM_ACTIVATE, "ACTIVATE"},
                                                      {WM_SETFOCUS, "SETFOCUS"},
                                                      {WM_KILLFOCUS, "KILLFOCUS"},
                                                      {WM_ENABLE, "ENABLE"},
                                                      {WM_PAINT, "PAINT"},
                                                      {WM_CLOSE, "CLOSE"},
                                                      {WM_QUIT, "QUIT"},
                                                      {WM_ERASEBKGND, "ERASEBKGND"},
                                                      {WM_SHOWWINDOW, "SHOWWINDOW"},
                                                      {WM_SETCURSOR, "SETCURSOR"},
                                                      {WM_NCCREATE, "NCCREATE"},
                                                      {WM_NCDESTROY, "NCDESTROY"},
                                                      {WM_NCHITTEST, "NCHITTEST"},
                                                      {WM_NCLBUTTONDOWN, "NCLBUTTONDOWN"},
                                                      {WM_KEYDOWN, "KEYDOWN"},
                                                      {WM_KEYUP, "KEYUP"},
                                                      {WM_CHAR, "CHAR"},
                                                      {WM_SYSKEYDOWN, "SYSKEYDOWN"},
                                                      {WM_SYSKEYUP, "SYSKEYUP"},
                                                      {WM_SYSCOMMAND, "SYSCOMMAND"},
                                                      {WM_TIMER, "TIMER"},
                                                      {WM_MOUSEMOVE, "MOUSEMOVE"},
                                                      {WM_LBUTTONDOWN, "LBUTTONDOWN"},
                                                      {WM_LBUTTONUP, "LBUTTONUP"},
                                                      {WM_LBUTTONDBLCLK, "LBUTTONDBLCLK"},
                                                      {WM_RBUTTONDOWN, "RBUTTONDOWN"},
                                                      {WM_RBUTTONUP, "RBUTTONUP"},
                                                      {WM_RBUTTONDBLCLK, "RBUTTONDBLCLK"},
                                                      {WM_MBUTTONDOWN, "MBUTTONDOWN"},
                                                      {WM_MBUTTONUP, "MBUTTONUP"},
                                                      {WM_MBUTTONDBLCLK, "MBUTTONDBLCLK"},
                                                      {WM_MOUSEWHEEL, "MOUSEWHEEL"},
                                                      {WM_ENTERSIZEMOVE, "ENTERSIZEMOVE"},
                                                      {WM_EXITSIZEMOVE, "EXITSIZEMOVE"},
                                                      {WM_MOUSELEAVE, "MOUSELEAVE"},
                                                      {WM_SETTEXT, "SETTEXT"},
                                                      {WM_WINDOWPOSCHANGED, "WINDOWPOSCHANGED"}};
    return names;
}

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    if (!context) return;
    auto found = TheScript().colours.find(window.ToParam());
    if (found != TheScript().colours.end()) {
        const HBRUSH brush = CreateSolidBrush(found->second);
        RECT all;
        GetClientRect(window, &all);
        FillRect(context, &all, brush);
        DeleteObject(brush);
    }
    EndPaint(window, &paint);
}

LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Script& script = TheScript();
    script.heard.push_back({window, message, wParam, lParam});
    LRESULT result = 0;
    if (const auto answer = script.answer; answer && answer(window, message, wParam, lParam, result))
        return result;
    if (message == WM_PAINT) {
        Paint(window);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

std::string NameOf(UINT message) {
    auto found = Names().find(message);
    return found == Names().end() ? std::to_string(message) : found->second;
}

std::string NamesOf(const std::vector<Heard>& heard) {
    std::string names;
    for (const Heard& one : heard)
        names += (names.empty() ? "" : " ") + NameOf(one.message);
    return names;
}

std::vector<Heard> Script::Of(HWND window, const std::vector<UINT>& messages) const {
    std::vector<Heard> found;
    for (const Heard& one : heard)
        if (one.window == window &&
            (messages.empty() || std::find(messages.begin(), messages.end(), one.message) != messages.end()))
            found.push_back(one);
    return found;
}

int Script::Count(HWND window, UINT message) const {
    return static_cast<int>(Of(window, {message}).size());
}

Script& TheScript() {
    static Script script;
    return script;
}

void WindowTest::SetUp() {
    if (!driver_) {
        driver_ = MakeDriver();
        ASSERT_TRUE(driver_) << ErrorText(GetLastError());
        WNDCLASSW description;
        description.lpfnWndProc = Procedure;
        description.lpszClassName = kWindowClass;
        description.hCursor = LoadCursorW({}, IDC_ARROW);
        ASSERT_TRUE(RegisterClassW(&description));
    }
    driver_->Move(790, 590);
    TheScript() = Script();
}

void WindowTest::TearDown() {
    TheScript().answer = nullptr;
    for (HWND window : opened_)
        if (IsWindow(window)) DestroyWindow(window);
    for (int button = 1; button <= 3; ++button)
        driver_->Release(button);
    driver_->Settle();
    MSG message;
    while (PeekMessageW(&message, {}, 0, 0, PM_REMOVE)) {
    }
    TheScript() = Script();
}

HWND WindowTest::Create(int x, int y, int width, int height, DWORD exStyle, HWND owner) {
    const HWND window =
        CreateWindowExW(exStyle, kWindowClass, u"test", WS_POPUP, x, y, width, height, owner, 0, {}, nullptr);
    if (window) opened_.push_back(window);
    return window;
}

HWND WindowTest::Open(int x, int y, int width, int height, COLORREF colour, HWND owner, DWORD exStyle) {
    const HWND window = Create(x, y, width, height, exStyle, owner);
    TheScript().colours[window.ToParam()] = colour;
    ShowWindow(window, SW_SHOW);
    driver_->Settle();
    return window;
}

HWND WindowTest::OpenChild(HWND parent, int x, int y, int width, int height, COLORREF colour, UINT_PTR id) {
    const HWND window =
        CreateWindowExW(0, kWindowClass, u"", WS_CHILD, x, y, width, height, parent, id, {}, nullptr);
    TheScript().colours[window.ToParam()] = colour;
    ShowWindow(window, SW_SHOW);
    driver_->Settle();
    return window;
}

}  // namespace windowtest
