// The headless user's gestures, and the pictures that a test compares.
#include <tuple>

#include "window/window_kit.h"

namespace windowtest {
namespace {

class UserTest : public WindowTest {
  public:
    void SetUp() override {
        WindowTest::SetUp();
        window_ = Open(100, 100, 200, 150, kRed);
        SetFocus(window_);
        Headless::MovePointer(window_, 60, 60);
        Forget();
    }
    std::string Buttons() {
        return NamesOf(Log().Of(window_, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK}));
    }
    HWND window_;
};

TEST_F(UserTest, ClicksAreAloneAndDoubleClicksBelongTogether) {
    Headless::Click(window_, 50, 40);
    Headless::Click(window_, 50, 40);
    EXPECT_EQ(Buttons(), "LBUTTONDOWN LBUTTONUP LBUTTONDOWN LBUTTONUP");
    EXPECT_EQ(Log().received.back().lParam, MAKELPARAM(50, 40));
    Forget();
    Headless::DoubleClick(150, 140);
    Headless::Drag(window_, 50, 40, 90, 60, 2);
    EXPECT_EQ(Buttons(),
              "LBUTTONDOWN LBUTTONUP LBUTTONDBLCLK LBUTTONUP LBUTTONDOWN LBUTTONUP LBUTTONDBLCLK LBUTTONUP");
    Forget();
    Headless::Drag(window_, 50, 40, 90, 60);
    const std::vector<Received> moves = Log().Of(window_, {WM_MOUSEMOVE});
    EXPECT_GT(
        std::count_if(moves.begin(), moves.end(), [](const Received& h) { return h.wParam == MK_LBUTTON; }),
        3);
    EXPECT_EQ(moves.back().lParam, MAKELPARAM(90, 60));
}

TEST_F(UserTest, TheWheelTurnsInNotches) {
    Headless::KeyDown(VK_CONTROL);
    Headless::Wheel(-2);
    Headless::KeyUp(VK_CONTROL);
    Headless::Wheel(0);
    const std::vector<Received> turns = Log().Of(window_, {WM_MOUSEWHEEL});
    ASSERT_EQ(turns.size(), 2u);
    EXPECT_EQ(GET_WHEEL_DELTA_WPARAM(turns[0].wParam), -120);
    EXPECT_EQ(LOWORD(turns[0].wParam), MK_CONTROL);
    EXPECT_EQ(turns[0].lParam, MAKELPARAM(160, 160));
}

TEST_F(UserTest, TypedTextArrivesUnitByUnit) {
    std::u16string text;
    std::vector<WPARAM> keys;
    Log().answer = [&](HWND, UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_CHAR) text += static_cast<char16_t>(wParam);
        if (message == WM_KEYDOWN) keys.push_back(wParam);
        return false;
    };
    Headless::KeyDown(VK_CONTROL);  // does not make commands of letters
    Headless::Type("aB 7?ü\n😀");
    Headless::KeyUp(VK_CONTROL);
    EXPECT_EQ(text, u"aB 7?ü\r😀");
    EXPECT_EQ(keys, (std::vector<WPARAM>{VK_CONTROL, 'A', VK_SHIFT, 'B', VK_SPACE, '7', VK_PACKET, VK_PACKET,
                                         VK_RETURN, VK_PACKET, VK_PACKET}));
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
}

// A press that opens something modal: what is left of the gesture belongs to that.
TEST_F(UserTest, ALoopInTheMiddleOfAGestureGetsTheRest) {
    int moves = 0;
    bool stepped = false;
    Log().Answer(WM_LBUTTONDOWN, [&](HWND) {
        MSG next{};
        while (GetMessageW(&next, {}, 0, 0) > 0 && next.message != WM_LBUTTONUP)
            moves += next.message == WM_MOUSEMOVE && !stepped;
        return LRESULT{0};
    });
    Headless::WhenIdle([](void* flag) { *static_cast<bool*>(flag) = true; }, &stepped);
    Headless::Drag(window_, 10, 10, 110, 10);
    EXPECT_GT(moves, 3);
    EXPECT_FALSE(stepped);
    Log().answer = nullptr;
    MSG none{};
    EXPECT_EQ(GetMessageW(&none, {}, 0, 0), 0);  // the step, and then the end
}

TEST_F(UserTest, PicturesAreComparedAndTheirDifferenceIsShown) {
    const Headless::Picture picture{3, 2, {0xFF102030, 0x80402010, 0, 0xFFFFFFFF, 0x01010101, 0xFF000000}};
    const CString path = CString(QKUI_TEST_OUTPUT) + CString(u"/Bild 世界.png");
    ASSERT_TRUE(picture.SavePng(path));
    EXPECT_FALSE(picture.SavePng(u"/no/such/folder/a.png"));
    const Headless::Picture lacking{3, 2, {1, 2, 3, 4, 5}};
    EXPECT_FALSE(lacking.SavePng(path) || Headless::Picture().SavePng(path));
    EXPECT_EQ(Headless::Compare(Headless::Picture::Load(path), picture).largest, 0);
    EXPECT_EQ(Headless::Picture::Load(u"/nowhere.png").width, 0);

    Headless::Picture other = picture;
    other.argb[1] += 3;      // blue
    other.argb[5] = 0xFF00;  // its alpha, and green
    for (const auto& [tolerance, pixels, left] : {std::tuple{0, 2, 1}, {2, 2, 1}, {3, 1, 2}, {255, 0, 0}}) {
        const Headless::Difference difference = Headless::Compare(other, picture, tolerance);
        EXPECT_TRUE(difference.pixels == pixels && difference.place.left == left) << tolerance;
        EXPECT_EQ(difference.picture.At(1, 0) == 0xFFFF0000, tolerance < 3);
    }
    EXPECT_EQ(Headless::Compare(picture, {4, 1, {1, 2, 3, 4}}, 255).pixels, 4);
}

}  // namespace
}  // namespace windowtest
