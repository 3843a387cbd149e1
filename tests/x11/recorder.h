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

#include "platform/window/window_system.h"
#include "x11/x_session.h"

namespace xtest {

using namespace platform::event;

class Recorder final : public platform::WindowEvents {
  public:
    std::vector<platform::WindowEvent> events;

    template <class Event>
    std::vector<Event> All() const {
        std::vector<Event> all;
        for (const platform::WindowEvent& one : events)
            if (const auto* event = std::get_if<Event>(&one)) all.push_back(*event);
        return all;
    }
    std::vector<Pointer> All(Pointer::Kind kind) const {
        std::vector<Pointer> all = All<Pointer>();
        std::erase_if(all, [kind](const Pointer& pointer) { return pointer.kind != kind; });
        return all;
    }
    template <class Event>
    int Count() const {
        return static_cast<int>(All<Event>().size());
    }
    int Count(Pointer::Kind kind) const { return static_cast<int>(All(kind).size()); }
    // The latest; an empty one when there is none.
    template <class Event>
    Event Last() const {
        const std::vector<Event> all = All<Event>();
        return all.empty() ? Event() : all.back();
    }
    Pointer Last(Pointer::Kind kind) const {
        const std::vector<Pointer> all = All(kind);
        return all.empty() ? Pointer() : all.back();
    }
    bool IsFocused(HWND window) const {
        bool focused = false;
        for (const FocusChanged& change : All<FocusChanged>())
            if (change.window == window) focused = change.focused;
        return focused;
    }

    void Notify(platform::WindowEvent happened) override {
        if (auto* const files = std::get_if<FilesDropped>(&happened)) {
            drops.push_back(std::move(files->drop));
            return;
        }
        events.push_back(std::move(happened));
        // A copy: what is done about it may report more.
        if (const auto* const exposed = std::get_if<Exposed>(&events.back()); exposed && onExposed)
            onExposed(exposed->window, platform::Region(exposed->region));
    }
    DROPEFFECT FilesOver(HWND, POINT, DROPEFFECT wanted) override { return accepts & wanted; }

    std::function<void(HWND, const platform::Region&)> onExposed;
    DROPEFFECT accepts = DROPEFFECT_NONE;
    std::vector<platform::FileDrop> drops;
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
        const int before = seen.Count<Exposed>();
        system->Show(window, platform::Visibility::Shown);
        EXPECT_TRUE(Until([&] { return seen.Count<Exposed>() > before; }));
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
