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

// Four entries and one below them: mouse state, focus, selection; and the functions called meanwhile.
constexpr const char* kListLog =
    "at rest: 0 0 0 0 0\n"
    "over the first: 1 0 0 0 0\n"
    "pressed: 0 2fs 0 0 0\n"
    "clicked: 0 1fs 0 0 0 click\n"
    "double-clicked: 0 1s 0 0 0 click double click click\n"
    "clicked by the right button: 0 0s 1 0 0 right\n"
    "a band over two: 0 0 1s 0s 0\n"
    "over the list below: 0 0 0 0 1s\n"
    "and over one again: 0 0 0 1s 0\n"
    "let go: 0 0 0 1s 0 click\n"
    "left alone: 0 0 0 1s 0\n";

scenario::Told InMemory(const std::string& story) {
    const std::string file = std::string(QKUI_TEST_OUTPUT) + "/items.told";
    EXPECT_EQ(std::system((std::string(QKUI_SCENARIO_HEADLESS) + " '" + file + "' " + story).c_str()), 0);
    scenario::Told told;
    EXPECT_TRUE(scenario::Load(told, file));
    return told;
}

void Compare(const scenario::Told& real, const scenario::Told& memory, const char* log,
             std::size_t differingLooks, std::size_t fewestColours) {
    EXPECT_EQ(memory.log, log);
    EXPECT_EQ(real.log, log);
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
        EXPECT_GT(colours.size(), fewestColours);  // there is something to see
        looks.insert(memory.pictures[i]);
    }
    EXPECT_EQ(looks.size(), differingLooks);
}

// One server for all stories: a process keeps to the first that it meets. The screen shows the windows
// without alpha as they are. What a compositor makes of the others is its own; what it is given is compared.
TEST(Pixels, OfEveryItemAndOfAListAreTheSameOnARealScreenAndInMemory) {
    const auto session = xtest::XSession::Start();
    ASSERT_TRUE(session);
    scenario::RealStage stage(*session);
    {
        SCOPED_TRACE("list");
        session->MovePointer(scenario::kScreenWidth - 1, scenario::kScreenHeight - 1);
        Compare(scenario::PlayList(stage), InMemory("list"), kListLog, 10, 200);
    }
    for (const QKLayStyle style : {LAY_NONE, LAY_COLORKEY, LAY_OPAQUE}) {
        SCOPED_TRACE(style);
        const scenario::Told memory = InMemory(std::to_string(style));
        if (style == LAY_OPAQUE) {
            ASSERT_TRUE(session->StartCompositor());
        }
        session->MovePointer(scenario::kScreenWidth - 1, scenario::kScreenHeight - 1);
        Compare(scenario::PlayItems(stage, style), memory, kLog, 6, 2000);
    }
}

}  // namespace
