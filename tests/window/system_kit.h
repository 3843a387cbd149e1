// The core on a window system that a test plays.
#pragma once

#include "platform/window/core/control.h"
#include "window/scripted_system.h"
#include "window/window_kit.h"

namespace windowtest {

namespace event = platform::event;
using platform::Region;

class SystemTest : public testing::Test {
  public:
    void SetUp() override {
        ScriptedSystem::reachable = true;
        RegisterScriptedClass();
        Log() = Script();
    }
    void TearDown() override {
        Log() = Script();
        platform::ShutDownWindows();
        EXPECT_EQ(ScriptedSystem::current, nullptr);
    }
    static HWND Create(DWORD style = WS_POPUP, HWND owner = {}, DWORD exStyle = 0) {
        return CreateWindowExW(exStyle, kWindowClass, u"t", style, 100, 100, 40, 30, owner, 0, {}, nullptr);
    }
    // Shown and settled; what was heard until then is forgotten.
    static HWND Open() {
        const HWND window = Create(WS_POPUP | WS_VISIBLE);
        Settle();
        Log().received.clear();
        return window;
    }
    static Script& Log() { return TheScript(); }
    static int Count(HWND window, UINT message) { return Log().Count(window, message); }
    static ScriptedSystem& System() { return *ScriptedSystem::current; }
    static platform::WindowTraits& Traits(HWND window) { return System().traits[window.ToParam()]; }
    static void Settle() { platform::RunPendingMessages(); }

    // ---- what the window system reports
    static constexpr platform::InputState kHeld{false, false, false, true, false, false};
    static void Report(platform::WindowEvent happened) { System().events.Notify(std::move(happened)); }
    static void Move(HWND window, POINT at, std::uint64_t time, platform::InputState state = {}) {
        Report(event::Pointer{event::Pointer::Moved, window, at, state, time});
    }
    static void Press(HWND window, POINT at, std::uint64_t time, platform::InputState state = {}) {
        Report(event::Pointer{event::Pointer::Button, window, at, state, time, 1, true});
    }
    static void Release(HWND window, POINT at, std::uint64_t time, platform::InputState state = {}) {
        Report(event::Pointer{event::Pointer::Button, window, at, state, time, 1, false});
    }
    static void Key(HWND window, char key, std::uint64_t time) {
        Report(event::Key{
            window, static_cast<UINT>(key), true, static_cast<char16_t>(key - 'A' + 'a'), {}, time});
    }
    static void Focus(HWND window, bool focused) { Report(event::FocusChanged{window, focused}); }
    static void FocusGoes(HWND window, bool focused) {
        Focus(window, focused);
        Settle();
    }
    // A press on the window moves it by its caption.
    static void MoveByPress(HWND window) {
        Log().At(WM_LBUTTONDOWN, [=](HWND) { SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0); });
    }
};

}  // namespace windowtest
