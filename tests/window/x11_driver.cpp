// The contract suite's user on a real X server, with a window manager and a compositor.
#include <cstdlib>
#include <deque>
#include <thread>
#include <utility>

#include "window/driver.h"
#include "x11/x_session.h"

namespace windowtest {

namespace {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;

std::string NameOfKey(UINT virtualKey) {
    switch (virtualKey) {
        case VK_SHIFT:
            return "Shift_L";
        case VK_MENU:
            return "Alt_L";
        case VK_ESCAPE:
            return "Escape";
        case VK_RETURN:
            return "Return";
        case VK_F4:
            return "F4";
        default:
            return std::string(1, static_cast<char>(virtualKey - 'A' + 'a'));
    }
}

class X11Driver : public Driver {
  public:
    explicit X11Driver(std::unique_ptr<xtest::XSession> session)
        : session_(std::move(session)), desktop_(*session_, 0, 0, kScreenWidth, kScreenHeight, 0x3A6EA5) {
        current_ = this;
    }
    ~X11Driver() override { current_ = nullptr; }

    void Move(int x, int y) override {
        session_->MovePointer(x, y);
        Settle();
    }
    void Press(int button) override { Act({"mousedown", std::to_string(button)}); }
    void Release(int button) override {
        if (!(ButtonsDown() & (1U << (button + 7)))) return;
        Act({"mouseup", std::to_string(button)});
    }
    void KeyDown(UINT virtualKey) override { Act({"keydown", NameOfKey(virtualKey)}); }
    void KeyUp(UINT virtualKey) override { Act({"keyup", NameOfKey(virtualKey)}); }
    // As a task list asks a window manager to close a window.
    void RequestClose(HWND window) override {
        const CString before = GetWindowTextW(window);
        SetWindowTextW(window, u"to be closed");
        Settle();
        const xcb_window_t found = session_->FindByTitle("to be closed");
        SetWindowTextW(window, before);
        session_->Send(session_->Root(), found, "_NET_CLOSE_WINDOW", {0, 2});
        Settle();
    }
    // Quiet is when the server, the window manager and the compositor had time to answer and did not.
    void Settle() override {
        for (int quiet = 0; quiet < 8; ++quiet) {
            if (Dispatch()) quiet = 0;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    void Pass(unsigned milliseconds) override {
        const DWORD start = GetTickCount();
        while (GetTickCount() - start < milliseconds) {
            Dispatch();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    bool HasExactClock() const override { return false; }
    Headless::Picture Screen() override {
        // The window manager and the compositor act in their own time: the screen must stay the same for a
        // while.
        Settle();
        Headless::Picture picture;
        std::vector<std::uint32_t> before;
        for (int i = 0, same = 0; i < 100; ++i) {
            const xtest::Picture seen = session_->Screenshot();
            picture.width = seen.width;
            picture.height = seen.height;
            picture.argb = seen.pixels;
            same = picture.argb == before ? same + 1 : 0;
            if (same == 3) break;
            before = picture.argb;
            Settle();
        }
        for (std::uint32_t& pixel : picture.argb)
            pixel |= 0xFF000000;
        return picture;
    }
    // A timer of no window goes on in every modal loop.
    void WhenBlocked(void (*act)(void*), void* argument) override {
        acts_.push_back({act, argument});
        if (!timer_) timer_ = SetTimer({}, 0, 40, [](HWND, UINT, UINT_PTR, DWORD) { current_->RunAct(); });
    }

  private:
    struct Planned {
        void (*run)(void*);
        void* argument;
    };
    void RunAct() {
        const bool blocked = dispatching_ != WM_TIMER;  // else the timer came before what blocks
        if (!blocked || acting_ || acts_.empty()) return;
        const Planned planned = acts_.front();
        acts_.pop_front();
        if (acts_.empty()) {
            KillTimer({}, timer_);
            timer_ = 0;
        }
        acting_ = true;
        planned.run(planned.argument);
        acting_ = false;
    }
    void Act(const std::vector<std::string>& command) {
        session_->Xdotool(command);
        Settle();
    }
    static bool Dispatch() {
        MSG message{};
        bool any = false;
        while (PeekMessageW(&message, {}, 0, 0, PM_NOREMOVE) && message.message != WM_QUIT) {
            PeekMessageW(&message, {}, 0, 0, PM_REMOVE);
            TranslateMessage(&message);
            const UINT outer = std::exchange(dispatching_, message.message);
            DispatchMessageW(&message);
            dispatching_ = outer;
            any = true;
        }
        return any;
    }
    std::uint32_t ButtonsDown() {
        xcb_connection_t* c = session_->Connection();
        xcb_query_pointer_reply_t* reply =
            xcb_query_pointer_reply(c, xcb_query_pointer(c, session_->Root()), nullptr);
        const std::uint32_t mask = reply ? reply->mask : 0;
        std::free(reply);
        return mask;
    }

    static inline X11Driver* current_ = nullptr;
    static inline UINT dispatching_ = 0;  // by Dispatch, innermost
    std::unique_ptr<xtest::XSession> session_;
    xtest::ForeignWindow desktop_;
    std::deque<Planned> acts_;
    UINT_PTR timer_ = 0;
    bool acting_ = false;
};

}  // namespace

std::unique_ptr<Driver> MakeDriver() {
    xtest::SessionOptions options;
    options.windowManager = options.compositor = true;
    options.width = kScreenWidth;
    options.height = kScreenHeight;
    auto session = xtest::XSession::Start(options);
    return session ? std::make_unique<X11Driver>(std::move(session)) : nullptr;
}

}  // namespace windowtest
