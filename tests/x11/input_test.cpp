// Real input, through the server: pointer, grabs, focus, keys, cursors.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <thread>

#include <platform/window.h>
#include <xcb/xfixes.h>

#include "x11/recorder.h"

namespace {

using namespace platform;
using namespace xtest;

const CRect kRect(100, 100, 300, 200);

class Input : public xtest::X11Test {
  protected:
    HWND OpenOne(const xtest::SessionOptions& options) {
        Open(options);
        session->MovePointer(700, 700);
        const HWND window = NewWindow(kRect, Titled(u"input"));
        Fill(window, kRect.Size(), 0xFF00C000);
        ShowAndWait(window);
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        seen.events.clear();
        return window;
    }
    bool Do(const std::vector<std::string>& arguments) { return session->Xdotool(arguments); }
};

TEST_F(Input, PointerComesInScreenCoordinatesWithItsState) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager);
        const HWND window = OpenOne({.windowManager = manager});
        const std::uint64_t before = system->Now();
        ASSERT_TRUE(Do({"mousemove", "150", "160"}));
        ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Moved) > 0; }));
        EXPECT_EQ(CPoint(seen.Last(Pointer::Moved).screen), CPoint(150, 160));
        EXPECT_TRUE(seen.Last(Pointer::Moved).window == window);
        EXPECT_EQ(CPoint(system->PointerPosition()), CPoint(150, 160));
        for (int button = 1; button <= 3; ++button) {
            SCOPED_TRACE(button);
            seen.events.clear();
            ASSERT_TRUE(Do({"keydown", "ctrl", "click", std::to_string(button), "keyup", "ctrl"}));
            ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
            const Pointer down = seen.All(Pointer::Button).front(), up = seen.Last(Pointer::Button);
            EXPECT_TRUE(down.down && !up.down);
            EXPECT_EQ(down.button, button);
            InputState held;
            held.control = true;
            EXPECT_EQ(up.state, held);
            held.left = button == 1;
            held.middle = button == 2;
            held.right = button == 3;
            EXPECT_EQ(down.state, held);
            EXPECT_GE(up.time, down.time);
            EXPECT_GE(down.time + 50, before);
            EXPECT_LE(up.time, system->Now());
        }
        seen.events.clear();
        ASSERT_TRUE(Do({"click", "4", "click", "4", "click", "5"}));
        ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Wheel) == 3; }));
        EXPECT_EQ(seen.Last(Pointer::Wheel).delta, -120);
        EXPECT_EQ(seen.Count(Pointer::Button), 0);
        // A press ties the pointer to its window, and that is left once.
        ASSERT_TRUE(Do({"mousedown", "1", "mousemove", "50", "60"}));
        ASSERT_TRUE(Until([&] { return CPoint(seen.Last(Pointer::Moved).screen) == CPoint(50, 60); }));
        EXPECT_TRUE(seen.Last(Pointer::Moved).window == window);
        EXPECT_TRUE(seen.Last(Pointer::Moved).state.left);
        ASSERT_TRUE(Do({"mouseup", "1"}));
        ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
        EXPECT_EQ(CPoint(seen.Last(Pointer::Button).screen), CPoint(50, 60));
        Idle(100);
        EXPECT_EQ(seen.Count<PointerLeft>(), 1);
        system.reset();
    }
}

TEST_F(Input, AGrabTakesAllUntilItIsReleasedOrLost) {
    for (const bool manager : {false, true}) {
        SCOPED_TRACE(manager);
        const HWND window = OpenOne({.windowManager = manager});
        const HWND other = NewWindow(CRect(400, 100, 500, 200), Titled(u"other"));
        ShowAndWait(other);
        EXPECT_FALSE(system->GrabPointer(HWND(99, 1)));
        ASSERT_TRUE(system->GrabPointer(window));
        // Over another window of ours, and over none.
        for (const CPoint point : {CPoint(450, 150), CPoint(700, 650)}) {
            seen.events.clear();
            ASSERT_TRUE(session->Click(point.x, point.y, 3));
            ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
            EXPECT_TRUE(seen.Last(Pointer::Button).window == window);
            EXPECT_EQ(CPoint(seen.Last(Pointer::Button).screen), point);
        }
        system->ReleasePointer();
        seen.events.clear();
        ASSERT_TRUE(session->Click(450, 150));
        ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
        EXPECT_TRUE(seen.Last(Pointer::Button).window == other);
        // The grab ends with the window's being on the screen.
        ASSERT_TRUE(system->GrabPointer(window));
        system->Show(window, Visibility::Minimised);
        ASSERT_TRUE(Until([&] { return seen.Count<GrabLost>() == 1; }));
        // A window on its way to the screen gets it once it is there.
        system->Show(window, Visibility::Hidden);
        Idle(100);
        EXPECT_FALSE(system->GrabPointer(window));
        system->Show(window, Visibility::Shown);
        EXPECT_TRUE(system->GrabPointer(window));
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        seen.events.clear();
        ASSERT_TRUE(session->Click(700, 650));
        EXPECT_TRUE(Until([&] { return seen.Count(Pointer::Button) == 2; }));
        system.reset();
        seen.events.clear();
    }
}

TEST_F(Input, APointerThatAnotherClientTookHasLeft) {
    const HWND window = OpenOne({.windowManager = true});
    ASSERT_TRUE(Do({"mousemove", "150", "160"}));
    ASSERT_TRUE(Until([&] { return seen.Count(Pointer::Moved) > 0; }));
    ASSERT_TRUE(session->GrabPointer());
    session->ReleasePointer();
    Idle(200);
    EXPECT_EQ(seen.Count<PointerLeft>(), 0) << "borrowed for a moment, as for every click";
    ASSERT_TRUE(session->GrabPointer());
    EXPECT_FALSE(system->GrabPointer(window));
    ASSERT_TRUE(Do({"mousemove", "700", "650"}));
    EXPECT_TRUE(Until([&] { return seen.Count<PointerLeft>() == 1; }, 2000));
    session->ReleasePointer();
    EXPECT_TRUE(Until([&] { return system->GrabPointer(window); }));
}

TEST_F(Input, KeysEndWithTheFocus) {
    setenv("LC_ALL", "C.UTF-8", 1);  // its dead keys
    // A manager would give the focus back by itself.
    const HWND window = OpenOne({.windowManager = false});
    ASSERT_TRUE(Process::Start({"setxkbmap", "de"}).Finish());
    ASSERT_TRUE(Do({"keydown", "38", "keydown", "40", "key", "21"}));  // a, d, a dead acute
    ASSERT_TRUE(Until([&] { return seen.Count<Key>() >= 2; }));
    seen.events.clear();
    xcb_set_input_focus(session->Connection(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_NONE, XCB_CURRENT_TIME);
    session->Sync();
    ASSERT_TRUE(Until([&] { return seen.Count<FocusChanged>() == 1; }));
    EXPECT_TRUE(Until([&] { return seen.Count<KeysHeld>() == 1; }));
    EXPECT_TRUE(seen.Last<KeysHeld>().keys.none()) << "out of sight";
    ASSERT_TRUE(Do({"keyup", "38"}));
    system->Activate(window);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(window) && seen.Last<KeysHeld>().keys.any(); }, 3000));
    EXPECT_TRUE(seen.Last<KeysHeld>().keys['D'] && !seen.Last<KeysHeld>().keys['A']);
    seen.events.clear();
    ASSERT_TRUE(Do({"keyup", "40", "key", "e"}));
    ASSERT_TRUE(Until([&] { return seen.Count<Key>() >= 3; }));
    for (const Key& key : seen.All<Key>())
        EXPECT_FALSE(key.character == u'é');
}

TEST_F(Input, KeysComeAsCodesAndText) {
    const HWND window = OpenOne({});
    // By its name, or by its number in a layout: the text that layouts decide, with codes that stay Latin.
    const struct {
        const char *layout, *key;
        UINT code;
        char16_t text;
    } cases[] = {
        {"us", "a", 'A', u'a'},          {"us", "Z", 'Z', u'Z'},
        {"us", "exclam", '1', u'!'},     {"us", "KP_Enter", VK_RETURN, 13},
        {"us", "BackSpace", VK_BACK, 8}, {"us", "Tab", VK_TAB, 9},
        {"us", "Escape", VK_ESCAPE, 27}, {"us", "space", VK_SPACE, u' '},
        {"us", "Delete", VK_DELETE, 0},  {"us", "Alt_L", VK_MENU, 0},
        {"us", "semicolon", 0xBA, u';'}, {"us", "ctrl+c", 'C', 3},
        {"us", "38", 'A', u'a'},                                   // the key right of Caps Lock
        {"fr", "38", 'Q', u'q'},         {"fr", "11", '2', u'é'},  // the second of the row of digits
        {"ru", "38", 'A', u'ф'},         {"us,ru", "10", '1', u'1'},
        {"de", "47", 0xE7, u'ö'},
    };
    for (const auto& [layout, name, code, text] : cases) {
        SCOPED_TRACE(testing::Message() << layout << " " << name);
        ASSERT_TRUE(Process::Start({"setxkbmap", layout}).Finish());
        seen.events.clear();
        ASSERT_TRUE(Do({"key", name}));
        const auto find = [&, wanted = code](bool down) {
            std::vector<Key> keys = seen.All<Key>();
            std::erase_if(keys, [&](const Key& key) { return key.virtualKey != wanted || key.down != down; });
            return keys;
        };
        ASSERT_TRUE(Until([&] { return !find(false).empty(); }, 3000));
        ASSERT_EQ(find(true).size(), 1U);
        EXPECT_TRUE(find(true)[0].window == window);
        EXPECT_EQ(find(true)[0].character, text);
    }
    // The modifier itself counts as held with its own press.
    ASSERT_TRUE(Process::Start({"setxkbmap", "us"}).Finish());
    seen.events.clear();
    ASSERT_TRUE(Do({"keydown", "shift", "keydown", "a", "keyup", "a", "keyup", "shift"}));
    ASSERT_TRUE(Until([&] { return seen.Count<Key>() == 4; }));
    const std::vector<Key> keys = seen.All<Key>();
    EXPECT_TRUE(keys[0].state.shift && keys[1].state.shift && !keys[3].state.shift);
    EXPECT_EQ(keys[1].character, u'A');
    // A held key repeats as further presses.
    seen.events.clear();
    ASSERT_TRUE(Do({"keydown", "x"}));
    EXPECT_TRUE(Until([&] { return seen.Count<Key>() >= 4; }, 5000));
    ASSERT_TRUE(Do({"keyup", "x"}));
    EXPECT_TRUE(Until([&] { return !seen.Last<Key>().down; }));
    std::vector<Key> repeated = seen.All<Key>();
    repeated.pop_back();
    EXPECT_TRUE(std::ranges::all_of(repeated, &Key::down));
}

TEST_F(Input, FocusIsReportedOnceEachWay) {
    const HWND window = OpenOne({.windowManager = true});
    const HWND other = NewWindow(CRect(400, 100, 500, 200), Titled(u"other"));
    ShowAndWait(other);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(other); }));
    // Another client borrows the keyboard, as window managers do for their key bindings.
    xcb_connection_t* c = session->Connection();
    seen.events.clear();
    std::free(xcb_grab_keyboard_reply(
        c,
        xcb_grab_keyboard(c, 0, session->Root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
    xcb_flush(c);
    Idle(200);
    EXPECT_EQ(seen.Count<FocusChanged>(), 0);
    seen.events.clear();
    system->Activate(window);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(window); }));
    Idle(100);
    EXPECT_EQ(seen.Count<FocusChanged>(), 2);
}

TEST_F(Input, CursorsDiffer) {
    const HWND window = OpenOne({});
    ASSERT_TRUE(session->MovePointer(200, 150));
    xcb_connection_t* c = session->Connection();
    std::free(xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 5, 0), nullptr));
    const auto picture = [&] {
        system->PointerPosition();  // the server has seen all by now
        xcb_xfixes_get_cursor_image_reply_t* reply =
            xcb_xfixes_get_cursor_image_reply(c, xcb_xfixes_get_cursor_image(c), nullptr);
        std::vector<std::uint32_t> pixels;
        if (reply) {
            const std::uint32_t* first = xcb_xfixes_get_cursor_image_cursor_image(reply);
            pixels.assign(first, first + xcb_xfixes_get_cursor_image_cursor_image_length(reply));
        }
        std::free(reply);
        return pixels;
    };
    std::map<std::vector<std::uint32_t>, int> pictures;
    for (const CursorShape shape : {CursorShape::Arrow, CursorShape::Hand, CursorShape::IBeam,
                                    CursorShape::SizeAll, CursorShape::None}) {
        system->SetCursor(window, shape);
        ++pictures[picture()];
    }
    EXPECT_EQ(pictures.size(), 5U);
    const auto invisible = picture();
    EXPECT_TRUE(std::all_of(invisible.begin(), invisible.end(), [](std::uint32_t p) { return p == 0; }));
}

TEST_F(Input, AnotherThreadEndsAWait) {
    OpenOne({});
    Idle(100);
    const std::uint64_t before = system->Now();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        system->Wake();
    });
    EXPECT_TRUE(system->Wait(before + 5000));
    other.join();
    const std::uint64_t waited = system->Now() - before;
    EXPECT_GE(waited, 40U);
    EXPECT_LT(waited, 1000U);
    // A deadline ends it too, and not earlier.
    const std::uint64_t start = system->Now();
    EXPECT_TRUE(system->Wait(start + 60));
    EXPECT_GE(system->Now(), start + 60);
}

}  // namespace
