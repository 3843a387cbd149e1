#include "window/window_kit.h"

#include <algorithm>

namespace windowtest {

std::unique_ptr<Driver> WindowTest::driver_;

namespace {

const std::map<UINT, const char*>& Names() {
#define NAMED(message) std::pair<const UINT, const char*>(WM_##message, #message)
    static const std::map<UINT, const char*> names = {NAMED(CREATE),
                                                      NAMED(DESTROY),
                                                      NAMED(MOVE),
                                                      NAMED(SIZE),
                                                      NAMED(ACTIVATE),
                                                      NAMED(SETFOCUS),
                                                      NAMED(KILLFOCUS),
                                                      NAMED(ENABLE),
                                                      NAMED(PAINT),
                                                      NAMED(CLOSE),
                                                      NAMED(QUIT),
                                                      NAMED(ERASEBKGND),
                                                      NAMED(SHOWWINDOW),
                                                      NAMED(SETCURSOR),
                                                      NAMED(NCCREATE),
                                                      NAMED(NCDESTROY),
                                                      NAMED(NCHITTEST),
                                                      NAMED(NCLBUTTONDOWN),
                                                      NAMED(KEYDOWN),
                                                      NAMED(KEYUP),
                                                      NAMED(CHAR),
                                                      NAMED(SYSKEYDOWN),
                                                      NAMED(SYSKEYUP),
                                                      NAMED(SYSCOMMAND),
                                                      NAMED(TIMER),
                                                      NAMED(MOUSEMOVE),
                                                      NAMED(LBUTTONDOWN),
                                                      NAMED(LBUTTONUP),
                                                      NAMED(LBUTTONDBLCLK),
                                                      NAMED(RBUTTONDOWN),
                                                      NAMED(RBUTTONUP),
                                                      NAMED(RBUTTONDBLCLK),
                                                      NAMED(MBUTTONDOWN),
                                                      NAMED(MBUTTONUP),
                                                      NAMED(MBUTTONDBLCLK),
                                                      NAMED(MOUSEWHEEL),
                                                      NAMED(ENTERSIZEMOVE),
                                                      NAMED(EXITSIZEMOVE),
                                                      NAMED(MOUSELEAVE),
                                                      NAMED(SETTEXT),
                                                      NAMED(WINDOWPOSCHANGED)};
#undef NAMED
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
    script.received.push_back({window, message, wParam, lParam});
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

std::string NamesOf(const std::vector<Received>& received) {
    std::string names;
    for (const Received& one : received)
        names += (names.empty() ? "" : " ") + NameOf(one.message);
    return names;
}

std::vector<Received> Script::Of(HWND window, const std::vector<UINT>& messages) const {
    std::vector<Received> found;
    for (const Received& one : received)
        if (one.window == window &&
            (messages.empty() || std::find(messages.begin(), messages.end(), one.message) != messages.end()))
            found.push_back(one);
    return found;
}

int Script::Count(HWND window, UINT message) const {
    return static_cast<int>(Of(window, {message}).size());
}

void Script::At(UINT message, std::function<void(HWND)> act) {
    answer = [=](HWND window, UINT heardMessage, WPARAM, LPARAM, LRESULT&) {
        if (heardMessage == message) act(window);
        return false;
    };
}

void Script::Answer(UINT message, std::function<LRESULT(HWND)> act) {
    answer = [=](HWND window, UINT heardMessage, WPARAM, LPARAM, LRESULT& result) {
        if (heardMessage == message) result = act(window);
        return heardMessage == message;
    };
}

bool RegisterScriptedClass() {
    WNDCLASSW description;
    description.lpfnWndProc = Procedure;
    description.lpszClassName = kWindowClass;
    description.hCursor = LoadCursorW({}, IDC_ARROW);
    return RegisterClassW(&description) != FALSE;
}

Script& TheScript() {
    static Script script;
    return script;
}

void WindowTest::SetUp() {
    if (!driver_) {
        driver_ = MakeDriver();
        ASSERT_TRUE(driver_) << ErrorText(GetLastError());
        ASSERT_TRUE(RegisterScriptedClass());
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

void WindowTest::PressAnd(std::initializer_list<std::function<void()>> acts) {
    driver_->Move(110, 110);
    for (const auto& act : acts)
        WhenBlocked(act);
    driver_->Press();
}

void WindowTest::WhenBlocked(std::function<void()> act) {
    driver_->WhenBlocked(
        [](void* owned) {
            const std::unique_ptr<std::function<void()>> mine(static_cast<std::function<void()>*>(owned));
            (*mine)();
        },
        new std::function<void()>(std::move(act)));
}

}  // namespace windowtest
