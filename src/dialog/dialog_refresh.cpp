// Refresh requests, and the per-pixel surface that is shown instead of painting the window.
#include <utility>
#include <vector>

#include <qkui/items/gif_image.h>
#include "dialog/alive.h"
#include "dialog/backing_store.h"
#include "list/uninterrupted.h"

namespace {

// A minimised window lies far off the screen; composing for it would be for nothing.
constexpr int kMinimisedLeft = -20000;

class WindowContext {
  public:
    explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
    ~WindowContext() { ReleaseDC(window_, context_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    HDC Get() const { return context_; }

  private:
    const HWND window_;
    const HDC context_;
};

// The kept frame while it is handed to the host's DrawSurface: that may refresh again, which then takes a
// frame of its own, or delete the dialog, and then the frame goes at the end of the loan.
class FrameLoan {
  public:
    FrameLoan(std::unique_ptr<qkui::BackingStore>& home, qkui::BackingStore*& handedOut,
              const qkui::Alive& owner)
        : home_(home),
          handedOut_(handedOut),
          owner_(owner),
          frame_(home ? std::move(home) : std::make_unique<qkui::BackingStore>()),
          outer_(std::exchange(handedOut, frame_.get())) {}
    ~FrameLoan() {
        if (IsOwnerGone()) return;
        frame_->Withdraw();
        handedOut_ = outer_;
        home_ = std::move(frame_);
    }
    FrameLoan(const FrameLoan&) = delete;
    FrameLoan& operator=(const FrameLoan&) = delete;
    qkui::BackingStore& Frame() const { return *frame_; }
    bool IsOwnerGone() const { return !owner_; }

  private:
    std::unique_ptr<qkui::BackingStore>& home_;
    qkui::BackingStore*& handedOut_;
    const qkui::Alive owner_;
    std::unique_ptr<qkui::BackingStore> frame_;
    qkui::BackingStore* const outer_;
};

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

void CQKDialogBase::PushLayeredFrame(const CRect& window) {
    const WindowContext windowContext(m_hWnd);
    const POINT position = window.TopLeft();
    const SIZE size = window.Size();
    const FrameLoan loan(m_pFrame, m_pHandedOut, qkui::Alive(*this));
    qkui::BackingStore& frame = loan.Frame();
    if (!frame.Prepare(windowContext.Get(), size.cx, size.cy)) return;
    frame.HandOut(m_pBackCache.get());
    DrawSurface(frame.Context(), size.cx, size.cy, 1);
    if (loan.IsOwnerGone()) return;
    const POINT source = m_bLayerSrcSet ? m_ptLayerSrc : POINT{0, 0};
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(m_nAlpha), AC_SRC_ALPHA};
    const CRect changed = frame.TakeChanges();
    UPDATELAYEREDWINDOWINFO push;
    push.hdcDst = windowContext.Get();
    push.pptDst = &position;
    push.psize = &size;
    push.hdcSrc = frame.Context();
    push.pptSrc = &source;
    push.pblend = &blend;
    push.dwFlags = ULW_ALPHA;
    push.prcDirty = changed;
    if (!UpdateLayeredWindowIndirect(m_hWnd, &push)) frame.MakeAllStale();
}

// The surface is to look as if it had been cleared and drawn from nothing. Most of it does already, unless
// the host drew on it first, or has the frame on it already: then the frame goes on top of what is there.
void CQKDialogBase::PaintHandedOut(int width, int height) {
    const QKUninterrupted uninterrupted;
    qkui::BackingStore& frame = *m_pHandedOut;
    const bool untouched = frame.TakeBack();
    frame.TakeSurroundings();
    DescribeFrame(frame.Record());
    if (!untouched) return OnQKPaint(frame.Context(), width, height);
    const Under under = frame.LiesOnPicture() ? Under::Pixels : Under::Nothing;
    std::vector<CRect> bounds;
    frame.Mend(HRGN(), [&] { Compose(frame.Context(), CSize(width, height), under, bounds); });
    MakeBackCache();
}
