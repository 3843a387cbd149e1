// Check boxes and radio buttons to click, and where their texts stand.
#include <array>
#include <type_traits>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kFrames = 5;
constexpr int kRow = 42;
constexpr int kColumn = (grid::kContentWidth - 2 * grid::kGap) / 3;
constexpr int kUpper = grid::kTop + 36;
constexpr int kWellHeight = 4 * kRow + 24;
constexpr int kLower = kUpper + kWellHeight + 24;

constexpr std::array<LPCWSTR, 4> kSky = {u"Stars 星星", u"Clouds", u"Full moon", u"Not to be had"};
constexpr std::array<LPCWSTR, 4> kSeasons = {u"Spring 春", u"Summer 夏", u"Autumn 秋", u"Winter 冬"};
constexpr std::array<LPCWSTR, 4> kHours = {u"Dawn", u"Noon", u"Dusk", u"Midnight"};

class ChoicesPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink&) override {}
    void Pose() override;

  private:
    using Box = Clickable<QKCheckBox>;
    using Radio = Clickable<QKRadio>;

    template <class Choice>
    Choice& AddChoice(const CRect& place, LPCWSTR text);
    CRect RowIn(int column, std::size_t row) const;
    void AddColumns();
    void AddVariants();
    void AddLive();
    CString Checked(const std::array<Radio*, 4>& group, const std::array<LPCWSTR, 4>& names) const;

    Shell* shell_ = nullptr;
    std::array<Box*, 4> sky_ = {};
    std::array<Radio*, 4> seasons_ = {};
    std::array<Radio*, 4> hours_ = {};
    Box* sideBySide_ = nullptr;
    Box* shifted_ = nullptr;
    int clicks_ = 0;
    LiveValues live_;
};

template <class Choice>
Choice& ChoicesPage::AddChoice(const CRect& place, LPCWSTR text) {
    constexpr bool kIsRadio = std::is_base_of_v<QKRadio, Choice>;
    Choice& choice = Add<Choice>(*shell_);
    choice.SetImage(SkinFile(kIsRadio ? "radio_v.png" : "check_box_v.png"),
                    SkinFile(kIsRadio ? "radio_mark.png" : "check_mark.png"),
                    static_cast<QKButton::QKBT_IMGS>(kFrames), QKButton::QKBT_VERTICAL);
    choice.SetRect(&place);
    Dress(choice, TextStyle::Body);
    choice.SetText(text);
    choice.SetTextInerLeft(8);
    choice.SetTextMouseOnColor(Tint(skin::palette::kGold));
    choice.SetTextMouseDownColor(Tint(skin::palette::kAmber));
    choice.SetMouseMoveHand(1);
    choice.OnClick([this] {
        ++clicks_;
        shell_->UpdateView();
    });
    return choice;
}

CRect ChoicesPage::RowIn(int column, std::size_t row) const {
    const int left = grid::kLeft + column * (kColumn + grid::kGap) + 16;
    const int top = kUpper + 12 + static_cast<int>(row) * kRow + (kRow - skin::kChoice.height) / 2;
    return CRect(left, top, left + kColumn - 32, top + skin::kChoice.height);
}

void ChoicesPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddColumns();
    AddVariants();
    AddLive();
}

void ChoicesPage::AddColumns() {
    constexpr std::array<LPCWSTR, 3> kTitles = {u"Check boxes", u"Radio buttons, group 1", u"Group 2"};
    for (int column = 0; column < 3; ++column) {
        const int left = grid::kLeft + column * (kColumn + grid::kGap);
        AddLabel(*shell_, TextStyle::Title, CRect(left, grid::kTop, left + kColumn, grid::kTop + 28),
                 kTitles[static_cast<std::size_t>(column)]);
        Add<Well>(*shell_).PlaceAt(CRect(left, kUpper, left + kColumn, kUpper + kWellHeight));
    }
    for (std::size_t row = 0; row < 4; ++row) {
        sky_[row] = &AddChoice<Box>(RowIn(0, row), kSky[row]);
        seasons_[row] = &AddChoice<Radio>(RowIn(1, row), kSeasons[row]);
        seasons_[row]->SetGroupID(1);
        hours_[row] = &AddChoice<Radio>(RowIn(2, row), kHours[row]);
        hours_[row]->SetGroupID(2);
    }
    sky_[0]->SetCheck(1);
    sky_[3]->SetCheck(1);
    sky_[3]->SetEnable(0);
    sky_[3]->SetTextColor(Tint(skin::Rgb(0x8b8ca0)));
    seasons_[0]->SetCheck(1);
    hours_[3]->SetCheck(1);
}

// Two boxes below: a strip side by side, and a text moved away from its box.
void ChoicesPage::AddVariants() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, kLower, grid::kContentRight, kLower + 28),
             u"Where the text stands");
    constexpr int kTop = kLower + 36;
    Add<Well>(*shell_).PlaceAt(CRect(grid::kLeft, kTop, grid::kContentRight, kTop + 2 * kRow + 24));
    const auto place = [](int row) {
        const int y = kTop + 12 + row * kRow + (kRow - skin::kChoice.height) / 2;
        return CRect(grid::kLeft + 16, y, grid::kContentRight - 16, y + skin::kChoice.height);
    };
    sideBySide_ = &AddChoice<Box>(place(0), u"Frames side by side: the text starts right of the whole strip");
    sideBySide_->DestroyCheckImage();  // another SetImage does not free it
    sideBySide_->SetImage(SkinFile("check_box_h.png"), SkinFile("check_mark.png"),
                          static_cast<QKButton::QKBT_IMGS>(kFrames), QKButton::QKBT_HORIZONTAL);
    shifted_ = &AddChoice<Box>(place(1), u"Stacked, with 88 pixels between box and text");
    shifted_->SetTextInerLeft(88);
    shifted_->SetCheck(1);
    const int below = kTop + 2 * kRow + 24 + 12;
    AddLabel(*shell_, TextStyle::Note, CRect(grid::kLeft, below, grid::kContentRight, below + 20),
             u"The whole item takes the pointer, text and all. Its colour follows: over, and pressed.");
}

CString ChoicesPage::Checked(const std::array<Radio*, 4>& group, const std::array<LPCWSTR, 4>& names) const {
    for (std::size_t i = 0; i < group.size(); ++i) {
        if (group[i]->GetCheck()) return names[i];
    }
    return u"none";
}

void ChoicesPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    for (std::size_t i = 0; i < sky_.size(); ++i)
        live_.Row(kSky[i], [this, i] { return YesNo(sky_[i]->GetCheck()); });
    live_.Row(u"Group 1", [this] { return Checked(seasons_, kSeasons); });
    live_.Row(u"Group 2", [this] { return Checked(hours_, kHours); });
    live_.Row(u"Side by side", [this] { return YesNo(sideBySide_->GetCheck()); });
    live_.Row(u"With a gap", [this] { return YesNo(shifted_->GetCheck()); });
    live_.Row(u"Status of Clouds", [this] { return StatusOf(*sky_[1]); });
    live_.Row(u"Status of Summer", [this] { return StatusOf(*seasons_[1]); });
    live_.Row(u"Clicks", [this] { return Number(clicks_); });
}

void ChoicesPage::Leave() {
    live_.Close();
    Page::Leave();
}

void ChoicesPage::Pose() {
    ClickOn(*shell_, *sky_[2]);
    ClickOn(*shell_, *seasons_[2]);
    ClickOn(*shell_, *hours_[0]);
    ClickOn(*shell_, *hours_[2]);
    ClickOn(*shell_, *sideBySide_);
    PointAt(*shell_, *seasons_[1]);
}

const PageEntry entry({8, "choices", u"Choices", IDP_TAB_CHOICES, u"Check boxes and radio buttons",
                       u"A frame for each state, a mark over it while checked, and a text that lights up."},
                      [] { return std::unique_ptr<Page>(new ChoicesPage); });

}  // namespace
}  // namespace gallery
