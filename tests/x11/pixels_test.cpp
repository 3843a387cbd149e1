// Items of every kind have the same pixels, bit for bit, on a real screen and in memory.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "x11/real_stage.h"

namespace {

// What each look is of, and that the pointer did what it should: status of button, caption, box, two radio
// buttons and scroll bar, which stays lit when the pointer leaves the window; checks; offset of the thumb.
constexpr const char* kLog =
    "at rest: 000000 checked 100 at 17\n"
    "over the box: 001000 checked 100 at 17\n"
    "pressed: 020000 checked 100 at 17\n"
    "chosen: 000010 checked 101 at 17\n"
    "dragged: 000002 checked 101 at 47\n"
    "left alone: 000001 checked 101 at 47\n";

void Compare(const scenario::Told& real, const scenario::Told& memory) {
    EXPECT_EQ(memory.log, kLog);
    EXPECT_EQ(real.log, kLog);
    ASSERT_EQ(real.pictures.size(), memory.pictures.size());
    std::set<std::vector<std::uint32_t>> looks;
    for (std::size_t i = 0; i < real.pictures.size(); ++i) {
        SCOPED_TRACE(real.titles[i]);
        ASSERT_EQ(real.pictures[i].size(), memory.pictures[i].size());
        std::size_t differing = 0, first = 0;
        for (std::size_t p = 0; p < real.pictures[i].size(); ++p)
            if (real.pictures[i][p] != memory.pictures[i][p] && differing++ == 0) first = p;
        EXPECT_EQ(differing, 0U) << "first at pixel " << first << std::hex << ", shown "
                                 << real.pictures[i][first] << ", wanted " << memory.pictures[i][first];
        const std::set<std::uint32_t> colours(memory.pictures[i].begin(), memory.pictures[i].end());
        EXPECT_GT(colours.size(), 2000U);  // there is something to see
        looks.insert(memory.pictures[i]);
    }
    EXPECT_EQ(looks.size(), real.pictures.size());
}

// The screen shows the windows without alpha as they are. What a compositor makes of the others is its own;
// what it is given is compared.
TEST(Pixels, OfEveryItemAreTheSameOnARealScreenAndInMemory) {
    const auto session = xtest::XSession::Start();
    ASSERT_TRUE(session);
    scenario::RealStage stage(*session);
    for (const QKLayStyle style : {LAY_NONE, LAY_COLORKEY, LAY_OPAQUE}) {
        SCOPED_TRACE(style);
        const std::string file = std::string(QKUI_TEST_OUTPUT) + "/items.told";
        ASSERT_EQ(
            std::system(
                (std::string(QKUI_SCENARIO_HEADLESS) + " '" + file + "' " + std::to_string(style)).c_str()),
            0);
        scenario::Told memory;
        ASSERT_TRUE(scenario::Load(memory, file));
        if (style == LAY_OPAQUE) {
            ASSERT_TRUE(session->StartCompositor());
        }
        session->MovePointer(scenario::kScreenWidth - 1, scenario::kScreenHeight - 1);
        Compare(scenario::PlayItems(stage, style), memory);
    }
}

}  // namespace
