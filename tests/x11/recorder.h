// A sink that keeps what a window system reports, and a window system on a session to go with it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/window/file_drop.h"
#include "platform/window/window_system.h"
#include "x11/x_session.h"

namespace xtest {

struct Seen {
    enum class Kind {
        Moved,
        Left,
        Button,
        Wheel,
        Key,
        Focus,
        Placed,
        Exposed,
        Minimised,
        Close,
        GrabLost,
        Destroyed,
        Lost
    };
    Kind kind;
    HWND window;
    CPoint screen;
    int value = 0;  // button, wheel delta or virtual key
    bool on = false;
    char16_t character = 0;
    platform::InputState state;
    std::uint64_t time = 0;
    CRect rect;  // placed, or the box of what was exposed
};

class Recorder final : public platform::WindowEvents {
  public:
    std::vector<Seen> events;

    int Count(Seen::Kind kind) const {
        return static_cast<int>(
            std::count_if(events.begin(), events.end(), [&](const Seen& seen) { return seen.kind == kind; }));
    }
    // The latest of its kind; null without one.
    const Seen* Last(Seen::Kind kind) const {
        const auto found =
            std::find_if(events.rbegin(), events.rend(), [&](const Seen& seen) { return seen.kind == kind; });
        return found == events.rend() ? nullptr : &*found;
    }
    bool IsFocused(HWND window) const {
        bool focused = false;
        for (const Seen& seen : events)
            if (seen.kind == Seen::Kind::Focus && seen.window == window) focused = seen.on;
        return focused;
    }

    void Notify(platform::WindowEvent happened) override {
        using namespace platform::event;
        using Kind = Seen::Kind;
        std::visit(platform::Overloaded{
                       [this](const Pointer& pointer) {
                           const bool button = pointer.kind == Pointer::Button;
                           const Kind kind = button                           ? Kind::Button
                                             : pointer.kind == Pointer::Moved ? Kind::Moved
                                                                              : Kind::Wheel;
                           events.push_back({kind,
                                             pointer.window,
                                             pointer.screen,
                                             button ? pointer.button : pointer.delta,
                                             pointer.down,
                                             0,
                                             pointer.state,
                                             pointer.time,
                                             {}});
                       },
                       [this](const Key& key) {
                           events.push_back({Kind::Key,
                                             key.window,
                                             {},
                                             static_cast<int>(key.virtualKey),
                                             key.down,
                                             key.character,
                                             key.state,
                                             key.time,
                                             {}});
                       },
                       [this](const PointerLeft& left) { Add(Kind::Left, left.window); },
                       [this](const KeysHeld& now) { held = now.keys; },
                       [this](const FocusChanged& focus) { Add(Kind::Focus, focus.window, focus.focused); },
                       [this](const BoundsChanged& bounds) {
                           Add(Kind::Placed, bounds.window);
                           events.back().rect = bounds.screen;
                       },
                       [this](const Exposed& exposed) {
                           Add(Kind::Exposed, exposed.window);
                           events.back().rect = exposed.region.Box();
                           if (onExposed) onExposed(exposed.window, exposed.region);
                       },
                       [this](const MinimisedChanged& change) {
                           Add(Kind::Minimised, change.window, change.minimised);
                       },
                       [this](const CloseRequested& close) { Add(Kind::Close, close.window); },
                       [this](const GrabLost& lost) { Add(Kind::GrabLost, lost.window); },
                       [this](const SystemDestroyed& gone) { Add(Kind::Destroyed, gone.window); },
                       [this](FilesDropped& files) { drops.push_back(std::move(files.drop)); },
                       [this](const ConnectionLost&) { Add(Kind::Lost, HWND()); },
                       [](const auto&) {},
                   },
                   happened);
    }
    DROPEFFECT FilesOver(HWND, POINT, DROPEFFECT wanted) override { return accepts & wanted; }

    std::function<void(HWND, const platform::Region&)> onExposed;
    platform::KeySet held;  // as last reported
    DROPEFFECT accepts = DROPEFFECT_NONE;
    std::vector<platform::FileDrop> drops;

  private:
    void Add(Seen::Kind kind, HWND window, bool on = false) {
        events.push_back({kind, window, {}, 0, on, 0, {}, 0, {}});
    }
};

inline platform::WindowTraits Titled(LPCWSTR title) {
    platform::WindowTraits traits;
    traits.title = title;
    return traits;
}

// A window system on a session of its own, with windows that show one colour and repair themselves.
class X11Test : public testing::Test {
  protected:
    void Open(const SessionOptions& options = {}) {
        session = XSession::Start(options);
        if (!session) throw std::runtime_error("no session");
        system = platform::MakeX11WindowSystem(seen);
        if (!system) throw std::runtime_error("no window system");
        seen.onExposed = [this](HWND window, const platform::Region& region) {
            system->Present(window, region);
        };
    }
    // Waits for events until the condition holds.
    bool Until(const std::function<bool()>& condition, int milliseconds = 10000) {
        const std::uint64_t end = system->Now() + static_cast<std::uint64_t>(milliseconds);
        while (!condition()) {
            if (system->Now() >= end || !system->Wait(system->Now() + 20)) return condition();
        }
        return true;
    }
    // Dispatches for a while: for what must not happen.
    void Idle(int milliseconds) {
        Until([] { return false; }, milliseconds);
    }
    HWND NewWindow(const CRect& rect, const platform::WindowTraits& traits = platform::WindowTraits()) {
        const HWND window(++lastIndex_, 1);
        EXPECT_TRUE(system->Create(window, rect, traits));
        return window;
    }
    // Fills the window's surface with one pixel value and presents it.
    std::shared_ptr<platform::Surface> Fill(HWND window, const CSize& size, std::uint32_t pixel) {
        auto surface = system->NewSurface(window, size.cx, size.cy);
        EXPECT_TRUE(surface);
        if (!surface) return surface;
        system->BeginWrite(window);
        FillRect(*surface, CRect(0, 0, size.cx, size.cy), pixel);
        system->Present(window, platform::Region(CRect(0, 0, size.cx, size.cy)));
        return surface;
    }
    static void FillRect(platform::Surface& surface, const CRect& rect, std::uint32_t pixel) {
        for (int y = rect.top; y < rect.bottom; ++y)
            std::fill(surface.Row(y) + rect.left, surface.Row(y) + rect.right, pixel);
        surface.Touch();
    }
    // Shows it and waits until the server says that it is there.
    void ShowAndWait(HWND window) {
        const int before = seen.Count(Seen::Kind::Exposed);
        system->Show(window, platform::Visibility::Shown);
        EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Exposed) > before; }));
    }
    bool ScreenShows(int x, int y, std::uint32_t colour) {
        const bool shows = Until([&] { return session->PixelAt(x, y) == colour; }, 5000);
        if (!shows) ADD_FAILURE() << std::hex << session->PixelAt(x, y) << " instead of " << colour;
        return shows;
    }

    std::unique_ptr<XSession> session;
    Recorder seen;
    std::unique_ptr<platform::WindowSystem> system;

  private:
    std::uint32_t lastIndex_ = 0;
};

}  // namespace xtest
