// What a frame shows, on every kind of window, and that mending a frame gives the pixels of a new one.
#include <random>

#include "kit/gif.h"
#include "kit/test_dialog.h"

namespace {

using kit::kDialogHeight;
using kit::kDialogWidth;
using kit::Solid;
using kit::Strip;
using kit::TestButton;
using kit::TestDialog;

class DialogPaint : public kit::HeadlessTest {};

// The frame as OnQKPaint composes it from nothing.
Headless::Picture Composed(TestDialog& dialog) {
    CRect client;
    dialog.GetClientRect(client);
    const HDC dc = CreateCompatibleDC(HDC());
    BITMAPINFO info = {};
    info.bmiHeader = {
        sizeof(BITMAPINFOHEADER), client.Width(), -client.Height(), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits);
    SelectObject(dc, bitmap);
    dialog.OnQKPaint(dc, client.Width(), client.Height());
    Headless::Picture picture;
    picture.width = client.Width();
    picture.height = client.Height();
    const auto* pixels = static_cast<const std::uint32_t*>(bits);
    picture.argb.assign(pixels, pixels + client.Width() * client.Height());
    SelectObject(dc, HBITMAP());
    DeleteObject(bitmap);
    DeleteDC(dc);
    return picture;
}

void ExpectSame(const Headless::Picture& shown, const Headless::Picture& wanted) {
    ASSERT_EQ(shown.width, wanted.width);
    ASSERT_EQ(shown.height, wanted.height);
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            ASSERT_EQ(shown.At(x, y), wanted.At(x, y)) << std::hex << "at " << std::dec << x << ", " << y;
}

TEST_F(DialogPaint, KeepRatioCropsTheMiddle) {
    // Three bands of one colour each; the client is 200 by 160.
    struct Case {
        const char* name;
        bool vertical;
        int frameWidth, frameHeight;
        std::uint32_t left, centre, right, top, bottom;
    };
    constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
    // 600 by 160 crops to the middle 200 columns; 200 by 480 to the middle 160 rows; 200 by 160 is whole.
    const Case cases[] = {{"wide", false, 200, 160, kGreen, kGreen, kGreen, kGreen, kGreen},
                          {"tall", true, 200, 160, kGreen, kGreen, kGreen, kGreen, kGreen},
                          {"same", false, 67, 160, kRed, kGreen, kBlue, kGreen, kGreen}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        dialog.SetBack(Strip(std::string("ratio_") + c.name, {kRed, kGreen, kBlue}, c.frameWidth,
                             c.frameHeight, c.vertical),
                       1, 0);
        dialog.Open();
        EXPECT_EQ(dialog.Pixel(0, 80), c.left);
        EXPECT_EQ(dialog.Pixel(100, 80), c.centre);
        EXPECT_EQ(dialog.Pixel(199, 80), c.right);
        EXPECT_EQ(dialog.Pixel(100, 0), c.top);
        EXPECT_EQ(dialog.Pixel(100, 159), c.bottom);
        // Stretched instead, all three bands show.
        dialog.m_bBackKeepRatio = 0;
        dialog.Refresh();
        EXPECT_EQ(dialog.Pixel(1, 1), kRed);
        EXPECT_EQ(dialog.Pixel(198, 158), kBlue);
    }
}

TEST_F(DialogPaint, EachStyleShowsItsPixels) {
    const std::uint32_t half = 0x80400000;  // premultiplied: half transparent red
    struct Case {
        const char* name;
        int style;
        std::uint32_t outside, inside;  // on the desktop 0xFF3A6EA5
    };
    const Case cases[] = {{"ordinary", LAY_NONE, 0xFF000000, 0xFF400000},
                          {"colour key", LAY_COLORKEY, 0xFF3A6EA5, 0xFFBF007F},
                          {"constant alpha", LAY_ALPHA, 0xFF1D3752, 0xFF3D3752},
                          {"per pixel", LAY_OPAQUE, 0xFF3A6EA5, 0xFF5D3752}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        QKButton button;
        button.SetImage(Solid("half", half, 60, 40), QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL);
        button.SetRect(20, 20, 60, 40);
        dialog.AddQKItem(&button);
        dialog.Create(kit::kDialogTemplate);
        dialog.SetWindowPos(HWND(), 100, 100, kDialogWidth, kDialogHeight, SWP_NOZORDER);
        switch (c.style) {
            case LAY_COLORKEY:
                dialog.Set_COLORKEYDlg(RGB(255, 0, 255));
                break;
            case LAY_ALPHA:
                dialog.Set_ALPHADlg(128);
                break;
            case LAY_OPAQUE:
                dialog.Set_OPAQUEDlg(255);
                break;
            default:
                break;
        }
        dialog.Show();
        const Headless::Picture screen = Headless::CaptureScreen();
        const auto near = [](std::uint32_t a, std::uint32_t b) {
            for (int shift = 0; shift < 32; shift += 8)
                if (std::abs(static_cast<int>((a >> shift) & 255) - static_cast<int>((b >> shift) & 255)) > 1)
                    return false;
            return true;
        };
        EXPECT_PRED2(near, screen.At(105, 105), c.outside) << std::hex << screen.At(105, 105);
        EXPECT_PRED2(near, screen.At(140, 130), c.inside) << std::hex << screen.At(140, 130);
    }
}

TEST_F(DialogPaint, StylesFollowOneAnother) {
    TestDialog dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    const auto screen = [&](int x, int y) {
        dialog.Refresh();
        return Headless::CaptureScreen().At(100 + x, 100 + y);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(screen(60, 60), 0xFF000000U);
        dialog.Set_ALPHADlg(0);
        EXPECT_EQ(screen(20, 20), 0xFF3A6EA5U);
        dialog.Set_OPAQUEDlg(255);
        EXPECT_EQ(screen(20, 20), kit::kNormal);
        EXPECT_EQ(screen(60, 60), 0xFF3A6EA5U);
        dialog.Set_COLORKEYDlg(RGB(0x10, 0x10, 0x10));
        EXPECT_EQ(screen(20, 20), 0xFF3A6EA5U);
        dialog.SetNoLayDlg();
    }
}

TEST_F(DialogPaint, AlphaOneFillsCatchThePointerOnPerPixelWindows) {
    TestDialog behind, dialog;
    behind.Open();
    QKItemBase catching(QKUI_RESERVED7), passing(QKUI_RESERVED7), hidden(QKUI_RESERVED7);
    catching.SetRect(10, 10, 30, 30);
    catching.SetTranMouseOver(0);
    passing.SetRect(60, 10, 30, 30);
    hidden.SetRect(110, 10, 30, 30);
    hidden.SetTranMouseOver(0);
    hidden.SetShow(0);
    for (QKItemBase* item : {&catching, &passing, &hidden})
        dialog.AddQKItem(item);
    dialog.Create(kit::kDialogTemplate);
    dialog.SetWindowPos(HWND(), 100, 100, kDialogWidth, kDialogHeight, SWP_NOZORDER);
    dialog.Set_OPAQUEDlg(255);
    dialog.Show();
    EXPECT_EQ(dialog.Pixel(10, 10), 0x01010101U);
    EXPECT_EQ(dialog.Pixel(40, 10), 0U);
    EXPECT_EQ(dialog.Pixel(60, 10), 0U);
    EXPECT_EQ(dialog.Pixel(110, 10), 0U);
    EXPECT_EQ(WindowFromPoint({139, 139}), dialog.m_hWnd);
    EXPECT_EQ(WindowFromPoint({140, 139}), behind.m_hWnd);

    dialog.SetMouseTranOver(0);
    dialog.Refresh();
    const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
    for (const std::uint32_t pixel : shown.argb)
        ASSERT_GE(pixel >> 24, 1U);
    EXPECT_EQ(WindowFromPoint({299, 259}), dialog.m_hWnd);
}

TEST_F(DialogPaint, ACachedBackgroundShowsThePixelsOfADrawnOne) {
    Headless::Picture gradient;
    gradient.width = 97;
    gradient.height = 71;
    for (int y = 0; y < gradient.height; ++y)
        for (int x = 0; x < gradient.width; ++x) {
            const auto alpha = static_cast<std::uint32_t>(x * 255 / 96);
            const std::uint32_t red = alpha * static_cast<std::uint32_t>(y) / 70;
            gradient.argb.push_back((alpha << 24) | (red << 16) | (alpha / 3));
        }
    const CString path = kit::SavePicture("gradient", gradient);
    TestButton button(30, 30);
    Headless::Picture pictures[2];
    for (const int cache : {0, 1}) {
        TestDialog dialog;
        dialog.Create(kit::kDialogTemplate);
        dialog.SetWindowPos(HWND(), 0, 0, kDialogWidth, kDialogHeight, SWP_NOZORDER);
        dialog.SetBackColor(Gdiplus::Color(0x40203040), 1);
        dialog.SetBack(path, 1, cache);
        dialog.Set_OPAQUEDlg(255);
        dialog.AddQKItem(&button);
        dialog.Show();
        EXPECT_EQ(dialog.m_pBackCache != nullptr, cache == 1);
        button.SetActive(1);
        dialog.Refresh();  // mends from the cache
        button.SetRect(50, 50, 40, 30);
        dialog.Refresh();
        pictures[cache] = Headless::Capture(dialog.m_hWnd);
        button.SetRect(30, 30, 40, 30);
        if (cache) {  // the other form of SetBack keeps the cached picture
            CRect size;
            dialog.SetBack(Solid("other", 0xFFFFFFFF, 5, 5), size);
            button.SetRect(50, 50, 40, 30);
            dialog.Refresh();
            ExpectSame(Headless::Capture(dialog.m_hWnd), pictures[1]);
            // A window that grew or shrank meanwhile shears the old cache but stays sound.
            for (const CSize size2 : {CSize(230, 100), CSize(50, 300), CSize(200, 20)}) {
                dialog.SetWindowPos(HWND(), 0, 0, size2.cx, size2.cy, SWP_NOZORDER);
                dialog.Refresh();
                button.SetStatus(button.GetStatus() ? QKItemBase::QK_NORMAL : QKItemBase::QK_MOUSEON);
                dialog.Refresh();
                EXPECT_EQ(Headless::Capture(dialog.m_hWnd).width, size2.cx);
            }
        }
    }
    ExpectSame(pictures[1], pictures[0]);
}

TEST_F(DialogPaint, ACachedBackgroundOfAnOrdinaryWindowShowsOnce) {
    TestDialog dialog;
    dialog.SetBack(Solid("once", 0xFFFF0000, 8, 8), 0, 1);
    dialog.Open();
    EXPECT_EQ(dialog.Pixel(50, 50), 0xFFFF0000U);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(50, 50), 0xFF000000U);
}

TEST_F(DialogPaint, OnlyTheAskedRectangleChangesOnTheScreen) {
    TestDialog dialog;
    dialog.SetBackColor(Gdiplus::Color(0xFF112233), 1);
    TestButton left(10, 10), right(100, 10);
    dialog.AddQKItem(&left);
    dialog.AddQKItem(&right);
    dialog.Open();
    left.SetStatus(QKItemBase::QK_MOUSEON);
    right.SetStatus(QKItemBase::QK_MOUSEON);
    const CRect half(0, 0, 30, 160);
    dialog.UpdateViewRect(half);
    Headless::RunPending();
    EXPECT_EQ(dialog.Pixel(29, 20), kit::kOver);
    EXPECT_EQ(dialog.Pixel(30, 20), kit::kNormal);
    EXPECT_EQ(dialog.Pixel(110, 20), kit::kNormal);
    dialog.UpdateViewRect(nullptr);
    Headless::RunPending();
    EXPECT_EQ(dialog.Pixel(30, 20), kit::kOver);
    EXPECT_EQ(dialog.Pixel(110, 20), kit::kOver);
}

TEST_F(DialogPaint, TheHookReplacesInvalidationInTheOrdinaryStyles) {
    struct Hooked : TestDialog {
        void CallBackInvalidate() override { ++calls; }
        int calls = 0;
    } dialog;
    dialog.Open();
    dialog.m_bSysInvalidate = 0;
    dialog.UpdateView();
    dialog.UpdateViewPt(POINT{0, 0});
    RECT waiting;
    EXPECT_FALSE(GetUpdateRect(dialog.m_hWnd, &waiting, FALSE));
    EXPECT_EQ(dialog.calls, 2);
    dialog.UpdateViewRect(nullptr);
    EXPECT_TRUE(GetUpdateRect(dialog.m_hWnd, &waiting, FALSE));
}

TEST_F(DialogPaint, TheSourcePointShiftsThePerPixelSurface) {
    TestDialog dialog;
    TestButton button(50, 40);
    dialog.AddQKItem(&button);
    dialog.Create(kit::kDialogTemplate);
    dialog.SetWindowPos(HWND(), 0, 0, kDialogWidth, kDialogHeight, SWP_NOZORDER);
    dialog.Set_OPAQUEDlg(255);
    dialog.Show();
    EXPECT_EQ(dialog.Pixel(50, 40), kit::kNormal);
    dialog.UpdateViewPt(POINT{20, 30});
    EXPECT_EQ(dialog.Pixel(30, 10), kit::kNormal);
    EXPECT_EQ(dialog.Pixel(69, 39), kit::kNormal);
    EXPECT_EQ(dialog.Pixel(70, 40), 0U);
    dialog.Refresh();  // the point stays
    EXPECT_EQ(dialog.Pixel(30, 10), kit::kNormal);
}

TEST_F(DialogPaint, AMinimisedWindowIsNotComposed) {
    struct Counting : TestDialog {
        void DrawSurface(HDC dc, int width, int height, int buffer) override {
            ++frames;
            TestDialog::DrawSurface(dc, width, height, buffer);
        }
        int frames = 0;
    } dialog;
    dialog.Create(kit::kDialogTemplate);
    dialog.Set_OPAQUEDlg(255);
    dialog.Show();
    const int before = dialog.frames;
    EXPECT_GE(before, 1);
    ShowWindow(dialog.m_hWnd, SW_MINIMIZE);
    dialog.Refresh();
    EXPECT_EQ(dialog.frames, before);
    ShowWindow(dialog.m_hWnd, SW_RESTORE);
    dialog.Refresh();
    EXPECT_EQ(dialog.frames, before + 1);
}

// A host may draw below the frame, above it, or instead of it, and may change its mind.
TEST_F(DialogPaint, HostDrawingAroundTheFrameNeverPilesUp) {
    struct Overlay : TestDialog {
        void DrawSurface(HDC dc, int width, int height, int buffer) override {
            const auto fill = [&](int x) {
                Gdiplus::Graphics graphics(dc);
                const Gdiplus::SolidBrush brush{Gdiplus::Color(0x80FF0000)};
                graphics.FillRectangle(&brush, x, 100, 20, 20);
            };
            if (below) fill(10);
            if (frame) TestDialog::DrawSurface(dc, width, height, buffer);
            if (above) fill(60);
        }
        bool below = false, frame = true, above = false;
    } dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Create(kit::kDialogTemplate);
    dialog.SetWindowPos(HWND(), 0, 0, kDialogWidth, kDialogHeight, SWP_NOZORDER);
    dialog.Set_OPAQUEDlg(255);
    dialog.Show();
    for (int step = 0; step < 24; ++step) {
        SCOPED_TRACE(step);
        dialog.below = step & 1;
        dialog.above = step & 2;
        dialog.frame = !(step & 4);
        button.SetStatus(step & 8 ? QKItemBase::QK_MOUSEON : QKItemBase::QK_NORMAL);
        for (int again = 0; again < 2; ++again) {
            dialog.Refresh();
            EXPECT_EQ(dialog.Pixel(15, 105), dialog.below ? 0x80800000U : 0U);
            EXPECT_EQ(dialog.Pixel(65, 105), dialog.above ? 0x80800000U : 0U);
            EXPECT_EQ(dialog.Pixel(15, 15), !dialog.frame ? 0U : step & 8 ? kit::kOver : kit::kNormal);
        }
    }
}

// A crowd of items of every kind whose looks change at random.
class Crowd {
  public:
    explicit Crowd(unsigned seed) : random_(seed) {}

    int Roll(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    Gdiplus::Color AnyColour() { return Gdiplus::Color(static_cast<Gdiplus::ARGB>(random_())); }
    int Size() const { return static_cast<int>(items_.size()); }
    QKItemBase& Any() { return *items_[static_cast<std::size_t>(Roll(Size()))]; }

    QKItemBase* Grow() {
        switch (Roll(8)) {
            case 0: {
                const auto button = Make<QKButton>();
                button->SetImage(strip_, QKButton::QKBT_IMGS_2, QKButton::QKBT_VERTICAL);
                break;
            }
            case 1: {
                const auto button = Make<QKTextButton>();
                button->SetImage(wide_, QKButton::QKBT_IMGS_3, QKButton::QKBT_HORIZONTAL);
                break;
            }
            case 2: {
                const auto box = Make<QKCheckBox>();
                box->SetImage(strip_, mark_, QKButton::QKBT_IMGS_2, QKButton::QKBT_VERTICAL);
                break;
            }
            case 3:
                Make<QKStaticText>();
                break;
            case 4:
                Make<QKImage>()->SetImage(wide_);
                break;
            case 5:
                Make<QKGifImage>()->SetImage(gif_);
                break;
            case 6:
                Make<QKProgress>()->SetBarImage(mark_, wide_);
                break;
            default: {
                const auto bar = Make<QKVScrollBar>();
                bar->SetBarImage(strip_, strip_, strip_);
                bar->SetTrackImage(mark_);
            }
        }
        QKItemBase* item = items_.back().get();
        Place(*item);
        return item;
    }

    void Change(QKItemBase& item) {
        switch (Roll(6)) {
            case 0:
                return item.SetStatus(static_cast<QKItemBase::QK_STATUS>(Roll(3)));
            case 1:
                return Place(item);
            case 2:
                return item.SetShow(Roll(2));
            case 3:
                return item.SetTranMouseOver(Roll(2));
            default:
                return ChangeKind(item);
        }
    }

  private:
    template <class Item>
    std::shared_ptr<Item> Make() {
        const auto item = std::make_shared<Item>();
        items_.push_back(item);
        return item;
    }
    void Place(QKItemBase& item) { item.SetRect(Roll(220) - 20, Roll(180) - 20, Roll(90), Roll(60)); }

    void ChangeText(QKItemText& text) {
        const LPCWSTR words[] = {u"", u"fjord", u"江南 south", u"\u05e9\u05dc\u05d5\u05dd",
                                 u"a long text of\nseveral lines"};
        switch (Roll(6)) {
            case 0:
                return text.SetTextColor(AnyColour());
            case 1:
                return text.SetTextFormat(static_cast<Gdiplus::StringAlignment>(Roll(3)));
            case 2:
                text.GetFormat().SetFormatFlags(Roll(2) ? Gdiplus::StringFormatFlagsNoClip : 0);
                return;
            case 3:
                return text.SetFont(
                    Gdiplus::Font(u"DejaVu Serif", static_cast<float>(6 + Roll(14)), Roll(16)));
            default:
                return text.SetText(words[Roll(5)]);
        }
    }

    void ChangeKind(QKItemBase& item) {
        switch (item.GetType()) {
            case QKUI_BUTTON: {
                auto& button = static_cast<QKButton&>(item);
                if (Roll(2)) return button.SetButtonHeight(Roll(3) == 0 ? -1 : Roll(50));
                Gdiplus::Graphics graphics(button.GetImage());
                const Gdiplus::SolidBrush brush{AnyColour()};
                graphics.FillRectangle(&brush, Roll(20), Roll(20), 5, 5);
                return;
            }
            case QKUI_TEXTBUTTON:
                return ChangeText(static_cast<QKTextButton&>(item));
            case QKUI_STATICTEXT:
                return ChangeText(static_cast<QKStaticText&>(item));
            case QKUI_CHECKBOX: {
                auto& box = static_cast<QKCheckBox&>(item);
                if (Roll(3) == 0) return box.SetCheck(Roll(2));
                if (Roll(3) == 0) return box.SetTextMouseOnColor(AnyColour());
                if (Roll(3) == 0) return box.SetTextInerTop(Roll(30) - 10);
                return ChangeText(box);
            }
            case QKUI_GIFIMAGE:
                return static_cast<QKGifImage&>(item).Step();
            case QKUI_PROGRESS:
                return static_cast<QKProgress&>(item).SetPos(static_cast<unsigned>(Roll(110)));
            case QKUI_VSCROLLBAR:
                static_cast<QKVScrollBar&>(item).SetBarLength(Roll(50), 60);
                return static_cast<QKVScrollBar&>(item).SetBarPos(Roll(60));
            default:
                return;
        }
    }

    std::mt19937 random_;
    std::vector<std::shared_ptr<QKItemBase>> items_;
    const CString strip_ = Strip("mend2", {0x80004000, 0x40200000}, 30, 20, true);
    const CString wide_ = Strip("mend3", {0xFF00FF00, 0x7F7F0000, 0xFF0000FF}, 24, 31, false);
    const CString mark_ = Solid("mend_mark", 0xC0C0C000, 11, 9);
    const CString gif_ = kit::SaveGif("mend", {{0xFF0000, 1}, {0x00FF00, 1}, {0x0000FF, 1}});
};

// Long random lives of dialogs: whatever changed in between, the window shows what a frame composed from
// nothing shows.
TEST_F(DialogPaint, AMendedFrameEqualsANewOne) {
    for (const bool layered : {false, true}) {
        SCOPED_TRACE(layered);
        Crowd crowd(layered ? 7 : 5);
        TestDialog dialog;
        dialog.Create(kit::kDialogTemplate);
        dialog.SetWindowPos(HWND(), 0, 0, kDialogWidth, kDialogHeight, SWP_NOZORDER);
        dialog.SetBackColor(Gdiplus::Color(layered ? 0x30405060 : 0xFF405060), 1);
        if (layered) dialog.Set_OPAQUEDlg(255);
        dialog.Show();
        for (int step = 0; step < 600; ++step) {
            if (crowd.Size() < 4 || (crowd.Size() < 24 && crowd.Roll(8) == 0)) dialog.AddQKItem(crowd.Grow());
            QKItemBase& item = crowd.Any();
            switch (crowd.Roll(12)) {
                case 0:
                    dialog.RemoveQKItem(&item);
                    dialog.AddQKItem(&item);
                    break;
                case 1:
                    dialog.SetBackColor(Gdiplus::Color(0xFF000000U | crowd.AnyColour().GetValue()),
                                        crowd.Roll(6) != 0);
                    break;
                case 2: {  // part of an ordinary window; the rest comes with the next whole refresh
                    CRect part(CPoint(crowd.Roll(180), crowd.Roll(140)),
                               CSize(crowd.Roll(80) + 1, crowd.Roll(80) + 1));
                    dialog.UpdateViewRect(part);
                    Headless::RunPending();
                    continue;
                }
                default:
                    crowd.Change(item);
            }
            dialog.Refresh();
            Headless::Picture wanted = Composed(dialog);
            if (!layered)
                for (std::uint32_t& pixel : wanted.argb)
                    pixel |= 0xFF000000U;
            ExpectSame(Headless::Capture(dialog.m_hWnd), wanted);
            if (HasFatalFailure()) FAIL() << "step " << step;
        }
    }
}

TEST_F(DialogPaint, AWarmFrameRepeatsNoWork) {
    TestDialog dialog;
    dialog.SetBack(Strip("warm", {0xFFFF0000, 0xFF0000FF}, 33, 17, false), 1, 0);
    Crowd crowd(3);
    for (int i = 0; i < 60; ++i)
        dialog.AddQKItem(crowd.Grow());
    for (int i = 0; i < 600; ++i)
        crowd.Change(crowd.Any());
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    dialog.Refresh();
    const Gdiplus::DrawingCounters before = Gdiplus::GetDrawingCounters();
    EXPECT_GT(before.textLayouts, 5U);
    button.SetStatus(QKItemBase::QK_MOUSEON);
    dialog.Refresh();
    dialog.SetBackColor(Gdiplus::Color(0xFF00FF00), 1);  // everything is composed again
    dialog.Refresh();
    const Gdiplus::DrawingCounters after = Gdiplus::GetDrawingCounters();
    EXPECT_EQ(after.scaledImages, before.scaledImages);
    EXPECT_EQ(after.textLayouts, before.textLayouts);
    EXPECT_EQ(after.decodedFrames, before.decodedFrames);
}

}  // namespace
