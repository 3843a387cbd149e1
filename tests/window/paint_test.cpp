// Painting: a paint covers exactly what was invalidated, and shows what was drawn.
#include "window/window_kit.h"

namespace windowtest {
namespace {

class PaintTest : public WindowTest {
  protected:
    // Fills all that may be drawn on by way of FillRect over far more than the window.
    static void FillAll(HDC context, COLORREF colour) {
        const HBRUSH brush = CreateSolidBrush(colour);
        const RECT all = {-1000, -1000, 5000, 5000};
        FillRect(context, &all, brush);
        DeleteObject(brush);
    }
    // Paints the next WM_PAINT of a window in `colour`, whatever its update region, and notes that.
    void PaintWith(HWND window, COLORREF colour) {
        Log().answer = [=, this](HWND heard, UINT message, WPARAM, LPARAM, LRESULT& result) {
            if (message == WM_ERASEBKGND) result = TRUE;
            if (message != WM_PAINT || !(heard == window)) return message == WM_ERASEBKGND;
            PAINTSTRUCT paint;
            BeginPaint(window, &paint);
            boxes_.push_back(paint.rcPaint);
            erases_.push_back(paint.fErase != FALSE);
            FillAll(paint.hdc, colour);
            EndPaint(window, &paint);
            return true;
        };
    }
    // The pixels of a window that show `colour`, checked against a predicate over client coordinates.
    template <class Predicate>
    void ExpectShown(HWND window, std::uint32_t colour, Predicate inside) {
        RECT place;
        GetWindowRect(window, &place);
        const Headless::Picture screen = User().Screen();
        int wrong = 0;
        for (int y = 0; y < place.bottom - place.top; ++y)
            for (int x = 0; x < place.right - place.left; ++x) {
                const std::uint32_t pixel = screen.At(place.left + x, place.top + y) & 0xFFFFFF;
                if ((pixel == colour) == inside(x, y)) continue;
                if (++wrong <= 3) ADD_FAILURE() << x << ", " << y << ": " << std::hex << pixel;
            }
        EXPECT_EQ(wrong, 0);
    }
    std::vector<CRect> boxes_;
    std::vector<bool> erases_;
};

TEST_F(PaintTest, APaintCoversExactlyTheUpdateRegion) {
    const HWND window = Open(100, 100, 60, 40, kRed);
    PaintWith(window, kGreen);
    const RECT one = {5, 5, 10, 15};
    const RECT two = {20, 10, 100, 12};
    InvalidateRect(window, &one, FALSE);
    InvalidateRect(window, &two, FALSE);
    RECT box;
    EXPECT_TRUE(GetUpdateRect(window, &box, FALSE));
    EXPECT_EQ(box, CRect(5, 5, 60, 15));
    User().Settle();
    EXPECT_EQ(boxes_, std::vector<CRect>{CRect(5, 5, 60, 15)});
    ExpectShown(window, kGreenPixel, [&](int x, int y) {
        return CRect(one).PtInRect({x, y}) || CRect(two).PtInRect({x, y});
    });
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST_F(PaintTest, ValidatedPartsAreLeftOut) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    PaintWith(window, kGreen);
    const RECT valid = {10, 0, 30, 40};
    InvalidateRect(window, nullptr, FALSE);
    ValidateRect(window, &valid);
    User().Settle();
    ExpectShown(window, kGreenPixel, [](int x, int) { return x < 10 || x >= 30; });
    InvalidateRect(window, nullptr, FALSE);
    ValidateRect(window, nullptr);
    boxes_.clear();
    User().Settle();
    EXPECT_TRUE(boxes_.empty());
}

TEST_F(PaintTest, AnEraseIsAskedForOnceAndAnswered) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    PaintWith(window, kGreen);
    const RECT part = {0, 0, 5, 5};
    InvalidateRect(window, &part, TRUE);
    InvalidateRect(window, &part, FALSE);
    Forget();
    User().Settle();
    EXPECT_EQ(NamesOf(Log().Of(window)), "PAINT ERASEBKGND");
    InvalidateRect(window, &part, FALSE);
    Forget();
    User().Settle();
    EXPECT_EQ(NamesOf(Log().Of(window)), "PAINT");
    Log().answer = nullptr;
    InvalidateRect(window, &part, TRUE);
    PAINTSTRUCT paint;
    ASSERT_TRUE(BeginPaint(window, &paint));
    EXPECT_TRUE(paint.fErase) << "nobody erased";
    EndPaint(window, &paint);
}

TEST_F(PaintTest, WhatIsInvalidatedWhilePaintingComesNext) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    int paints = 0;
    Log().Answer(WM_PAINT, [&](HWND) {
        PAINTSTRUCT paint;
        BeginPaint(window, &paint);
        const RECT part = {0, 0, 3, 3};
        if (++paints == 1) InvalidateRect(window, &part, FALSE);
        EndPaint(window, &paint);
        return LRESULT{0};
    });
    InvalidateRect(window, nullptr, FALSE);
    User().Settle();
    EXPECT_EQ(paints, 2);
    // A procedure that does nothing about its update region is not asked for ever.
    Log().answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_PAINT) ++paints;
        return message == WM_PAINT;
    };
    InvalidateRect(window, nullptr, FALSE);
    User().Settle();
    EXPECT_EQ(paints, 3);
}

TEST_F(PaintTest, NothingShowsBeforeThePaintEnds) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    InvalidateRect(window, nullptr, FALSE);
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    ASSERT_TRUE(context);
    FillAll(context, kGreen);
    EXPECT_EQ(ScreenColour(110, 110), kRedPixel);
    EXPECT_TRUE(EndPaint(window, &paint));
    EXPECT_EQ(ScreenColour(110, 110), kGreenPixel);
    EXPECT_FALSE(EndPaint(window, &paint)) << "ended already";
    RECT box;
    EXPECT_EQ(GetClipBox(context, &box), ERROR_REGION) << "the context is gone";
}

TEST_F(PaintTest, AContextOfTheWindowDrawsOutsideAPaint) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    const HDC context = GetDC(window);
    ASSERT_TRUE(context);
    RECT box;
    GetClipBox(context, &box);
    EXPECT_EQ(box, CRect(0, 0, 40, 40));
    const RECT part = {0, 0, 10, 10};
    const HBRUSH brush = CreateSolidBrush(kBlue);
    FillRect(context, &part, brush);
    EXPECT_FALSE(DeleteDC(context));
    EXPECT_EQ(ReleaseDC(window, context), 1);
    EXPECT_EQ(ReleaseDC(window, context), 0);
    ExpectShown(window, kBluePixel, [](int x, int y) { return x < 10 && y < 10; });
    // The screen has a context for measuring; nothing can be drawn on it.
    const HDC screen = GetDC({});
    ASSERT_TRUE(screen);
    EXPECT_EQ(GetClipBox(screen, &box), NULLREGION);
    const HDC memory = CreateCompatibleDC(screen);
    EXPECT_TRUE(memory);
    DeleteDC(memory);
    EXPECT_EQ(ReleaseDC({}, screen), 1);
    // A window takes its contexts along.
    const HDC late = GetDC(window);
    DestroyWindow(window);
    EXPECT_EQ(GetClipBox(late, &box), ERROR_REGION);
    EXPECT_FALSE(FillRect(late, &part, brush));
    DeleteObject(brush);
}

TEST_F(PaintTest, ChildrenPaintOverTheirParentInsideIt) {
    const HWND window = Open(100, 100, 60, 60, kRed);
    const HWND child = OpenChild(window, 40, 10, 40, 20, kGreen);
    const HWND inner = OpenChild(child, 10, 10, 100, 100, kBlue, 2);
    const auto isInner = [](int x, int y) { return x >= 50 && y >= 20 && y < 30; };
    ExpectShown(window, kGreenPixel,
                [&](int x, int y) { return x >= 40 && y >= 10 && y < 30 && !isInner(x, y); });
    ExpectShown(window, kBluePixel, isInner);
    InvalidateRect(window, nullptr, TRUE);
    Forget();
    User().Settle();
    std::vector<HWND> order;
    for (const Received& heard : Log().received)
        if (heard.message == WM_PAINT) order.push_back(heard.window);
    EXPECT_EQ(order, (std::vector<HWND>{window, child, inner}));
    ExpectShown(window, kBluePixel, isInner);
    // Moved and hidden children uncover their parent.
    MoveWindow(child, 0, 10, 40, 20, TRUE);
    User().Settle();
    ExpectShown(window, kRedPixel, [](int x, int y) { return x >= 40 || y < 10 || y >= 30; });
    ShowWindow(child, SW_HIDE);
    User().Settle();
    ExpectShown(window, kRedPixel, [](int, int) { return true; });
    EXPECT_FALSE(IsWindowVisible(inner));
}

TEST_F(PaintTest, ClippingStylesKeepWindowsOffEachOther) {
    const HWND window = Open(100, 100, 60, 60, kRed);
    const HWND lower = OpenChild(window, 0, 0, 30, 30, kGreen, 1);
    OpenChild(window, 20, 20, 30, 30, kBlue, 2);
    CreateWindowExW(0, u"STATIC", u"", WS_CHILD | WS_VISIBLE, 50, 50, 10, 10, window, 3, {}, nullptr);
    SetWindowLongPtrW(window, GWL_STYLE, GetWindowLongPtrW(window, GWL_STYLE) | WS_CLIPCHILDREN);
    PaintWith(window, kWhite);
    InvalidateRect(window, nullptr, FALSE);
    User().Settle();
    const auto inChild = [](int x, int y) {
        return (x < 30 && y < 30) || (x >= 20 && x < 50 && y >= 20 && y < 50);
    };
    ExpectShown(window, 0xFFFFFF, [&](int x, int y) { return !inChild(x, y); });
    // The lower child, painted alone, leaves its sibling alone only by its style.
    Log().answer = nullptr;
    InvalidateRect(lower, nullptr, FALSE);
    User().Settle();
    EXPECT_EQ(ScreenColour(125, 125), kGreenPixel);
    SetWindowLongPtrW(lower, GWL_STYLE, WS_CHILD | WS_CLIPSIBLINGS);
    EXPECT_TRUE(IsWindowVisible(lower)) << "showing is not a matter of SetWindowLongPtr";
    PaintWith(lower, kBlack);
    InvalidateRect(lower, nullptr, FALSE);
    User().Settle();
    ExpectShown(window, 0, [](int x, int y) { return x < 30 && y < 30 && !(x >= 20 && y >= 20); });
}

TEST_F(PaintTest, ASizeAsksForAPaintOfAll) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    MoveWindow(window, 100, 100, 60, 50, TRUE);
    RECT box;
    EXPECT_TRUE(GetUpdateRect(window, &box, FALSE));
    EXPECT_EQ(box, CRect(0, 0, 60, 50));
    User().Settle();
    ExpectShown(window, kRedPixel, [](int, int) { return true; });
    Log().colours[window.ToParam()] = kGreen;
    MoveWindow(window, 200, 120, 60, 50, TRUE);
    EXPECT_FALSE(GetUpdateRect(window, &box, FALSE)) << "a move keeps the pixels";
    User().Settle();
    ExpectShown(window, kRedPixel, [](int, int) { return true; });
    MoveWindow(window, 200, 120, 30, 20, FALSE);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST_F(PaintTest, UpdateWindowPaintsAtOnce) {
    const HWND window = Open(100, 100, 40, 40, kRed);
    const HWND child = OpenChild(window, 0, 0, 10, 10, kBlue);
    Forget();
    EXPECT_TRUE(UpdateWindow(window));
    EXPECT_TRUE(Log().received.empty()) << "nothing waits";
    const RECT part = {5, 5, 20, 20};
    InvalidateRect(window, &part, FALSE);
    UpdateWindow(window);
    EXPECT_EQ(Log().Count(window, WM_PAINT), 1);
    EXPECT_EQ(Log().Count(child, WM_PAINT), 1);
    ShowWindow(window, SW_HIDE);
    InvalidateRect(window, &part, FALSE);
    Forget();
    UpdateWindow(window);
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_PAINT), 0) << "hidden windows do not paint";
    ShowWindow(window, SW_SHOW);
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_PAINT), 1);
}

TEST_F(PaintTest, AWindowTooLargeForASurfaceRecovers) {
    if (!User().HasExactClock()) GTEST_SKIP() << "a compositor would hold gigabytes for it";
    const HWND window = Open(100, 100, 50, 50, kRed);
    for (const int width : {50, 60}) {
        EXPECT_TRUE(MoveWindow(window, 100, 100, 32767, 32767, TRUE));
        User().Settle();
        MoveWindow(window, 100, 100, width, 50, TRUE);
        Log().colours[window.ToParam()] = width == 50 ? kGreen : kBlue;
        User().Settle();
        EXPECT_EQ(ScreenColour(110, 110), width == 50 ? kGreenPixel : kBluePixel);
        EXPECT_EQ(ScreenColour(100 + width - 1, 110), width == 50 ? kGreenPixel : kBluePixel);
    }
}

}  // namespace
}  // namespace windowtest
