// The same story on a real screen and in memory: the same states, callbacks, places and pixels.
#include "x11/scenario.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "x11/x_session.h"

namespace {

class RealStage final : public scenario::Stage {
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

int Distance(std::uint32_t a, std::uint32_t b) {
    int most = 0;
    for (int shift = 0; shift < 24; shift += 8)
        most = std::max(
            most, std::abs(static_cast<int>((a >> shift) & 255) - static_cast<int>((b >> shift) & 255)));
    return most;
}

TEST(Scenario, IsTheSameOnARealScreenAndInMemory) {
    const std::string file = std::string(QKUI_TEST_OUTPUT) + "/scenario.told";
    ASSERT_EQ(std::system((std::string(QKUI_SCENARIO_HEADLESS) + " '" + file + "'").c_str()), 0);
    scenario::Told headless;
    ASSERT_TRUE(scenario::Load(headless, file));

    xtest::SessionOptions options;
    options.windowManager = true;
    options.compositor = true;
    const auto session = xtest::XSession::Start(options);
    ASSERT_TRUE(session);
    RealStage stage(*session);
    const scenario::Told real = scenario::Play(stage);

    EXPECT_EQ(real.log, headless.log);
    ASSERT_EQ(real.pictures.size(), headless.pictures.size());
    for (std::size_t i = 0; i < real.pictures.size(); ++i) {
        ASSERT_EQ(real.pictures[i].size(), headless.pictures[i].size());
        int differing = 0;
        std::size_t first = 0;
        for (std::size_t p = 0; p < real.pictures[i].size(); ++p)
            // A compositor may round a blend the other way.
            if (Distance(real.pictures[i][p], headless.pictures[i][p]) > 1 && differing++ == 0) first = p;
        EXPECT_EQ(differing, 0) << real.titles[i] << ": first at " << first % scenario::kScreenWidth << ", "
                                << first / scenario::kScreenWidth << std::hex << ", shown "
                                << real.pictures[i][first] << ", wanted " << headless.pictures[i][first];
    }
}

}  // namespace
