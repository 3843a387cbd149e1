// Windows that their user sizes and that fill the monitor, and copied text, on either window system.
#include "window/window_kit.h"

#include <platform/clipboard.h>

#include <cstring>

namespace windowtest {
namespace {

class SizingTest : public WindowTest {
  public:
    HWND OpenSized() {
        window_ = Open(100, 100, 150, 120, kRed);
        SetWindowLongPtrW(window_, GWL_STYLE, GetWindowLongPtrW(window_, GWL_STYLE) | WS_THICKFRAME);
        Log().answer = [](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT&) {
            if (message == WM_GETMINMAXINFO) {
                auto& sizes = *reinterpret_cast<MINMAXINFO*>(lParam);
                sizes.ptMinTrackSize = {100, 90};
                sizes.ptMaxTrackSize = {180, 200};
                sizes.ptMaxPosition = {7, 9};
                sizes.ptMaxSize = {300, 250};
            }
            return false;
        };
        User().Settle();
        Forget();
        return window_;
    }
    CRect Place() { return RectOf(window_); }
    void Drag(CPoint from, CPoint to) {
        User().Move(from.x, from.y);
        WhenBlocked([=, this] { User().Move(to.x, to.y); });
        WhenBlocked([this] { User().Release(); });
        User().Press();
        User().Settle();
    }

    HWND window_;
};

TEST_F(SizingTest, TheEdgeFollowsWithinTheSizes) {
    OpenSized();
    Drag({248, 160}, {268, 165});
    EXPECT_EQ(Place(), CRect(100, 100, 270, 220));
    EXPECT_EQ(NamesOf(Log().Of(window_, {WM_ENTERSIZEMOVE, WM_EXITSIZEMOVE, WM_LBUTTONUP})),
              "ENTERSIZEMOVE EXITSIZEMOVE");
    Drag({102, 102}, {182, 182});
    EXPECT_EQ(Place(), CRect(170, 130, 270, 220));
    Drag({268, 218}, {400, 400});
    EXPECT_EQ(Place(), CRect(170, 130, 350, 330));
    EXPECT_EQ(ScreenColour(340, 320), kRedPixel);
}

TEST_F(SizingTest, MaximisedItIsWhereItSays) {
    OpenSized();
    ShowWindow(window_, SW_MAXIMIZE);
    User().Settle();
    EXPECT_EQ(Place(), CRect(CPoint(7, 9), CSize(300, 250)));
    EXPECT_TRUE(IsZoomed(window_));
    const std::vector<Received> sizes = Log().Of(window_, {WM_SIZE});
    ASSERT_EQ(sizes.size(), 1U);
    EXPECT_EQ(sizes[0].wParam, WPARAM{SIZE_MAXIMIZED});
    EXPECT_EQ(ScreenColour(300, 250), kRedPixel);
    ShowWindow(window_, SW_RESTORE);
    User().Settle();
    EXPECT_EQ(Place(), CRect(100, 100, 250, 220));
    EXPECT_FALSE(IsZoomed(window_));
}

TEST_F(SizingTest, TheRightButtonAsksForAContextMenu) {
    OpenSized();
    User().ClickAt(150, 170, 3);
    const std::vector<Received> asked = Log().Of(window_, {WM_CONTEXTMENU});
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].lParam, MAKELPARAM(150, 170));
}

TEST_F(SizingTest, CopiedTextIsThere) {
    OpenSized();
    ASSERT_TRUE(OpenClipboard(window_));
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 8);
    std::memcpy(GlobalLock(block), u"a\u00E4b", 8);
    EXPECT_TRUE(SetClipboardData(CF_UNICODETEXT, block));
    EXPECT_TRUE(CloseClipboard());
    OpenClipboard(window_);
    EXPECT_EQ(CString(static_cast<LPCWSTR>(GlobalLock(GetClipboardData(CF_UNICODETEXT)))), u"a\u00E4b");
    CloseClipboard();
}

TEST_F(SizingTest, KeysOfTheMoment) {
    OpenSized();
    EXPECT_EQ(GetAsyncKeyState(VK_SHIFT), 0);
    User().KeyDown(VK_SHIFT);
    EXPECT_TRUE(GetAsyncKeyState(VK_SHIFT) & 0x8000);
    User().KeyUp(VK_SHIFT);
    EXPECT_EQ(GetAsyncKeyState(VK_SHIFT), 0);
}

}  // namespace
}  // namespace windowtest
