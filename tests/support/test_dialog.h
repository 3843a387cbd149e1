// A dialog on the headless screen, driven as a user would drive it.
#pragma once

#include <QKUILib.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <vector>

#include "support/skin.h"

namespace kit {

constexpr UINT kDialogTemplate = 101;  // 100 by 80 dialog units of no font: 200 by 160 pixels
#ifdef KIT_SCALE
constexpr int kScale = KIT_SCALE;  // pixels to a unit
#else
constexpr int kScale = 1;
#endif
constexpr int kDialogWidth = 200;
constexpr int kDialogHeight = 160;

// Values as one line of text, so that one comparison states them all.
template <class... Values>
std::string Line(const Values&... values) {
    std::ostringstream out;
    ((out << (out.tellp() > 0 ? " " : "") << values), ...);
    return out.str();
}
inline std::string Line(const CRect& rect) {
    return Line(rect.left, rect.top, rect.right, rect.bottom);
}

class TestDialog : public CQKDialogBase {
  public:
    explicit TestDialog(CWnd* parent = nullptr) : CQKDialogBase(kDialogTemplate, parent) {}
    explicit TestDialog(std::initializer_list<QKItemBase*> items) : TestDialog() { Add(items); }

    void Add(std::initializer_list<QKItemBase*> items) {
        for (QKItemBase* const item : items)
            AddQKItem(item);
    }
    // At a place of the screen, shown and painted.
    void Open(int x = 100, int y = 100) {
        ASSERT_TRUE(Create(kDialogTemplate));
        SetWindowPos(HWND(), x, y, kDialogWidth, kDialogHeight, SWP_NOZORDER);
        Show();
    }
    // The same in a style, with an alpha where it takes one; the colour that the key leaves out is magenta.
    void OpenAs(int style, int alpha = 255, int x = 100, int y = 100) {
        ASSERT_TRUE(Create(kDialogTemplate));
        SetWindowPos(HWND(), x, y, kDialogWidth, kDialogHeight, SWP_NOZORDER);
        Become(style, alpha);
        Show();
    }
    void Become(int style, int alpha = 255) {
        if (style == LAY_NONE) SetNoLayDlg();
        if (style == LAY_COLORKEY) Set_COLORKEYDlg(RGB(255, 0, 255));
        if (style == LAY_ALPHA) Set_ALPHADlg(alpha);
        if (style == LAY_OPAQUE) Set_OPAQUEDlg(alpha);
    }
    void Show() {
        ShowWindow(SW_SHOW);
        UpdateView();
        Headless::RunPending();
    }
    void Refresh() {
        UpdateView();
        Headless::RunPending();
    }

    // In client coordinates.
    void Move(int x, int y) {
        const CPoint screen = Screen(x, y);
        Headless::MovePointer(screen.x, screen.y);
    }
    void Press(int x, int y) {
        Move(x, y);
        Headless::ButtonDown();
    }
    void Release(int x, int y) {
        Move(x, y);
        Headless::ButtonUp();
    }
    void Click(int x, int y) {
        Press(x, y);
        Headless::ButtonUp();
    }
    CPoint Screen(int x, int y) {
        POINT point = {x, y};
        ::ClientToScreen(m_hWnd, &point);
        return point;
    }
    std::uint32_t Pixel(int x, int y) { return Headless::Capture(m_hWnd).At(x, y); }
    struct Spot {
        int x, y;
        std::uint32_t colour;
    };
    void ExpectPixels(std::initializer_list<Spot> spots) {
        for (const auto& [x, y, colour] : spots)
            EXPECT_EQ(Pixel(x, y), colour) << x << ", " << y;
    }

    void UpdateView() override {
        ++refreshes;
        CQKDialogBase::UpdateView();
    }
    void UpdateViewRect(const RECT* rect) override {
        refreshedRects.push_back(rect ? CRect(*rect) : CRect());
        CQKDialogBase::UpdateViewRect(rect);
    }
    int refreshes = 0;
    std::vector<CRect> refreshedRects;

    using CQKDialogBase::m_arItems;
    using CQKDialogBase::m_bBackCache;
    using CQKDialogBase::m_bBackKeepRatio;
    using CQKDialogBase::m_bHasGif;
    using CQKDialogBase::m_bMinimized;
    using CQKDialogBase::m_bSelecting;
    using CQKDialogBase::m_bSysInvalidate;
    using CQKDialogBase::m_nLayStyle;
    using CQKDialogBase::m_pBackCache;
    using CQKDialogBase::m_pBackImage;
    using CQKDialogBase::m_pDownItem;
    using CQKDialogBase::m_rcSel;
    using CQKDialogBase::SetMouseTranOver;
};

// A button of 40 by 30 pixels with a strip of three stacked frames, whose clicks are counted or acted upon.
class TestButton : public QKButton {
  public:
    TestButton(int x, int y, int frames = 3) {
        const std::vector<std::uint32_t> colours = {kNormal, kOver, kPressed, kActive, kDisabled};
        SetImage(kit::Strip("button" + std::to_string(frames), {colours.begin(), colours.begin() + frames},
                            40, 30, true),
                 static_cast<QKBT_IMGS>(frames), QKBT_VERTICAL);
        SetRect(x, y, 40, 30);
        const QKCallbacks callbacks = {[](LPVOID argument) {
                                           auto* button = static_cast<TestButton*>(argument);
                                           ++button->clicks;
                                           if (const auto act = button->onClick) act();
                                       },
                                       this};
        SetCallBack(&callbacks);
    }
    int clicks = 0;
    std::function<void()> onClick;
};

// The box of all pixels in a part of a picture that are ink.
template <class IsInk>
CRect InkOf(const Headless::Picture& picture, const CRect& part, IsInk isInk) {
    CRect ink;
    for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x)
            if (isInk(picture.At(x, y))) ink.UnionRect(CRect(ink), CRect(x, y, x + 1, y + 1));
    return ink;
}

// Each channel of a pixel, give or take one.
inline void ExpectNear(std::uint32_t pixel, std::uint32_t wanted) {
    for (int shift = 0; shift < 32; shift += 8)
        EXPECT_NEAR(static_cast<int>(pixel >> shift & 255), static_cast<int>(wanted >> shift & 255), 1)
            << std::hex << pixel << ", not " << wanted;
}

inline void ExpectSame(const Headless::Picture& shown, const Headless::Picture& wanted) {
    const Headless::Difference difference = Headless::Compare(shown, wanted);
    const CPoint first(difference.place.left, difference.place.top);
    ASSERT_EQ(difference.pixels, 0) << "around " << first.x << ", " << first.y << std::hex << " is "
                                    << shown.At(first.x, first.y) << ", not " << wanted.At(first.x, first.y);
}

class HeadlessTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        ASSERT_TRUE(Headless::Use(640 * kScale, 480 * kScale, 96 * kScale));
        ASSERT_TRUE(SetScreenScale(kScale));
    }
    void SetUp() override { Headless::MovePointer(639, 479); }
};

}  // namespace kit
