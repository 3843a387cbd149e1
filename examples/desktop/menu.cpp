#include "examples/desktop/menu.h"

#include <algorithm>
#include <array>
#include <utility>

#include "examples/desktop/embedded.h"
#include "examples/desktop/resource.h"
#include "examples/desktop/skin/sizes.h"

namespace desktop {
namespace {

constexpr UINT kChosen = WM_APP + 1;
constexpr int kIndent = 14;  // of a caption, in its row
const Gdiplus::Color kText(0xFEF1F0FF);
const Gdiplus::Color kDimText(0x80B9B8DA);

const Gdiplus::Font& Font() {
    static const Gdiplus::Font font(u"DejaVu Sans", 13, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    return font;
}

int HeightOf(const MenuLine& line) {
    return line.caption.IsEmpty() ? skin::kMenuDividerHeight : skin::kMenuRowHeight;
}

CRect WorkAreaAt(CPoint point) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

}  // namespace

BEGIN_MESSAGE_MAP(Menu, CQKDialogBase)
ON_WM_ACTIVATE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_MESSAGE(kChosen, OnChosen)
END_MESSAGE_MAP()

Menu::Menu() : CQKDialogBase(IDD_MENU) {
    for (UINT part = 0; part < 9; ++part)
        pane_.push_back(EmbeddedPicture(IDP_MENU_PANE + part));
}

Menu::~Menu() {
    Close();
}

void Menu::Close() {
    if (IsOpen()) DestroyWindow();
}

// The pane's shadow is part of the window; it lies outside of what a user takes for the menu.
CSize Menu::Size() const {
    int height = 2 * (skin::kMenuShadow + skin::kMenuPadding);
    for (const MenuLine& line : lines_)
        height += HeightOf(line);
    return {skin::kMenuRowWidth + 2 * (skin::kMenuShadow + skin::kMenuPadding), height};
}

CRect Menu::PlaceOf(std::size_t line) const {
    int top = skin::kMenuShadow + skin::kMenuPadding;
    for (std::size_t i = 0; i < line; ++i)
        top += HeightOf(lines_[i]);
    return CRect(CPoint(skin::kMenuShadow + skin::kMenuPadding, top),
                 CSize(skin::kMenuRowWidth, HeightOf(lines_[line])));
}

void Menu::Open(std::vector<MenuLine> lines, CPoint at) {
    Close();
    lines_ = std::move(lines);
    if (!Create(IDD_MENU)) return;
    const CRect work = WorkAreaAt(at);
    const CSize pane(Size().cx - 2 * skin::kMenuShadow, Size().cy - 2 * skin::kMenuShadow);
    const int left = std::max(work.left, std::min(at.x, work.right - pane.cx)) - skin::kMenuShadow;
    const int top = std::max(work.top, std::min(at.y, work.bottom - pane.cy)) - skin::kMenuShadow;
    SetWindowPos(HWND_TOPMOST, left, top, Size().cx, Size().cy, 0);
    ShowWindow(SW_SHOW);
    UpdateView();
    SetCapture(m_hWnd);
}

BOOL Menu::OnInitDialog() {
    CQKDialogBase::OnInitDialog();
    SetWindowText(u"Menu");
    Set_OPAQUEDlg(255);
    SetNoMove(1);
    Lay();
    return TRUE;
}

void Menu::Lay() {
    RemoveAllQKItem();
    rows_.clear();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        rows_.push_back(std::make_unique<Row>());
        Row& row = *rows_.back();
        row.menu = this;
        row.line = i;
        CRect place = PlaceOf(i);
        if (lines_[i].caption.IsEmpty()) {
            row.divider.SetImage(IDP_MENU_DIVIDER, u"PNG");
            row.divider.SetRect(&place);
            AddQKItem(&row.divider);
            continue;
        }
        row.button.SetImage(IDP_MENU_ROW, u"PNG", QKButton::QKBT_IMGS_3, QKButton::QKBT_VERTICAL);
        row.button.SetRect(&place);
        row.button.SetEnable(lines_[i].enabled);
        QKCallbacks callbacks;
        // Posted: the action runs when the menu is gone.
        callbacks.pfnClick = [](LPVOID argument) {
            const Row& clicked = *static_cast<Row*>(argument);
            clicked.menu->PostMessage(kChosen, clicked.line);
        };
        callbacks.pArgument = &row;
        row.button.SetCallBack(&callbacks);
        AddQKItem(&row.button);
        place.DeflateRect(kIndent, 0);
        row.caption.SetRect(&place);
        row.caption.SetText(lines_[i].caption);
        row.caption.SetFont(Font());
        row.caption.SetTextColor(lines_[i].enabled ? kText : kDimText);
        row.caption.SetTextFormat(Gdiplus::StringAlignmentNear);
        row.caption.GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter);
        row.caption.GetFormat().SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap);
        row.caption.GetFormat().SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
        AddQKItem(&row.caption);
    }
}

void Menu::DrawSurface(HDC dc, int width, int height, int buffer) {
    {
        Gdiplus::Graphics graphics(dc);
        std::array<Gdiplus::Image*, 9> parts{};
        std::transform(pane_.begin(), pane_.end(), parts.begin(),
                       [](const auto& part) { return part.get(); });
        DrawStateImage(&graphics, parts.data(),
                       Gdiplus::RectF(0, 0, static_cast<float>(width), static_cast<float>(height)));
    }
    CQKDialogBase::DrawSurface(dc, width, height, buffer);
}

bool Menu::Takes(CPoint point) const {
    CRect pane(CPoint(0, 0), Size());
    pane.DeflateRect(skin::kMenuShadow, skin::kMenuShadow);
    return pane.PtInRect(point);
}

LRESULT Menu::OnChosen(WPARAM line, LPARAM) {
    const std::function<void()> action = lines_.at(line).action;
    Close();
    if (action) action();
    return 0;
}

BOOL Menu::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE) {
        Close();
        return TRUE;
    }
    return CQKDialogBase::PreTranslateMessage(message);
}

void Menu::OnActivate(UINT state, HWND other, BOOL minimised) {
    CQKDialogBase::OnActivate(state, other, minimised);
    if (state == WA_INACTIVE && IsOpen()) PostMessage(WM_CLOSE);
}

void Menu::OnLButtonDown(UINT flags, CPoint point) {
    if (!Takes(point)) return Close();
    CQKDialogBase::OnLButtonDown(flags, point);
}

// The base lets go of the pointer with every release.
void Menu::OnLButtonUp(UINT flags, CPoint point) {
    CQKDialogBase::OnLButtonUp(flags, point);
    if (IsOpen()) SetCapture(m_hWnd);
}

void Menu::OnRButtonDown(UINT, CPoint point) {
    if (!Takes(point)) Close();
}

}  // namespace desktop
