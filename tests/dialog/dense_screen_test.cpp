// A program that asked for it is shown with all pixels of a dense screen, and goes on counting in its own
// units.
#include <algorithm>

#include "support/test_dialog.h"

namespace {

class DenseScreen : public kit::HeadlessTest {
  protected:
    // No windows may be there.
    static void Use(int scale) {
        ASSERT_TRUE(SetScreenScale(scale));
        ASSERT_EQ(GetScreenScale(), scale);
    }
    void TearDown() override { Use(kit::kScale); }
};

Headless::Picture Doubled(const Headless::Picture& small) {
    Headless::Picture large{small.width * 2, small.height * 2, {}};
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x)
            large.argb.push_back(small.At(x / 2, y / 2));
    return large;
}

// A picture of many colours, and beside it the one for dense screens.
CString SaveBoth(const std::string& name, int width, int height, std::uint32_t alpha) {
    Headless::Picture picture{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        const auto value = static_cast<std::uint32_t>(i * 7 % 256) * alpha / 255;
        picture.argb.push_back(alpha << 24 | value << 16 | (alpha - value) << 8 | value / 2);
    }
    kit::SavePicture(name + "@2x", Doubled(picture));
    return kit::SavePicture(name, picture);
}

struct Shown {
    Headless::Picture window;
    CRect ink;  // of a text
    int clicks = 0;
    CRect place;
};

// One dialog, driven and photographed.
Shown Show(int style) {
    kit::TestButton button(20, 20);
    button.SetImage(SaveBoth("dense_button", 40, 90, 200), QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
    button.SetRect(20, 20, 40, 30);
    QKImage image, frame;
    image.SetImage(SaveBoth("dense_image", 25, 15, 255));
    image.SetRect(90, 20, 25, 15);
    frame.SetImage(SaveBoth("dense_frame", 20, 20, 255));
    frame.SetMargins(10, 10, 10, 10);
    frame.SetRect(130, 60, 20, 20);
    QKListCtrl list;
    kit::TestDialog dialog({&button, &image, &frame, &list});
    dialog.SetBackColor(Gdiplus::Color(255, 30, 60, 90), style != LAY_OPAQUE);
    if (style != LAY_COLORKEY)
        dialog.SetBack(SaveBoth("dense_back", kit::kDialogWidth, kit::kDialogHeight, 128), 0, 1);
    dialog.OpenAs(style, style == LAY_ALPHA ? 200 : 255, 7, 9);
    if (style == LAY_COLORKEY) dialog.Set_COLORKEYDlg(RGB(30, 60, 90));
    const HRGN shape = CreateRectRgn(3, 0, kit::kDialogWidth, kit::kDialogHeight - 5);
    if (style != LAY_OPAQUE) SetWindowRgn(dialog.m_hWnd, shape, TRUE);
    dialog.Show();
    dialog.Click(59, 49);
    dialog.Click(60, 50);
    Shown shown;
    shown.clicks = button.clicks;
    shown.window = Headless::Capture(dialog.m_hWnd);
    GetWindowRect(dialog.m_hWnd, shown.place);

    QKStaticText text;
    text.SetText(u"Dense fjord");
    text.SetTextColor(Gdiplus::Color(255, 255, 255, 255));
    text.SetRect(10, 80, 180, 40);
    dialog.RemoveAllQKItem();
    dialog.SetBack(u"", 0, 1);
    dialog.SetBackColor(Gdiplus::Color(255, 0, 0, 0), 1);
    dialog.AddQKItem(&text);
    dialog.Refresh();
    const Headless::Picture picture = Headless::Capture(dialog.m_hWnd);
    shown.ink = kit::InkOf(picture, CRect(0, 0, picture.width, picture.height),
                           [](std::uint32_t pixel) { return (pixel & 0xFF00) > 0x4000; });
    return shown;
}

// With pictures that have each pixel twice there is nothing that could come out differently.
TEST_F(DenseScreen, ShowsTheSameTwiceAsLarge) {
    for (const int style : {LAY_NONE, LAY_COLORKEY, LAY_ALPHA, LAY_OPAQUE}) {
        SCOPED_TRACE(style);
        Use(1);
        const Shown small = Show(style);
        Use(2);
        const Shown large = Show(style);
        EXPECT_EQ(small.clicks, 1);
        EXPECT_EQ(large.clicks, 1);
        EXPECT_EQ(small.place, large.place);
        kit::ExpectSame(large.window, Doubled(small.window));
        for (const auto edge : {&RECT::left, &RECT::top, &RECT::right, &RECT::bottom})
            EXPECT_NEAR(large.ink.*edge, 2 * small.ink.*edge, 2);
    }
}

// Bitmaps that count in pixels come out as large as they say.
TEST_F(DenseScreen, TakesWhatWasDrawnForOtherScreens) {
    struct Drawing : kit::TestDialog {
        void DrawSurface(HDC dc, int, int, int) override {
            const HDC memory = CreateCompatibleDC(dc);
            BITMAPINFO info = {};
            info.bmiHeader = {sizeof(BITMAPINFOHEADER), 10, -10, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
            void* bits = nullptr;
            const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits);
            std::fill_n(static_cast<std::uint32_t*>(bits), 100, 0xFF00FF00U);
            SelectObject(memory, bitmap);
            BitBlt(dc, 20, 30, 10, 10, memory, 0, 0, SRCCOPY);
            const HBITMAP fitting = CreateCompatibleBitmap(dc, 10, 10);
            SelectObject(memory, fitting);
            EXPECT_EQ(GetDeviceScale(memory), 2);
            BitBlt(memory, 0, 0, 10, 10, dc, 20, 30, SRCCOPY);
            BitBlt(dc, 40, 30, 10, 10, memory, 0, 0, SRCCOPY);
            DeleteDC(memory);
            DeleteObject(fitting);
            DeleteObject(bitmap);
        }
    } dialog;
    Use(2);
    dialog.Open();
    for (const int left : {20, 40}) {
        EXPECT_EQ(dialog.Pixel(2 * left, 60), 0xFF00FF00U);
        EXPECT_EQ(dialog.Pixel(2 * left + 19, 79), 0xFF00FF00U);
        EXPECT_NE(dialog.Pixel(2 * left + 20, 60), 0xFF00FF00U);
    }
    EXPECT_FALSE(SetScreenScale(1)) << "there is a window";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_SUPPORTED});
}

TEST_F(DenseScreen, CountsEachPictureForItself) {
    Gdiplus::Bitmap picture(10, 10);
    const std::unique_ptr<Gdiplus::Bitmap> clone(picture.Clone());
    EXPECT_EQ(picture.SetScale(3), Gdiplus::InvalidParameter);
    EXPECT_EQ(picture.SetScale(2), Gdiplus::Ok);
    const Gdiplus::SolidBrush brush{Gdiplus::Color(0xFF102030)};
    for (const auto& [bitmap, width, filled] : {std::tuple(&picture, 5U, 8), {clone.get(), 10U, 4}}) {
        EXPECT_EQ(bitmap->GetWidth(), width);
        Gdiplus::Graphics(bitmap).FillRectangle(&brush, 0, 0, 4, 4);
        Gdiplus::Color in, out;
        bitmap->GetPixel(filled - 1, filled - 1, &in);
        bitmap->GetPixel(filled, filled, &out);
        EXPECT_TRUE(in.GetA() != 0 && out.GetA() == 0);
    }
}

TEST_F(DenseScreen, IsUsedOnlyWhenAskedFor) {
    Use(1);
    ASSERT_TRUE(Headless::Use(800, 600, 192));
    EXPECT_EQ(GetScreenScale(), 1);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 800);
    for (const auto& [dpi, scale] : {std::pair(96, 1), {144, 1}, {168, 2}, {192, 2}, {288, 3}, {900, 4}}) {
        ASSERT_TRUE(Headless::Use(800, 600, dpi));
        ASSERT_TRUE(SetScreenScale(0));
        EXPECT_EQ(GetScreenScale(), scale) << dpi;
        EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 800 / scale);
    }
    EXPECT_FALSE(SetScreenScale(5));
    EXPECT_FALSE(SetScreenScale(-1));
}

}  // namespace
