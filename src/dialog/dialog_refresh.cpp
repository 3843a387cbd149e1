// Refresh requests, and what asks for a frame.
#include <qkui/items/gif_image.h>
#include "dialog/alive.h"
#include "dialog/frame_painter.h"
#include "dialog/window_paint.h"

namespace {

// A minimised window lies far off the screen; composing for it would be for nothing.
constexpr int kMinimisedLeft = -20000;

}  // namespace

void CQKDialogBase::UpdateView() {
    if (!IsWindow(m_hWnd)) return;
    CRect window;
    GetWindowRect(window);
    if (window.left < kMinimisedLeft) return;
    if (m_nLayStyle == LAY_OPAQUE)
        m_pPainter->Push(window);
    else if (m_bSysInvalidate)
        Invalidate(TRUE);
    else
        CallBackInvalidate();
}

void CQKDialogBase::UpdateViewRect(const RECT* rect) {
    if (m_nLayStyle == LAY_OPAQUE)
        UpdateView();
    else
        InvalidateRect(rect, TRUE);
}

void CQKDialogBase::UpdateViewPt(const POINT& source) {
    m_ptLayerSrc = source;
    m_bLayerSrcSet = 1;
    if (m_nLayStyle == LAY_OPAQUE)
        UpdateView();
    else if (m_bSysInvalidate)
        Invalidate(TRUE);
    else
        CallBackInvalidate();
}

void CQKDialogBase::CallBackInvalidate() {}

// Every image that runs on the timer goes on by a frame, each for its own delay: with several on one timer
// the last one's delay holds.
void CQKDialogBase::OnTimer(UINT_PTR id) {
    const qkui::Alive alive(*this);
    for (INT_PTR i = 0; m_bHasGif && i < m_arItems.GetSize(); ++i) {
        if (m_arItems[i]->GetType() != QKUI_GIFIMAGE) continue;
        auto* image = static_cast<QKGifImage*>(m_arItems[i]);
        if (image->GetTimerID() != id) continue;
        image->Step();
        if (const std::optional<UINT> time = image->GetFrameTime()) ::SetTimer(m_hWnd, id, *time, nullptr);
        UpdateView();
        if (!alive) return;
    }
    CDialog::OnTimer(id);
}

void CQKDialogBase::OnPaint() {
    const qkui::Alive alive(*this);
    const qkui::WindowPaint paint(m_hWnd);  // erases first: a call into the host
    if (!alive || m_nLayStyle == LAY_OPAQUE) return;
    CRect window;
    GetWindowRect(window);
    DrawSurface(paint.Context(), window.Width(), window.Height(), 1);
}

void CQKDialogBase::DrawSurface(HDC dc, int width, int height, int buffer) {
    if (m_nLayStyle == LAY_OPAQUE && m_pPainter->IsLent(dc))
        m_pPainter->PaintLent(CSize(width, height));
    else if (m_nLayStyle != LAY_OPAQUE && buffer)
        m_pPainter->PaintKept(dc, CSize(width, height));
    else
        OnQKPaint(dc, width, height);
}

void CQKDialogBase::OnQKPaint(HDC dc, int width, int height) {
    m_pPainter->PaintOnto(dc, CSize(width, height));
}
