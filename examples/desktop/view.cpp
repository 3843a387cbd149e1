#include "examples/desktop/view.h"

#include <algorithm>
#include <utility>

#include "examples/desktop/embedded.h"
#include "examples/desktop/open_file.h"
#include "examples/desktop/resource.h"
#include "examples/desktop/running_desktop.h"
#include "examples/desktop/skin/sizes.h"

namespace desktop {
namespace {

constexpr int kMargin = 16;
constexpr int kWheelStep = 120;  // what one notch of a wheel counts
enum : UINT_PTR { kSaveTimer = 1, kNoticeTimer, kWorkAreaTimer, kPictureTimer };
constexpr UINT kSaveTime = 1000;  // milliseconds; so are the others
constexpr UINT kNoticeTime = 6000;
constexpr UINT kWorkAreaTime = 2000;
constexpr UINT kPictureTime = 150;

std::string FileIn(const std::string& folder, const char* name) {
    return folder.empty() ? std::string() : folder + "/" + name;
}

}  // namespace

BEGIN_MESSAGE_MAP(View, CQKDialogBase)
ON_WM_DESTROY()
ON_WM_SIZE()
ON_WM_TIMER()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_LBUTTONUP()
ON_WM_RBUTTONDOWN()
ON_MESSAGE(WM_MOUSEWHEEL, OnMouseWheel)
END_MESSAGE_MAP()

View::View(const std::string& folder, const std::string& settings)
    : CQKDialogBase(IDD_DESKTOP),
      folder_(folder),
      shelf_(folder, Places(FileIn(settings, "places"), folder)),
      wallpaper_(FileIn(settings, "wallpaper")) {}

View::~View() {
    shelf_.SavePlaces();
}

bool View::Open() {
    if (!Create(IDD_DESKTOP)) return false;
    JoinDesktop(*this);
    ShowWindow(SW_SHOWNOACTIVATE);
    StayBelow();
    SetTimer(kWorkAreaTimer, kWorkAreaTime);
    folder_.Refresh();
    return true;
}

BOOL View::OnInitDialog() {
    CQKDialogBase::OnInitDialog();
    SetWindowText(u"Desktop");
    SetNoMove(1);
    SetSelRect(1);

    QKListCallbacks callbacks;
    callbacks.pfnDblClick = [](QKListItem* entry, LPVOID self) {
        auto& view = *static_cast<View*>(self);
        view.toOpen_ = view.shelf_.FileOf(*entry).name;
    };
    callbacks.pfnRClick = [](QKListItem* entry, POINT* point, LPVOID self) {
        static_cast<View*>(self)->ShowMenu(entry, *point);
    };
    callbacks.pParam = this;
    shelf_.List().SetListCallBack(&callbacks);
    AddQKItem(&shelf_.List());

    bar_.SetBarImage(IDP_SCROLL_CAP, IDP_SCROLL_MIDDLE, IDP_SCROLL_CAP, u"PNG");
    bar_.SetTrackImage(IDP_SCROLL_TRACK, u"PNG");
    bar_.SetShow(0);
    QKVScrollCallbacks scroll;
    scroll.pfnPosition = [](int, LPVOID self) {
        auto& view = *static_cast<View*>(self);
        view.ScrollTo(view.bar_.GetPos());
    };
    scroll.pArgument = this;
    bar_.SetVBarCallBack(&scroll);
    AddQKItem(&bar_);

    shelf_.changed = [this] { UpdateView(); };
    folder_.read = [this](Listing listing) { Read(std::move(listing)); };
    folder_.renamed = [this](const std::string& from, const std::string& to) { shelf_.Rename(from, to); };
    ShowWallpaper();
    CoverWorkArea();
    return TRUE;
}

// ---- Files

void View::Read(Listing listing) {
    // Entries that are being dragged stay; the folder is read again afterwards.
    if (IsDragging()) return;
    known_ = true;
    if (!listing.fault.IsEmpty()) Tell(listing.fault, true);
    if (listing.fault.IsEmpty() && noticeStays_) Tell(CString(), false);
    if (!shelf_.Show(std::move(listing.files))) return;
    UpdateScrollBar();
    SetTimer(kSaveTimer, kSaveTime);
    UpdateView();
}

void View::OpenEntry(const std::string& name) {
    OpenFile(PathOf(folder_.Path(), name), lifetime_, [this](const CString& why) { Tell(why, false); });
}

void View::ShowMenu(const QKListItem* entry, CPoint point) {
    if (carry_.IsArmed()) return;
    std::vector<MenuLine> lines;
    if (entry) {
        const File& file = shelf_.FileOf(*entry);
        lines.push_back({u"Open", [this, name = file.name] { OpenEntry(name); }});
        // A name that is no text cannot be told to the desktop.
        const std::string path = folder_.PathOf(file);
        if (Thumbnails::MayHave(file))
            lines.push_back({u"Use as wallpaper", [this, path] { UseAsWallpaper(path); },
                             ToUtf8(FromUtf8(path)) == path});
        lines.push_back({});
    }
    lines.push_back({u"Refresh", [this] { folder_.Refresh(); }});
    lines.push_back({u"Arrange by name",
                     [this] {
                         shelf_.Arrange();
                         SetTimer(kSaveTimer, kSaveTime);
                         UpdateView();
                     },
                     !shelf_.Scrolls()});
    if (!entry) {
        lines.push_back({});
        lines.push_back({u"Close the desktop", [this] { CloseQKDlg(); }});
    }
    ::ClientToScreen(m_hWnd, &point);
    menu_.Open(std::move(lines), point);
}

void View::UseAsWallpaper(const std::string& path) {
    wallpaper_.Choose(FromUtf8(path));
    ShowWallpaper();
    UpdateView();
}

// ---- The window

void View::ShowWallpaper() {
    m_bBackKeepRatio = 1;
    SetBack(wallpaper_.Current(), 1, 0);
    if (m_pBackImage && m_pBackImage->GetWidth() > 0) return;
    const Picture own = EmbeddedPicture(IDP_WALLPAPER);
    m_pBackImage.reset(own ? own->Clone() : nullptr);
}

void View::CoverWorkArea() {
    CRect work;
    CRect now;
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0)) return;
    GetWindowRect(now);
    if (now == work) return;
    SetWindowPos(HWND(), work.left, work.top, work.Width(), work.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
}

// Window managers bring up what is clicked, whether it takes activation or not.
void View::StayBelow() {
    if (IsInDesktop(*this)) return;
    SetWindowPos(HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void View::OnSize(UINT type, int width, int height) {
    CQKDialogBase::OnSize(type, width, height);
    Lay();
}

void View::Lay() {
    CRect area;
    GetClientRect(area);
    bar_.SetRect(area.right - skin::kScrollWidth, area.top, skin::kScrollWidth, area.Height());
    area.DeflateRect(kMargin, kMargin);
    carry_.Disarm();
    shelf_.PlaceIn(area);
    UpdateScrollBar();
    UpdateView();
}

int View::HiddenHeight() const {
    CRect client;
    GetClientRect(client);
    return std::max(0, shelf_.ContentHeight() + 2 * kMargin - client.Height());
}

// After the list was laid out from its beginning.
void View::UpdateScrollBar() {
    CRect client;
    GetClientRect(client);
    bar_.SetShow(shelf_.Scrolls());
    bar_.SetBarLength(client.Height(), client.Height() + HiddenHeight());
    if (shelf_.Scrolls())
        ScrollTo(scrolled_);
    else
        scrolled_ = 0;
}

void View::ScrollTo(int offset) {
    const int hidden = HiddenHeight();
    scrolled_ = std::clamp(offset, 0, hidden);
    const bool dragged = bar_.GetStatus() == QKItemBase::QK_MOUSEDOWN;
    if (!dragged && hidden > 0)
        bar_.SetBarPos(static_cast<int>(std::int64_t{scrolled_} * bar_.GetMax() / hidden));
    shelf_.ScrollTo(scrolled_);
    SetTimer(kPictureTimer, kPictureTime);
    UpdateView();
}

LRESULT View::OnMouseWheel(WPARAM wParam, LPARAM) {
    const int notches = static_cast<std::int16_t>(HIWORD(wParam)) / kWheelStep;
    if (shelf_.Scrolls()) ScrollTo(scrolled_ - notches * static_cast<int>(shelf_.List().Pitch().cy));
    return 0;
}

void View::Tell(const CString& text, bool stays) {
    if (text == notice_ && stays == noticeStays_) return;
    notice_ = text;
    noticeStays_ = stays;
    if (!stays) SetTimer(kNoticeTimer, kNoticeTime);
    UpdateView();
}

void View::OnTimer(UINT_PTR id) {
    CQKDialogBase::OnTimer(id);
    switch (id) {
        case kSaveTimer:
            if (shelf_.SavePlaces()) KillTimer(id);
            break;
        case kNoticeTimer:
            KillTimer(id);
            if (!noticeStays_) Tell(CString(), false);
            break;
        case kWorkAreaTimer:
            CoverWorkArea();
            break;
        case kPictureTimer:
            KillTimer(id);
            shelf_.WantThumbnails();
            UpdateView();
            break;
        default:
            break;
    }
}

void View::DrawSurface(HDC dc, int width, int height, int buffer) {
    CQKDialogBase::DrawSurface(dc, width, height, buffer);
    if (notice_.IsEmpty()) return;
    static const Gdiplus::Font font(u"DejaVu Sans", 15, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    Gdiplus::StringFormat format;
    format.SetAlignment(Gdiplus::StringAlignmentCenter);
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
    Gdiplus::Graphics graphics(dc);
    DrawShadowText(&graphics, notice_, font, format, Gdiplus::Color(0xFEFFFFFF), Gdiplus::Color(0xC8202020),
                   Gdiplus::RectF(0, static_cast<float>(height - 90), static_cast<float>(width), 60),
                   Gdiplus::PointF(1, 1), 3);
}

void View::OnDestroy() {
    menu_.Close();
    shelf_.SavePlaces();
    CQKDialogBase::OnDestroy();
    PostQuitMessage(0);
}

// ---- Dragging: icons follow the pointer over the desktop, and leave it as files where another window begins

void View::PressedOn(CPoint point) {
    const bool onEntry = !m_bSelecting && !m_pDownItem;
    if (onEntry) carry_.Arm(point);
}

void View::OnLButtonDown(UINT flags, CPoint point) {
    StayBelow();
    toOpen_.reset();
    CQKDialogBase::OnLButtonDown(flags, point);
    PressedOn(point);
}

void View::OnLButtonDblClk(UINT flags, CPoint point) {
    CQKDialogBase::OnLButtonDblClk(flags, point);
    PressedOn(point);
}

void View::OnRButtonDown(UINT flags, CPoint point) {
    StayBelow();
    if (!carry_.IsArmed()) CQKDialogBase::OnRButtonDown(flags, point);
}

void View::OnMouseMove(UINT flags, CPoint point) {
    if (!carry_.IsArmed()) return CQKDialogBase::OnMouseMove(flags, point);
    if (!(flags & MK_LBUTTON)) return OnLButtonUp(flags, point);  // it came up where nobody told us
    if (carry_.IsUnderway() || carry_.IsFar(point)) return DragIcons(flags, point);
    // The base drags with the first pixel. A hand that double-clicks may shake.
    const int armed = std::exchange(m_bDragOut, 0);
    CQKDialogBase::OnMouseMove(flags, point);
    m_bDragOut = armed;
}

void View::DragIcons(UINT flags, CPoint point) {
    if (m_bDragOut || shelf_.Scrolls()) return DragOut(flags, point);
    if (!carry_.IsUnderway()) carry_.Begin(shelf_.Selected());
    carry_.MoveTo(point);
    CPoint onScreen = point;
    ::ClientToScreen(m_hWnd, &onScreen);
    if (!(WindowFromPoint(onScreen) == m_hWnd)) {
        carry_.PutBack();
        return DragOut(flags, point);
    }
    UpdateView();
}

// The base runs the drag, in a loop of its own, when a move finds it armed.
void View::DragOut(UINT flags, CPoint point) {
    const HWND window = m_hWnd;
    toOpen_.reset();
    carry_.Disarm();
    shelf_.SelectDraggable();
    m_bDragOut = 1;
    draggingOut_ = true;
    CQKDialogBase::OnMouseMove(flags, point);
    draggingOut_ = false;
    if (!IsWindow(window)) return;
    // Entries may have left the list for good, or their files may not: the folder knows.
    shelf_.Distrust();
    folder_.Refresh();
    UpdateView();
}

void View::OnLButtonUp(UINT flags, CPoint point) {
    const std::vector<QKListItem*> moved = carry_.PutDown();
    if (!moved.empty()) {
        shelf_.Settle(moved);
        SetTimer(kSaveTimer, kSaveTime);
        folder_.Refresh();
    }
    const std::optional<std::string> opened = std::exchange(toOpen_, std::nullopt);
    CQKDialogBase::OnLButtonUp(flags, point);
    if (opened) OpenEntry(*opened);
}

CRect View::PlaceOf(int entry) {
    const QKListItem* item = std::as_const(shelf_.List()).GetItem(entry);
    return item ? item->rcItem : CRect();
}

bool View::IsPicture(int entry) {
    const QKListItem* item = std::as_const(shelf_.List()).GetItem(entry);
    return item && Thumbnails::MayHave(shelf_.FileOf(*item));
}

}  // namespace desktop
