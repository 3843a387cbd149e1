// Windows that write down the messages they receive, for tests through the public API.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "window/driver.h"

namespace windowtest {

struct Received {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// Names as in the API; numbers for the rest.
std::string NameOf(UINT message);
std::string NamesOf(const std::vector<Received>& received);

// What every window of the test hears. A test's own answer comes from `answer`; without one, or when it
// says nothing, the default procedure answers.
struct Script {
    std::vector<Received> received;
    // Returns true and sets the result to answer the message.
    std::function<bool(HWND, UINT, WPARAM, LPARAM, LRESULT&)> answer;
    // The same for one message: runs at it, before the default procedure, or instead of that.
    void At(UINT message, std::function<void(HWND)> act);
    void Answer(UINT message, std::function<LRESULT(HWND)> act);
    std::map<std::uint64_t, COLORREF> colours;  // what WM_PAINT fills with, by window

    // Those of one window and of the given messages, in order; no messages: all.
    std::vector<Received> Of(HWND window, const std::vector<UINT>& messages = {}) const;
    int Count(HWND window, UINT message) const;
};
Script& TheScript();
bool RegisterScriptedClass();

inline CRect RectOf(HWND window) {
    CRect rect;
    GetWindowRect(window, rect);
    return rect;
}

constexpr LPCWSTR kWindowClass = u"WindowTest";

class WindowTest : public testing::Test {
  public:
    void SetUp() override;
    void TearDown() override;

    // A top-level, shown and painted in `colour`.
    HWND Open(int x, int y, int width, int height, COLORREF colour, HWND owner = {}, DWORD exStyle = 0);
    HWND OpenChild(HWND parent, int x, int y, int width, int height, COLORREF colour, UINT_PTR id = 1);
    // Not shown.
    HWND Create(int x, int y, int width, int height, DWORD exStyle = 0, HWND owner = {});

    // Steps of the user while a modal loop blocks; those while the loop that a press begins does.
    void WhenBlocked(std::function<void()> act);
    void PressAnd(std::initializer_list<std::function<void()>> acts);

    Driver& User() { return *driver_; }
    Script& Log() { return TheScript(); }
    // The colour at a point of the screen, as 0x00RRGGBB.
    std::uint32_t ScreenColour(int x, int y) { return User().Screen().At(x, y) & 0xFFFFFF; }
    void Forget() { TheScript().received.clear(); }

  private:
    static std::unique_ptr<Driver> driver_;
    std::vector<HWND> opened_;
};

constexpr std::uint32_t kDesktopColour = 0x3A6EA5;
constexpr COLORREF kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000, kWhite = 0xFFFFFF, kBlack = 0;
// The same, as they come out of a picture.
constexpr std::uint32_t kRedPixel = 0xFF0000, kGreenPixel = 0x00FF00, kBluePixel = 0x0000FF;

}  // namespace windowtest
