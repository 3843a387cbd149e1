#include "examples/gallery/shell.h"

#include <utility>

#include "examples/gallery/resource.h"
#include "examples/gallery/skin/skin_sizes.h"
#include "examples/gallery/skin_files.h"

namespace gallery {
namespace {

constexpr UINT kRunLater = WM_APP + 1;
constexpr UINT_PTR kReminder = 1001;
constexpr UINT kReminderTime = 333;  // milliseconds

}  // namespace

BEGIN_MESSAGE_MAP(Shell, CQKDialogBase)
ON_WM_DESTROY()
ON_WM_MOVE()
ON_WM_LBUTTONDOWN()
ON_WM_TIMER()
ON_MESSAGE(kRunLater, OnRunLater)
END_MESSAGE_MAP()

Shell::Shell() : CQKDialogBase(IDD_SHELL), entries_(AllPages()) {}

Shell::~Shell() {
    LeavePage();
}

bool Shell::Open() {
    return Create(IDD_SHELL) != FALSE;
}

void Shell::Show(CPoint place) {
    SetWindowPos(HWND(), place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(SW_SHOW);
    UpdateView();
}

BOOL Shell::OnInitDialog() {
    CQKDialogBase::OnInitDialog();
    SetWindowText(u"QKUILib Gallery");
    SetMinMaxStyle();
    Set_OPAQUEDlg(255);
    SetBack(SkinFile("shell.png"), 0, 1);
    titlePlace_ = PlaceOf(IDC_TITLE);

    minimise_.Load(IDP_MINIMISE, 3);
    minimise_.PlaceAt(PlaceOf(IDC_MINIMISE).left, PlaceOf(IDC_MINIMISE).top);
    minimise_.OnClick([this] { MinQKDlg(); });
    AddQKItem(&minimise_);
    close_.Load(IDP_CLOSE, 3);
    close_.PlaceAt(PlaceOf(IDC_CLOSE).left, PlaceOf(IDC_CLOSE).top);
    close_.OnClick([this] { CloseQKDlg(); });
    AddQKItem(&close_);
    AddTabs();
    return TRUE;
}

// Where a placeholder of the template lies, in client pixels.
CRect Shell::PlaceOf(int control) const {
    CRect place;
    ::GetWindowRect(GetDlgItem(control), place);
    ScreenToClient(place);
    return place;
}

void Shell::AddTabs() {
    const CRect first = PlaceOf(IDC_FIRST_TAB);
    const int pitch = PlaceOf(IDC_SECOND_TAB).top - first.top;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        tabs_.push_back(std::make_unique<PushButton>());
        PushButton& tab = *tabs_.back();
        tab.Load(Facts(i).tabPicture, 4);
        tab.PlaceAt(first.left, first.top + static_cast<int>(i) * pitch);
        tab.SetMouseMoveHand(1);
        tab.OnClick([this, i] { Later([this, i] { Select(i); }); });
        AddQKItem(&tab);
    }
}

void Shell::Select(std::size_t page) {
    LeavePage();
    current_ = page;
    for (std::size_t i = 0; i < tabs_.size(); ++i)
        tabs_[i]->SetActive(i == page);
    page_ = entries_[page]->Make();
    page_->Enter(*this);
    UpdateView();
}

void Shell::LeavePage() {
    if (page_) page_->Leave();
    page_.reset();
}

void Shell::Later(std::function<void()> step) {
    later_.push_back(std::move(step));
    PostMessage(kRunLater);
}

LRESULT Shell::OnRunLater(WPARAM, LPARAM) {
    if (later_.empty()) return 0;
    const std::function<void()> step = std::move(later_.front());
    later_.pop_front();
    step();
    return 0;
}

void Shell::Remind() {
    SetTimer(kReminder, kReminderTime);
}

void Shell::OnTimer(UINT_PTR id) {
    if (id != kReminder) {
        CQKDialogBase::OnTimer(id);
        if (page_) page_->Ticked(id);
        return;
    }
    KillTimer(kReminder);
    if (page_) page_->Reminded();
}

CPoint Shell::ToScreen(CPoint client) const {
    ::ClientToScreen(m_hWnd, &client);
    return client;
}

// Every refresh goes through here, whoever asks for it.
void Shell::UpdateView() {
    if (page_) page_->Refresh();
    CQKDialogBase::UpdateView();
}

void Shell::DrawSurface(HDC dc, int width, int height, int buffer) {
    CQKDialogBase::DrawSurface(dc, width, height, buffer);
    Ink ink(dc);
    ink.Label(TextStyle::Title, titlePlace_, u"QKUILib Gallery", Align::Left);
    for (std::size_t i = 0; i < tabs_.size(); ++i) {
        CRect caption = tabs_[i]->Place();
        caption = CRect(caption.left + skin::kTabTextLeft, caption.top, caption.left + skin::kTabTextRight,
                        caption.bottom - 2);
        ink.Label(TextStyle::Button, caption, Facts(i).tab, Align::Left);
    }
    if (!page_) return;
    ink.Label(TextStyle::Heading, CRect(grid::kLeft, 108, grid::kRight, 144), Facts(current_).heading,
              Align::Left);
    ink.Label(TextStyle::Body, CRect(grid::kLeft, 144, grid::kRight, 168), Facts(current_).summary,
              Align::Left);
    page_->Draw(ink);
}

void Shell::OnDestroy() {
    LeavePage();
    CQKDialogBase::OnDestroy();
    PostQuitMessage(0);
}

void Shell::OnMove(int x, int y) {
    CQKDialogBase::OnMove(x, y);
    if (IsIconic(m_hWnd)) return;  // far off the screen, and back to where it was
    const CSize by(x - place_.x, y - place_.y);
    place_ = CPoint(x, y);
    if (page_ && (by.cx != 0 || by.cy != 0)) page_->ShellMoved(by);
}

void Shell::OnLButtonDown(UINT flags, CPoint point) {
    if (page_) page_->Pressed(point);
    CQKDialogBase::OnLButtonDown(flags, point);
}

}  // namespace gallery
