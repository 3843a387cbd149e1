#include "examples/gallery/file_window.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include "examples/gallery/live_values.h"
#include "examples/gallery/skin/palette.h"
#include "examples/gallery/skin_files.h"

namespace gallery {
namespace {

namespace fs = std::filesystem;

constexpr int kMargin = 14;
constexpr int kHandsShake = 6;    // pixels
constexpr int kMostEntries = 12;  // that fit

DemoLooks LooksOf(CSize size) {
    DemoLooks looks;
    looks.size = size;
    looks.filled = true;
    looks.fill = Tint(skin::Mix(skin::palette::kNight, skin::palette::kIndigo, 0.1));
    looks.band = true;
    return looks;
}

const char* IconOf(const fs::path& file) {
    static constexpr std::pair<const char*, const char*> kIcons[] = {
        {".png", "icon_picture.png"}, {".jpg", "icon_picture.png"}, {".ogg", "icon_music.png"},
        {".webm", "icon_film.png"},   {".zip", "icon_archive.png"}, {".cpp", "icon_code.png"}};
    std::error_code error;
    if (fs::is_directory(file, error)) return "icon_folder.png";
    for (const auto& [ending, icon] : kIcons)
        if (file.extension() == ending) return icon;
    return "icon_document.png";
}

// In order. Names that are no text, or too long for a record, are left out.
std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const CString path = FromUtf8(at->path().string());
        if (ToUtf8(path) == at->path().string() && path.GetLength() < QKListItem::kTextUnits)
            names.push_back(at->path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

void Write(const CString& text, WCHAR (&to)[QKListItem::kTextUnits]) {
    *std::copy_n(text.GetString(), text.GetLength(), to) = u'\0';
}

// Under a name that is free.
fs::path PlaceFor(const fs::path& file, const fs::path& folder) {
    fs::path place = folder / file.filename();
    std::error_code error;
    for (int number = 2; fs::exists(fs::symlink_status(place, error)); ++number)
        place = folder / (file.stem().string() + " " + std::to_string(number) + file.extension().string());
    return place;
}

// A block of CF_HDROP. `list` has all its terminators but the last.
HGLOBAL BlockOf(const std::u16string& list) {
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + (list.size() + 1) * sizeof(WCHAR));
    auto* const memory = static_cast<std::byte*>(GlobalLock(block));
    if (!memory) return HGLOBAL();
    DROPFILES header{};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    std::memcpy(memory, &header, sizeof header);
    std::memcpy(memory + sizeof header, list.data(), list.size() * sizeof(WCHAR));
    GlobalUnlock(block);
    return block;
}

void Carry(COleDataSource& source, Gdiplus::Image* image) {
    constexpr int kSide = 40;
    Gdiplus::Bitmap picture(kSide, kSide);
    Gdiplus::Graphics(&picture).DrawImage(image, 0, 0, kSide, kSide);
    HICON icon;
    if (picture.GetHICON(&icon) != Gdiplus::Ok) return;
    source.SetDragImage(icon, POINT{kSide / 2, kSide / 2});
    DestroyIcon(icon);
}

}  // namespace

BEGIN_MESSAGE_MAP(FileWindow, DemoWindow)
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_MESSAGE(WM_DROPFILES, OnDropFiles)
END_MESSAGE_MAP()

FileWindow::FileWindow(fs::path folder, fs::path home, CSize size)
    : DemoWindow(LooksOf(size)), folder_(std::move(folder)), home_(std::move(home)) {
    CStringArray hover, press, focus;
    for (int i = 0; i < 9; ++i) {
        hover.Add(SkinFile(("frame_hover_" + std::to_string(i) + ".png").c_str()));
        press.Add(SkinFile(("frame_press_" + std::to_string(i) + ".png").c_str()));
        focus.Add(SkinFile(("frame_focus_" + std::to_string(i) + ".png").c_str()));
    }
    list_.SetMouseMoveImage(hover);
    list_.SetMouseDownImage(press);
    list_.SetFouceImage(focus);
    list_.SetListMode(QKLIST_DESKTOP);
    list_.SetArrange(0);
    draw = [this](Ink& ink) {
        const CRect all(CPoint(0, 0), Looks().size);
        ink.Frame(all, skin::Mix(skin::palette::kNight, skin::palette::kMist, 0.18));
        const int more = Files() - list_.GetCount();
        const CRect foot(kMargin, all.bottom - 28, all.right - kMargin, all.bottom - 6);
        if (more > 0) ink.Label(TextStyle::Note, foot, u"and " + Number(more) + u" more", Align::Right);
    };
}

bool FileWindow::OpenAt(CWnd* owner, CPoint place) {
    if (!Open(owner, place)) return false;
    AddQKItem(&list_);
    list_.SetListType(QKLT_BIGICON);
    CRect inside(CPoint(0, 0), Looks().size);
    inside.DeflateRect(kMargin, kMargin);
    list_.SetRect(&inside);
    DragAcceptFiles();
    DragAcceptMoves(m_hWnd, TRUE);
    Fill(NamesIn(folder_));
    return true;
}

void FileWindow::Follow() {
    if (dragging_) return;  // the entries stand for what is dragged
    const std::vector<std::string> names = NamesIn(folder_);
    if (names != names_) Fill(names);
}

void FileWindow::Fill(const std::vector<std::string>& names) {
    names_ = names;
    list_.RemoveAll();
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), kMostEntries); ++i) {
        QKListItem record;
        const fs::path file = folder_ / names[i];
        record.pImage = new Gdiplus::Image(SkinFile(IconOf(file)));
        Write(FromUtf8(names[i]), record.szText);
        Write(FromUtf8(file.string()), record.szPath);
        list_.AddItem(&record, 1);
    }
    UpdateView();
}

void FileWindow::OnLButtonDown(UINT flags, CPoint point) {
    pressed_.reset();
    for (int i = 0; i < list_.GetCount(); ++i) {
        const QKListItem& entry = *std::as_const(list_).GetItem(i);
        if (entry.nSelState == 0 && entry.rcMState.PtInRect(point)) pressed_ = point;
    }
    DemoWindow::OnLButtonDown(flags, point);
}

void FileWindow::OnMouseMove(UINT flags, CPoint point) {
    const std::weak_ptr<int> life = life_;
    if ((flags & MK_LBUTTON) == 0) pressed_.reset();
    const bool far = pressed_ && (std::abs(point.x - pressed_->x) > kHandsShake ||
                                  std::abs(point.y - pressed_->y) > kHandsShake);
    if (far || (m_bDragOut && !m_bSelecting)) DragSelected();
    if (!life.expired()) DemoWindow::OnMouseMove(flags, point);
}

// As DoDropSource does it, which keeps to itself what the receiver reported.
void FileWindow::DragSelected() {
    m_bDragOut = 0;
    pressed_.reset();
    std::u16string paths;
    COleDataSource source;
    int files = 0;
    for (int i = 0; i < list_.GetCount(); ++i) {
        const QKListItem& entry = *std::as_const(list_).GetItem(i);
        if (entry.nSelState != 0) continue;
        if (files++ == 0) Carry(source, entry.pImage);
        paths.append(entry.szPath) += u'\0';
    }
    if (files == 0) return;
    source.CacheGlobalData(CF_HDROP, BlockOf(paths));
    const std::weak_ptr<int> life = life_;
    dragging_ = true;
    if (dragged) dragged(files, nullptr);
    const DROPEFFECT effect = source.DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE);
    if (life.expired()) return;
    dragging_ = false;
    if (effect == DROPEFFECT_MOVE) {
        DeleteSelectedFiles();
        names_.clear();
        for (int i = 0; i < list_.GetCount(); ++i)
            names_.push_back(fs::path(ToUtf8(std::as_const(list_).GetItem(i)->szPath)).filename().string());
        UpdateView();
    }
    // The release was the drag's, but the press is over.
    OnLButtonUp(0, CPoint(-1, -1));
    if (dragged) dragged(files, &effect);
}

void FileWindow::Take(const fs::path& file, bool move, Taken& taken) {
    std::error_code error;
    if (fs::equivalent(file.parent_path(), folder_, error)) return;  // it is here
    const fs::path place = PlaceFor(file, folder_);
    if (move && fs::equivalent(file.parent_path().parent_path(), home_, error)) {
        fs::rename(file, place, error);
        ++(error ? taken.failed : taken.moved);
        return;
    }
    fs::copy(file, place, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    ++(error ? taken.failed : taken.copied);
}

LRESULT FileWindow::OnDropFiles(WPARAM wParam, LPARAM lParam) {
    const HDROP drop = HDROP::FromParam(wParam);
    const UINT count = DragQueryFileW(drop, kAllFiles, nullptr, 0);
    Taken taken;
    for (UINT i = 0; i < count; ++i) {
        std::u16string path(DragQueryFileW(drop, i, nullptr, 0), u'\0');
        DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1);
        Take(ToUtf8(CString(path.c_str())), (lParam & DROPEFFECT_MOVE) != 0, taken);
    }
    DragFinish(drop);
    Follow();
    if (dropped) dropped(taken);
    return taken.moved == static_cast<int>(count) ? LRESULT{DROPEFFECT_MOVE} : 0;
}

}  // namespace gallery
