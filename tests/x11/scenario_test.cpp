// The same story on a real screen and in memory: the same states, callbacks, places and pixels.
#include <gtest/gtest.h>

#include <cstdlib>

#include "x11/real_stage.h"

namespace {

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
    scenario::RealStage stage(*session);
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
