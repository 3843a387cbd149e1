// That repainting a part gives the pixels of a new frame, whatever the host does, and costs no more than it
// must.
#include <random>
#include <utility>

#include "dialog/frame_screen.h"
#include "support/gif.h"
#include "support/test_dialog.h"

namespace {

using kit::kDialogHeight;
using kit::kDialogWidth;
using kit::Solid;
using kit::Strip;
using kit::TestButton;
using kit::TestDialog;

class PartialRepaint : public testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_TRUE(kit::OpenFrameScreen()); }
};

// A surface of the test's own, transparent, top-down.
class Surface {
  public:
    Surface(int width, int height)
        : width_(width * kit::kScale), height_(height * kit::kScale), dc_(CreateCompatibleDC(HDC())) {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits);
        bits_ = static_cast<std::uint32_t*>(bits);
        SetBitmapScale(bitmap_, kit::kScale);
        SelectObject(dc_, bitmap_);
    }
    ~Surface() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    HDC Context() const { return dc_; }
    // The run of a cached background's pixels, from the bottom row upwards.
    void Pour(Gdiplus::Bitmap& cache) {
        Gdiplus::BitmapData data = {};
        cache.LockBits(nullptr, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &data);
        const auto* from = static_cast<const std::uint32_t*>(data.Scan0);
        const int count = std::min(width_ * height_, static_cast<int>(data.Width * data.Height));
        for (int i = 0; i < count; ++i)
            bits_[(height_ - 1 - i / width_) * width_ + i % width_] = from[i];
        cache.UnlockBits(&data);
    }
    Headless::Picture Show() const {
        return {width_, height_, std::vector<std::uint32_t>(bits_, bits_ + width_ * height_)};
    }

  private:
    int width_, height_;
    HDC dc_;
    HBITMAP bitmap_;
    std::uint32_t* bits_;
};

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
            case 0:
                Make<QKButton>().SetImage(strip_, QKButton::QKBT_IMGS_2, QKButton::QKBT_VERTICAL);
                break;
            case 1:
                Make<QKTextButton>().SetImage(wide_, QKButton::QKBT_IMGS_3, QKButton::QKBT_HORIZONTAL);
                break;
            case 2:
                Make<QKCheckBox>().SetImage(strip_, mark_, QKButton::QKBT_IMGS_2, QKButton::QKBT_VERTICAL);
                break;
            case 3:
                Make<QKStaticText>();
                break;
            case 4:
                Make<QKImage>().SetImage(wide_);
                break;
            case 5:
                Make<QKGifImage>().SetImage(gif_);
                break;
            case 6:
                Make<QKProgress>().SetBarImage(mark_, wide_);
                break;
            default:
                Make<QKVScrollBar>().SetBarImage(strip_, strip_, strip_);
                static_cast<QKVScrollBar&>(*items_.back()).SetTrackImage(mark_);
        }
        Place(*items_.back());
        return items_.back().get();
    }

    void Change(QKItemBase& item) {
        switch (Roll(7)) {
            case 0:
                return item.SetStatus(static_cast<QKItemBase::QK_STATUS>(Roll(3)));
            case 1:
                return Place(item);
            case 6: {  // another size where it is: what is drawn may stay, the catching rectangle does not
                CRect rect;
                item.GetRect(&rect);
                return item.SetRect(rect.left, rect.top, Roll(30), Roll(20));
            }
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
    Item& Make() {
        const auto item = std::make_shared<Item>();
        items_.push_back(item);
        return *item;
    }
    void Place(QKItemBase& item) { item.SetRect(Roll(220) - 20, Roll(180) - 20, Roll(90), Roll(60)); }

    void ChangeText(QKItemText& text) {
        const LPCWSTR words[] = {u"", u"fjord", u"江南 south", u"\u05e9\u05dc\u05d5\u05dd",
                                 u"a long text of\nseveral lines"};
        constexpr INT kFlags[] = {0, Gdiplus::StringFormatFlagsNoClip, Gdiplus::StringFormatFlagsNoWrap};
        switch (Roll(8)) {
            case 0:
                return text.SetTextColor(AnyColour());
            case 1:
                return text.SetTextFormat(static_cast<Gdiplus::StringAlignment>(Roll(3)));
            case 2:
                text.GetFormat().SetFormatFlags(kFlags[Roll(3)]);
                return;
            case 4:
                text.GetFormat().SetLineAlignment(static_cast<Gdiplus::StringAlignment>(Roll(3)));
                return;
            case 5:
                text.GetFormat().SetTrimming(static_cast<Gdiplus::StringTrimming>(Roll(4)));
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
            case QKUI_IMAGE:
                return static_cast<QKImage&>(item).SetMargins(Roll(9), Roll(9), Roll(30), Roll(30));
            case QKUI_GIFIMAGE:
                if (Roll(3) == 0) return static_cast<QKImage&>(item).SetMargins(Roll(2), 0, Roll(2), 0);
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

// A host that draws around the frame and changes things meanwhile. All that it does to the window's context
// it does to a surface of its own as well, and there the frame is composed from nothing.
class DrawingHost : public TestDialog {
  public:
    explicit DrawingHost(Crowd& crowd) : crowd_(crowd) {}

    void DrawSurface(HDC dc, int width, int height, int buffer) override {
        ++frames;
        if (nested_) return TestDialog::DrawSurface(dc, width, height, buffer);
        plain = std::make_unique<Surface>(width, height);
        if (m_nLayStyle != LAY_OPAQUE)
            BitBlt(plain->Context(), 0, 0, width, height, dc, 0, 0, SRCCOPY);
        else if (m_pBackCache)
            plain->Pour(*m_pBackCache);
        Clip(dc, HRGN());
        if (crowd_.Roll(3)) return Compose(dc, width, height, buffer);  // an ordinary host, mostly
        for (int acts = crowd_.Roll(6); acts > 0; --acts)
            Act(dc, width, height, buffer);
    }
    int frames = 0;
    std::unique_ptr<Surface> plain;

  private:
    void Clip(HDC dc, HRGN region) {
        SelectClipRgn(dc, region);
        const HRGN drawable = CreateRectRgn(0, 0, 0, 0);
        GetDrawableRgn(dc, drawable);
        SelectClipRgn(plain->Context(), drawable);
        DeleteObject(drawable);
    }

    void Act(HDC dc, int width, int height, int buffer) {
        const CRect rect(CPoint(crowd_.Roll(180), crowd_.Roll(140)),
                         CSize(crowd_.Roll(80) + 1, crowd_.Roll(80) + 1));
        const auto compose = [&] { Compose(dc, width, height, buffer); };
        switch (crowd_.Roll(8)) {
            case 0: {
                const Gdiplus::SolidBrush brush{crowd_.AnyColour()};
                for (const HDC target : {dc, plain->Context()})
                    Gdiplus::Graphics(target).FillRectangle(&brush, rect.left, rect.top, rect.Width(),
                                                            rect.Height());
                return;
            }
            case 1:
                for (const HDC target : {dc, plain->Context()})
                    BitBlt(target, rect.left, rect.top, rect.Width(), rect.Height(), target, 10, 10, SRCCOPY);
                return;
            case 2: {
                const HRGN clip = CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
                Clip(dc, crowd_.Roll(3) ? clip : HRGN());
                DeleteObject(clip);
                return;
            }
            case 3:
                return crowd_.Change(crowd_.Any());
            case 4: {  // only while the frame is drawn
                QKItemBase& item = crowd_.Any();
                const QKItemBase::QK_STATUS status = item.GetStatus();
                item.SetStatus(QKItemBase::QK_MOUSEDOWN);
                item.SetActive(1);
                compose();
                item.SetActive(0);
                return item.SetStatus(status);
            }
            case 5: {
                const int style = std::exchange(m_nLayStyle, crowd_.Roll(4));
                compose();
                m_nLayStyle = style;
                return;
            }
            case 6:  // draws at once, on a surface of its own
                if (m_nLayStyle != LAY_OPAQUE) return;
                nested_ = true;
                UpdateView();
                nested_ = false;
                --frames;
                return;
            default:
                return compose();
        }
    }

    void Compose(HDC dc, int width, int height, int buffer) {
        const bool cached = m_pBackCache != nullptr;
        if (m_nLayStyle == LAY_OPAQUE) {
            OnQKPaint(plain->Context(), width, height);
        } else {
            const Surface off(width, height);
            OnQKPaint(off.Context(), width, height);
            BitBlt(plain->Context(), 0, 0, width, height, off.Context(), 0, 0, SRCCOPY);
        }
        if (!cached) m_pBackCache.reset();  // for the frame that is checked to make
        TestDialog::DrawSurface(dc, width, height, buffer);
        EXPECT_TRUE(m_pBackCache || !m_bBackCache);
    }

    Crowd& crowd_;
    bool nested_ = false;
};

// A dialog that changes at random between its frames.
class FuzzedDialog {
  public:
    FuzzedDialog(unsigned seed, int style, CSize size) : crowd_(seed), style_(style), size_(size) {
        for (int i = 0; i < 4; ++i)
            dialog_.AddQKItem(crowd_.Grow());
        dialog_.SetSelRect(1);
        dialog_.Create(kit::kDialogTemplate);
        dialog_.SetWindowPos(HWND(), 0, 0, size.cx, size.cy, SWP_NOZORDER);
        dialog_.Become(style);
        dialog_.Show();
    }

    // One change, shown by one frame.
    void Step() {
        QKItemBase& item = crowd_.Any();
        int frames = dialog_.frames;
        const int what = crowd_.Roll(17);
        if (what < 4) {
            ChangeItems(what, item);
        } else if (what < 9) {
            ChangeDialog(what);
        } else if (what == 9) {
            if (crowd_.Roll(3) == 0) dialog_.SetFocusColor(crowd_.AnyColour());
            dialog_.SetFocusItem(crowd_.Roll(3) ? &item : nullptr);
            frames = dialog_.frames;  // a per-pixel window shows it at once
        } else if (what == 10) {
            DragBand();
        } else {
            crowd_.Change(item);
        }
        if (what == 2)
            dialog_.UpdateViewRect(CRect(CPoint(crowd_.Roll(180), crowd_.Roll(140)), CSize(50, 40)));
        else
            dialog_.UpdateView();
        Headless::RunPending();
        if (kit::HasExactClock())
            EXPECT_EQ(dialog_.frames, frames + 1);
        else
            EXPECT_GT(dialog_.frames, frames);
    }

    // The window shows what a frame composed from nothing shows.
    void Check() {
        const Headless::Picture shown = kit::Shown(dialog_.m_hWnd);
        Headless::Picture wanted = dialog_.plain->Show();
        for (std::uint32_t& pixel : wanted.argb) {
            if (dialog_.m_nLayStyle != LAY_OPAQUE) pixel |= 0xFF000000U;
            if (dialog_.m_nLayStyle == LAY_COLORKEY && pixel == 0xFFFF00FFU) pixel = 0;
        }
        kit::ExpectSame(shown, wanted);
    }

  private:
    void ChangeItems(int what, QKItemBase& item) {
        if (what == 0) {
            dialog_.RemoveQKItem(&item);
            dialog_.AddQKItem(&item);
        } else if (what == 1) {
            dialog_.SetBackColor(crowd_.AnyColour(), crowd_.Roll(6) != 0);
        } else if (what == 3 && crowd_.Size() < 24) {
            dialog_.AddQKItem(crowd_.Grow());
        }
    }
    void ChangeDialog(int what) {
        if (what == 4) {
            dialog_.SetBack(crowd_.Roll(2) ? background_ : CString(), crowd_.Roll(2), crowd_.Roll(3));
        } else if (what == 5) {
            dialog_.m_bBackCache = crowd_.Roll(2);
        } else if (what == 6 && crowd_.Roll(4) == 0) {
            dialog_.SetWindowPos(HWND(), 0, 0, size_.cx - crowd_.Roll(2) * 3, size_.cy - crowd_.Roll(2) * 5,
                                 SWP_NOZORDER);
        } else if (what == 7 && crowd_.Roll(8) == 0) {
            dialog_.Become(crowd_.Roll(3) ? style_ : crowd_.Roll(4));
        } else if (what == 8) {
            dialog_.SetBackMargins(crowd_.Roll(9), crowd_.Roll(9), crowd_.Roll(9), crowd_.Roll(2));
        }
    }
    // Begins anew, goes on, or ends.
    void DragBand() {
        dialog_.m_bSelecting = crowd_.Roll(4) != 0;
        const CPoint corner =
            crowd_.Roll(2) ? dialog_.m_rcSel.TopLeft() : CPoint(crowd_.Roll(180), crowd_.Roll(140));
        dialog_.m_rcSel = CRect(corner, CSize(crowd_.Roll(120), crowd_.Roll(90)));
    }

    Crowd crowd_;
    DrawingHost dialog_{crowd_};
    int style_;
    CSize size_;
    const CString background_ = Strip("mend_back", {0x80402010, 0x00000000, 0xFF102040}, 20, 30, false);
};

// Long random runs of dialogs: whatever changed in between, or while a frame is drawn, each window shows what
// a frame composed from nothing shows, also while others draw theirs.
TEST_F(PartialRepaint, EqualsANewOne) {
    const CSize usual(kDialogWidth, kDialogHeight), large(4300, 140);  // that is composed in several bands
    const struct {
        std::vector<int> styles;  // of dialogs that live at the same time
        int steps;
        CSize size;
    } runs[] = {{{LAY_NONE}, 500, usual},
                {{LAY_COLORKEY}, 500, usual},
                {{LAY_ALPHA}, 500, usual},
                {{LAY_OPAQUE}, 1000, usual},
                {{LAY_NONE}, 60, large},
                {{LAY_OPAQUE}, 60, large},
                {{LAY_NONE, LAY_OPAQUE, LAY_OPAQUE, LAY_COLORKEY}, 500, usual}};
    unsigned seed = 5;
    for (const auto& [styles, steps, size] : runs) {
        SCOPED_TRACE(testing::PrintToString(styles));
        std::vector<std::unique_ptr<FuzzedDialog>> dialogs;
        for (const int style : styles)
            dialogs.push_back(std::make_unique<FuzzedDialog>(++seed, style, size));
        std::mt19937 random(seed);
        for (int step = 0; step < steps; ++step) {
            dialogs[random() % dialogs.size()]->Step();
            for (const auto& dialog : dialogs)
                dialog->Check();
            if (HasFatalFailure()) FAIL() << "step " << step;
        }
    }
}

// Nothing is drawn on a frame that stays the same, also when others wrote to memory of their own.
TEST_F(PartialRepaint, IsNotTouchedWhileItStaysTheSame) {
    struct Watching : TestDialog {
        void DrawSurface(HDC dc, int width, int height, int buffer) override {
            TestDialog::DrawSurface(dc, width, height, buffer);
            revision = GetSurfaceRevision(dc);
        }
        std::uint64_t revision = 0;
    } dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.SetBack(Solid("untouched", 0x80804020, 8, 8), 0, 1);
    dialog.Open();
    dialog.Set_OPAQUEDlg(255);
    dialog.Refresh();
    dialog.Refresh();
    const std::uint64_t before = dialog.revision;
    GdiFlush();
    dialog.Refresh();
    EXPECT_EQ(dialog.revision, before);
    button.SetActive(1);
    dialog.Refresh();
    EXPECT_EQ(dialog.revision, before) << "a strip of three looks the same";
    button.SetStatus(QKItemBase::QK_MOUSEON);
    dialog.Refresh();
    EXPECT_NE(dialog.revision, before);
}

TEST_F(PartialRepaint, RepeatsNoWork) {
    if (kit::kScale > 1) GTEST_SKIP() << "pictures of usual size are scaled there";
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
    EXPECT_GT(before.textLayouts, 0U);
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
