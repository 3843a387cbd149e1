// What the outside can do to a window system: die, vanish, refuse.
#include <glib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <thread>

#include "x11/recorder.h"

namespace {

using namespace platform;
using namespace xtest;

const CRect kRect(100, 100, 300, 200);

class Faults : public xtest::X11Test {};

TEST_F(Faults, NoServerIsSaidSo) {
    setenv("DISPLAY", ":987", 1);
    SetLastError(0);
    EXPECT_FALSE(MakeX11WindowSystem(seen));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
    unsetenv("DISPLAY");
    SetLastError(0);
    EXPECT_FALSE(MakeX11WindowSystem(seen));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
}

// Everything there is, in any state of the connection.
void CallAll(WindowSystem& system, HWND window) {
    const Region region(CRect(0, 0, 50, 50));
    if (auto surface = system.NewSurface(window, 50, 50)) surface->Touch();
    system.BeginWrite(window);
    system.Present(window, region);
    system.SetTraits(window, Titled(u"late"));
    system.SetBounds(window, CRect(1, 2, 30, 40));
    system.SetShape(window, &region);
    system.SetCompositing(window, {Compositing::Mode::PerPixel, 0, 100, false});
    for (const Visibility visibility : {Visibility::Shown, Visibility::Minimised, Visibility::Restored,
                                        Visibility::Hidden, Visibility::ShownInactive})
        system.Show(window, visibility);
    for (const StackPlace place : {StackPlace::Top, StackPlace::Bottom, StackPlace::Above, StackPlace::Below})
        system.Restack(window, place, window);
    system.Activate(window);
    system.GrabPointer(window);
    system.ReleasePointer();
    system.SetCursor(window, CursorShape::Hand);
    system.SetCursor(window, CursorShape::None);
    system.PointerPosition();
    system.WindowAt({10, 10});
    EXPECT_GT(system.ScreenSize().cx, 0);
    system.Wake();
}

TEST_F(Faults, TheServerDies) {
    for (const bool sharedMemory : {true, false}) {
        SCOPED_TRACE(sharedMemory);
        Open({.windowManager = true, .sharedMemory = sharedMemory});
        const HWND window = NewWindow(kRect);
        auto surface = Fill(window, kRect.Size(), 0xFF00C000);
        ShowAndWait(window);
        ASSERT_TRUE(system->GrabPointer(window));
        session->KillServer();
        // Writing to the dead socket, before anything was read from it.
        for (int i = 0; i < 3; ++i) {
            system->BeginWrite(window);
            system->Present(window, Region(CRect(0, 0, 200, 100)));
        }
        for (int i = 0; i < 5 && system->Wait(std::nullopt); ++i) {
        }
        EXPECT_FALSE(system->IsAlive());
        EXPECT_FALSE(system->Wait(system->Now() + 60000));
        EXPECT_FALSE(system->Poll());
        EXPECT_EQ(seen.Count<ConnectionLost>(), 1);
        FillRect(*surface, CRect(0, 0, 200, 100), 1);  // its memory stays
        CallAll(*system, window);
        EXPECT_FALSE(system->Create(HWND(77, 1), kRect, Titled(u"none")));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_CONNECTION_UNAVAIL});
        system->Destroy(window);
        system.reset();
        FillRect(*surface, CRect(0, 0, 200, 100), 2);
        seen.events.clear();
    }
}

TEST_F(Faults, AServerThatDiedUnnoticedRefusesAWindow) {
    Open();
    session->KillServer();
    EXPECT_FALSE(system->Create(HWND(77, 1), kRect, Titled(u"none")));
    EXPECT_FALSE(system->IsAlive());
}

TEST_F(Faults, TheServerDiesWhileItIsWaitedFor) {
    Open();
    ShowAndWait(NewWindow(kRect));
    std::thread killer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        session->KillServer();
    });
    while (system->Wait(std::nullopt)) {
    }
    killer.join();
    EXPECT_EQ(seen.Count<ConnectionLost>(), 1);
}

TEST_F(Faults, SomebodyElseDestroysAWindow) {
    Open({.windowManager = true});
    const HWND window = NewWindow(kRect, Titled(u"victim"));
    system->SetCompositing(window, {Compositing::Mode::PerPixel, 0, 255, false});
    Fill(window, kRect.Size(), 0xFF00C000);
    ShowAndWait(window);
    const HWND owned = NewWindow(kRect, Titled(u"bystander"));
    xcb_destroy_window(session->Connection(), session->FindByTitle("victim"));
    xcb_flush(session->Connection());
    CallAll(*system, window);  // before we know
    ASSERT_TRUE(Until([&] { return seen.Count<SystemDestroyed>() == 1; }));
    EXPECT_TRUE(seen.Last<SystemDestroyed>().window == window);
    CallAll(*system, window);  // and after
    CallAll(*system, HWND(4711, 3));
    ShowAndWait(owned);
    system->Destroy(window);
    system->Destroy(window);
    EXPECT_TRUE(system->IsAlive());
}

TEST_F(Faults, WithoutSharedMemoryPixelsGoThroughTheSocket) {
    Open({.sharedMemory = false});
    // More than one request holds.
    const CSize size(1270, 790);
    const HWND window = NewWindow(CRect(CPoint(5, 5), size));
    auto surface = Fill(window, size, 0xFF00C000);
    ShowAndWait(window);
    for (const CPoint at : {CPoint(5, 5), CPoint(1274, 5), CPoint(640, 400), CPoint(1274, 794)})
        EXPECT_TRUE(ScreenShows(at.x, at.y, 0x00C000));
    system->BeginWrite(window);
    FillRect(*surface, CRect(100, 100, 131, 117), 0xFFC00000);
    system->Present(window, Region(CRect(100, 100, 131, 117)));
    EXPECT_TRUE(ScreenShows(105, 105, 0xC00000));
    EXPECT_TRUE(ScreenShows(135, 121, 0xC00000));
    EXPECT_TRUE(ScreenShows(136, 122, 0x00C000));
}

TEST_F(Faults, OddSizesAreNoTrouble) {
    Open({.windowManager = true});
    for (const CRect rect : {CRect(10, 10, 10, 10), CRect(-32768, -32768, -32000, -32000),
                             CRect(32767, 32767, 32768, 32768), CRect(0, 0, 32767, 1)}) {
        const HWND window = NewWindow(rect);
        system->Show(window, Visibility::Shown);
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        system->SetBounds(window, CRect(20, 20, 20, 60));
        EXPECT_FALSE(system->NewSurface(window, 0, 10));
        EXPECT_FALSE(system->NewSurface(window, 40000, 10));
        Idle(50);
        EXPECT_FALSE(system->WindowAt({20, 30}) == window) << "an empty window is not there";
        system->SetBounds(window, CRect(20, 20, 60, 60));
        Fill(window, CSize(40, 40), 0xFF00C000);
        EXPECT_TRUE(ScreenShows(30, 30, 0x00C000));
        system->Destroy(window);
    }
}

TEST_F(Faults, ForeignMessagesAreTakenForWhatTheyAre) {
    Open({.windowManager = true});
    const HWND window = NewWindow(kRect, Titled(u"target"));
    ShowAndWait(window);
    const xcb_window_t id = session->FindByTitle("target");
    session->Listen(session->Root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    const auto send = [&](const char* protocol) {
        session->Send(id, id, "WM_PROTOCOLS", {session->Atom(protocol), 12345, id});
    };
    send("NONSENSE");
    send("_NET_WM_PING");
    bool answered = false;
    EXPECT_TRUE(Until([&] {
        session->TakeEvents([&](const xcb_generic_event_t& event) {
            const auto& answer = reinterpret_cast<const xcb_client_message_event_t&>(event);
            const std::uint32_t* words = answer.data.data32;
            answered |= (event.response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                        answer.window == session->Root() && words[0] == session->Atom("_NET_WM_PING") &&
                        words[1] == 12345 && words[2] == id;
        });
        return answered;
    }));
    EXPECT_EQ(seen.Count<CloseRequested>(), 0);
    send("WM_DELETE_WINDOW");
    EXPECT_TRUE(Until([&] { return seen.Count<CloseRequested>() == 1; }));
}

TEST_F(Faults, SourcesOfOtherLibrariesRunInTheWait) {
    Open();
    int runs = 0;
    const auto count = [](gpointer data) -> gboolean { return ++*static_cast<int*>(data) < 3; };
    g_timeout_add(10, count, &runs);
    while (runs < 3)
        ASSERT_TRUE(system->Wait(system->Now() + 5000));
    g_idle_add(
        [](gpointer data) -> gboolean {
            *static_cast<int*>(data) = 10;
            return FALSE;
        },
        &runs);
    EXPECT_TRUE(system->Poll());
    EXPECT_EQ(runs, 10);
}

}  // namespace
