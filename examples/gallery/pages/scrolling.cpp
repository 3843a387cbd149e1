// A scroll bar that moves a long list, built of pictures and labels.
#include <array>

#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kRow = 58;
constexpr int kRows = 30;
constexpr int kIcon = 40;
constexpr int kListHeight = 442;
const CRect kList(grid::kLeft, grid::kTop, grid::kContentRight, grid::kTop + kListHeight);
constexpr int kTotal = kRows * kRow;

struct Kind {
    const char* icon;
    LPCWSTR name;
    LPCWSTR note;
};
constexpr std::array<Kind, 10> kKinds = {{
    {"icon_folder.png", u"Summer at the lake", u"folder, 24 things"},
    {"icon_document.png", u"Letter to the moon", u"document, 3 pages"},
    {"icon_picture.png", u"Northern lights 北极光", u"picture, 1280 x 800"},
    {"icon_music.png", u"Reeds in the wind", u"music, 3:05"},
    {"icon_film.png", u"A comet passes", u"film, 12 minutes"},
    {"icon_archive.png", u"Winter 2019", u"archive, 4.2 GB"},
    {"icon_code.png", u"night_sky.cpp", u"source, 176 lines"},
    {"icon_terminal.png", u"Terminal", u"program"},
    {"icon_globe.png", u"The far shore", u"page of the web"},
    {"icon_settings.png", u"Settings", u"program"},
}};

class ScrollingPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void Pose() override;

  private:
    struct Row {
        QKImage* icon;
        QKStaticText* name;
        QKStaticText* note;
        QKStaticText* number;
    };

    void AddRows();
    void AddBar();
    void AddButtons();
    void AddLive();
    // Puts the rows where the content's position wants them; those out of sight are hidden.
    void PlaceRows();
    void ScrollTo(int thumb);

    Shell* shell_ = nullptr;
    std::array<Row, kRows> rows_ = {};
    QKVScrollBar* bar_ = nullptr;
    int calls_ = 0;
    LiveValues live_;
};

void ScrollingPage::Enter(Shell& shell) {
    shell_ = &shell;
    Add<Well>(shell).PlaceAt(kList);
    AddRows();
    // What of a row reaches beyond the list lies beneath these.
    Add<BackgroundPiece>(shell).PlaceAt(CRect(kList.left, kList.top - kRow, kList.right, kList.top));
    Add<BackgroundPiece>(shell).PlaceAt(CRect(kList.left, kList.bottom, kList.right, kList.bottom + kRow));
    AddBar();
    AddLive();
    AddButtons();
    PlaceRows();
}

void ScrollingPage::AddRows() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Kind& kind = kKinds[i % kKinds.size()];
        Row& row = rows_[i];
        row.icon = &Add<QKImage>(*shell_);
        row.icon->SetImage(SkinFile(kind.icon));
        row.name = &AddLabel(*shell_, TextStyle::Title, CRect(), kind.name);
        row.note = &AddLabel(*shell_, TextStyle::Note, CRect(), kind.note);
        row.number =
            &AddLabel(*shell_, TextStyle::Note, CRect(), Number(static_cast<int>(i) + 1), Align::Right);
    }
}

void ScrollingPage::AddBar() {
    bar_ = &Add<QKVScrollBar>(*shell_);
    bar_->SetRect(kList.right - 28, kList.top + 10, skin::kScrollTrack.width, kListHeight - 20);
    bar_->SetBarImage(SkinFile("scroll_top_v.png"), SkinFile("scroll_middle_v.png"),
                      SkinFile("scroll_bottom_v.png"));
    bar_->SetTrackImage(SkinFile("scroll_track.png"));
    bar_->SetBarLength(kListHeight, kTotal);
    QKVScrollCallbacks callbacks;
    callbacks.pArgument = this;
    callbacks.pfnPosition = [](int, LPVOID self) {
        auto* page = static_cast<ScrollingPage*>(self);
        ++page->calls_;
        page->PlaceRows();
    };
    bar_->SetVBarCallBack(&callbacks);
}

void ScrollingPage::AddButtons() {
    const int top = live_.Bottom() + grid::kGap;
    const auto add = [this, top](int left, LPCWSTR caption, auto thumb) {
        TextButton& button = Add<TextButton>(*shell_);
        Dress(button, CPoint(left, top), caption);
        button.OnClick([this, thumb] { ScrollTo(thumb()); });
    };
    add(grid::kPanelLeft, u"Start", [] { return 0; });
    add(grid::kRight - skin::kWideButton.width, u"End", [this] { return bar_->GetMax(); });
}

void ScrollingPage::ScrollTo(int thumb) {
    bar_->SetBarPos(thumb);
    PlaceRows();
    shell_->UpdateView();
}

void ScrollingPage::PlaceRows() {
    int top = kList.top - bar_->GetPos();
    const int kText = kList.left + 76;
    const int kTextRight = kList.right - 110;
    for (const Row& row : rows_) {
        const bool shown = top + kRow > kList.top && top < kList.bottom;
        for (QKItemBase* item : {static_cast<QKItemBase*>(row.icon), static_cast<QKItemBase*>(row.name),
                                 static_cast<QKItemBase*>(row.note), static_cast<QKItemBase*>(row.number)})
            item->SetShow(shown);
        row.icon->SetRect(kList.left + 20, top + (kRow - kIcon) / 2, kIcon, kIcon);
        row.name->SetRect(kText, top + 8, kTextRight - kText, 22);
        row.note->SetRect(kText, top + 30, kTextRight - kText, 20);
        row.number->SetRect(kTextRight, top, kList.right - 52 - kTextRight, kRow);
        top += kRow;
    }
}

void ScrollingPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Thumb's offset", [this] { return Number(bar_->GetBarPos()); });
    live_.Row(u"its travel", [this] { return Number(bar_->GetMax()); });
    live_.Row(u"its middle part", [this] { return Number(bar_->GetBarHeight()); });
    live_.Row(u"Position of the list", [this] { return Number(bar_->GetPos()); });
    live_.Row(u"its height", [] { return Number(kTotal); });
    live_.Row(u"of it visible", [] { return Number(kListHeight); });
    live_.Row(u"Status", [this] { return StatusOf(*bar_); });
    live_.Row(u"Calls while dragged", [this] { return Number(calls_); });
}

void ScrollingPage::Leave() {
    live_.Close();
    Page::Leave();
}

// The edge, above the rows.
void ScrollingPage::Draw(Ink& ink) {
    ink.Frame(kList, skin::Mix(skin::palette::kNight, skin::palette::kMist, 0.18));
}

void ScrollingPage::Pose() {
    const CRect place = PlaceOf(*bar_);
    const CPoint thumb(place.CenterPoint().x, place.top + 40);
    Drag(*shell_, thumb, CPoint(thumb.x, thumb.y + 20));
    for (const int down : {60, 97})
        PointAt(*shell_, CPoint(thumb.x, thumb.y + down));
}

const PageEntry entry({11, "scrolling", u"Scrolling", IDP_TAB_SCROLLING, u"Scroll bars",
                       u"Drag the thumb: its position function moves the items of the list."},
                      [] { return std::unique_ptr<Page>(new ScrollingPage); });

}  // namespace
}  // namespace gallery
