// The stage of a scenario on a real screen.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "x11/scenario.h"
#include "x11/x_session.h"

namespace scenario {

class RealStage final : public Stage {
  public:
    explicit RealStage(xtest::XSession& session) : session_(session) {}

    void MovePointer(int x, int y) override {
        session_.MovePointer(x, y);
        Until([&] {
            POINT at;
            GetCursorPos(&at);
            return at == POINT{x, y};
        });
    }
    void Button(int button, bool down) override {
        if (down)  // as far from the press before as two presses that are no double click
            std::this_thread::sleep_for(std::chrono::milliseconds(550));
        session_.Xdotool({down ? "mousedown" : "mouseup", std::to_string(button)});
        Settle();
    }
    void DoubleClick() override {
        std::this_thread::sleep_for(std::chrono::milliseconds(550));
        session_.Xdotool({"click", "--repeat", "2", "--delay", "60", "1"});
        Settle();
    }
    void Key(UINT, const std::string& name) override {
        session_.Xdotool({"key", name});
        Settle();
    }
    // The window manager and the compositor answer in their own time: quiet is when nothing has arrived and
    // the screen has not changed for a while.
    void Settle() override {
        std::vector<std::uint32_t> before;
        for (int i = 0; i < 100; ++i) {
            for (int quiet = 0; quiet < 3; ++quiet) {
                if (Pump()) quiet = -1;
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            std::vector<std::uint32_t> now = Screen();
            if (now == before) return;
            before = std::move(now);
        }
    }
    std::vector<std::uint32_t> Screen() override { return session_.Screenshot().pixels; }
    std::vector<std::uint32_t> Window(HWND, const std::string& title) override {
        return session_.PixelsOf(session_.FindByTitle(title)).pixels;
    }

  private:
    bool Pump() {
        MSG message;
        if (!PeekMessageW(&message, HWND(), 0, 0, PM_REMOVE)) return false;
        if (!CWnd::WalkPreTranslateTree(&message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        return true;
    }
    template <class Condition>
    void Until(Condition condition) {
        EXPECT_TRUE(xtest::Eventually([&] {
            while (Pump()) {
            }
            return condition();
        }));
    }
    xtest::XSession& session_;
};

}  // namespace scenario
