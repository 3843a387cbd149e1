// Still and animated images on the virtual clock.
#include "support/test_dialog.h"

namespace {

using kit::SaveGif;
using kit::TestDialog;

class Images : public kit::HeadlessTest {};

constexpr std::uint32_t kColours[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};

CString Gif(const std::string& name, const std::vector<int>& delays) {
    std::vector<kit::GifPixel> frames;
    for (std::size_t i = 0; i < delays.size(); ++i)
        frames.push_back({kColours[i % 4], delays[i]});
    return SaveGif(name, frames);
}

struct Animated : QKGifImage {
    Animated(const CString& path, int x) {
        EXPECT_EQ(SetImage(path), 1);
        SetRect(x, 10, 30, 20);
    }
};

TEST_F(Images, AStillOneFillsItsRectangle) {
    TestDialog dialog;
    dialog.SetBackColor(Gdiplus::Color(0xFF000000), 1);
    QKImage image;
    EXPECT_EQ(image.SetImage(9999U, u"PNG"), 0);
    EXPECT_EQ(image.GetImage(), nullptr);
    EXPECT_EQ(image.SetImage(kit::Strip("halves", {0xFFFF0000, 0xFF00FF00}, 5, 10, false)), 1);
    image.SetRect(20, 30, 100, 50);
    dialog.AddQKItem(&image);
    dialog.Open();
    dialog.ExpectPixels({{20, 30, 0xFFFF0000}, {119, 79, 0xFF00FF00}, {20, 79, 0xFFFF0000}});
    dialog.ExpectPixels({{120, 50, 0xFF000000}, {50, 80, 0xFF000000}, {19, 50, 0xFF000000}});
    QKImage copy(image);  // shares the picture
    image.DestroyImag();
    dialog.AddQKItem(&copy);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(20, 30), 0xFFFF0000U);
    copy.SetShow(0);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(20, 30), 0xFF000000U);
    EXPECT_EQ(copy.SetImage(kit::SaveBytes("broken.png", "no picture")), 1);
    copy.SetShow(1);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(20, 30), 0xFF000000U);
}

TEST_F(Images, EachFrameStaysForItsOwnDelay) {
    struct Case {
        const char* name;
        std::vector<int> delays;
        std::vector<unsigned> steps;  // milliseconds to the next frame, from the start on
    };
    const Case cases[] = {
        {"four", {10, 20, 10, 50}, {100, 200, 100, 500, 100, 200}},
        {"single", {7}, {70, 70, 70}},
        {"long", {6000, 1}, {60000, 10, 60000}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        Animated image(Gif(c.name, c.delays), 10);
        dialog.AddQKItem(&image);
        dialog.Open();
        image.StartRun(7, dialog.m_hWnd);
        int frame = 0;
        for (const unsigned step : c.steps) {
            Headless::Advance(step - 1);
            EXPECT_EQ(image.GetFrameIndex(), frame);
            EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[frame]);
            const int refreshes = dialog.refreshes;
            Headless::Advance(1);
            frame = (frame + 1) % static_cast<int>(c.delays.size());
            EXPECT_EQ(image.GetFrameIndex(), frame);
            EXPECT_EQ(dialog.refreshes, refreshes + 1);
            Headless::RunPending();
            EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[frame]);
        }
    }
}

TEST_F(Images, AZeroDelayStepsWithoutStarvingTheWindow) {
    TestDialog dialog;
    Animated image(Gif("zero", {0, 0, 0}), 10);
    dialog.AddQKItem(&image);
    dialog.Open();
    image.StartRun(1, dialog.m_hWnd);
    const int before = dialog.refreshes;
    Headless::Advance(1000);
    EXPECT_GE(dialog.refreshes - before, 20);
    EXPECT_LE(dialog.refreshes - before, 1000);
}

TEST_F(Images, TwoOnOneTimerStepTogetherAndAHiddenOneGoesOn) {
    TestDialog dialog;
    Animated first(Gif("first", {10, 10, 10, 10}), 10), second(Gif("second", {30, 30}), 60),
        other(Gif("other", {10, 10}), 110);
    for (QKItemBase* item : std::initializer_list<QKItemBase*>{&first, &second, &other})
        dialog.AddQKItem(item);
    dialog.Open();
    first.StartRun(3, dialog.m_hWnd);
    second.StartRun(3, dialog.m_hWnd);  // the timer now has its delay
    first.SetShow(0);
    const int before = dialog.refreshes;
    Headless::Advance(299);
    EXPECT_EQ(first.GetFrameIndex(), 0);
    Headless::Advance(1);
    EXPECT_EQ(first.GetFrameIndex(), 1);
    EXPECT_EQ(second.GetFrameIndex(), 1);
    EXPECT_EQ(dialog.refreshes, before + 2);  // once for each that stepped
    // The one stepped last has re-armed the timer.
    Headless::Advance(299);
    EXPECT_EQ(first.GetFrameIndex(), 1);
    Headless::Advance(1);
    EXPECT_EQ(first.GetFrameIndex(), 2);
    EXPECT_EQ(other.GetFrameIndex(), 0);
    first.SetShow(1);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[2]);

    // Out of the registry it stands still, back in it goes on.
    dialog.RemoveQKItem(&second);
    dialog.RemoveQKItem(&first);
    Headless::Advance(300);
    EXPECT_EQ(first.GetFrameIndex(), 2);
    dialog.AddQKItem(&first);
    Headless::Advance(300);
    EXPECT_EQ(first.GetFrameIndex(), 3);
    // Started over: the frame shown stays until the next step.
    first.StartRun(3, dialog.m_hWnd);
    EXPECT_EQ(first.GetFrameIndex(), 0);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(15, 15) & 0xFFFFFF, kColours[3]);
}

TEST_F(Images, WithoutATimerNothingMoves) {
    TestDialog dialog;
    Animated still(kit::Solid("plain", 0xFF00FF00, 3, 3), 10), undelayed(Gif("undelayed", {-1, -1, -1}), 50),
        unstarted(Gif("unstarted", {10, 10}), 90);
    for (QKItemBase* item : std::initializer_list<QKItemBase*>{&still, &undelayed, &unstarted})
        dialog.AddQKItem(item);
    dialog.Open();
    still.StartRun(1, dialog.m_hWnd);
    undelayed.StartRun(2, dialog.m_hWnd);
    unstarted.StartRun(4, HWND());
    EXPECT_EQ(unstarted.GetTimerID(), 4U);
    unstarted.StartRun(0, dialog.m_hWnd);
    EXPECT_EQ(unstarted.GetTimerID(), 0U);
    const int before = dialog.refreshes;
    Headless::Advance(5000);
    EXPECT_EQ(dialog.refreshes, before);
    // The host's own timer steps an image without delays, at the host's interval.
    SetTimer(dialog.m_hWnd, 2, 40, nullptr);
    Headless::Advance(80);
    EXPECT_EQ(undelayed.GetFrameIndex(), 2);
    Headless::Advance(40);
    EXPECT_EQ(undelayed.GetFrameIndex(), 0);
}

}  // namespace
