// Windows on a real server: where they come up, what they show, how they go.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "x11/recorder.h"

namespace {

using namespace platform;
using namespace xtest;
using Mode = Compositing::Mode;

constexpr std::uint32_t kGreen = 0xFF00C000;

class Windows : public xtest::X11Test {
  protected:
    // The test's own connection speaks as a window manager that marks minimised windows and does nothing else
    // by itself; it ends with the window returned.
    xcb_window_t ActAsManager() {
        const xcb_window_t check = session->NewWindow(-9, -9, 1, 1, 0);
        session->Write(session->Root(), "_NET_SUPPORTED", {session->Atom("_NET_WM_STATE_HIDDEN")});
        for (const xcb_window_t window : {check, session->Root()})
            session->Write(window, "_NET_SUPPORTING_WM_CHECK", {check});
        return check;
    }
    bool IsMinimised() const { return seen.Last<MinimisedChanged>().minimised; }
    // A green window, shown.
    HWND Green(const CRect& rect, LPCWSTR title = u"") {
        const HWND window = NewWindow(rect, Titled(title));
        Fill(window, rect.Size(), kGreen);
        ShowAndWait(window);
        return window;
    }
};

TEST_F(Windows, ComeUpUndecoratedWhereTheyWereAskedFor) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CRect rect(200, 150, 500, 350);
        const HWND window = Green(rect, u"Ünïcode 標題");
        for (const CPoint corner : {CPoint(200, 150), CPoint(499, 150), CPoint(200, 349), CPoint(499, 349)})
            EXPECT_TRUE(ScreenShows(corner.x, corner.y, 0x00C000));
        EXPECT_NE(session->PixelAt(199, 150), 0x00C000U);
        EXPECT_NE(session->PixelAt(500, 349), 0x00C000U);
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        EXPECT_TRUE(system->WindowAt({300, 200}) == window);
        EXPECT_FALSE(system->WindowAt({100, 100}));
        Idle(400);
        EXPECT_EQ(seen.Count<BoundsChanged>(), 0);
        EXPECT_NE(session->FindByTitle("Ünïcode 標題"), 0U);
        system->Destroy(window);
        EXPECT_TRUE(Eventually([&] { return session->PixelAt(300, 200) != 0x00C000U; }));
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
    EXPECT_TRUE(Eventually([&] { return states("modal") == Names{"MODAL"}; }));
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
    EXPECT_TRUE(Eventually([&] {
        system->Poll();
        return states("renamed") == Names{"ABOVE"};
    }));
    system->Show(tool, Visibility::Hidden);
    system->Show(tool, Visibility::Shown);
    EXPECT_TRUE(Until([&] { return states("tool") == Names{"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}; }));
}

TEST_F(Windows, LieOnAScreenOfSomeDensity) {
    Open({});
    EXPECT_EQ(system->Dpi(), 96);
    const auto say = [&](const std::string& resources) {
        xcb_change_property(session->Connection(), XCB_PROP_MODE_REPLACE, session->Root(),
                            XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(resources.size()), resources.data());
        session->Property(session->Root(), "WM_NAME");  // the server has it
        return system->Dpi();
    };
    EXPECT_EQ(say("Xcursor.size:\t24\nXft.dpi:\t192\nXft.hinting: 1\n"), 192);
    EXPECT_EQ(say("Xft.dpi: 144.5"), 144);
    for (const char* strange :
         {"", "\n\n", "Xft.dpi:", "Xft.dpi:\tmany", "Xft.dpi: -3", "Xft.dpi: 99999999999"})
        EXPECT_EQ(say(strange), 96) << strange;
}

TEST_F(Windows, BelongToAProgram) {
    setenv("DESKTOP_STARTUP_ID", "a\"launch_TIME4711", 1);
    session = xtest::XSession::Start({.windowManager = true});
    ASSERT_TRUE(session);
    session->Listen(session->Root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    system = MakeX11WindowSystem(seen);
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
    auto icon = Surface::Create(2, 1);
    icon->Row(0)[0] = 0xFF102030;
    icon->Row(0)[1] = 0x80400000;
    WindowTraits traits = Titled(u"first");
    traits.icons[0] = icon;
    const HWND first = NewWindow(CRect(50, 50, 250, 150), traits);
    Fill(first, CSize(200, 100), kGreen);
    ShowAndWait(first);
    NewWindow(CRect(50, 50, 250, 150), Titled(u"second"));
    system->Poll();
    const xcb_window_t window = session->FindByTitle("first");
    using Words = std::vector<std::uint32_t>;
    EXPECT_EQ(session->Property(window, "_NET_WM_ICON"), (Words{2, 1, 0xFF102030, 0x80800000}));
    EXPECT_EQ(session->Property(window, "_NET_WM_USER_TIME"), Words{4711});
    const Words leader = session->Property(window, "WM_CLIENT_LEADER");
    ASSERT_EQ(leader.size(), 1U);
    EXPECT_TRUE(Until(
        [&] { return session->Property(session->FindByTitle("second"), "WM_CLIENT_LEADER") == leader; }));
    EXPECT_EQ(session->Property(leader[0], "WM_CLIENT_LEADER"), leader);
    EXPECT_EQ(session->Property(window, "WM_HINTS").at(8), leader[0]);
    std::string received;
    EXPECT_TRUE(Eventually([&] {
        session->TakeEvents([&](const xcb_generic_event_t& event) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if ((event.response_type & 0x7F) == XCB_CLIENT_MESSAGE && message.format == 8)
                received.append(reinterpret_cast<const char*>(message.data.data8), 20);
        });
        return received.find('\0') != std::string::npos;
    }));
    EXPECT_STREQ(received.c_str(), "remove: ID=\"a\\\"launch_TIME4711\"");
    traits.icons = {};
    system->SetTraits(first, traits);
    EXPECT_TRUE(Until([&] { return session->Property(window, "_NET_WM_ICON").size() != 4; }));
}

TEST_F(Windows, KnowTheMonitorsAndWhatPanelsTake) {
    Open({.windowManager = true});
    const auto monitors = [&] { return system->Monitors(); };
    EXPECT_EQ(monitors(), (std::vector<Monitor>{{{0, 0, 1280, 800}, {0, 0, 1280, 800}}}));
    ASSERT_TRUE(Process::Start({"xrandr", "--setmonitor", "left", "640/160x800/200+0+0", "screen"}).Finish());
    ASSERT_TRUE(
        Process::Start({"xrandr", "--setmonitor", "*right", "640/160x800/200+640+0", "none"}).Finish());
    const xcb_window_t panel = session->NewWindow(0, 770, 1280, 30, 0, true);
    session->Write(panel, "_NET_WM_WINDOW_TYPE", {session->Atom("_NET_WM_WINDOW_TYPE_DOCK")}, "ATOM");
    session->Write(panel, "_NET_WM_STRUT", {0, 0, 0, 30});
    xcb_map_window(session->Connection(), panel);
    session->Sync();
    const std::vector<Monitor> both = {{{640, 0, 1280, 800}, {640, 0, 1280, 770}},
                                       {{0, 0, 640, 800}, {0, 0, 640, 770}}};
    EXPECT_TRUE(Eventually([&] { return monitors() == both; }));
}

TEST_F(Windows, AreMovedByUsAndByOthers) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager ? "openbox" : "no window manager");
        Open({.windowManager = manager});
        const CSize size(200, 100);
        const HWND window = Green(CRect(CPoint(100, 100), size), u"moved");
        for (int step = 1; step <= 50; ++step) {
            system->SetBounds(window, CRect(CPoint(100 + step * 4, 100 + step * 2), size));
            system->Poll();
        }
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        EXPECT_TRUE(ScreenShows(499, 299, 0x00C000));
        Idle(500);
        EXPECT_EQ(seen.Count<BoundsChanged>(), 0) << "an echo of our own request";

        const std::string id = std::to_string(session->FindByTitle("moved"));
        ASSERT_TRUE(session->Xdotool({"windowmove", id, "640", "320"}));
        ASSERT_TRUE(Until([&] { return seen.Count<BoundsChanged>() > 0; }));
        Idle(300);
        EXPECT_EQ(seen.Last<BoundsChanged>().screen, CRect(CPoint(640, 320), size));
        EXPECT_TRUE(ScreenShows(640, 320, 0x00C000));
        system->SetBounds(window, CRect(10, 20, 330, 260));
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
        const HWND window = Green(rect, u"iconic");
        EXPECT_TRUE(ScreenShows(300, 200, 0x00C000));
        const auto minimised = [&](bool wanted) {
            return seen.Count<MinimisedChanged>() > 0 && IsMinimised() == wanted;
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
        EXPECT_EQ(seen.Count<MinimisedChanged>(), 4);
        EXPECT_EQ(seen.Count<BoundsChanged>(), 0);
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

TEST_F(Windows, AreMinimisedWhenTheWindowManagerSaysSo) {
    enum : std::uint32_t { kNormal = 1, kIconic = 3 };
    Open();
    const xcb_window_t manager = ActAsManager();
    system->Poll();
    const HWND window = NewWindow(CRect(200, 150, 500, 350), Titled(u"iconic"));
    ShowAndWait(window);
    const xcb_window_t id = session->FindByTitle("iconic");
    session->Write(id, "WM_STATE", {kNormal});
    Idle(100);
    const int exposed = seen.Count<Exposed>();
    xcb_unmap_window(session->Connection(), id);
    session->Write(id, "WM_STATE", {0});
    EXPECT_TRUE(Until([&] { return seen.Count<Exposed>() > exposed; })) << "let go by mistake";
    session->Write(id, "WM_STATE", {kNormal});
    system->Show(window, Visibility::Minimised);
    ASSERT_TRUE(Until([&] { return seen.Count<MinimisedChanged>() > 0; })) << "nothing came of it";
    EXPECT_FALSE(IsMinimised());
    session->Write(id, "WM_STATE", {kIconic});
    Idle(100);
    EXPECT_FALSE(IsMinimised()) << "on another workspace";
    session->Write(id, "_NET_WM_STATE", {session->Atom("_NET_WM_STATE_HIDDEN")});
    EXPECT_TRUE(Until([&] { return IsMinimised(); }));
    // It dies, and the server puts its windows back on the screen.
    xcb_destroy_window(session->Connection(), manager);
    xcb_flush(session->Connection());
    EXPECT_TRUE(Until([&] { return !IsMinimised(); }));
}

TEST_F(Windows, BelieveAPlaceThatIsSentAtOnceAndWaitForTheRest) {
    Open();
    const CSize size(300, 200);
    const HWND window = NewWindow(CRect(CPoint(200, 150), size), Titled(u"placed"));
    ShowAndWait(window);
    // Put elsewhere while it comes up, and clicked there at once.
    xcb_connection_t* c = session->Connection();
    const xcb_window_t id = session->FindByTitle("placed");
    const std::uint32_t elsewhere[] = {640, 320};
    xcb_configure_window(c, id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, elsewhere);
    xcb_flush(c);
    ASSERT_TRUE(session->Click(650, 330));
    ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
    const auto first = std::ranges::find_if(seen.events, [](const platform::WindowEvent& one) {
        const auto* pointer = std::get_if<Pointer>(&one);
        return std::holds_alternative<BoundsChanged>(one) || (pointer && pointer->kind == Pointer::Button);
    });
    ASSERT_TRUE(std::holds_alternative<BoundsChanged>(*first)) << "the place is known before the click";
    EXPECT_EQ(std::get<BoundsChanged>(*first).screen, CRect(CPoint(640, 320), size));
    // A window manager takes the window on in a frame, and moves that to the place afterwards.
    Idle(400);
    seen.events.clear();
    const xcb_window_t frame = session->NewWindow(0, 0, 300, 200, 0);
    xcb_map_window(c, frame);
    xcb_reparent_window(c, id, frame, 0, 0);
    xcb_flush(c);
    Idle(100);
    xcb_configure_window(c, frame, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, elsewhere);
    xcb_flush(c);
    Idle(400);
    EXPECT_EQ(seen.Count<BoundsChanged>(), 0);
}

TEST_F(Windows, StackAsAskedWithoutAManager) {
    Open();
    const CRect rect(200, 150, 400, 250);
    const std::uint32_t colours[] = {0xC00000, 0x00C000, 0x0000C0};
    HWND windows[3];
    for (int i = 0; i < 3; ++i) {
        windows[i] = NewWindow(rect);
        Fill(windows[i], rect.Size(), 0xFF000000 | colours[i]);
        ShowAndWait(windows[i]);
    }
    const struct {
        int window, reference, top;  // that shows afterwards
        StackPlace place;
    } steps[] = {{0, 0, 0, StackPlace::Top},
                 {0, 0, 2, StackPlace::Bottom},
                 {1, 2, 1, StackPlace::Above},
                 {1, 0, 2, StackPlace::Below}};
    for (const auto& [window, reference, top, place] : steps) {
        system->Restack(windows[window], place, windows[reference]);
        EXPECT_TRUE(ScreenShows(300, 200, colours[top]));
    }
    system->Activate(windows[1]);
    EXPECT_TRUE(ScreenShows(300, 200, colours[1]));
    EXPECT_TRUE(Until([&] { return seen.IsFocused(windows[1]); }));
}

TEST_F(Windows, SurviveTheWindowManager) {
    Open({.windowManager = true});
    const CRect rect(200, 150, 500, 350);
    const HWND window = Green(rect);
    ASSERT_TRUE(session->StopWindowManager());
    EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
    Idle(300);
    system->Show(window, Visibility::Minimised);
    EXPECT_TRUE(Until([&] { return seen.Count<MinimisedChanged>() == 1; }));
    system->Show(window, Visibility::Restored);
    EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
    ASSERT_TRUE(session->StartWindowManager());
    system->SetBounds(window, CRect(CPoint(300, 200), rect.Size()));
    EXPECT_TRUE(ScreenShows(599, 399, 0x00C000));
    system->Show(window, Visibility::Minimised);
    EXPECT_TRUE(Until([&] { return seen.Count<MinimisedChanged>() == 3; }));
}

}  // namespace
