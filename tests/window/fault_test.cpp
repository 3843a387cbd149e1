// Stale handles in every call, and windows that go away while they are being told something.
#include <algorithm>

#include "window/window_kit.h"

namespace windowtest {
namespace {

using FaultTest = WindowTest;

TEST_F(FaultTest, EveryCallRecognisesAStaleWindow) {
    const HWND gone = Create(0, 0, 5, 5);
    DestroyWindow(gone);
    const HWND reused = Create(0, 0, 5, 5);
    ASSERT_FALSE(gone == reused);
    static HWND other;
    other = reused;
    static RECT rect;
    static POINT point;
    static PAINTSTRUCT paint;
    static MSG message;
    static TRACKMOUSEEVENT request;
    request = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, {}, 0};
    struct Call {
        std::string text;
        bool (*succeeds)(HWND);
    };
#define CALL(call)                                            \
    Call {                                                    \
#call, [](HWND w) { return static_cast<bool>(call); } \
    }
    const Call calls[] = {
        CALL(DestroyWindow(w)),
        CALL(ShowWindow(w, SW_SHOW)),
        CALL(IsWindowVisible(w)),
        CALL(IsIconic(w)),
        CALL(EnableWindow(w, TRUE)),
        CALL(IsWindowEnabled(w)),
        CALL(SetWindowPos(w, {}, 0, 0, 1, 1, 0)),
        CALL(SetWindowPos(other, w, 0, 0, 1, 1, SWP_NOACTIVATE)),
        CALL(MoveWindow(w, 0, 0, 1, 1, TRUE)),
        CALL(GetWindowRect(w, &rect)),
        CALL(GetClientRect(w, &rect)),
        CALL(ClientToScreen(w, &point)),
        CALL(ScreenToClient(w, &point)),
        CALL(GetParent(w)),
        CALL(GetDlgItem(w, 1)),
        CALL(GetWindowLongPtrW(w, GWL_STYLE)),
        CALL(SetWindowLongPtrW(w, GWLP_USERDATA, 1)),
        CALL(SetWindowTextW(w, u"x")),
        CALL(!GetWindowTextW(w).IsEmpty()),
        CALL(SetFocus(w)),
        CALL(SetActiveWindow(w)),
        CALL(SetForegroundWindow(w)),
        CALL(InvalidateRect(w, nullptr, TRUE)),
        CALL(ValidateRect(w, nullptr)),
        CALL(GetUpdateRect(w, nullptr, FALSE)),
        CALL(UpdateWindow(w)),
        CALL(BeginPaint(w, &paint)),
        CALL(EndPaint(w, &paint)),
        CALL(GetDC(w)),
        CALL(ReleaseDC(w, HDC())),
        CALL(SetLayeredWindowAttributes(w, 0, 0, LWA_ALPHA)),
        CALL(UpdateLayeredWindow(w, {}, nullptr, nullptr, {}, nullptr, 0, nullptr, 0)),
        CALL(SetWindowRgn(w, {}, TRUE)),
        CALL(SendMessageW(w, WM_CLOSE, 0, 0)),
        CALL(PostMessageW(w, WM_CLOSE, 0, 0)),
        CALL(PeekMessageW(&message, w, 0, 0, PM_REMOVE)),
        CALL(GetMessageW(&message, w, 0, 0) != -1),
        CALL(DefWindowProcW(w, WM_NCHITTEST, 0, 0)),
        CALL(SetTimer(w, 1, 10, nullptr)),
        CALL(KillTimer(w, 1)),
        CALL(SetCapture(w)),
        CALL((request.hwndTrack = w, TrackMouseEvent(&request))),
        CALL(CreateWindowExW(0, kWindowClass, u"", WS_CHILD, 0, 0, 1, 1, w, 0, {}, nullptr)),
    };
#undef CALL
    // The empty window means something to these.
    const char* const takeEmpty[] = {"SetWindowPos(other", "SetFocus",    "GetDC",      "ReleaseDC",
                                     "PostMessage",        "PeekMessage", "GetMessage", "SetTimer",
                                     "KillTimer",          "CreateWindow"};
    const HWND neverGiven(12345, 1);
    for (const HWND bad : {gone, neverGiven, HWND()})
        for (const auto& [text, succeeds] : calls) {
            const auto isNamed = [text = text](const char* name) { return text.starts_with(name); };
            if (!bad && std::ranges::any_of(takeEmpty, isNamed)) continue;
            SCOPED_TRACE(text);
            SetLastError(0);
            EXPECT_FALSE(succeeds(bad));
            EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
        }
    EXPECT_FALSE(IsWindow(gone));
    EXPECT_TRUE(IsWindow(reused));
}

TEST_F(FaultTest, AWindowMayGoInsideAnyMessage) {
    static FaultTest* self;
    self = this;
    static const auto press = [](int button) {
        self->User().Move(110, 110);
        self->User().Click(button);
        self->User().Click(button);
    };
    static const auto erase = [](HWND w) { return InvalidateRect(w, nullptr, TRUE); };
    static const auto leave = [](HWND w) {
        self->User().Move(110, 110);
        TRACKMOUSEEVENT request = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, w, 0};
        TrackMouseEvent(&request);
        self->User().Move(10, 10);
    };
    static const auto grab = [](HWND w) {
        self->User().Move(110, 110);
        self->User().Press();
        SendMessageW(w, WM_NCLBUTTONDOWN, HTCAPTION, 0);
    };
    const struct {
        UINT message;
        void (*cause)(HWND);
    } occasions[] = {
        {WM_SHOWWINDOW, [](HWND w) { ShowWindow(w, SW_HIDE); }},
        {WM_SIZE, [](HWND w) { MoveWindow(w, 0, 0, 9, 9, TRUE); }},
        {WM_MOVE, [](HWND w) { MoveWindow(w, 0, 0, 9, 9, TRUE); }},
        {WM_WINDOWPOSCHANGED, [](HWND w) { SetWindowPos(w, HWND_TOPMOST, 0, 0, 9, 9, SWP_SHOWWINDOW); }},
        {WM_SIZE, [](HWND w) { ShowWindow(w, SW_MINIMIZE); }},
        {WM_MOVE, [](HWND w) { ShowWindow(w, SW_MINIMIZE); }},
        {WM_ACTIVATE, [](HWND w) { ShowWindow(w, SW_MINIMIZE); }},
        {WM_ACTIVATE, [](HWND w) { DestroyWindow(w); }},
        {WM_ACTIVATE, [](HWND) { self->Open(300, 300, 9, 9, kRed); }},
        {WM_KILLFOCUS, [](HWND) { self->Open(300, 300, 9, 9, kRed); }},
        {WM_SETFOCUS, [](HWND w) { SetFocus({}), SetFocus(w); }},
        {WM_ENABLE, [](HWND w) { EnableWindow(w, FALSE); }},
        {WM_SETTEXT, [](HWND w) { SetWindowTextW(w, u"x"); }},
        {WM_PAINT, [](HWND w) { erase(w); }},
        {WM_PAINT, [](HWND w) { erase(w), UpdateWindow(w); }},
        {WM_ERASEBKGND, [](HWND w) { erase(w); }},
        {WM_ERASEBKGND, [](HWND w) { erase(w), GetUpdateRect(w, nullptr, TRUE); }},
        {WM_CLOSE, [](HWND w) { self->User().RequestClose(w); }},
        {WM_SYSCOMMAND, [](HWND w) { self->User().RequestClose(w); }},
        {WM_DESTROY, [](HWND w) { DestroyWindow(w); }},
        {WM_NCDESTROY, [](HWND w) { DestroyWindow(w); }},
        {WM_SETCURSOR, [](HWND) { press(1); }},
        {WM_NCHITTEST, [](HWND) { press(1); }},
        {WM_NCHITTEST,
         [](HWND) {
             static_cast<void>(WindowFromPoint({110, 110}));
         }},
        {WM_MOUSEMOVE, [](HWND) { press(1); }},
        {WM_LBUTTONDOWN, [](HWND) { press(1); }},
        {WM_LBUTTONUP, [](HWND) { press(1); }},
        {WM_LBUTTONDBLCLK, [](HWND) { press(1); }},
        {WM_RBUTTONDOWN, [](HWND) { press(3); }},
        {WM_RBUTTONUP, [](HWND) { press(3); }},
        {WM_MBUTTONDBLCLK, [](HWND) { press(2); }},
        {WM_MOUSELEAVE, [](HWND w) { leave(w); }},
        {WM_KEYDOWN, [](HWND) { self->User().KeyDown('A'); }},
        {WM_CHAR, [](HWND) { self->User().KeyDown('A'); }},
        {WM_KEYUP, [](HWND) { self->User().Stroke('A'); }},
        {WM_SYSKEYDOWN, [](HWND) { self->User().Stroke(VK_MENU); }},
        {WM_TIMER, [](HWND w) { SetTimer(w, 1, 10, nullptr), self->User().Pass(30); }},
        {WM_USER, [](HWND w) { SendMessageW(w, WM_USER, 0, 0); }},
        {WM_USER, [](HWND w) { PostMessageW(w, WM_USER, 0, 0); }},
        {WM_ENTERSIZEMOVE, [](HWND w) { grab(w); }},
    };
    for (const bool destroysOwner : {false, true})
        for (const auto& one : occasions) {
            SCOPED_TRACE(NameOf(one.message) + (destroysOwner ? ", with its owner" : ""));
            const HWND owner = Open(400, 400, 20, 20, kBlue);
            const HWND window = Open(100, 100, 50, 50, kRed, owner);
            OpenChild(window, 30, 30, 5, 5, kGreen);
            SetActiveWindow(window);
            User().Settle();
            bool met = false;
            Log().answer = [&](HWND heard, UINT message, WPARAM, LPARAM, LRESULT&) {
                if (!(heard == window) || message != one.message || met) return false;
                met = true;
                DestroyWindow(destroysOwner ? owner : window);
                return false;
            };
            one.cause(window);
            User().Settle();
            EXPECT_TRUE(met);
            Log().answer = nullptr;
            EXPECT_FALSE(IsWindow(window));
            EXPECT_EQ(Log().Count(window, WM_NCDESTROY), 1);
            EXPECT_EQ(Log().Count(window, WM_DESTROY), 1);
            if (IsWindow(owner)) DestroyWindow(owner);
            for (int button = 1; button <= 3; ++button)
                User().Release(button);
            User().KeyUp('A');
            User().Move(790, 590);
        }
}

TEST_F(FaultTest, AProcedureMayDestroyWhileItIsCreated) {
    for (const UINT at :
         {UINT{WM_NCCREATE}, UINT{WM_CREATE}, UINT{WM_SIZE}, UINT{WM_MOVE}, UINT{WM_SHOWWINDOW}}) {
        SCOPED_TRACE(NameOf(at));
        bool met = false;
        Log().answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message != at || met) return false;
            met = true;
            DestroyWindow(window);
            return false;
        };
        EXPECT_FALSE(
            CreateWindowExW(0, kWindowClass, u"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, {}, 0, {}, nullptr));
        EXPECT_TRUE(met);
    }
}

TEST_F(FaultTest, SiblingsMayGoWhileTheirParentGoes) {
    const HWND parent = Open(100, 100, 50, 50, kRed);
    std::vector<HWND> children;
    for (int i = 0; i < 6; ++i)
        children.push_back(OpenChild(parent, i, i, 10, 10, kBlue, static_cast<UINT_PTR>(i)));
    const HWND owned = Open(10, 10, 10, 10, kGreen, parent);
    Log().answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_DESTROY && window == children[1]) {
            DestroyWindow(children[4]);
            DestroyWindow(children[0]);
            DestroyWindow(owned);
            DestroyWindow(parent);
        }
        return false;
    };
    EXPECT_TRUE(DestroyWindow(parent));
    EXPECT_FALSE(IsWindow(parent) || IsWindow(owned));
    for (const HWND child : children) {
        EXPECT_FALSE(IsWindow(child));
        EXPECT_EQ(Log().Count(child, WM_NCDESTROY), 1);
    }
}

TEST_F(FaultTest, AnExceptionLeavesNoHalfWindow) {
    struct Oops {};
    const HWND bystander = Open(300, 300, 9, 9, kBlue);
    for (const UINT at : {UINT{WM_NCCREATE}, UINT{WM_CREATE}, UINT{WM_SIZE}}) {
        SCOPED_TRACE(NameOf(at));
        HWND met;
        Log().answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
            if (message != at) return false;
            met = window;
            throw Oops();
        };
        EXPECT_THROW(CreateWindowExW(0, kWindowClass, u"", WS_POPUP, 0, 0, 9, 9, {}, 0, {}, nullptr), Oops);
        EXPECT_TRUE(met);
        EXPECT_FALSE(IsWindow(met));
    }
    for (const UINT at : {UINT{WM_SHOWWINDOW}, UINT{WM_DESTROY}, UINT{WM_NCDESTROY}})
        for (const bool inChild : {false, true}) {
            if (inChild && at == WM_SHOWWINDOW) continue;
            SCOPED_TRACE(NameOf(at));
            Log().answer = nullptr;
            const HWND window = Open(100, 100, 50, 50, kRed);
            const HWND child = OpenChild(window, 0, 0, 9, 9, kGreen);
            const HWND owned = Open(100, 100, 9, 9, kGreen, window);
            Log().answer = [&](HWND heard, UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
                if (message == at && heard == (inChild ? child : window)) throw Oops();
                return false;
            };
            EXPECT_THROW(DestroyWindow(window), Oops);
            EXPECT_FALSE(IsWindow(window) || IsWindow(child) || IsWindow(owned));
        }
    Log().answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
        if (message == WM_USER || message == WM_PAINT || message == WM_LBUTTONDOWN) throw Oops();
        return false;
    };
    EXPECT_THROW(SendMessageW(bystander, WM_USER, 0, 0), Oops);
    InvalidateRect(bystander, nullptr, TRUE);
    EXPECT_THROW(UpdateWindow(bystander), Oops);
    Log().answer = nullptr;
    User().Settle();
    EXPECT_EQ(ScreenColour(303, 303), kBluePixel) << "what was not painted still is";
}

TEST_F(FaultTest, NullPointersAreRefused) {
    const HWND window = Create(0, 0, 5, 5);
    SetLastError(0);
    EXPECT_FALSE(GetWindowRect(window, nullptr));
    EXPECT_FALSE(GetClientRect(window, nullptr));
    EXPECT_FALSE(ClientToScreen(window, nullptr));
    EXPECT_FALSE(ScreenToClient(window, nullptr));
    EXPECT_FALSE(BeginPaint(window, nullptr));
    EXPECT_FALSE(EndPaint(window, nullptr));
    EXPECT_FALSE(TrackMouseEvent(nullptr));
    EXPECT_FALSE(GetCursorPos(nullptr));
    EXPECT_FALSE(PeekMessageW(nullptr, {}, 0, 0, PM_REMOVE));
    EXPECT_EQ(GetMessageW(nullptr, {}, 0, 0), -1);
    EXPECT_FALSE(TranslateMessage(nullptr));
    EXPECT_EQ(DispatchMessageW(nullptr), 0);
    EXPECT_FALSE(RegisterClassW(nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    // A timer message with a procedure that no timer has is not called.
    const MSG made = {window, WM_TIMER, 1, 0x1234, 0, {0, 0}};
    EXPECT_EQ(DispatchMessageW(&made), 0);
}

}  // namespace
}  // namespace windowtest
