// Refresh requests, and the per-pixel surface that is shown instead of painting the window.
#include <algorithm>
#include <cstring>

#include "dialog/dialog_base.h"
#include "dialog/dialog_frame.h"
#include "items/gif_image.h"

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
        PushLayeredFrame(window);
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
    const std::weak_ptr<const char> life = m_pLife;
    for (INT_PTR i = 0; m_bHasGif && i < m_arItems.GetSize(); ++i) {
        if (m_arItems[i]->GetType() != QKUI_GIFIMAGE) continue;
        auto* image = static_cast<QKGifImage*>(m_arItems[i]);
        if (image->GetTimerID() != id) continue;
        image->Step();
        if (const std::optional<UINT> time = image->GetFrameTime()) ::SetTimer(m_hWnd, id, *time, nullptr);
        UpdateView();
        if (life.expired()) return;
    }
    CDialog::OnTimer(id);
}

void CQKDialogBase::PushLayeredFrame(const CRect& window) {
    const HDC windowContext = GetDC(m_hWnd);
    const POINT position = window.TopLeft();
    const SIZE size = window.Size();
    if (m_pFrame->Prepare(windowContext, size.cx, size.cy, true)) {
        ComposeLayeredFrame(size.cx, size.cy);
        const POINT source = m_bLayerSrcSet ? m_ptLayerSrc : POINT{0, 0};
        const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(m_nAlpha), AC_SRC_ALPHA};
        UpdateLayeredWindow(m_hWnd, windowContext, &position, &size, m_pFrame->Context(), &source, 0, &blend,
                            ULW_ALPHA);
    }
    ReleaseDC(m_hWnd, windowContext);
}

// The surface is to look as if it had been cleared and drawn from nothing. Most of it does already, unless
// the host's DrawSurface draws on it besides the frame: then the whole of it starts over every time.
void CQKDialogBase::ComposeLayeredFrame(int width, int height) {
    QKFrame& frame = *m_pFrame;
    if (!frame.IsSealed()) frame.MakeAllStale();
    DescribeFrame(frame.NewInputs(), width, height);
    frame.TakeInputs();
    if (ComposeStalePart(width, height)) return;
    frame.MakeAllStale();
    ComposeStalePart(width, height);
}

// False when the host's DrawSurface was not content with a mended surface: it drew below the frame, or left
// the frame out.
bool CQKDialogBase::ComposeStalePart(int width, int height) {
    QKFrame& frame = *m_pFrame;
    m_bStartOver = false;
    m_bFramePainted = false;
    if (frame.BeginPart(HRGN()) && HasCachedBackground()) CopyBackCache();
    frame.Seal();
    DrawSurface(frame.Context(), width, height, 1);
    return !m_bStartOver && (m_bFramePainted || frame.IsWholePart());
}

void CQKDialogBase::PaintLayeredPart(int width, int height) {
    QKFrame& frame = *m_pFrame;
    m_bFramePainted = true;
    const bool untouched = frame.IsSealed();
    if (!untouched && !frame.IsWholePart()) {
        m_bStartOver = true;
        return;
    }
    if (!frame.ClipPart()) return;
    OnQKPaint(frame.Context(), width, height);
    frame.EndPart();
    if (untouched) frame.Seal();
}

// Cache and surface both run bottom-up in memory, so rows of the one are rows of the other. The surface is
// premultiplied, and so is what is asked of the cache: a cached background shows the same pixels as a drawn
// one.
void CQKDialogBase::CopyBackCache() {
    const QKFrame& frame = *m_pFrame;
    if (static_cast<int>(m_pBackCache->GetWidth()) != frame.Width()) {
        CopyShearedBackCache();
        return;
    }
    const CRect cached(0, frame.Height() - static_cast<int>(m_pBackCache->GetHeight()), frame.Width(),
                       frame.Height());
    for (int i = 0; i < GetRgnRectCount(frame.Part()); ++i) {
        CRect rect;
        GetRgnRect(frame.Part(), i, rect);
        if (!rect.IntersectRect(CRect(rect), cached)) continue;
        const int row = frame.Height() - rect.bottom;
        const Gdiplus::Rect source(rect.left, row, rect.Width(), rect.Height());
        Gdiplus::BitmapData data = {};
        data.Width = static_cast<UINT>(rect.Width());
        data.Height = static_cast<UINT>(rect.Height());
        data.Stride = frame.Width() * 4;
        data.PixelFormat = Gdiplus::PixelFormat32bppPARGB;
        data.Scan0 = frame.Bits() + static_cast<std::ptrdiff_t>(row) * frame.Width() + rect.left;
        m_pBackCache->LockBits(&source, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                               Gdiplus::PixelFormat32bppPARGB, &data);
        m_pBackCache->UnlockBits(&data);
    }
    GdiFlush();
}

// A cache of another width (the window was resized since) is poured into the surface as one run of pixels:
// its rows shear. What does not fit is left out.
void CQKDialogBase::CopyShearedBackCache() {
    QKFrame& frame = *m_pFrame;
    if (!frame.IsWholePart()) {
        m_bStartOver = true;
        return;
    }
    const Gdiplus::Rect all(0, 0, static_cast<int>(m_pBackCache->GetWidth()),
                            static_cast<int>(m_pBackCache->GetHeight()));
    Gdiplus::BitmapData data = {};
    if (m_pBackCache->LockBits(&all, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &data) !=
        Gdiplus::Ok)
        return;
    std::size_t room = static_cast<std::size_t>(frame.Width()) * static_cast<std::size_t>(frame.Height());
    std::uint32_t* to = frame.Bits();
    for (int y = 0; y < all.Height && room > 0; ++y) {
        const std::size_t count = std::min(room, static_cast<std::size_t>(all.Width));
        std::memcpy(to,
                    static_cast<const std::byte*>(data.Scan0) + static_cast<std::ptrdiff_t>(y) * data.Stride,
                    count * sizeof(std::uint32_t));
        to += count;
        room -= count;
    }
    m_pBackCache->UnlockBits(&data);
    GdiFlush();
}
