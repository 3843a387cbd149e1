// A dialog's frames: what they are drawn with, and the surfaces that keep them from one paint to the next.
#pragma once

#include <memory>
#include <optional>

#include <platform/gdi.h>
#include <platform/gdiplus.h>

#include <qkui/items/nine_parts.h>

#include "dialog/background.h"
#include "dialog/backing_store.h"
#include "dialog/rubber_band.h"
#include "dialog/window_store.h"

class CQKDialogBase;
class QKListCtrl;

namespace qkui {

class FramePainter {
  public:
    explicit FramePainter(CQKDialogBase& dialog) : dialog_(dialog) {}

    QKNineParts& BackgroundParts() { return backgroundParts_; }

    // Straight onto a context, all of it.
    void PaintOnto(HDC dc, CSize size);
    // Keeps the frame: only what differs from the last one, and is asked for, is composed again. In the
    // window itself where that is the dialog's alone, else off-screen, and shown in one block.
    void PaintKept(HDC dc, CSize size);
    void PaintList(HDC dc, QKListCtrl& list);

    // ---- Per-pixel windows. The kept frame is lent to the host's DrawSurface, and then pushed. That call
    // may delete the dialog, and with it this.
    void Push(const CRect& window);
    bool IsLent(HDC dc) const { return lent_ && lent_->Context() == dc; }
    // The lent surface is to look as if it had been cleared and drawn from nothing.
    void PaintLent(CSize size);

  private:
    class Loan;

    bool PaintInWindow(HDC dc, CSize size);
    Background BackgroundNow() const;
    bool HasCachedBackground() const;
    void CacheBackground() const;
    bool CoversAll(CSize size) const;
    CRect Client() const;

    void RecordSurroundings(const CRect& whole, DisplayList& list) const;
    // `area`: what is drawn of lists.
    void RecordItems(const CRect& area, DisplayList& list) const;
    void RecordEntries(QKListCtrl& list, const CRect& area, DisplayList& entries) const;
    std::optional<RubberBand> Band() const;  // none while it does not show
    // Everything that a frame shows must be in the list, or a later one would keep what it should draw again.
    void Record(Damage& damage) const;
    void Compose(HDC dc, CSize size, Under under, const DisplayList& list) const;
    void Replay(const DisplayList& list, HDC dc, Gdiplus::Graphics& graphics) const;

    CQKDialogBase& dialog_;
    mutable QKNineParts backgroundParts_;  // cut when they are drawn
    std::unique_ptr<BackingStore> store_;  // null until it is needed, and while it is lent
    WindowStore window_;
    BackingStore* lent_ = nullptr;
};

}  // namespace qkui
