// Two lists whose entries are real files, dragged out of them, between them, and into them.
#include <fstream>
#include <memory>
#include <string_view>

#include "examples/gallery/file_window.h"
#include "examples/gallery/live_values.h"
#include "examples/gallery/page.h"
#include "examples/gallery/resource.h"
#include "examples/gallery/scratch_folder.h"
#include "examples/gallery/shell.h"
#include "examples/gallery/user.h"

namespace gallery {
namespace {

constexpr UINT_PTR kTick = 81;  // folders are looked at again
constexpr UINT kTickTime = 300;
constexpr int kTitle = 28;
const CSize kWindow((grid::kContentWidth - grid::kGap) / 2, grid::kBottom - grid::kTop - kTitle);
const CPoint kLeftPlace(grid::kLeft, grid::kTop + kTitle);
const CPoint kRightPlace(grid::kContentRight - kWindow.cx, kLeftPlace.y);

constexpr std::string_view kLeftFiles[] = {"100 % moonlight.txt",   "Letter to the moon.txt",
                                           "Reeds & wind #1.ogg",   "A comet passes.webm",
                                           "night_sky.cpp",         "Луна.txt",
                                           "湖上的月亮.png",        "Winter.zip",
                                           "Summer at the lake.jpg"};
constexpr std::string_view kRightFiles[] = {"北极光.png", "Notes of a walk.txt"};

CString Count(int files) {
    return Number(files) + (files == 1 ? u" file" : u" files");
}

CString NameOf(DROPEFFECT effect) {
    if (effect == DROPEFFECT_NONE) return u"nothing";
    CString name;
    for (const auto& [one, text] :
         {std::pair(DROPEFFECT_COPY, u"copy"), {DROPEFFECT_MOVE, u"move"}, {DROPEFFECT_LINK, u"link"}})
        if (effect & one) name += (name.IsEmpty() ? CString(u"a ") : CString(u" and a ")) + text;
    return name;
}

class FilesPage : public Page {
  public:
    void Enter(Shell& shell) override;
    void Leave() override;
    void Refresh() override { live_.Refresh(); }
    void Draw(Ink& ink) override;
    void ShellMoved(CSize by) override;
    void Ticked(UINT_PTR timer) override;
    void Pose() override;

  private:
    std::unique_ptr<FileWindow> OpenWindow(const char* folder, CPoint place);
    void WriteFiles();

    Shell* shell_ = nullptr;
    std::unique_ptr<ScratchFolder> home_;
    std::unique_ptr<FileWindow> left_, right_;
    CString dragged_ = u"-", reported_ = u"-";
    FileWindow::Taken taken_;
    LiveValues live_;
};

void FilesPage::Enter(Shell& shell) {
    shell_ = &shell;
    home_ = std::make_unique<ScratchFolder>();
    WriteFiles();
    left_ = OpenWindow("left", kLeftPlace);
    right_ = OpenWindow("right", kRightPlace);

    live_.Open(shell, CPoint(grid::kPanelLeft, grid::kTop), grid::kRight - grid::kPanelLeft);
    live_.Row(u"Dragged out", [this] { return dragged_; });
    live_.Row(u"Target reported", [this] { return reported_; });
    live_.Row(u"Dropped: moved", [this] { return Number(taken_.moved); });
    live_.Row(u"copied", [this] { return Number(taken_.copied); });
    live_.Row(u"failed", [this] { return Number(taken_.failed); });
    live_.Row(u"Left folder", [this] { return Count(left_->Files()); });
    live_.Row(u"Right folder", [this] { return Count(right_->Files()); });
    TextButton& button = Add<TextButton>(shell);
    Dress(button, CPoint(grid::kPanelLeft, live_.Bottom() + grid::kGap), u"New files");
    button.OnClick([this] {
        WriteFiles();
        Ticked(kTick);
    });
    ::SetTimer(shell.m_hWnd, kTick, kTickTime, nullptr);
}

void FilesPage::WriteFiles() {
    const auto write = [](const std::filesystem::path& folder, const auto& names) {
        for (const std::string_view name : names)
            if (!folder.empty()) std::ofstream(folder / name) << "From the gallery of QKUILib.\n";
    };
    write(home_->Folder("left"), kLeftFiles);
    write(home_->Folder("right"), kRightFiles);
}

std::unique_ptr<FileWindow> FilesPage::OpenWindow(const char* folder, CPoint place) {
    auto window = std::make_unique<FileWindow>(home_->Folder(folder), home_->Path(), kWindow);
    window->dragged = [this](int files, const DROPEFFECT* effect) {
        dragged_ = Count(files);
        reported_ = effect ? NameOf(*effect) : CString(u"not yet");
        shell_->UpdateView();
    };
    window->dropped = [this](const FileWindow::Taken& taken) {
        taken_ = taken;
        shell_->UpdateView();
    };
    window->OpenAt(shell_, shell_->ToScreen(place));
    return window;
}

void FilesPage::Ticked(UINT_PTR timer) {
    if (timer != kTick) return;
    const int before = left_->Files() * 100'000 + right_->Files();
    left_->Follow();
    right_->Follow();
    if (left_->Files() * 100'000 + right_->Files() != before) shell_->UpdateView();
}

void FilesPage::ShellMoved(CSize by) {
    for (FileWindow* window : {left_.get(), right_.get()}) {
        CRect place;
        if (!window) continue;
        window->GetWindowRect(place);
        window->SetWindowPos(HWND(), place.left + by.cx, place.top + by.cy, 0, 0,
                             SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void FilesPage::Leave() {
    ::KillTimer(shell_->m_hWnd, kTick);
    left_.reset();
    right_.reset();
    home_.reset();
    live_.Close();
    Page::Leave();
}

void FilesPage::Draw(Ink& ink) {
    const auto title = [&ink](CPoint place, LPCWSTR text) {
        ink.Label(TextStyle::Title, CRect(CPoint(place.x, grid::kTop - 4), CSize(kWindow.cx, kTitle)), text,
                  Align::Left);
    };
    title(kLeftPlace, u"A folder");
    title(kRightPlace, u"Another folder");
    const CRect note(grid::kPanelLeft, live_.Bottom() + 64, grid::kRight, grid::kBottom);
    ink.Text(TextStyle::Note, note,
             u"Within the page files are moved, with Ctrl copied. From other programs they are copied. Both "
             u"folders go with the page.");
}

void FilesPage::Pose() {
    // A band over two files, which go to the other folder.
    Drag(*left_, CPoint(265, 230), CPoint(120, 150));
    Headless::ButtonUp();
    Headless::Advance(GetDoubleClickTime() + 1);
    const auto over = [](void* self) {
        PointAt(*static_cast<FilesPage*>(self)->right_, CPoint(140, 300));
        Headless::ButtonUp();
    };
    Headless::WhenIdle(over, this);
    const CPoint entry = std::as_const(left_->List()).GetItem(4)->rcItem.CenterPoint();
    Drag(*left_, entry, CPoint(entry.x + 8, entry.y));
    // And another band, over what came.
    Drag(*right_, CPoint(262, 196), CPoint(180, 120));
    PointAt(*right_, CPoint(96, 80));
    shell_->UpdateView();
}

const PageEntry entry(
    {14, "files", u"Files", IDP_TAB_FILES, u"Files in and out",
     u"Draw a band over some and drag them: across, or to another program. Files from there may come, too."},
    [] { return std::unique_ptr<Page>(new FilesPage); });

}  // namespace
}  // namespace gallery
