// An icon list in a window of its own over the pane: its edges cut off what a list draws beyond them.
#include <array>
#include <chrono>
#include <string>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr int kFew = 300;
constexpr int kMany = 100'000;
constexpr int kMargin = 12;
constexpr UINT_PTR kTick = 71;  // the live values follow the pointer
constexpr UINT kTickTime = 120;
const CRect kPlace(grid::kLeft, grid::kTop, grid::kContentRight, grid::kBottom);

constexpr std::array<const char*, 10> kIcons = {
    "icon_folder.png",  "icon_document.png", "icon_picture.png",  "icon_music.png", "icon_film.png",
    "icon_archive.png", "icon_code.png",     "icon_terminal.png", "icon_globe.png", "icon_settings.png"};
constexpr std::array<LPCWSTR, 13> kNames = {u"Summer at the lake",
                                            u"Letter to the moon",
                                            u"北极光",
                                            u"Reeds in the wind",
                                            u"A comet passes",
                                            u"Winter",
                                            u"night_sky.cpp",
                                            u"Terminal",
                                            u"The far shore",
                                            u"Settings",
                                            u"湖上的月亮与远山",
                                            u"Notes of a long walk around the lake by night",
                                            u"Луна"};

CStringArray FrameFiles(const char* look) {
    CStringArray files;
    for (int i = 0; i < 9; ++i)
        files.Add(SkinFile((std::string("frame_") + look + "_" + std::to_string(i) + ".png").c_str()));
    return files;
}

DemoLooks WindowLooks() {
    DemoLooks looks;
    looks.size = kPlace.Size();
    looks.filled = true;
    looks.fill = Tint(skin::Mix(skin::palette::kNight, skin::palette::kIndigo, 0.1));
    looks.band = true;
    return looks;
}

class ListWindow : public DemoWindow {
  public:
    ListWindow() : DemoWindow(WindowLooks()) {}
    using CQKDialogBase::GetNumsSel;
};

class ListPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void ShellMoved(CSize by) override;
    void Ticked(UINT_PTR timer) override;
    void Pose() override;

  private:
    void OpenWindow();
    void AddButtons();
    void AddLive();
    void Fill(int count);
    // The list at its beginning, laid out anew; the bar by what that takes up.
    void LayOut();
    void ShapeAs(QKListType type);
    void Scroll();
    void Told(const char* what, const QKListItem* entry);
    bool Sideways() const { return columns_ && list_.GetListType() != QKLT_LIST; }

    Shell* shell_ = nullptr;
    // The list outlives the window that it is registered with.
    QKListCtrl list_;
    QKVScrollBar bar_;
    std::unique_ptr<ListWindow> window_;
    bool columns_ = false;
    CString last_ = u"none";
    CString focused_ = u"none";
    int fillTime_ = -1;  // milliseconds
    LiveValues live_;
};

void ListPage::Enter(Shell& shell) {
    shell_ = &shell;
    AddLive();
    AddButtons();
    OpenWindow();
    Fill(kFew);
    ::SetTimer(shell.m_hWnd, kTick, kTickTime, nullptr);
}

void ListPage::OpenWindow() {
    list_.SetMouseMoveImage(FrameFiles("hover"));
    list_.SetMouseDownImage(FrameFiles("press"));
    list_.SetFouceImage(FrameFiles("focus"));
    QKListCallbacks callbacks;
    callbacks.pParam = this;
    callbacks.pfnClick = [](QKListItem* entry, POINT*, LPVOID self) {
        static_cast<ListPage*>(self)->Told("click", entry);
    };
    callbacks.pfnDblClick = [](QKListItem* entry, LPVOID self) {
        static_cast<ListPage*>(self)->Told("double click", entry);
    };
    callbacks.pfnRClick = [](QKListItem* entry, POINT*, LPVOID self) {
        static_cast<ListPage*>(self)->Told("right click", entry);
    };
    list_.SetListCallBack(&callbacks);
    list_.SetListMode(QKLIST_DESKTOP);
    list_.SetArrange(columns_);

    bar_.SetRect(kPlace.Width() - skin::kScrollTrack.width - 8, 8, skin::kScrollTrack.width,
                 kPlace.Height() - 16);
    bar_.SetBarImage(SkinFile("scroll_top_v.png"), SkinFile("scroll_middle_v.png"),
                     SkinFile("scroll_bottom_v.png"));
    bar_.SetTrackImage(SkinFile("scroll_track.png"));
    QKVScrollCallbacks scroll;
    scroll.pArgument = this;
    scroll.pfnPosition = [](int, LPVOID self) { static_cast<ListPage*>(self)->Scroll(); };
    bar_.SetVBarCallBack(&scroll);

    window_ = std::make_unique<ListWindow>();
    window_->draw = [](Ink& ink) {
        ink.Frame(CRect(0, 0, kPlace.Width(), kPlace.Height()),
                  skin::Mix(skin::palette::kNight, skin::palette::kMist, 0.18));
    };
    window_->Open(shell_, shell_->ToScreen(kPlace.TopLeft()));
    window_->AddQKItem(&list_);
    window_->AddQKItem(&bar_);
    list_.SetListType(QKLT_BIGICON);
}

void ListPage::Fill(int count) {
    std::vector<std::unique_ptr<Gdiplus::Image>> icons;
    for (const char* icon : kIcons)
        icons.push_back(std::make_unique<Gdiplus::Image>(SkinFile(icon)));
    const auto start = std::chrono::steady_clock::now();
    list_.RemoveAll();
    QKListItem record;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        record.pImage = icons[at % icons.size()]->Clone();
        record.SetText(CString(kNames[at % kNames.size()]) + u" " + Number(i + 1));
        list_.AddItem(&record, 0);
    }
    LayOut();
    fillTime_ = static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
            .count());
    window_->UpdateView();
}

void ListPage::LayOut() {
    bar_.SetBarLength(1, 1);  // at the beginning
    bar_.SetBarPos(0);
    Scroll();
    const bool sideways = Sideways();
    const int total = (sideways ? list_.GetListMaxWidth() : list_.GetListMaxHeight()) + 2 * kMargin;
    bar_.SetBarLength(sideways ? kPlace.Width() - 40 : kPlace.Height(), total);
    bar_.SetBarPos(0);
}

void ListPage::Scroll() {
    CRect place(kMargin, kMargin, kPlace.Width() - 40, kPlace.Height() - kMargin);
    place.OffsetRect(Sideways() ? -bar_.GetPos() : 0, Sideways() ? 0 : -bar_.GetPos());
    if (list_.GetListType() == QKLT_LIST) place.left += list_.GetImageWidth() / 2;  // icons reach out there
    list_.SetRect(&place);
}

void ListPage::ShapeAs(QKListType type) {
    list_.SetListType(type);
    LayOut();
    window_->UpdateView();
}

void ListPage::AddButtons() {
    int index = 0;
    const auto add = [&](LPCWSTR caption, std::function<void()> action) {
        TextButton& button = Add<TextButton>(*shell_);
        const int left = index % 2 ? grid::kRight - skin::kWideButton.width : grid::kPanelLeft;
        Dress(button, CPoint(left, live_.Bottom() + grid::kGap + index / 2 * 48), caption);
        button.OnClick(std::move(action));
        ++index;
        return &button;
    };
    add(u"Big icons", [this] { ShapeAs(QKLT_BIGICON); });
    add(u"Icons", [this] { ShapeAs(QKLT_ICON); });
    add(u"Rows", [this] { ShapeAs(QKLT_LIST); });
    add(u"Columns", [this] {
        columns_ = !columns_;
        list_.SetArrange(columns_);
        ShapeAs(list_.GetListType());
    });
    add(u"Few", [this] { Fill(kFew); });
    add(u"100 000", [this] { Fill(kMany); });
}

void ListPage::AddLive() {
    live_.Open(*shell_, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Entries", [this] { return Number(list_.GetCount()); });
    live_.Row(u"Selected", [this] { return Number(window_ ? window_->GetNumsSel() : 0); });
    live_.Row(u"Last", [this] { return last_; });
    live_.Row(u"on", [this] { return focused_; });
    live_.Row(u"Filled", [this] { return CString(columns_ ? u"by columns" : u"by rows"); });
    live_.Row(u"List reaches",
              [this] { return Number(Sideways() ? list_.GetListMaxWidth() : list_.GetListMaxHeight()); });
    live_.Row(u"Scrolled to", [this] { return Number(bar_.GetPos()); });
    live_.Row(u"Filled in, ms",
              [this] { return list_.GetCount() == kMany ? Number(fillTime_) : CString(u"-"); });
}

void ListPage::Told(const char* what, const QKListItem* entry) {
    last_ = CString(what);
    focused_ = entry ? CString(entry->szText) : CString(u"nothing");
    shell_->UpdateView();
}

void ListPage::Ticked(UINT_PTR timer) {
    if (timer == kTick) shell_->UpdateView();
}

void ListPage::ShellMoved(CSize by) {
    if (!window_) return;
    CRect place;
    window_->GetWindowRect(place);
    window_->SetWindowPos(HWND(), place.left + by.cx, place.top + by.cy, 0, 0,
                          SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ListPage::Leave() {
    ::KillTimer(shell_->m_hWnd, kTick);
    window_.reset();
    live_.Close();
    Page::Leave();
}

void ListPage::Draw(Ink&) {}

void ListPage::Pose() {
    // A band over some entries, its end over one of them.
    const CPoint anchor(kPlace.Width() - 75, 212);
    PointAt(*window_, CPoint(40, 40));
    Click();
    Drag(*window_, anchor, CPoint(anchor.x - 200, anchor.y - 60));
    PointAt(*window_, CPoint(anchor.x - 310, anchor.y - 120));
    shell_->UpdateView();
}

const PageEntry entry({13, "list", u"Icon list", IDP_TAB_LIST, u"Icons by the hundred thousand",
                       u"Hover, click, double click, right click; draw a band over several; drag the bar."},
                      [] { return std::unique_ptr<Page>(new ListPage); });

}  // namespace
}  // namespace gallery
