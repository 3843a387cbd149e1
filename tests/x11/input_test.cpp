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
using xtest::Seen;
using xtest::Titled;

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
        ASSERT_TRUE(Until([&] { return seen.Last(Seen::Kind::Moved) != nullptr; }));
        EXPECT_EQ(seen.Last(Seen::Kind::Moved)->screen, CPoint(150, 160));
        EXPECT_TRUE(seen.Last(Seen::Kind::Moved)->window == window);
        EXPECT_EQ(system->PointerPosition(), CPoint(150, 160));
        for (int button = 1; button <= 3; ++button) {
            SCOPED_TRACE(button);
            seen.events.clear();
            ASSERT_TRUE(Do({"keydown", "ctrl", "click", std::to_string(button), "keyup", "ctrl"}));
            ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
            const Seen& up = *seen.Last(Seen::Kind::Button);
            const auto down = std::find_if(seen.events.begin(), seen.events.end(), [](const Seen& event) {
                return event.kind == Seen::Kind::Button;
            });
            EXPECT_TRUE(down->on);
            EXPECT_FALSE(up.on);
            EXPECT_EQ(down->value, button);
            EXPECT_TRUE(down->state.control);
            EXPECT_FALSE(down->state.shift);
            EXPECT_EQ(down->state.left, button == 1);
            EXPECT_EQ(down->state.middle, button == 2);
            EXPECT_EQ(down->state.right, button == 3);
            EXPECT_FALSE(up.state.left || up.state.middle || up.state.right);
            EXPECT_GE(up.time, down->time);
            EXPECT_GE(down->time + 50, before);
            EXPECT_LE(up.time, system->Now());
        }
        seen.events.clear();
        ASSERT_TRUE(Do({"click", "4", "click", "4", "click", "5"}));
        ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Wheel) == 3; }));
        EXPECT_EQ(seen.Last(Seen::Kind::Wheel)->value, -120);
        EXPECT_EQ(seen.Count(Seen::Kind::Button), 0);
        ASSERT_TRUE(Do({"mousemove", "600", "600"}));
        EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Left) == 1; }));
        system.reset();
    }
}

TEST_F(Input, APressTiesThePointerAndLeavesOnce) {
    const HWND window = OpenOne({.windowManager = true});
    ASSERT_TRUE(Do({"mousemove", "150", "160", "mousedown", "1", "mousemove", "50", "60"}));
    ASSERT_TRUE(Until([&] {
        const Seen* moved = seen.Last(Seen::Kind::Moved);
        return moved && moved->screen == CPoint(50, 60);
    }));
    EXPECT_TRUE(seen.Last(Seen::Kind::Moved)->window == window);
    EXPECT_TRUE(seen.Last(Seen::Kind::Moved)->state.left);
    ASSERT_TRUE(Do({"mouseup", "1"}));
    ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
    EXPECT_EQ(seen.Last(Seen::Kind::Button)->screen, CPoint(50, 60));
    Idle(100);
    EXPECT_EQ(seen.Count(Seen::Kind::Left), 1);
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
            ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
            EXPECT_TRUE(seen.Last(Seen::Kind::Button)->window == window);
            EXPECT_EQ(seen.Last(Seen::Kind::Button)->screen, point);
        }
        system->ReleasePointer();
        seen.events.clear();
        ASSERT_TRUE(session->Click(450, 150));
        ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
        EXPECT_TRUE(seen.Last(Seen::Kind::Button)->window == other);
        // The grab ends with the window's being on the screen.
        ASSERT_TRUE(system->GrabPointer(window));
        system->Show(window, Visibility::Minimised);
        ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::GrabLost) == 1; }));
        // A window on its way to the screen gets it once it is there.
        system->Show(window, Visibility::Hidden);
        Idle(100);
        EXPECT_FALSE(system->GrabPointer(window));
        system->Show(window, Visibility::Shown);
        EXPECT_TRUE(system->GrabPointer(window));
        EXPECT_TRUE(Until([&] { return seen.IsFocused(window); }));
        seen.events.clear();
        ASSERT_TRUE(session->Click(700, 650));
        EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Button) == 2; }));
        system.reset();
        seen.events.clear();
    }
}

TEST_F(Input, APointerThatAnotherClientTookHasLeft) {
    const HWND window = OpenOne({.windowManager = true});
    xcb_connection_t* c = session->Connection();
    const auto grab = [&] {
        std::free(xcb_grab_pointer_reply(c,
                                         xcb_grab_pointer(c, 0, session->Root(), 0, XCB_GRAB_MODE_ASYNC,
                                                          XCB_GRAB_MODE_ASYNC, 0, 0, XCB_CURRENT_TIME),
                                         nullptr));
    };
    const auto release = [&] {
        xcb_ungrab_pointer(c, XCB_CURRENT_TIME);
        xcb_flush(c);
    };
    ASSERT_TRUE(Do({"mousemove", "150", "160"}));
    ASSERT_TRUE(Until([&] { return seen.Last(Seen::Kind::Moved) != nullptr; }));
    grab();
    release();
    Idle(200);
    EXPECT_EQ(seen.Count(Seen::Kind::Left), 0) << "borrowed for a moment, as for every click";
    grab();
    EXPECT_FALSE(system->GrabPointer(window));
    ASSERT_TRUE(Do({"mousemove", "700", "650"}));
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Left) == 1; }, 2000));
    release();
    EXPECT_TRUE(Until([&] { return system->GrabPointer(window); }));
}

TEST_F(Input, KeysEndWithTheFocus) {
    setenv("LC_ALL", "C.UTF-8", 1);  // its dead keys
    // A manager would give the focus back by itself.
    const HWND window = OpenOne({.windowManager = false});
    ASSERT_TRUE(xtest::Process::Start({"setxkbmap", "de"}).Finish());
    xcb_connection_t* c = session->Connection();
    ASSERT_TRUE(Do({"keydown", "38", "keydown", "40", "key", "21"}));  // a, d, a dead acute
    ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Key) >= 2; }));
    xcb_set_input_focus(c, XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_NONE, XCB_CURRENT_TIME);
    xcb_flush(c);
    seen.held.set();
    ASSERT_TRUE(Until([&] { return seen.Last(Seen::Kind::Focus) && !seen.Last(Seen::Kind::Focus)->on; }));
    EXPECT_TRUE(Until([&] { return seen.held.none(); })) << "out of sight";
    ASSERT_TRUE(Do({"keyup", "38"}));
    system->Activate(window);
    ASSERT_TRUE(Until([&] { return seen.Last(Seen::Kind::Focus)->on && seen.held.any(); }, 3000));
    EXPECT_TRUE(seen.held['D'] && !seen.held['A']);
    seen.events.clear();
    ASSERT_TRUE(Do({"keyup", "40", "key", "e"}));
    ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Key) >= 3; }));
    for (const Seen& event : seen.events)
        EXPECT_FALSE(event.character == u'é');
}

TEST_F(Input, KeysComeAsCodesAndText) {
    const HWND window = OpenOne({.windowManager = true});
    struct Case {
        const char* key;
        UINT code;
        char16_t text;
    };
    const Case cases[] = {
        {"a", 'A', u'a'},          {"Z", 'Z', u'Z'},          {"7", '7', u'7'},
        {"exclam", '1', u'!'},     {"Return", VK_RETURN, 13}, {"KP_Enter", VK_RETURN, 13},
        {"BackSpace", VK_BACK, 8}, {"Tab", VK_TAB, 9},        {"Escape", VK_ESCAPE, 27},
        {"space", VK_SPACE, u' '}, {"Delete", VK_DELETE, 0},  {"Insert", VK_INSERT, 0},
        {"Home", VK_HOME, 0},      {"End", VK_END, 0},        {"Prior", VK_PRIOR, 0},
        {"Next", VK_NEXT, 0},      {"Left", VK_LEFT, 0},      {"Up", VK_UP, 0},
        {"Right", VK_RIGHT, 0},    {"Down", VK_DOWN, 0},      {"F1", VK_F1, 0},
        {"F12", VK_F12, 0},        {"Shift_R", VK_SHIFT, 0},  {"Control_L", VK_CONTROL, 0},
        {"Alt_L", VK_MENU, 0},     {"Super_L", VK_LWIN, 0},   {"semicolon", 0xBA, u';'},
        {"ctrl+c", 'C', 3},
    };
    for (const Case& key : cases) {
        SCOPED_TRACE(key.key);
        seen.events.clear();
        ASSERT_TRUE(Do({"key", key.key}));
        const auto find = [&](bool down) {
            return std::find_if(seen.events.begin(), seen.events.end(), [&](const Seen& event) {
                return event.kind == Seen::Kind::Key && event.on == down &&
                       event.value == static_cast<int>(key.code);
            });
        };
        ASSERT_TRUE(Until([&] { return find(false) != seen.events.end(); }, 3000));
        ASSERT_TRUE(find(true) != seen.events.end());
        EXPECT_TRUE(find(true)->window == window);
        EXPECT_EQ(find(true)->character, key.text);
    }
    // The modifier itself counts as held with its own press.
    seen.events.clear();
    ASSERT_TRUE(Do({"keydown", "shift", "keydown", "a", "keyup", "a", "keyup", "shift"}));
    ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Key) == 4; }));
    EXPECT_TRUE(seen.events[0].state.shift);
    EXPECT_EQ(seen.events[1].character, u'A');
    EXPECT_TRUE(seen.events[1].state.shift);
    EXPECT_FALSE(seen.events[3].state.shift);
}

TEST_F(Input, LayoutsDecideTextButKeepLatinCodes) {
    const HWND window = OpenOne({});
    struct Case {
        const char* layout;
        const char* keycode;
        UINT code;
        char16_t text;
    };
    const Case cases[] = {
        {"us", "38", 'A', u'a'},                           // the key right of Caps Lock
        {"fr", "38", 'Q', u'q'}, {"fr", "11", '2', u'é'},  // the second of the row of digits
        {"ru", "38", 'A', u'ф'}, {"us,ru", "10", '1', u'1'}, {"de", "47", 0xE7, u'ö'},
    };
    for (const Case& key : cases) {
        SCOPED_TRACE(testing::Message() << key.layout << " " << key.keycode);
        ASSERT_TRUE(xtest::Process::Start({"setxkbmap", key.layout}).Finish());
        seen.events.clear();
        ASSERT_TRUE(Do({"key", key.keycode}));
        ASSERT_TRUE(Until([&] { return seen.Count(Seen::Kind::Key) == 2; }, 3000));
        EXPECT_TRUE(seen.events[0].window == window);
        EXPECT_EQ(seen.events[0].value, static_cast<int>(key.code));
        EXPECT_EQ(seen.events[0].character, key.text);
        EXPECT_EQ(seen.events[1].value, static_cast<int>(key.code));
    }
}

TEST_F(Input, AHeldKeyRepeatsAsFurtherPresses) {
    OpenOne({.windowManager = true});
    ASSERT_TRUE(Do({"keydown", "x"}));
    EXPECT_TRUE(Until([&] { return seen.Count(Seen::Kind::Key) >= 4; }, 5000));
    ASSERT_TRUE(Do({"keyup", "x"}));
    EXPECT_TRUE(Until([&] { return !seen.Last(Seen::Kind::Key)->on; }));
    for (const Seen& event : seen.events) {
        if (event.kind == Seen::Kind::Key) {
            EXPECT_EQ(event.on, &event != seen.Last(Seen::Kind::Key));
        }
    }
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
    EXPECT_EQ(seen.Count(Seen::Kind::Focus), 0);
    seen.events.clear();
    system->Activate(window);
    ASSERT_TRUE(Until([&] { return seen.IsFocused(window); }));
    Idle(100);
    EXPECT_EQ(seen.Count(Seen::Kind::Focus), 2);
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
