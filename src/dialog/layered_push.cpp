// Frames of per-pixel windows: lent to the host to draw on, then pushed.
#include <utility>

#include <qkui/dialog/dialog_base.h>
#include "dialog/alive.h"
#include "dialog/frame_painter.h"
#include "list/uninterrupted.h"

namespace qkui {

namespace {

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

}  // namespace

// While it is lent, a host may refresh again, which then takes a frame of its own, or delete the dialog, and
// then the frame goes at the end of the loan.
class FramePainter::Loan {
  public:
    explicit Loan(FramePainter& painter)
        : painter_(painter),
          owner_(painter.dialog_),
          store_(painter.store_ ? std::move(painter.store_) : std::make_unique<BackingStore>()),
          outer_(std::exchange(painter.lent_, store_.get())) {}
    ~Loan() {
        if (IsOwnerGone()) return;
        store_->Withdraw();
        painter_.lent_ = outer_;
        painter_.store_ = std::move(store_);
    }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    BackingStore& Store() const { return *store_; }
    bool IsOwnerGone() const { return !owner_; }

  private:
    FramePainter& painter_;
    const Alive owner_;
    std::unique_ptr<BackingStore> store_;
    BackingStore* const outer_;
};

void FramePainter::Push(const CRect& window) {
    const WindowContext windowContext(dialog_.m_hWnd);
    const POINT position = window.TopLeft();
    const SIZE size = window.Size();
    const Loan loan(*this);
    BackingStore& store = loan.Store();
    if (!store.Prepare(windowContext.Get(), size.cx, size.cy)) return;
    store.Lend(dialog_.m_pBackCache.get());
    dialog_.DrawSurface(store.Context(), size.cx, size.cy, 1);
    if (loan.IsOwnerGone()) return;
    const POINT source = dialog_.m_bLayerSrcSet ? dialog_.m_ptLayerSrc : POINT{0, 0};
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(dialog_.m_nAlpha), AC_SRC_ALPHA};
    const CRect changed = store.TakeChanges();
    UPDATELAYEREDWINDOWINFO push;
    push.hdcDst = windowContext.Get();
    push.pptDst = &position;
    push.psize = &size;
    push.hdcSrc = store.Context();
    push.pptSrc = &source;
    push.pblend = &blend;
    push.dwFlags = ULW_ALPHA;
    push.prcDirty = changed;
    if (!UpdateLayeredWindowIndirect(dialog_.m_hWnd, &push)) store.Damaged().AddAll();
}

// Most of it looks so already, unless the host drew on it first, or has the frame on it already: then the
// frame goes on top of what is there.
void FramePainter::PaintLent(CSize size) {
    const qkui::Uninterrupted uninterrupted;
    BackingStore& store = *lent_;
    const bool untouched = store.TakeBack();
    store.TakeSurroundings();
    Record(store.Damaged());
    if (!untouched) return dialog_.OnQKPaint(store.Context(), size.cx, size.cy);
    const Under under = store.LiesOnPicture() ? Under::Pixels : Under::Nothing;
    store.Repaint(HRGN(), [&] { Compose(store.Context(), size, under, store.Damaged().List()); });
    CacheBackground();
}

}  // namespace qkui
