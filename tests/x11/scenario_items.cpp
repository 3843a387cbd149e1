#include <memory>

#include "support/skin.h"
#include "x11/scenario.h"

namespace scenario {

namespace {

constexpr int kLeft = 120, kTop = 90, kWidth = 460, kHeight = 330;
constexpr COLORREF kKey = RGB(255, 0, 255);

// Every pixel another colour, the alpha falling from left to right: what scaling makes of it tells.
CString Colourful(const std::string& name, int width, int height, bool opaque) {
    Headless::Picture picture;
    picture.width = width;
    picture.height = height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int alpha = opaque ? 255 : 255 - 200 * x / width;
            const auto channel = [alpha](int value) {
                return static_cast<std::uint32_t>((value & 255) * alpha / 255);
            };
            picture.argb.push_back(static_cast<std::uint32_t>(alpha) << 24 | channel(x * 7 + y) << 16 |
                                   channel(y * 11) << 8 | channel(255 - x * y));
        }
    return kit::SavePicture(name, picture);
}

CString Frames(const std::string& name, int width, int height) {
    return Colourful("items_" + name, width, 3 * height, false);
}

class ItemsDialog : public CQKDialogBase {
  public:
    ItemsDialog() : CQKDialogBase(101) {}

    void Open(CWnd* owner, QKLayStyle style) {
        Create(101, owner);
        SetWindowText(u"items");
        SetWindowPos(HWND(), kLeft, kTop, kWidth, kHeight, SWP_NOZORDER);
        Fill();
        if (style == LAY_COLORKEY) Set_COLORKEYDlg(kKey);
        if (style == LAY_OPAQUE) Set_OPAQUEDlg(255);
        // A key colour shows what lies behind around the items.
        if (style != LAY_COLORKEY) SetBack(Colourful("items_back", 90, 70, style != LAY_OPAQUE), 1, 0);
        ShowWindow(SW_SHOW);
        UpdateView();
    }

    void DrawSurface(HDC dc, int width, int height, int buffer) override {
        CQKDialogBase::DrawSurface(dc, width, height, buffer);
        Gdiplus::Graphics graphics(dc);
        const Gdiplus::Font font(u"Noto Sans CJK SC", 22, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
        DrawShadowText(&graphics, u"Glow 光 Свет", font, Gdiplus::StringFormat(), Gdiplus::Color(0xFFFFFFFF),
                       Gdiplus::Color(0xC0802000), Gdiplus::RectF(20, 270, 200, 40), Gdiplus::PointF(1, 1),
                       3);
        Gdiplus::Image* pieces[9];
        for (int i = 0; i < 9; ++i)
            pieces[i] = pieces_[i].get();
        DrawStateImage(&graphics, pieces, Gdiplus::RectF(240, 230, 150.5F, 80.25F));
    }

    std::string States() const {
        std::string states;
        const QKItemBase* const items[] = {&button_, &caption_, &box_, &low_, &high_, &scroll_};
        for (const QKItemBase* item : items)
            states += std::to_string(item->GetStatus());
        return states + " checked " + std::to_string(box_.GetCheck()) + std::to_string(low_.GetCheck()) +
               std::to_string(high_.GetCheck()) + " at " + std::to_string(scroll_.GetBarPos()) + "\n";
    }

  private:
    void Fill() {
        SetNoMove(1);
        Texts();
        Buttons();
        Pictures();
        for (int i = 0; i < 9; ++i)
            pieces_[i] = std::make_unique<Gdiplus::Image>(Frames("piece" + std::to_string(i), 5 + i % 3, 3));
        QKItemBase* const items[] = {&latin_, &han_,  &mixed_, &button_, &caption_,  &box_,
                                     &low_,   &high_, &image_, &gif_,    &progress_, &scroll_};
        for (QKItemBase* item : items)
            AddQKItem(item);
    }
    void Texts() {
        latin_.SetText(u"Fjord, Øresund – wrapped where it no longer fits");
        latin_.SetRect(20, 12, 150, 50);
        han_.SetText(u"默认字体 九点 かな 한글");
        han_.SetRect(180, 12, 160, 20);
        mixed_.SetText(u"Ελλάδα שלום Привет");
        mixed_.SetFont(Gdiplus::Font(u"DejaVu Sans", 13.5F, Gdiplus::FontStyleItalic, Gdiplus::UnitPixel));
        mixed_.SetTextColor(Gdiplus::Color(0x90FFE000));
        mixed_.SetTextFormat(Gdiplus::StringAlignmentFar);
        mixed_.SetRect(180, 38, 200, 24);
    }
    void Buttons() {
        button_.SetImage(Frames("button", 60, 24), QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
        button_.SetRect(20, 80, 60, 24);
        caption_.SetImage(Frames("caption", 90, 26), QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
        caption_.SetText(u"Text 文字");
        caption_.SetRect(100, 80, 90, 26);
        int top = 120;
        for (QKCheckBox* box : {&box_, static_cast<QKCheckBox*>(&low_), static_cast<QKCheckBox*>(&high_)}) {
            box->SetImage(Frames("box", 18, 18), Colourful("items_mark", 9, 7, false), QKButton::QKBT_IMGS_3,
                          QKButton::QKBT_VERTICAL);
            box->SetText(u"Choice 选择");
            box->SetTextMouseOnColor(Gdiplus::Color(0xFFFF8000));
            box->SetRect(20, top, 160, 22);
            top += 30;
        }
        box_.SetCheck(1);
    }
    void Pictures() {
        image_.SetImage(Colourful("items_image", 40, 30, false));
        image_.SetRect(210, 76, 131, 67);
        gif_.SetImage(kit::SaveGif("items", {{0x2080C0, 10}, {0xC02040, 10}}));
        gif_.SetRect(210, 154, 40, 40);
        progress_.SetBarImage(Colourful("items_track", 30, 10, false), Colourful("items_bar", 20, 5, false));
        progress_.SetPos(37);
        progress_.SetRect(262, 160, 120, 20);
        scroll_.SetRect(410, 20, 20, 200);
        scroll_.SetBarImage(Frames("top", 14, 10), Frames("middle", 14, 10), Frames("bottom", 14, 10));
        scroll_.SetTrackImage(Colourful("items_scroll", 8, 60, false));
        scroll_.SetBarLength(50, 200);
        scroll_.SetBarPos(17);
    }

    QKStaticText latin_, han_, mixed_;
    QKButton button_;
    QKTextButton caption_;
    QKCheckBox box_;
    QKRadio low_, high_;
    QKImage image_;
    QKGifImage gif_;
    QKProgress progress_;
    QKVScrollBar scroll_;
    std::unique_ptr<Gdiplus::Image> pieces_[9];
};

}  // namespace

Told PlayItems(Stage& stage, QKLayStyle style) {
    CQKDialogBase backdrop(101);
    backdrop.Create(101);
    backdrop.SetWindowPos(HWND(), 0, 0, kScreenWidth, kScreenHeight, SWP_NOZORDER);
    backdrop.SetBackColor(Gdiplus::Color(0xFF305070), 1);
    backdrop.SetNoMove(1);
    backdrop.ShowWindow(SW_SHOW);
    backdrop.UpdateView();
    stage.Settle();

    Told told;
    ItemsDialog dialog;
    dialog.Open(&backdrop, style);
    const auto look = [&](const char* title) {
        stage.Settle();
        told.log += std::string(title) + ": " + dialog.States();
        told.titles.emplace_back(title);
        told.pictures.push_back(style == LAY_OPAQUE ? stage.Window(dialog.m_hWnd, "items") : stage.Screen());
    };
    const auto move = [&](int x, int y) { stage.MovePointer(kLeft + x, kTop + y); };
    look("at rest");
    move(29, 129);
    look("over the box");
    move(120, 90);
    stage.Button(1, true);
    look("pressed");
    stage.Button(1, false);
    move(29, 189);
    stage.Button(1, true);
    stage.Button(1, false);
    look("chosen");
    move(420, 50);
    stage.Button(1, true);
    move(420, 80);
    look("dragged");
    stage.Button(1, false);
    move(kWidth + 40, 320);
    look("left alone");
    return told;
}

}  // namespace scenario
