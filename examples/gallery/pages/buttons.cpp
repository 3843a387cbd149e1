// Buttons to press: a player with the hand cursor, and strips of one to five frames in both layouts.
#include <array>
#include <string>

#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kPlayerHeight = 112;

struct Song {
    LPCWSTR name;
    LPCWSTR length;
};
constexpr std::array<Song, 4> kSongs = {{
    {u"Moon over the ridge", u"4:12"},
    {u"Reeds in the wind", u"3:05"},
    {u"A lantern on the far shore", u"5:48"},
    {u"Northern lights", u"2:57"},
}};

constexpr int kFrameCounts = 5;
constexpr int kTableTop = grid::kTop + kPlayerHeight + 28;
constexpr int kRowHeight = 56;
constexpr int kRowsTop = kTableTop + 36;

struct Column {
    LPCWSTR title;
    QKButton::QKBT_TYPE layout;
    bool active;
    bool disabled;
};
constexpr std::array<Column, 4> kColumns = {{
    {u"Stacked", QKButton::QKBT_VERTICAL, false, false},
    {u"Side by side", QKButton::QKBT_HORIZONTAL, false, false},
    {u"Active", QKButton::QKBT_VERTICAL, true, false},
    {u"Disabled", QKButton::QKBT_HORIZONTAL, false, true},
}};
constexpr int kLabelWidth = 236;
constexpr int kColumnPitch = (grid::kWidth - kLabelWidth) / static_cast<int>(kColumns.size());

constexpr std::array<LPCWSTR, kFrameCounts> kFrameTexts = {
    u"one look for all states", u"normal, over", u"normal, over, pressed", u"and active",
    u"disabled, never active",
};

class ButtonsPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    void AddPlayer();
    void AddTable();
    void Skip(int by);
    void DrawPlayer(Ink& ink);
    void DrawTable(Ink& ink);

    Shell* shell_ = nullptr;
    PushButton* previous_ = nullptr;
    PushButton* play_ = nullptr;
    PushButton* next_ = nullptr;
    std::array<std::array<PushButton*, kColumns.size()>, kFrameCounts> table_ = {};
    std::size_t song_ = 0;
    int clicks_ = 0;
};

void ButtonsPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddPlayer();
    AddTable();
}

void ButtonsPage::AddPlayer() {
    constexpr int kMiddle = grid::kTop + kPlayerHeight / 2;
    const auto add = [this](PushButton*& button, UINT picture, int frames, int left, int height) {
        button = &Add(*shell_);
        button->Load(picture, frames);
        button->PlaceAt(left, kMiddle - height / 2);
        button->SetMouseMoveHand(1);
    };
    add(previous_, IDP_PREVIOUS, 3, grid::kLeft + 24, skin::kSkipButton.height);
    add(play_, IDP_PLAY, 4, grid::kLeft + 80, skin::kPlayButton.height);
    add(next_, IDP_NEXT, 3, grid::kLeft + 160, skin::kSkipButton.height);
    previous_->OnClick([this] { Skip(-1); });
    next_->OnClick([this] { Skip(1); });
    play_->OnClick([this] {
        play_->SetActive(!play_->GetActive());
        shell_->UpdateView();
    });
}

void ButtonsPage::Skip(int by) {
    constexpr int kCount = static_cast<int>(kSongs.size());
    song_ = static_cast<std::size_t>((static_cast<int>(song_) + by + kCount) % kCount);
    shell_->UpdateView();
}

void ButtonsPage::AddTable() {
    for (int frames = 1; frames <= kFrameCounts; ++frames) {
        for (std::size_t i = 0; i < kColumns.size(); ++i) {
            const Column& column = kColumns[i];
            PushButton& button = Add(*shell_);
            // Stacked strips come from the program's resources, the others from files.
            if (column.layout == QKButton::QKBT_VERTICAL)
                button.Load(static_cast<UINT>(IDP_STRIP_1 + frames - 1), frames);
            else
                button.Load(("btn" + std::to_string(frames) + "_h.png").c_str(), frames, column.layout);
            const int left = grid::kLeft + kLabelWidth + static_cast<int>(i) * kColumnPitch;
            button.PlaceAt(
                left + (kColumnPitch - skin::kPillButton.width) / 2,
                kRowsTop + (frames - 1) * kRowHeight + (kRowHeight - skin::kPillButton.height) / 2);
            button.SetActive(column.active);
            button.SetEnable(!column.disabled);
            button.OnClick([this] {
                ++clicks_;
                shell_->UpdateView();
            });
            table_[static_cast<std::size_t>(frames - 1)][i] = &button;
        }
    }
}

void ButtonsPage::Draw(Ink& ink) {
    DrawPlayer(ink);
    DrawTable(ink);
}

void ButtonsPage::DrawPlayer(Ink& ink) {
    const int top = grid::kTop;
    ink.Frame(CRect(grid::kLeft, top, grid::kRight, top + kPlayerHeight),
              skin::WithAlpha(skin::palette::kMist, 0.16));
    const int left = grid::kLeft + 244;
    const bool playing = play_->GetActive() != 0;
    ink.Label(TextStyle::Note, CRect(left, top + 20, grid::kRight - 24, top + 40),
              playing ? u"Playing" : u"Paused", Align::Left,
              playing ? skin::palette::kAmber : skin::Rgb(0x9d9bcb));
    ink.Label(TextStyle::Title, CRect(left, top + 40, grid::kRight - 24, top + 64), kSongs[song_].name,
              Align::Left);
    ink.Label(TextStyle::Note, CRect(left, top + 40, grid::kRight - 24, top + 64), kSongs[song_].length,
              Align::Right);
    const CRect bar(left, top + 78, grid::kRight - 24, top + 82);
    ink.Fill(bar, skin::WithAlpha(skin::palette::kMist, 0.16));
    const int done = bar.Width() * static_cast<int>(song_ + 1) / static_cast<int>(kSongs.size() + 1);
    ink.Fill(CRect(bar.left, bar.top, bar.left + done, bar.bottom), skin::palette::kAmber);
    ink.Dot(bar.left + done, bar.top + 1, 6, skin::palette::kGold);
}

void ButtonsPage::DrawTable(Ink& ink) {
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
        const int left = grid::kLeft + kLabelWidth + static_cast<int>(i) * kColumnPitch;
        ink.Label(TextStyle::Title, CRect(left, kTableTop, left + kColumnPitch, kTableTop + 28),
                  kColumns[i].title);
    }
    CString clicks;
    clicks.Format(clicks_ == 1 ? u"%d click" : u"%d clicks", clicks_);
    ink.Label(TextStyle::Note, CRect(grid::kLeft, kTableTop, grid::kLeft + kLabelWidth, kTableTop + 28),
              clicks, Align::Left, skin::palette::kGold);
    ink.Fill(CRect(grid::kLeft, kTableTop + 31, grid::kRight, kTableTop + 32),
             skin::WithAlpha(skin::palette::kMist, 0.16));

    for (std::size_t row = 0; row < table_.size(); ++row) {
        const int top = kRowsTop + static_cast<int>(row) * kRowHeight;
        CString frames;
        frames.Format(row == 0 ? u"%d frame" : u"%d frames", static_cast<int>(row) + 1);
        ink.Label(TextStyle::Title, CRect(grid::kLeft, top, grid::kLeft + 76, top + kRowHeight), frames,
                  Align::Left);
        ink.Label(TextStyle::Note, CRect(grid::kLeft + 84, top, grid::kLeft + kLabelWidth, top + kRowHeight),
                  kFrameTexts[row], Align::Left);
        for (const PushButton* button : table_[row]) {
            CRect place = button->Place();
            place.bottom -= 2;
            const bool plain = button->GetEnable() != 0;
            ink.Label(TextStyle::Button, place, u"Press", Align::Centre,
                      plain ? skin::Rgb(0xf0edff) : skin::Rgb(0x9a9ab0));
        }
    }
}

void ButtonsPage::Pose() {
    ClickOn(*shell_, *play_);
    ClickOn(*shell_, *next_);
    for (const auto& row : table_)
        ClickOn(*shell_, *row[1]);
    PointAt(*shell_, table_[3][0]->Place().CenterPoint());
}

const PageEntry entry({4, "buttons", u"Buttons", IDP_TAB_BUTTONS, u"Image buttons",
                       u"Each look is a frame of one picture. The player's buttons show a hand."},
                      [] { return std::unique_ptr<Page>(new ButtonsPage); });

}  // namespace
}  // namespace gallery
