// Every state of every strip beside each other. The samples are painted, not registered: the pointer leaves
// them as they are.
#include <array>
#include <deque>
#include <string>

#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"

namespace gallery {
namespace {

struct State {
    LPCWSTR title;
    QKItemBase::QK_STATUS status;
    bool active;
    bool enabled;
};
constexpr std::array<State, 6> kStates = {{
    {u"Normal", QKItemBase::QK_NORMAL, false, true},
    {u"Over", QKItemBase::QK_MOUSEON, false, true},
    {u"Pressed", QKItemBase::QK_MOUSEDOWN, false, true},
    {u"Active", QKItemBase::QK_NORMAL, true, true},
    {u"Active, over", QKItemBase::QK_MOUSEON, true, true},
    {u"Disabled", QKItemBase::QK_NORMAL, false, false},
}};

constexpr int kLabelWidth = 96;
constexpr int kPitch = (grid::kWidth - kLabelWidth) / static_cast<int>(kStates.size());
constexpr int kHeaderHeight = 36;

class StatesPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Draw(Ink& ink) override;

  private:
    struct Row {
        LPCWSTR title;
        LPCWSTR text;
        int height;
        std::deque<PushButton> samples;
    };

    template <class Loader>
    void AddRow(LPCWSTR title, LPCWSTR text, int height, Loader load);

    Shell* shell_ = nullptr;
    std::deque<Row> rows_;
};

template <class Loader>
void StatesPage::AddRow(LPCWSTR title, LPCWSTR text, int height, Loader load) {
    int top = grid::kTop + kHeaderHeight;
    for (const Row& row : rows_)
        top += row.height;
    Row& row = rows_.emplace_back();
    row.title = title;
    row.text = text;
    row.height = height;
    for (std::size_t i = 0; i < kStates.size(); ++i) {
        PushButton& sample = row.samples.emplace_back();
        load(sample);
        sample.PlaceAt(0, 0);
        const CSize size = sample.Place().Size();
        const int left = grid::kLeft + kLabelWidth + static_cast<int>(i) * kPitch;
        sample.PlaceAt(left + (kPitch - size.cx) / 2, top + (height - size.cy) / 2);
        sample.SetEnable(kStates[i].enabled);
        sample.SetActive(kStates[i].active);
        sample.SetStatus(kStates[i].status);
    }
}

void StatesPage::Enter(Shell& shell) {
    shell_ = &shell;
    constexpr int kHeight = 44;
    constexpr std::array<LPCWSTR, 5> kTitles = {u"1 frame", u"2 frames", u"3 frames", u"4 frames",
                                                u"5 frames"};
    for (int frames = 1; frames <= 5; ++frames) {
        AddRow(kTitles[static_cast<std::size_t>(frames - 1)], u"stacked", kHeight,
               [frames](PushButton& sample) {
                   sample.Load(static_cast<UINT>(IDP_STRIP_1 + frames - 1), frames);
               });
    }
    AddRow(u"4 frames", u"side by side", kHeight,
           [](PushButton& sample) { sample.Load("btn4_h.png", 4, QKButton::QKBT_HORIZONTAL); });
    AddRow(u"5 frames", u"side by side", kHeight,
           [](PushButton& sample) { sample.Load("btn5_h.png", 5, QKButton::QKBT_HORIZONTAL); });
    AddRow(u"4 frames", u"play and pause", 80, [](PushButton& sample) { sample.Load(IDP_PLAY, 4); });
    AddRow(u"3 frames", u"window button", kHeight, [](PushButton& sample) { sample.Load(IDP_CLOSE, 3); });
}

void StatesPage::Draw(Ink& ink) {
    for (std::size_t i = 0; i < kStates.size(); ++i) {
        const int left = grid::kLeft + kLabelWidth + static_cast<int>(i) * kPitch;
        ink.Label(TextStyle::Title, CRect(left, grid::kTop, left + kPitch, grid::kTop + 28),
                  kStates[i].title);
    }
    ink.Fill(CRect(grid::kLeft, grid::kTop + 31, grid::kRight, grid::kTop + 32),
             skin::WithAlpha(skin::palette::kMist, 0.16));
    int top = grid::kTop + kHeaderHeight;
    for (Row& row : rows_) {
        const int middle = top + row.height / 2;
        ink.Label(TextStyle::Title, CRect(grid::kLeft, middle - 20, grid::kLeft + kLabelWidth, middle + 2),
                  row.title, Align::Left);
        ink.Label(TextStyle::Note, CRect(grid::kLeft, middle, grid::kLeft + kLabelWidth, middle + 18),
                  row.text, Align::Left);
        for (PushButton& sample : row.samples)
            shell_->DrawButton(ink.Context(), &sample);
        top += row.height;
    }
}

const PageEntry entry({5, "states", u"States", IDP_TAB_STATES, u"What a strip shows",
                       u"The frame for each state, by the number of frames and the way they lie."},
                      [] { return std::unique_ptr<Page>(new StatesPage); });

}  // namespace
}  // namespace gallery
