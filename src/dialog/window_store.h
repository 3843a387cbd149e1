// The frame that the window itself shows, where nobody but the dialog draws on it: it is composed in place,
// and only what was composed is shown.
#pragma once

#include <platform/gdiplus.h>

#include "dialog/damage.h"

namespace qkui {

class WindowStore {
  public:
    // Whether a context of the window has a surface of `width` by `height` that is the dialog's alone. Once
    // somebody else drew on it, it is not, until its size changes.
    bool IsOurs(HWND window, HDC context, int width, int height);

    Damage& Damaged() { return damage_; }

    // What is damaged where the context can be drawn on is composed again, from nothing unless that covers
    // all.
    template <class Compose>
    void Repaint(HDC context, bool coversAll, const Compose& compose) {
        if (damage_.IsEmpty()) return;
        const Region drawable;
        GetDrawableRgn(context, drawable);
        PartialRepaint repaint(damage_, context, drawable, drawable);
        if (!repaint.IsNeeded()) return;
        repaint.InBands([&](const Region&) {
            if (!coversAll) Gdiplus::Graphics(context).Clear(Gdiplus::Color(0));
            compose();
        });
        repaint.Done();
        composed_ = true;
    }

  private:
    Damage damage_;
    bool composed_ = false;
    bool shared_ = false;
};

}  // namespace qkui
