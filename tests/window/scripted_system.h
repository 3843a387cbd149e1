// A window system that does nothing but write down what it is asked, and reports what a test tells it to.
// It stands in for the display server of the default window system.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/window/window_system.h"

namespace windowtest {

class ScriptedSystem : public platform::WindowSystem {
  public:
    // What the next attempt to reach the server finds.
    static inline bool reachable = true;
    static inline ScriptedSystem* current = nullptr;
    static inline int made = 0;

    explicit ScriptedSystem(platform::WindowEvents& sink) : events(sink) {
        current = this;
        ++made;
    }
    ~ScriptedSystem() override { current = nullptr; }

    platform::WindowEvents& events;
    std::vector<std::string> log;
    std::map<std::uint64_t, platform::WindowTraits> traits;
    std::map<std::uint64_t, platform::Compositing> compositing;
    struct Restacked {
        HWND window;
        platform::StackPlace place;
        HWND reference;
        friend bool operator==(const Restacked&, const Restacked&) = default;
    };
    std::vector<Restacked> restacked;
    platform::Region presented;                // the last time
    std::shared_ptr<platform::Surface> drawn;  // handed out last
    std::function<void()> onWait;
    bool alive = true;
    bool refuseCreate = false;
    bool diesInCreate = false;
    bool refuseGrab = false;
    bool noMemory = false;
    bool held = true;  // the left button
    HWND under;        // what WindowAt finds
    POINT pointer{0, 0};
    std::uint64_t now = 5000;

    std::string TakeLog() {
        std::string all;
        for (const std::string& line : log)
            all += (all.empty() ? "" : " ") + line;
        log.clear();
        return all;
    }

    bool Create(HWND window, const RECT&, const platform::WindowTraits& first) override {
        traits[window.ToParam()] = first;
        alive = alive && !diesInCreate;
        return Log("create") && alive && !refuseCreate;
    }
    void Destroy(HWND) override { Log("destroy"); }
    void SetTraits(HWND window, const platform::WindowTraits& changed) override {
        traits[window.ToParam()] = changed;
        Log("traits");
    }
    void SetBounds(HWND, const RECT&) override { Log("place"); }
    void Show(HWND, platform::Visibility visibility) override {
        static const char* const names[] = {"hide", "show", "show-inactive", "minimise", "restore"};
        Log(names[static_cast<int>(visibility)]);
    }
    void Restack(HWND window, platform::StackPlace place, HWND reference) override {
        restacked.push_back({window, place, reference});
    }
    void Activate(HWND) override { Log("activate"); }
    void SetShape(HWND, const platform::Region* region) override { Log(region ? "shape" : "no-shape"); }
    void SetCompositing(HWND window, const platform::Compositing& changed) override {
        compositing[window.ToParam()] = changed;
        Log("compositing");
    }
    std::shared_ptr<platform::Surface> NewSurface(HWND, int width, int height) override {
        Log("surface");
        return noMemory ? nullptr : drawn = platform::Surface::Create(width, height);
    }
    void BeginWrite(HWND) override { Log("write"); }
    void Present(HWND, const platform::Region& damage) override {
        presented = damage;
        Log("present");
    }
    bool GrabPointer(HWND) override { return Log("grab") && !refuseGrab; }
    void ReleasePointer() override { Log("ungrab"); }
    void SetCursor(HWND, platform::CursorShape) override { Log("cursor"); }
    POINT PointerPosition() override { return pointer; }
    platform::KeySet KeysDown() override { return {}; }
    bool IsButtonHeld() override { return held; }
    HWND WindowAt(POINT) override { return under; }
    CSize ScreenSize() override { return {1024, 768}; }
    std::vector<platform::Monitor> Monitors() override { return {{{0, 0, 1024, 768}, {0, 0, 1024, 740}}}; }
    std::uint64_t Now() override { return now; }
    bool Poll() override { return false; }
    bool Wait(std::optional<std::uint64_t> deadline) override {
        if (onWait) {
            std::exchange(onWait, nullptr)();
            return alive;
        }
        if (deadline && alive) now = *deadline;
        return alive && deadline;
    }
    void Wake() override {}
    bool IsAlive() override { return alive; }

  private:
    bool Log(const char* what) {
        log.push_back(what);
        return true;
    }
};

}  // namespace windowtest
