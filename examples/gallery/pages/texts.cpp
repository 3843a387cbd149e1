// Labels in many scripts and alignments, buttons with captions, and texts that glow.
#include <array>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kHalf = (grid::kContentWidth - grid::kGap) / 2;
constexpr int kRightHalf = grid::kLeft + kHalf + grid::kGap;
constexpr int kWellTop = grid::kTop + 34;
constexpr int kWellBottom = kWellTop + 176;
constexpr int kButtonsTop = kWellBottom + 20;
constexpr int kGlowTop = kButtonsTop + 92;

constexpr std::array<LPCWSTR, 6> kScripts = {
    u"Moon over the ridge",   u"湖上的月亮与远山",         u"月が湖を照らす · 호수 위의 달",
    u"Луна над тихим озером", u"Σελήνη πάνω από τη λίμνη", u"قمر فوق البحيرة",
};

struct Glow {
    LPCWSTR text;
    float factor;
    skin::Colour colour;
    skin::Colour glow;
};
constexpr std::array<Glow, 3> kGlows = {{
    {u"Moonrise", 2, skin::palette::kMoon, skin::Rgb(0xff9d5c, 0.75)},
    {u"北极光", 4, skin::Rgb(0xd8fff4), skin::Rgb(0x36f5b0, 0.80)},
    {u"Dusk", 7, skin::palette::kWhite, skin::Rgb(0xd0607a)},
}};
constexpr int kGlowWidth = (grid::kContentWidth - 2 * grid::kGap) / 3;

class TextsPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    void AddScripts();
    void AddAlignments();
    void AddButtons();
    void AddGlowCaptions();
    void AddLive();

    Shell* shell_ = nullptr;
    QKStaticText* plain_ = nullptr;
    QKStaticText* turning_ = nullptr;
    TextButton* count_ = nullptr;
    TextButton* turn_ = nullptr;
    TextButton* left_ = nullptr;
    int clicks_ = 0;
    std::size_t script_ = 0;
    LiveValues live_;
};

void TextsPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddScripts();
    AddAlignments();
    AddButtons();
    AddGlowCaptions();
    AddLive();
}

void TextsPage::AddScripts() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, grid::kTop, grid::kLeft + kHalf, grid::kTop + 28),
             u"Scripts");
    Add<Well>(*shell_).PlaceAt(CRect(grid::kLeft, kWellTop, grid::kLeft + kHalf, kWellBottom));
    int top = kWellTop + 10;
    for (const LPCWSTR text : kScripts) {
        AddLabel(*shell_, TextStyle::Body, CRect(grid::kLeft + 16, top, grid::kLeft + kHalf - 16, top + 26),
                 text);
        top += 26;
    }
}

void TextsPage::AddAlignments() {
    AddLabel(*shell_, TextStyle::Title, CRect(kRightHalf, grid::kTop, kRightHalf + kHalf, grid::kTop + 28),
             u"Alignment, wrapping, trimming");
    Add<Well>(*shell_).PlaceAt(CRect(kRightHalf, kWellTop, kRightHalf + kHalf, kWellBottom));
    const int left = kRightHalf + 16;
    const int right = kRightHalf + kHalf - 16;
    int top = kWellTop + 10;
    const auto line = [&](LPCWSTR text, Align align) -> QKStaticText& {
        auto& label = AddLabel(*shell_, TextStyle::Body, CRect(left, top, right, top + 24), text, align);
        top += 24;
        return label;
    };
    line(u"near", Align::Left);
    line(u"centre", Align::Centre);
    line(u"far", Align::Right);
    line(u"A line too long for its place ends in dots", Align::Left);
    auto& wrapped = Add<QKStaticText>(*shell_);
    Dress(wrapped, TextStyle::Note);
    wrapped.SetRect(left, top + 4, right - left, 34);
    wrapped.SetText(u"A label wraps by itself, unless its format says otherwise.");
    top += 40;
    plain_ = &Add<QKStaticText>(*shell_);
    plain_->SetRect(left, top, right - left, 20);
    plain_->SetText(u"As it comes: 宋体, 9 points, white");
}

void TextsPage::AddButtons() {
    AddLabel(*shell_, TextStyle::Title,
             CRect(grid::kLeft, kButtonsTop, grid::kContentRight, kButtonsTop + 28), u"Text buttons");
    constexpr int kTop = kButtonsTop + 36;
    const auto add = [this](int column, LPCWSTR caption) {
        TextButton& button = Add<TextButton>(*shell_);
        Dress(button, CPoint(grid::kLeft - 4 + column * 144, kTop), caption);
        button.Load(IDP_STRIP_3, 3);
        return &button;
    };
    count_ = add(0, u"Count");
    count_->OnClick([this] {
        CString caption;
        caption.Format(u"%d ×", ++clicks_);
        count_->SetText(caption);
        shell_->UpdateView();
    });
    turn_ = add(1, u"Next script");
    turn_->OnClick([this] {
        script_ = (script_ + 1) % kScripts.size();
        turning_->SetText(kScripts[script_]);
        shell_->UpdateView();
    });
    left_ = add(2, u"      near");
    left_->SetTextFormat(Gdiplus::StringAlignmentNear);
    TextButton& disabled = *add(3, u"Disabled");
    disabled.Load(IDP_STRIP_5, 5);
    disabled.SetEnable(0);
    disabled.SetTextColor(Tint(skin::Rgb(0x9a9ab0)));
}

void TextsPage::AddGlowCaptions() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, kGlowTop, grid::kContentRight, kGlowTop + 28),
             u"Glow");
    for (std::size_t i = 0; i < kGlows.size(); ++i) {
        const int left = grid::kLeft + static_cast<int>(i) * (kGlowWidth + grid::kGap);
        CString text;
        text.Format(u"factor %d", static_cast<int>(kGlows[i].factor));
        AddLabel(*shell_, TextStyle::Note, CRect(left, kGlowTop + 108, left + kGlowWidth, kGlowTop + 128),
                 text, Align::Centre);
    }
}

void TextsPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Clicks on Count", [this] { return Number(clicks_); });
    live_.Row(u"Its caption", [this] { return CString(count_->GetText()); });
    live_.Row(u"Its status", [this] { return StatusOf(*count_); });
    live_.Row(u"Status of Next", [this] { return StatusOf(*turn_); });
    live_.Row(u"Label below, length", [this] { return Number(turning_->GetTextLen()); });
    live_.Row(u"Outline, width", [this] {
        return Number(static_cast<int>(
            turning_->GetTextBounds(FontOf(TextStyle::Title), CString(turning_->GetText())).Width));
    });
    live_.Row(u"Alpha set", [] { return Number(Tint(ColourOf(TextStyle::Title)).GetA()); });
    live_.Row(u"Alpha kept", [this] { return Number(turning_->GetTextColor().GetA()); });
    const CRect below(grid::kPanelLeft, live_.Bottom() + grid::kGap, grid::kRight,
                      live_.Bottom() + grid::kGap + 56);
    Add<Well>(*shell_).PlaceAt(below);
    turning_ =
        &AddLabel(*shell_, TextStyle::Title, CRect(below.left + 8, below.top, below.right - 8, below.bottom),
                  kScripts[script_], Align::Centre);
}

void TextsPage::Leave() {
    live_.Close();
    Page::Leave();
}

void TextsPage::Draw(Ink& ink) {
    static const Gdiplus::Font font(u"Noto Sans CJK SC", 34, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
    Gdiplus::StringFormat format(Gdiplus::StringFormatFlagsNoWrap);
    format.SetAlignment(Gdiplus::StringAlignmentCenter);
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
    for (std::size_t i = 0; i < kGlows.size(); ++i) {
        const int left = grid::kLeft + static_cast<int>(i) * (kGlowWidth + grid::kGap);
        const CRect place(left, kGlowTop + 34, left + kGlowWidth, kGlowTop + 104);
        ink.Well(place);
        shell_->DrawShadowText(
            &ink.Graphics(), kGlows[i].text, font, format, Tint(kGlows[i].colour), Tint(kGlows[i].glow),
            Gdiplus::RectF(static_cast<float>(left), static_cast<float>(place.top),
                           static_cast<float>(kGlowWidth), static_cast<float>(place.Height())),
            Gdiplus::PointF(1, 1), kGlows[i].factor);
    }
}

void TextsPage::Pose() {
    for (int i = 0; i < 3; ++i)
        ClickOn(*shell_, *count_);
    ClickOn(*shell_, *turn_);
    PointAt(*shell_, *turn_);
}

const PageEntry entry({7, "texts", u"Texts", IDP_TAB_TEXTS, u"Labels, captions and glow",
                       u"Texts with a font, a colour and a format of their own."},
                      [] { return std::unique_ptr<Page>(new TextsPage); });

}  // namespace
}  // namespace gallery
