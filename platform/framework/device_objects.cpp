#include <platform/device_objects.h>

#include <platform/framework.h>

CDC::~CDC() {
    if (made_) DeleteDC();
}

BOOL CDC::CreateCompatibleDC(CDC* like) {
    if (m_hDC) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    m_hDC = ::CreateCompatibleDC(like ? like->m_hDC : HDC());
    made_ = static_cast<bool>(m_hDC);
    return made_;
}

BOOL CDC::DeleteDC() {
    const BOOL deleted = ::DeleteDC(m_hDC);
    if (deleted) m_hDC = nullptr;
    made_ = made_ && !deleted;
    return deleted;
}

void CDC::FillSolidRect(const RECT* rect, COLORREF colour) {
    const HBRUSH brush = CreateSolidBrush(colour);
    ::FillRect(m_hDC, rect, brush);
    DeleteObject(brush);
    SetBkColor(colour);
}

CSize CDC::GetTextExtent(const CString& text) const {
    CSize size;
    GetTextExtentPoint32W(m_hDC, text, text.GetLength(), &size);
    return size;
}

CPaintDC::CPaintDC(CWnd* window) : m_ps(), window_(window->m_hWnd) {
    m_hDC = ::BeginPaint(window_, &m_ps);
}

CPaintDC::~CPaintDC() {
    ::EndPaint(window_, &m_ps);
}

CClientDC::CClientDC(CWnd* window) : window_(window ? window->m_hWnd : HWND()) {
    m_hDC = ::GetDC(window_);
}

CClientDC::~CClientDC() {
    ::ReleaseDC(window_, m_hDC);
}

CDC* CWnd::GetDC() {
    const HDC context = ::GetDC(m_hWnd);
    return context ? new CDC(context) : nullptr;
}

int CWnd::ReleaseDC(CDC* context) {
    if (!context) return 0;
    const int released = ::ReleaseDC(m_hWnd, context->m_hDC);
    delete context;
    return released;
}
