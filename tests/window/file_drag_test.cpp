// A drag of files that nobody takes: what else goes on meanwhile, and what ends it.
#include <platform/ole.h>

#include <cstring>

#include "window/window_kit.h"

namespace windowtest {
namespace {

class FileDragTest : public WindowTest {
  public:
    void SetUp() override {
        WindowTest::SetUp();
        window_ = Open(100, 100, 50, 50, kRed);
        Log().answer = [this](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) {
            if (window != window_ || message != WM_LBUTTONDOWN) return false;
            SetCapture(window_);
            effect_ = Drag(u"/tmp/a file");
            returned_ = true;
            return false;
        };
        Forget();
    }
    void TearDown() override {
        User().Release();
        WindowTest::TearDown();
    }
    static DROPEFFECT Drag(std::u16string_view path) {
        const HGLOBAL block = GlobalAlloc(GMEM_ZEROINIT, sizeof(DROPFILES) + 2 * (path.size() + 2));
        auto* bytes = static_cast<std::byte*>(GlobalLock(block));
        DROPFILES header{sizeof(DROPFILES), {0, 0}, FALSE, TRUE};
        std::memcpy(bytes, &header, sizeof header);
        std::memcpy(bytes + sizeof header, path.data(), 2 * path.size());
        COleDataSource source;
        source.CacheGlobalData(CF_HDROP, block);
        return source.DoDragDrop();
    }
    using Act = std::function<void()>;
    void Press(std::initializer_list<Act> acts) {
        returned_ = false;
        effect_ = 77;
        PressAnd(acts);
    }
    const Act MoveFar = [this] { User().Move(160, 90); };
    const Act LetGo = [this] { User().Release(); };

    HWND window_;
    bool returned_ = false;
    DROPEFFECT effect_ = 77;
};

TEST_F(FileDragTest, WindowsLiveOnButGetNoInput) {
    Press({MoveFar,
           [&] {
               EXPECT_FALSE(returned_);
               EXPECT_EQ(GetCapture(), HWND());
               POINT at;
               GetCursorPos(&at);
               EXPECT_EQ(CPoint(at), CPoint(160, 90));
               EXPECT_TRUE(GetKeyState(VK_LBUTTON) < 0);
               EXPECT_EQ(Drag(u"/tmp/another"), DWORD{DROPEFFECT_NONE}) << "one at a time";
               User().Move(120, 120);
               PostMessageW(window_, WM_USER, 0, 0);
               InvalidateRect(window_, nullptr, FALSE);
               SetTimer(window_, 3, 20, nullptr);
               User().Pass(60);
               KillTimer(window_, 3);
               EXPECT_GE(Log().Count(window_, WM_PAINT), 1);
           },
           LetGo});
    EXPECT_TRUE(returned_);
    EXPECT_EQ(effect_, DWORD{DROPEFFECT_NONE});
    User().Settle();
    EXPECT_EQ(Log().Count(window_, WM_USER), 1);
    EXPECT_GE(Log().Count(window_, WM_TIMER), 1);
    EXPECT_EQ(Log().Count(window_, WM_LBUTTONUP), 0);
    EXPECT_FALSE(GetKeyState(VK_LBUTTON) < 0);
    // The pointer is everybody's again.
    Forget();
    User().Move(125, 125);
    EXPECT_EQ(Log().Count(window_, WM_MOUSEMOVE), 1);
}

TEST_F(FileDragTest, WhatEndsIt) {
    const struct {
        const char* what;
        Act end;
    } cases[] = {
        {"release", LetGo},
        {"Escape", [&] { User().Stroke(VK_ESCAPE); }},
        {"another button", [&] { User().Click(3); }},
        {"the end of the program", [&] { PostQuitMessage(4); }},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        Press({MoveFar, one.end});
        EXPECT_TRUE(returned_);
        EXPECT_EQ(effect_, DWORD{DROPEFFECT_NONE});
        MSG message{};
        while (PeekMessageW(&message, {}, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        User().Release();
        EXPECT_EQ(Drag(u"/tmp/none"), DWORD{DROPEFFECT_NONE}) << "with the button up it does not begin";
        User().Pass(600);
    }
}

TEST_F(FileDragTest, TheWindowThatBeganItMayGo) {
    Press({MoveFar, [&] { DestroyWindow(window_); }, [&] { EXPECT_FALSE(returned_); }, MoveFar, LetGo});
    EXPECT_TRUE(returned_);
    EXPECT_EQ(effect_, DWORD{DROPEFFECT_NONE});
}

TEST_F(FileDragTest, WhatIsNoListOfFilesIsNotDragged) {
    Log().answer = [this](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) {
        if (window != window_ || message != WM_LBUTTONDOWN) return false;
        COleDataSource source;
        EXPECT_EQ(source.DoDragDrop(), DWORD{DROPEFFECT_NONE});
        for (const std::size_t size : {std::size_t{0}, std::size_t{19}, std::size_t{22}}) {
            source.CacheGlobalData(CF_HDROP, GlobalAlloc(GMEM_ZEROINIT, size));
            EXPECT_EQ(source.DoDragDrop(), DWORD{DROPEFFECT_NONE});
        }
        const HGLOBAL block = GlobalAlloc(GMEM_FIXED, 64);
        std::memset(GlobalLock(block), 0xFF, 64);
        source.CacheGlobalData(CF_HDROP, block);
        EXPECT_EQ(source.DoDragDrop(), DWORD{DROPEFFECT_NONE});
        EXPECT_EQ(GlobalSize(block), 64U);
        EXPECT_EQ(GlobalFree(block), HGLOBAL()) << "whoever frees it nevertheless harms nobody";
        EXPECT_EQ(source.DoDragDrop(), DWORD{DROPEFFECT_NONE});
        returned_ = true;
        return true;
    };
    Press({});
    EXPECT_TRUE(returned_);
}

}  // namespace
}  // namespace windowtest
