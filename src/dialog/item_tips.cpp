#include "dialog/item_tips.h"

#include <algorithm>
#include <cmath>

#include <qkui/items/item_base.h>
#include "dialog/window_paint.h"

namespace qkui {

namespace {

constexpr LPCWSTR kClassName = u"QKTooltip";

enum : UINT_PTR { kDelay = 1, kEnough = 2 };
constexpr UINT kRest = 500;      // milliseconds that the pointer rests before
constexpr UINT kNextRest = 100;  // coming from an item whose text shows
constexpr UINT kReading = 8000;

constexpr float kLongestLine = 400;  // pixels; longer ones wrap
constexpr int kPadX = 8, kPadY = 5;
constexpr int kBelow = 20;  // of the pointer's hot spot, so that the arrow covers nothing
constexpr int kAbove = 4;

constexpr Gdiplus::ARGB kPaper = 0xFFFFFDF4;
constexpr Gdiplus::ARGB kEdge = 0xFF9A968A;
constexpr Gdiplus::ARGB kInk = 0xFF26241F;

// Below the pointer, or above it where that would leave the screen.
CPoint PlaceBeside(POINT pointer, CSize size) {
    MONITORINFO monitor{sizeof(MONITORINFO), {}, {}, 0};
    GetMonitorInfoW(MonitorFromPoint(pointer, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    CPoint place(pointer.x, pointer.y + kBelow);
    if (place.y + size.cy > work.bottom) place.y = pointer.y - kAbove - size.cy;
    place.x = std::max(work.left, std::min<LONG>(place.x, work.right - size.cx));
    place.y = std::max(work.top, place.y);
    return place;
}

}  // namespace

ItemTips::~ItemTips() {
    if (!window_) return;
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

LRESULT ItemTips::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const tips = reinterpret_cast<ItemTips*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (tips) {
        switch (message) {
            case WM_TIMER:
                tips->Tick(wParam);
                return 0;
            case WM_PAINT:
                tips->Paint();
                return 0;
            case WM_ERASEBKGND:
                return 1;
            case WM_NCDESTROY:
                tips->window_ = HWND();
                tips->item_ = nullptr;
                tips->waiting_ = false;
                break;
            default:
                break;
        }
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool ItemTips::MakeWindow(HWND owner) {
    if (window_ && owner_ == owner) return true;
    if (window_) DestroyWindow(window_);
    WNDCLASSW description;
    description.lpfnWndProc = &Procedure;
    description.lpszClassName = kClassName;
    RegisterClassW(&description);  // fails where it is registered already
    owner_ = owner;
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, kClassName, u"", WS_POPUP,
                              0, 0, 1, 1, owner, 0, HINSTANCE(), nullptr);
    if (window_) SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return static_cast<bool>(window_);
}

void ItemTips::PointerOver(const QKItemBase* item, HWND owner, const std::shared_ptr<Gdiplus::Font>& font) {
    if (item && item->GetTooltip().IsEmpty()) item = nullptr;
    if (item == item_ && (!item || item->GetTooltip() == text_)) {
        if (waiting_) SetTimer(window_, kDelay, kRest, nullptr);  // it does not rest yet
        return;
    }
    const bool shown = window_ && IsWindowVisible(window_);
    Hide();
    item_ = item;
    if (!item || !MakeWindow(owner)) return;
    text_ = item->GetTooltip();
    font_ = font;
    waiting_ = true;
    SetTimer(window_, kDelay, shown ? kNextRest : kRest, nullptr);
}

void ItemTips::Hide() {
    waiting_ = false;
    if (!window_) return;
    KillTimer(window_, kDelay);
    KillTimer(window_, kEnough);
    ShowWindow(window_, SW_HIDE);
}

void ItemTips::Tick(UINT_PTR timer) {
    const bool rested = timer == kDelay && waiting_;
    Hide();
    if (rested && IsWindowVisible(owner_) && IsWindowEnabled(owner_) && !GetCapture()) Show();
}

void ItemTips::Show() {
    if (!font_) font_ = std::make_shared<Gdiplus::Font>(u"宋体", 9.0F);
    const Gdiplus::StringFormat format;
    const Gdiplus::RectF most(0, 0, kLongestLine, 0);
    const Gdiplus::RectF box =
        Gdiplus::GetTextExtent(text_, text_.GetLength(), font_.get(), most, &format).box;
    const CSize size(static_cast<int>(std::ceil(box.Width)) + 2 * kPadX,
                     static_cast<int>(std::ceil(box.Height)) + 2 * kPadY);
    POINT pointer{0, 0};
    GetCursorPos(&pointer);
    const CPoint place = PlaceBeside(pointer, size);
    SetWindowPos(window_, HWND_TOPMOST, place.x, place.y, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    InvalidateRect(window_, nullptr, FALSE);
    SetTimer(window_, kEnough, kReading, nullptr);
}

void ItemTips::Paint() {
    const WindowPaint paint(window_);
    Gdiplus::Graphics graphics(paint.Context());
    CRect client;
    GetClientRect(window_, client);
    const Gdiplus::SolidBrush edge{Gdiplus::Color(kEdge)};
    const Gdiplus::SolidBrush paper{Gdiplus::Color(kPaper)};
    const Gdiplus::SolidBrush ink{Gdiplus::Color(kInk)};
    graphics.FillRectangle(&edge, 0, 0, client.Width(), client.Height());
    graphics.FillRectangle(&paper, 1, 1, client.Width() - 2, client.Height() - 2);
    const Gdiplus::StringFormat format;
    graphics.DrawString(text_, -1, font_.get(),
                        Gdiplus::RectF(kPadX, kPadY, static_cast<float>(client.Width() - 2 * kPadX),
                                       static_cast<float>(client.Height() - 2 * kPadY)),
                        &format, &ink);
}

}  // namespace qkui
