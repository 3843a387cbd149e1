// Memory runs out at every allocation of a call in turn, and stays out until the call is done.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <thread>

#include <platform/headless.h>
#include <platform/window.h>

#include "platform/window/core/control.h"

namespace {

thread_local long allocationsLeft = -1;  // negative: enough
std::atomic<bool> ranOut = false;

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (allocationsLeft == 0) {
        ranOut = true;
        throw std::bad_alloc();
    }
    if (allocationsLeft > 0) --allocationsLeft;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace windowtest {
namespace {

constexpr LPCWSTR kClass = u"OutOfMemory";
int heard[2];  // WM_USER, WM_PAINT

LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    heard[0] += message == WM_USER;
    heard[1] += message == WM_PAINT;
    return message == WM_USER ? 7 : DefWindowProcW(window, message, wParam, lParam);
}

HWND Make(DWORD style, HWND parent) {
    return CreateWindowExW(0, kClass, u"a title of some length", style, 5, 5, 40, 30, parent, 1, {}, nullptr);
}

bool MakeAndDestroy(DWORD style, HWND parent) {
    const HWND window = Make(style, parent);
    return window && DestroyWindow(window);
}

bool Register(char16_t name) {
    const char16_t text[] = {u'M', name, 0};
    WNDCLASSW description;
    description.lpfnWndProc = Procedure;
    description.lpszClassName = text;
    return RegisterClassW(&description) != FALSE;
}

// From a thread of its own, which is the one that has no memory.
bool SendFromElsewhere(HWND window) {
    const long left = std::exchange(allocationsLeft, -1);
    std::atomic<bool> done = false;
    LRESULT answer = 0;
    DWORD error = 0;
    std::thread sender([&] {
        allocationsLeft = left;
        answer = SendMessageW(window, WM_USER, 0, 0);
        allocationsLeft = -1;
        error = GetLastError();
        done = true;
    });
    while (!done)
        Headless::RunPending();
    sender.join();
    SetLastError(error);
    return answer == 7;
}

TEST(OutOfMemoryTest, EveryCallAnswersByItsDocumentedResult) {
    ASSERT_TRUE(Headless::Use(300, 200));
    WNDCLASSW description;
    description.lpfnWndProc = Procedure;
    description.lpszClassName = kClass;
    ASSERT_TRUE(RegisterClassW(&description));
    const HWND owner = Make(WS_POPUP | WS_VISIBLE, {});
    const HWND window = Make(WS_POPUP | WS_VISIBLE, owner);
    UINT_PTR fresh = 100;
    const struct {
        const char* name;
        std::function<bool()> run;
    } calls[] = {
        {"top-level", [&] { return MakeAndDestroy(WS_POPUP | WS_VISIBLE, owner); }},
        {"topmost", [&] { return SetWindowPos(window, HWND_TOPMOST, 0, 0, 40, 30, 0) != FALSE; }},
        {"child", [&] { return MakeAndDestroy(WS_CHILD | WS_VISIBLE, window); }},
        {"class", [&] { return Register(static_cast<char16_t>(++fresh)); }},
        {"timer", [&] { return SetTimer(window, ++fresh, 10, nullptr) != 0; }},
        {"timer again", [&] { return SetTimer(window, fresh, 20, nullptr) != 0; }},
        {"timer of no window", [&] { return SetTimer({}, 0, 10, nullptr) != 0; }},
        {"post", [&] { return PostMessageW(window, WM_USER, 0, 0) != FALSE; }},
        {"post to the thread", [&] { return PostMessageW({}, WM_USER, 0, 0) != FALSE; }},
        {"send from elsewhere", [&] { return SendFromElsewhere(window); }},
        {"text", [&] { return SetWindowTextW(window, u"another text that is longer than before"); }},
        {"place", [&] { return MoveWindow(window, 5, static_cast<int>(++fresh % 50), 40, 30, TRUE); }},
        {"show", [&] { return ShowWindow(window, SW_HIDE) && !ShowWindow(window, SW_SHOW); }},
        {"deliver",
         [&] {
             InvalidateRect(window, nullptr, TRUE);
             TRACKMOUSEEVENT request = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, window, 0};
             TrackMouseEvent(&request);
             Headless::MovePointer(10, 60);
             Headless::ButtonDown();
             Headless::ButtonUp();
             Headless::KeyDown('A');
             Headless::Advance(20);
             Headless::MovePointer(200, 100);
             return true;
         }},
    };
    for (const auto& one : calls) {
        for (long count = 0;; ++count) {
            ranOut = false;
            allocationsLeft = count;
            bool threw = false;
            bool done = false;
            try {
                done = one.run();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            allocationsLeft = -1;
            ASSERT_FALSE(threw) << one.name << " " << count;
            if (!done) {
                EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY) << one.name << " " << count;
            }
            if (ranOut) continue;
            EXPECT_TRUE(done) << one.name;
            break;
        }
        Headless::RunPending();
    }
    // All of it works as before.
    heard[0] = heard[1] = 0;
    PostMessageW(window, WM_USER, 0, 0);
    InvalidateRect(window, nullptr, TRUE);
    Headless::RunPending();
    EXPECT_EQ(heard[0], 1);
    EXPECT_EQ(heard[1], 1);
    platform::ShutDownWindows();
}

}  // namespace
}  // namespace windowtest
