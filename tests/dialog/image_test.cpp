// Still and animated images on the virtual clock.
#include "support/test_dialog.h"

namespace {

using kit::Line;
using kit::TestDialog;

class Images : public kit::HeadlessTest {};

constexpr std::uint32_t kColours[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};

// Each frame has a colour of its own, and its delay in hundredths of a second.
struct Animated : QKGifImage {
    Animated(const char* name, const std::vector<int>& delays, int x) {
        std::vector<kit::GifPixel> frames;
        for (const int delay : delays)
            frames.push_back({kColours[frames.size() % 4], delay});
        EXPECT_EQ(SetImage(kit::SaveGif(name, frames)), 1);
        SetRect(x, 10, 30, 20);
    }
};

TEST_F(Images, AStillOneFillsItsRectangle) {
    constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlack = 0xFF000000;
    QKImage image;
    EXPECT_EQ(image.SetImage(9999U, u"PNG"), 0);
    EXPECT_EQ(image.GetImage(), nullptr);
    EXPECT_EQ(image.SetImage(kit::Strip("halves", {kRed, kGreen}, 5, 10, false)), 1);
    image.SetRect(20, 30, 100, 50);
    TestDialog dialog({&image});
    dialog.Open();
    dialog.ExpectPixels({{20, 30, kRed}, {119, 79, kGreen}, {20, 79, kRed}});
    dialog.ExpectPixels({{120, 50, kBlack}, {50, 80, kBlack}, {19, 50, kBlack}});
    QKImage copy(image);  // shares the picture
    image.DestroyImag();
    dialog.AddQKItem(&copy);
    const auto expect = [&dialog](std::uint32_t colour) {
        dialog.Refresh();
        EXPECT_EQ(dialog.Pixel(20, 30), colour);
    };
    expect(kRed);
    copy.SetShow(0);
    expect(kBlack);
    EXPECT_EQ(copy.SetImage(kit::SaveBytes("broken.png", "no picture")), 1);
    copy.SetShow(1);
    expect(kBlack);
}

TEST_F(Images, EachFrameStaysForItsOwnDelay) {
    const struct {
        const char* name;
        std::vector<int> delays;
        std::vector<unsigned> steps;  // milliseconds to the next frame, from the start on
    } cases[] = {
        {"four", {10, 20, 10, 50}, {100, 200, 100, 500, 100, 200}},
        {"single", {7}, {70, 70, 70}},
        {"long", {6000, 1}, {60000, 10, 60000}},
    };
    for (const auto& [name, delays, steps] : cases) {
        SCOPED_TRACE(name);
        Animated image(name, delays, 10);
        TestDialog dialog({&image});
        dialog.Open();
        image.StartRun(7, dialog.m_hWnd);
        dialog.refreshes = 0;
        const auto expect = [&, frames = delays.size()](std::size_t step) {
            Headless::RunPending();
            const std::size_t frame = step % frames;
            EXPECT_EQ(Line(image.GetFrameIndex(), dialog.refreshes), Line(frame, step));
            EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[frame]);
        };
        for (std::size_t step = 0; step < steps.size(); ++step) {
            Headless::Advance(steps[step] - 1);
            expect(step);
            Headless::Advance(1);
            expect(step + 1);
        }
    }
}

TEST_F(Images, AZeroDelayStepsWithoutStarvingTheWindow) {
    Animated image("zero", {0, 0, 0}, 10);
    TestDialog dialog({&image});
    dialog.Open();
    image.StartRun(1, dialog.m_hWnd);
    dialog.refreshes = 0;
    Headless::Advance(1000);
    EXPECT_GE(dialog.refreshes, 20);
    EXPECT_LE(dialog.refreshes, 1000);
}

TEST_F(Images, TwoOnOneTimerStepTogetherAndAHiddenOneGoesOn) {
    Animated first("first", {10, 10, 10, 10}, 10), second("second", {30, 30}, 60),
        other("other", {10, 10}, 110);
    TestDialog dialog({&first, &second, &other});
    dialog.Open();
    first.StartRun(3, dialog.m_hWnd);
    second.StartRun(3, dialog.m_hWnd);  // the timer now has its delay
    first.SetShow(0);
    dialog.refreshes = 0;
    const auto after = [&](unsigned milliseconds) {
        Headless::Advance(milliseconds);
        return Line(first.GetFrameIndex(), second.GetFrameIndex(), other.GetFrameIndex(), dialog.refreshes);
    };
    EXPECT_EQ(after(299), "0 0 0 0");
    EXPECT_EQ(after(1), "1 1 0 2");  // refreshed once for each that stepped
    // The one stepped last has re-armed the timer.
    EXPECT_EQ(after(299), "1 1 0 2");
    EXPECT_EQ(after(1), "2 0 0 4");
    first.SetShow(1);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[2]);

    // Out of the registry it stands still, back in it goes on.
    dialog.RemoveQKItem(&second);
    dialog.RemoveQKItem(&first);
    EXPECT_EQ(after(300), "2 0 0 5");
    dialog.AddQKItem(&first);
    EXPECT_EQ(after(300), "3 0 0 6");
    // Started over: the frame shown stays until the next step.
    first.StartRun(3, dialog.m_hWnd);
    EXPECT_EQ(first.GetFrameIndex(), 0);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[3]);
}

TEST_F(Images, WithoutATimerNothingMoves) {
    QKGifImage still;
    still.SetImage(kit::Solid("plain", 0xFF00FF00, 3, 3));
    Animated undelayed("undelayed", {-1, -1, -1}, 50), unstarted("unstarted", {10, 10}, 90);
    TestDialog dialog({&still, &undelayed, &unstarted});
    dialog.Open();
    still.StartRun(1, dialog.m_hWnd);
    undelayed.StartRun(2, dialog.m_hWnd);
    unstarted.StartRun(4, HWND());
    EXPECT_EQ(unstarted.GetTimerID(), 4U);
    unstarted.StartRun(0, dialog.m_hWnd);
    EXPECT_EQ(unstarted.GetTimerID(), 0U);
    dialog.refreshes = 0;
    Headless::Advance(5000);
    EXPECT_EQ(dialog.refreshes, 0);
    // The host's own timer steps an image without delays, at the host's interval.
    SetTimer(dialog.m_hWnd, 2, 40, nullptr);
    Headless::Advance(80);
    EXPECT_EQ(undelayed.GetFrameIndex(), 2);
    Headless::Advance(40);
    EXPECT_EQ(undelayed.GetFrameIndex(), 0);
}

}  // namespace
