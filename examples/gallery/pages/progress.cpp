// Progress bars: positions and ranges, borders, two looks, and one that runs.
#include <algorithm>
#include <array>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr UINT_PTR kRunTimer = 31;
constexpr UINT kRunStep = 40;  // milliseconds
constexpr int kRowTop = grid::kTop + 100;
constexpr int kRow = 42;
constexpr int kNameWidth = 168;
constexpr int kRunTop = kRowTop + 6 * kRow + 34;

struct Sample {
    LPCWSTR text;
    unsigned int minimum, maximum, position;
    int border;
    bool cool;
};
constexpr std::array<Sample, 6> kSamples = {{
    {u"0 to 100, at 25", 0, 100, 25, 1, false},
    {u"200 to 1200, at 900", 200, 1200, 900, 1, false},
    {u"at its end", 0, 100, 100, 1, false},
    {u"beyond its range", 0, 100, 101, 1, false},
    {u"a border of 5", 0, 100, 60, 5, false},
    {u"other pictures", 0, 100, 70, 1, true},
}};

class ProgressPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink&) override {}
    void Ticked(UINT_PTR timer) override;
    void Pose() override;

  private:
    QKProgress& AddBar(const CRect& place, bool cool);
    void AddMain();
    void AddSamples();
    void AddRunning();
    void AddLive();
    void Move(int by);

    Shell* shell_ = nullptr;
    QKProgress* main_ = nullptr;
    QKProgress* running_ = nullptr;
    TextButton* less_ = nullptr;
    TextButton* more_ = nullptr;
    TextButton* run_ = nullptr;
    bool runs_ = false;
    LiveValues live_;
};

void ProgressPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddMain();
    AddSamples();
    AddRunning();
    AddLive();
}

QKProgress& ProgressPage::AddBar(const CRect& place, bool cool) {
    auto& bar = Add<QKProgress>(*shell_);
    bar.SetRect(&place);
    bar.SetBarImage(SkinFile(cool ? "progress_cool_back.png" : "progress_back.png"),
                    SkinFile(cool ? "progress_cool_bar.png" : "progress_bar.png"));
    return bar;
}

void ProgressPage::AddMain() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, grid::kTop, grid::kContentRight, grid::kTop + 28),
             u"Moved by buttons");
    const int middle = grid::kTop + 34 + skin::kWideButton.height / 2;
    const auto button = [this](int left, LPCWSTR caption, int by) {
        TextButton& added = Add<TextButton>(*shell_);
        Dress(added, CPoint(left, grid::kTop + 34), caption);
        added.OnClick([this, by] { Move(by); });
        return &added;
    };
    less_ = button(grid::kLeft - 4, u"− 10", -10);
    more_ = button(grid::kContentRight - skin::kWideButton.width + 4, u"+ 10", 10);
    main_ = &AddBar(CRect(grid::kLeft + 104, middle - 9, grid::kContentRight - 104, middle + 9), false);
    main_->SetPos(30);
}

void ProgressPage::AddSamples() {
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, kRowTop, grid::kContentRight, kRowTop + 28),
             u"Ranges, borders, looks");
    int top = kRowTop + 32;
    for (const Sample& sample : kSamples) {
        AddLabel(*shell_, TextStyle::Body, CRect(grid::kLeft, top, grid::kLeft + kNameWidth, top + kRow),
                 sample.text);
        const int half = (sample.cool ? skin::kProgressCool.height : skin::kProgress.height) / 2;
        const int middle = top + kRow / 2;
        QKProgress& bar = AddBar(
            CRect(grid::kLeft + kNameWidth, middle - half, grid::kContentRight, middle + half), sample.cool);
        bar.SetMinMax(sample.minimum, sample.maximum);
        bar.SetPos(sample.position);
        bar.SetBackBordThick(sample.border);
        top += kRow;
    }
}

void ProgressPage::AddRunning() {
    const int top = kRunTop + 12;
    AddLabel(*shell_, TextStyle::Title, CRect(grid::kLeft, top, grid::kContentRight, top + 28),
             u"Moved by a timer");
    const int middle = top + 34 + skin::kWideButton.height / 2;
    run_ = &Add<TextButton>(*shell_);
    Dress(*run_, CPoint(grid::kLeft - 4, top + 34), u"Start");
    run_->OnClick([this] {
        runs_ = !runs_;
        run_->SetActive(runs_);
        run_->SetText(runs_ ? u"Stop" : u"Start");
        if (runs_)
            shell_->SetTimer(kRunTimer, kRunStep);
        else
            shell_->KillTimer(kRunTimer);
        shell_->UpdateView();
    });
    running_ = &AddBar(CRect(grid::kLeft + 104, middle - 5, grid::kContentRight, middle + 5), true);
    running_->SetMinMax(0, 400);
}

void ProgressPage::Move(int by) {
    const int position = static_cast<int>(main_->GetPos()) + by;
    main_->SetPos(static_cast<unsigned int>(std::clamp(position, 0, 100)));
    shell_->UpdateView();
}

void ProgressPage::Ticked(UINT_PTR timer) {
    if (timer != kRunTimer || !running_) return;
    running_->SetPos((running_->GetPos() + 3) % (running_->GetMax() + 1));
    shell_->UpdateView();
}

void ProgressPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    const auto rows = [this](LPCWSTR position, LPCWSTR filled, const QKProgress* bar) {
        live_.Row(position, [bar] {
            CString text;
            text.Format(u"%d of %d", static_cast<int>(bar->GetPos()), static_cast<int>(bar->GetMax()));
            return text;
        });
        live_.Row(filled, [bar] {
            CString text;
            text.Format(u"%d of %d px", bar->GetFilledRect().Width(),
                        PlaceOf(*bar).Width() - 2 * bar->GetBackBordThick());
            return text;
        });
    };
    rows(u"By buttons", u"filled", main_);
    rows(u"By a timer", u"filled", running_);
    live_.Row(u"Runs", [this] { return YesNo(runs_); });
    live_.Row(u"Border", [this] { return Number(main_->GetBackBordThick()); });
    live_.Row(u"Status of + 10", [this] { return StatusOf(*more_); });
}

void ProgressPage::Leave() {
    shell_->KillTimer(kRunTimer);
    live_.Close();
    Page::Leave();
}

void ProgressPage::Pose() {
    ClickOn(*shell_, *run_);
    for (int i = 0; i < 4; ++i)
        ClickOn(*shell_, *more_);
    Headless::Advance(1400);
    PointAt(*shell_, *more_);
}

const PageEntry entry({10, "progress", u"Progress", IDP_TAB_PROGRESS, u"Progress bars",
                       u"A track, and a picture squeezed into the filled part of it."},
                      [] { return std::unique_ptr<Page>(new ProgressPage); });

}  // namespace
}  // namespace gallery
