#include "platform/html/browser_window.h"

#include <algorithm>

#include <platform/gdiplus.h>

#include "platform/html/plugin.h"
#include "platform/html/scripted_page.h"

namespace platform::html {

namespace {

constexpr int kEdge = 2;  // of a window with WS_EX_CLIENTEDGE

// Posted by this window to itself.
enum : UINT { kFocusWanted = WM_USER + 1, kFocusLeaves = WM_USER + 2 };

HWND TopLevelAround(HWND window) {
    while (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD)
        window = GetParent(window);
    return window;
}

}  // namespace

BEGIN_MESSAGE_MAP(BrowserWindow, CWnd)
ON_WM_DESTROY()
ON_WM_PAINT()
ON_MESSAGE(WM_SETFOCUS, OnFocus)
ON_MESSAGE(WM_KILLFOCUS, OnNoFocus)
ON_MESSAGE(WM_KEYDOWN, OnKey)
ON_MESSAGE(WM_KEYUP, OnKey)
ON_MESSAGE(WM_SYSKEYDOWN, OnKey)
ON_MESSAGE(WM_SYSKEYUP, OnKey)
ON_MESSAGE(kFocusWanted, OnFocusWanted)
ON_MESSAGE(kFocusLeaves, OnFocusLeaves)
ON_MESSAGE(kContinuePage, OnContinue)
ON_MESSAGE(kRethrow, OnRethrow)
END_MESSAGE_MAP()

BrowserWindow::~BrowserWindow() {
    Close();
}

void BrowserWindow::Close() {
    // The page's window goes before the one that it stands in.
    if (browser_) browser_->Close();
    browser_.Release();
    embedded_.reset();
}

BOOL BrowserWindow::Open(CHtmlView& view) {
    CRect client;
    view.GetClientRect(client);
    if (!CreateEx(WS_EX_CLIENTEDGE, nullptr, WS_CHILD | WS_VISIBLE, client, &view, AFX_IDW_PANE_FIRST))
        return FALSE;
    if (MakePage(view)) return TRUE;
    const DWORD error = GetLastError();
    DestroyWindow();
    SetLastError(error);
    return FALSE;
}

bool BrowserWindow::MakePage(CHtmlView& view) {
    if (!CanEmbedWindows()) {
        browser_ = CComPtr<Browser>(new Browser(view, m_hWnd, CString(u"script")));
        browser_->SetPage(MakeScriptedPage(m_hWnd, *browser_));
        return true;
    }
    embedded_ = EmbeddedWindow::Create(m_hWnd, kEdge, *this);
    const BrowserPlugin* const plugin = embedded_ ? LoadBrowserPlugin() : nullptr;
    if (!plugin) return false;
    browser_ = CComPtr<Browser>(new Browser(view, m_hWnd, plugin->file));
    std::uint64_t window = 0;
    auto page = plugin->maker->MakePage(embedded_->Site().Socket(), GetScreenScale(), *browser_, &window);
    if (!page) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return false;
    }
    browser_->SetPage(std::move(page));
    embedded_->Site().Adopt(window);
    embedded_->Follow();
    return true;
}

void BrowserWindow::OnDestroy() {
    Close();
    Default();
}

void BrowserWindow::OnPaint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(m_hWnd, &paint);
    if (!dc) return;
    CRect rect;
    GetClientRect(rect);
    Gdiplus::Graphics graphics(dc);
    const auto fill = [&](const CRect& part, Gdiplus::ARGB colour) {
        const Gdiplus::SolidBrush brush{Gdiplus::Color(colour)};
        graphics.FillRectangle(&brush, part.left, part.top, part.Width(), part.Height());
    };
    fill(rect, 0xFF808080);
    CRect inner = rect;
    inner.DeflateRect(kEdge, kEdge);
    fill(inner, 0xFFFFFFFF);
    const CString note = FromUtf8(browser_ && browser_->Page() ? browser_->Page()->Note() : std::string());
    if (!note.IsEmpty()) {
        const Gdiplus::Font font(u"DejaVu Sans", 9);
        const Gdiplus::SolidBrush ink{Gdiplus::Color(0xFF606060)};
        inner.DeflateRect(8, 8);
        const Gdiplus::RectF box(static_cast<float>(inner.left), static_cast<float>(inner.top),
                                 static_cast<float>(inner.Width()), static_cast<float>(inner.Height()));
        graphics.DrawString(note, -1, &font, box, nullptr, &ink);
    }
    EndPaint(m_hWnd, &paint);
}

LRESULT BrowserWindow::OnFocus(WPARAM, LPARAM) {
    if (embedded_) embedded_->Site().SetFocus(true);
    if (browser_ && browser_->Page()) browser_->Page()->SetFocus(true);
    return 0;
}

LRESULT BrowserWindow::OnNoFocus(WPARAM, LPARAM) {
    if (embedded_) embedded_->Site().SetFocus(false);
    if (browser_ && browser_->Page()) browser_->Page()->SetFocus(false);
    return 0;
}

// Enter is for the page: a dialog would take it for its default button.
BOOL BrowserWindow::PreTranslateMessage(MSG* message) {
    if (message->hwnd != m_hWnd || message->wParam != VK_RETURN) return FALSE;
    if (message->message != WM_KEYDOWN && message->message != WM_KEYUP) return FALSE;
    DispatchMessageW(message);
    return TRUE;
}

LRESULT BrowserWindow::OnKey(WPARAM key, LPARAM state) {
    const bool down = ((static_cast<std::uint64_t>(state) >> 31) & 1) == 0;
    if (embedded_) embedded_->Site().PassKey(static_cast<UINT>(key), down);
    return Default();
}

void BrowserWindow::FocusWanted() {
    PostMessage(kFocusWanted);
}

void BrowserWindow::FocusLeaves(bool forwards) {
    PostMessage(kFocusLeaves, forwards ? 1 : 0);
}

LRESULT BrowserWindow::OnFocusWanted(WPARAM, LPARAM) {
    const HWND window = m_hWnd;
    if (GetFocus() == window) return 0;
    const LRESULT answer =
        SendMessage(WM_MOUSEACTIVATE, static_cast<WPARAM>(TopLevelAround(window).ToParam()),
                    MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    if (IsWindow(window) && answer != MA_NOACTIVATE && answer != MA_NOACTIVATEANDEAT) SetFocus(window);
    return 0;
}

// The dialog has the keyboard again; which of its items is next is its own business.
LRESULT BrowserWindow::OnFocusLeaves(WPARAM, LPARAM) {
    if (GetFocus() == m_hWnd) SetFocus(TopLevelAround(m_hWnd));
    return 0;
}

LRESULT BrowserWindow::OnRethrow(WPARAM, LPARAM) {
    const CComPtr<Browser> browser = browser_;
    if (browser) browser->Rethrow();
    return 0;
}

LRESULT BrowserWindow::OnContinue(WPARAM, LPARAM) {
    ContinueScriptedPage(m_hWnd);
    return 0;
}

}  // namespace platform::html
