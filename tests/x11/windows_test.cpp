// Windows on a real server: where they come up, what they show, how they go.
#include <gtest/gtest.h>

#include <string>

#include "x11/recorder.h"

namespace {

using namespace platform;
using xtest::Seen;
using xtest::Titled;
using Mode = Compositing::Mode;

constexpr std::uint32_t kGreen = 0xFF00C000;

class Windows : public xtest::X11Test {};

TEST_F(Windows, ComeUpUndecoratedWhereTheyWereAskedFor) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CRect rect(200, 150, 500, 350);
        const HWND window = NewWindow(rect, Titled(u"Ünïcode 標題"));
        Fill(window, rect.Size(), 0x1200C000);  // an opaque window ignores alpha
        ShowAndWait(window);
        for (const CPoint corner : {CPoint(200, 150), CPoint(499, 150), CPoint(200, 349), CPoint(499, 349)})
            EXPECT_TRUE(ScreenShows(corner.x, corner.y, 0x00C000));
        EXPECT_NE(session->PixelAt(199, 150), 0x00C000U);
        EXPECT_NE(session->PixelAt(500, 349), 0x00C000U);
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        EXPECT_TRUE(system->WindowAt({300, 200}) == window);
        EXPECT_FALSE(system->WindowAt({100, 100}));
        Idle(400);
        EXPECT_EQ(seen.Count(Seen::Kind::Placed), 0);
        EXPECT_NE(session->FindByTitle("Ünïcode 標題"), 0U);
        system->Destroy(window);
        EXPECT_TRUE(xtest::Eventually([&] { return session->PixelAt(300, 200) != 0x00C000U; }));
        system.reset();
    }
}

TEST_F(Windows, SayWhatTheyAre) {
    Open({.windowManager = true});
    const HWND owner = NewWindow(CRect(50, 50, 450, 350), Titled(u"owner"));
    WindowTraits toolTraits = Titled(u"tool");
    toolTraits.topmost = toolTraits.toolWindow = true;
    const HWND tool = NewWindow(CRect(500, 50, 700, 250), toolTraits);
    WindowTraits modalTraits = Titled(u"modal");
    modalTraits.modal = true;
    modalTraits.owner = owner;
    const HWND modal = NewWindow(CRect(100, 100, 300, 200), modalTraits);
    for (const HWND window : {owner, tool, modal})
        ShowAndWait(window);
    const auto states = [&](const char* title) {
        std::vector<std::string> names;
        const auto words = session->Property(session->FindByTitle(title), "_NET_WM_STATE");
        for (const char* name : {"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER", "MODAL"})
            if (std::count(words.begin(), words.end(), session->Atom(std::string("_NET_WM_STATE_") + name)))
                names.push_back(name);
        return names;
    };
    using Names = std::vector<std::string>;
    EXPECT_TRUE(xtest::Eventually([&] { return states("modal") == Names{"MODAL"}; }));
    EXPECT_EQ(states("tool"), (Names{"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}));
    EXPECT_EQ(states("owner"), Names{});
    const xcb_window_t ownerId = session->FindByTitle("owner");
    EXPECT_EQ(session->Property(session->FindByTitle("modal"), "WM_TRANSIENT_FOR"),
              std::vector<std::uint32_t>{ownerId});
    EXPECT_EQ(session->Property(ownerId, "WM_TRANSIENT_FOR"), std::vector<std::uint32_t>{});
    // Changes while they show, and again after hiding, which makes the window manager forget.
    WindowTraits renamed = Titled(u"renamed");
    renamed.topmost = true;
    system->SetTraits(owner, renamed);
    EXPECT_TRUE(xtest::Eventually([&] {
        system->Poll();
        return states("renamed") == Names{"ABOVE"};
    }));
    system->Show(tool, Visibility::Hidden);
    system->Show(tool, Visibility::Shown);
    EXPECT_TRUE(Until([&] { return states("tool") == Names{"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}; }));
}

TEST_F(Windows, AreMovedByUsAndByOthers) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CSize size(200, 100);
        const HWND window = NewWindow(CRect(CPoint(100, 100), size), Titled(u"moved"));
        Fill(window, size, kGreen);
        ShowAndWait(window);
        for (int step = 1; step <= 50; ++step) {
            system->Place(window, CRect(CPoint(100 + step * 4, 100 + step * 2), size));
            system->Poll();
        }
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        EXPECT_TRUE(ScreenShows(499, 299, 0x00C000));
        Idle(500);
        EXPECT_EQ(seen.Count(Seen::Kind::Placed), 0) << "an echo of our own request";

        const std::string id = std::to_string(session->FindByTitle("moved"));
        ASSERT_TRUE(session->Xdotool({"windowmove", id, "640", "320"}));
        ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Placed) > 0; }));
        Idle(300);
        EXPECT_EQ(seen.Last(Seen::Kind::Placed)->rect, CRect(CPoint(640, 320), size));
        EXPECT_TRUE(ScreenShows(640, 320, 0x00C000));
        system->Place(window, CRect(10, 20, 330, 260));
        Fill(window, CSize(320, 240), 0xFF0000C0);
        EXPECT_TRUE(ScreenShows(10, 20, 0x0000C0));
        EXPECT_TRUE(ScreenShows(329, 259, 0x0000C0));
        system.reset();
        seen.events.clear();
    }
}

TEST_F(Windows, MinimiseAndComeBack) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CRect rect(200, 150, 500, 350);
        const HWND window = NewWindow(rect, Titled(u"iconic"));
        Fill(window, rect.Size(), kGreen);
        ShowAndWait(window);
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        const auto minimised = [&](bool wanted) {
            const Seen* last = seen.Last(Seen::Kind::Minimised);
            return last != nullptr && last->on == wanted;
        };
        for (int round = 0; round < 2; ++round) {
            system->Show(window, Visibility::Minimised);
            EXPECT_TRUE(Until([&] { return minimised(true); }));
            EXPECT_TRUE(Until([&] { return session->PixelAt(300, 200) != 0x00C000U; }));
            system->Show(window, Visibility::Restored);
            EXPECT_TRUE(Until([&] { return minimised(false); }));
            EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
            EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        }
        EXPECT_EQ(seen.Count(Seen::Kind::Minimised), 4);
        EXPECT_EQ(seen.Count(Seen::Kind::Placed), 0);
        // Hidden and shown at once, before the window manager could let go.
        system->Show(window, Visibility::Hidden);
        system->Show(window, Visibility::Shown);
        Idle(300);
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        EXPECT_TRUE(system->WindowAt({300, 200}) == window);
        // Minimised from the start.
        system->Show(window, Visibility::Hidden);
        EXPECT_TRUE(Until([&] { return session->PixelAt(300, 200) != 0x00C000U; }));
        seen.events.clear();
        system->Show(window, Visibility::Minimised);
        EXPECT_TRUE(Until([&] { return minimised(true); }));
        system->Show(window, Visibility::Restored);
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        system.reset();
        seen.events.clear();
    }
}

TEST_F(Windows, TakeNoFocusWhenShownInactive) {
    Open({.windowManager = true});
    const HWND first = NewWindow(CRect(50, 50, 250, 150), Titled(u"first"));
    ShowAndWait(first);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(first); }));
    const HWND second = NewWindow(CRect(300, 50, 500, 150), Titled(u"second"));
    Fill(second, CSize(200, 100), kGreen);
    system->Show(second, Visibility::ShownInactive);
    EXPECT_TRUE(ScreenShows(400, 100, 0x00C000));
    WindowTraits passiveTraits = Titled(u"passive");
    passiveTraits.activates = false;
    const HWND passive = NewWindow(CRect(550, 50, 750, 150), passiveTraits);
    Fill(passive, CSize(200, 100), kGreen);
    system->Show(passive, Visibility::Shown);
    EXPECT_TRUE(ScreenShows(650, 100, 0x00C000));
    ASSERT_TRUE(session->Click(650, 100));
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
    Idle(200);
    EXPECT_TRUE(seen.IsFocused(first));
    EXPECT_FALSE(seen.IsFocused(second));
    EXPECT_FALSE(seen.IsFocused(passive));
    system->Activate(second);
    EXPECT_TRUE(Until([&] { return seen.IsFocused(second) && !seen.IsFocused(first); }));
}

TEST_F(Windows, StackAsTold) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CRect rect(200, 150, 400, 250);
        const std::uint32_t colours[] = {0xC00000, 0x00C000, 0x0000C0};
        HWND windows[3];
        for (int i = 0; i < 3; ++i) {
            windows[i] = NewWindow(rect);
            Fill(windows[i], rect.Size(), 0xFF000000 | colours[i]);
            ShowAndWait(windows[i]);
        }
        EXPECT_TRUE(ScreenShows(300, 200, colours[2]));
        system->Restack(windows[0], StackPlace::Top, HWND());
        EXPECT_TRUE(ScreenShows(300, 200, colours[0]));
        system->Restack(windows[0], StackPlace::Bottom, HWND());
        EXPECT_TRUE(ScreenShows(300, 200, colours[2]));
        system->Restack(windows[1], StackPlace::Above, windows[2]);
        EXPECT_TRUE(ScreenShows(300, 200, colours[1]));
        system->Restack(windows[1], StackPlace::Below, windows[0]);
        EXPECT_TRUE(ScreenShows(300, 200, colours[2]));
        system->Activate(windows[1]);
        EXPECT_TRUE(ScreenShows(300, 200, colours[1]));
        EXPECT_TRUE(Until([&] { return seen.IsFocused(windows[1]); }));
        system.reset();
    }
}

TEST_F(Windows, CloseWhenTheWindowManagerAsks) {
    Open({.windowManager = true});
    WindowTraits decorated = Titled(u"closing");
    decorated.decorated = true;
    const HWND window = NewWindow(CRect(200, 150, 500, 350), decorated);
    ShowAndWait(window);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(window); }));
    Idle(300);
    EXPECT_EQ(seen.Count(Seen::Kind::Placed), 0) << "the frame goes around the window";
    EXPECT_TRUE(system->WindowAt({200, 150}) == window);
    EXPECT_FALSE(session->WindowsAt(210, 140).empty()) << "a title above it";
    // The manager closes the window that it takes for the active one.
    const std::vector<std::uint32_t> active{session->FindByTitle("closing")};
    ASSERT_TRUE(xtest::Eventually(
        [&] { return session->Property(session->Root(), "_NET_ACTIVE_WINDOW") == active; }));
    ASSERT_TRUE(session->Xdotool({"key", "--clearmodifiers", "alt+F4"}));
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Close) == 1; }));
}

TEST_F(Windows, SurviveTheWindowManager) {
    Open({.windowManager = true});
    const CRect rect(200, 150, 500, 350);
    const HWND window = NewWindow(rect);
    Fill(window, rect.Size(), kGreen);
    ShowAndWait(window);
    ASSERT_TRUE(session->StopWindowManager());
    EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
    Idle(300);
    system->Show(window, Visibility::Minimised);
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Minimised) == 1; }));
    system->Show(window, Visibility::Restored);
    EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
    ASSERT_TRUE(session->StartWindowManager());
    system->Place(window, CRect(CPoint(300, 200), rect.Size()));
    EXPECT_TRUE(ScreenShows(599, 399, 0x00C000));
    system->Show(window, Visibility::Minimised);
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Minimised) == 3; }));
}

}  // namespace
