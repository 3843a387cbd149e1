// The dialog as a window: construction, looks, background settings, commands, keys.
#include <qkui/items/resource_image.h>
#include "dialog/alive.h"
#include "dialog/frame_painter.h"
#include "dialog/item_tips.h"
#include "dialog/press.h"
#include "dialog/tab_focus.h"
#include "items/item_access.h"

namespace {

CRect WholeOf(const Gdiplus::Image& image) {
    return {0, 0, static_cast<int>(image.GetWidth()), static_cast<int>(image.GetHeight())};
}

}  // namespace

IMPLEMENT_DYNAMIC(CQKDialogBase, CDialog)

BEGIN_MESSAGE_MAP(CQKDialogBase, CDialog)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_ERASEBKGND()
ON_WM_MOVE()
ON_WM_MOUSEMOVE()
ON_WM_MOUSELEAVE()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_ACTIVATE()
ON_WM_RBUTTONUP()
ON_WM_CLOSE()
ON_WM_TIMER()
ON_WM_MOUSEWHEEL()
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

CQKDialogBase::CQKDialogBase(UINT templateId, CWnd* parent)
    : CDialog(templateId, parent),
      m_pPress(std::make_unique<qkui::Press>(*this)),
      m_pFocus(std::make_unique<qkui::TabFocus>(*this)),
      m_pTips(std::make_unique<qkui::ItemTips>()),
      m_pPainter(std::make_unique<qkui::FramePainter>(*this)) {}

CQKDialogBase::~CQKDialogBase() = default;

BOOL CQKDialogBase::OnInitDialog() {
    CDialog::OnInitDialog();
    return TRUE;
}

void CQKDialogBase::DoDataExchange(CDataExchange*) {}

void CQKDialogBase::OnDestroy() {
    const qkui::Alive alive(*this);
    CDialog::OnDestroy();
    if (alive) m_arItems.RemoveAll();
}

void CQKDialogBase::SetMinMaxStyle() {
    ModifyStyle(0, WS_MINIMIZEBOX, 0);
}

int CQKDialogBase::SetNoLayDlg() {
    m_nLayStyle = LAY_NONE;
    ModifyStyleEx(WS_EX_LAYERED, 0);
    return 1;
}

int CQKDialogBase::Set_COLORKEYDlg(DWORD key) {
    m_nLayStyle = LAY_COLORKEY;
    m_crColorKey = key;
    ModifyStyleEx(0, WS_EX_LAYERED);
    return SetLayeredWindowAttributes(m_hWnd, key, 0, LWA_COLORKEY);
}

int CQKDialogBase::Set_ALPHADlg(int alpha) {
    m_nLayStyle = LAY_ALPHA;
    m_nAlpha = alpha;
    ModifyStyleEx(0, WS_EX_LAYERED);
    return SetLayeredWindowAttributes(m_hWnd, 0, static_cast<BYTE>(alpha), LWA_ALPHA);
}

int CQKDialogBase::Set_OPAQUEDlg(int alpha) {
    // Neither LWA_COLORKEY nor LWA_ALPHA: the window must stay open for UpdateLayeredWindow.
    constexpr DWORD kNoAttributes = 4;
    m_nLayStyle = LAY_OPAQUE;
    m_nAlpha = alpha;
    ModifyStyleEx(0, WS_EX_LAYERED);
    return SetLayeredWindowAttributes(m_hWnd, 0, static_cast<BYTE>(alpha), kNoAttributes);
}

void CQKDialogBase::SetRngDlg(int cx, int cy) {
    if (!IsWindow(m_hWnd)) return;
    CRect window;
    GetWindowRect(window);
    // The window takes the region.
    SetWindowRgn(m_hWnd, CreateRoundRectRgn(0, 0, window.Width(), window.Height(), cx, cy), TRUE);
}

void CQKDialogBase::SetBackColor(const Gdiplus::Color& color, int fill) {
    m_crBack = color.GetValue();
    m_bBackColor = fill;
}

void CQKDialogBase::SetBack(const CString& path, int keepRatio, int cache) {
    m_pBackImage.reset();
    if (!path.IsEmpty()) {
        m_pBackImage = std::make_unique<Gdiplus::Image>(path);
        m_bBackKeepRatio = keepRatio;
    }
    m_pBackCache.reset();
    m_bBackCache = cache;
}

int CQKDialogBase::SetBack(const CString& path, CRect& rcImage) {
    m_pBackImage.reset();
    if (path.IsEmpty()) return 0;
    m_pBackImage = std::make_unique<Gdiplus::Image>(path);
    rcImage = WholeOf(*m_pBackImage);
    return 1;
}

int CQKDialogBase::SetBack(UINT id, LPCWSTR type, int keepRatio, int cache) {
    m_pBackImage = QKLoadImage(id, type);
    m_bBackKeepRatio = keepRatio;
    m_pBackCache.reset();
    m_bBackCache = cache;
    return m_pBackImage != nullptr;
}

int CQKDialogBase::SetBack(UINT id, LPCWSTR type, CRect& rcImage) {
    m_pBackImage = QKLoadImage(id, type);
    if (!m_pBackImage) return 0;
    rcImage = WholeOf(*m_pBackImage);
    return 1;
}

void CQKDialogBase::SetBackMargins(int left, int top, int right, int bottom) {
    m_pPainter->BackgroundParts().SetMargins({left, top, right, bottom});
}

void CQKDialogBase::SetDefaultFont(const Gdiplus::Font& font) {
    m_pDefaultFont.reset(font.Clone());
    for (QKItemBase* item : m_arItems)
        qkui::GiveDefaultFont(*item, m_pDefaultFont);
}

void CQKDialogBase::SetNoMove(int noMove) {
    m_bMove = noMove ? 0 : 1;
}

void CQKDialogBase::SetMouseTranOver(int transparent) {
    m_bTranMouseOver = transparent;
}

void CQKDialogBase::SetSelRect(int enable) {
    m_bSelRect = enable;
}

void CQKDialogBase::CloseQKDlg() {
    PostMessage(WM_CLOSE);
}

void CQKDialogBase::MinQKDlg() {
    PostMessage(WM_SYSCOMMAND, SC_MINIMIZE);
    m_bMinimized = 1;
}

void CQKDialogBase::SetDoModalOK(int ok) {
    if (ok)
        OnOK();
    else
        OnCancel();
}

void CQKDialogBase::messagePump() {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void CQKDialogBase::OnClose() {
    DestroyWindow();
}

BOOL CQKDialogBase::OnEraseBkgnd(HDC) {
    return TRUE;  // every frame covers the window
}

void CQKDialogBase::OnMove(int x, int y) {
    m_pTips->Hide();
    CDialog::OnMove(x, y);
}

void CQKDialogBase::OnActivate(UINT state, HWND other, BOOL minimised) {
    const qkui::Alive alive(*this);
    CDialog::OnActivate(state, other, minimised);
    if (!alive || state != WA_INACTIVE) return;
    m_pTips->Hide();
    m_pFocus->Show(GetFocusItem(), false);
    if (alive && DropListFocus()) UpdateView();
}

BOOL CQKDialogBase::PreTranslateMessage(MSG* message) {
    // Any message that carries F4 in its wParam while Alt is held, so that no path of Alt+F4 closes the
    // dialog.
    if (message->wParam == VK_F4 && (GetKeyState(VK_MENU) & 0x8000)) return TRUE;
    if (message->message == WM_KEYDOWN) m_pTips->Hide();
    if (m_pFocus->TakeKey(*message)) return TRUE;
    if (message->message == WM_KEYDOWN && (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE))
        return TRUE;
    return CDialog::PreTranslateMessage(message);
}
