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
    bool Meet(HWND window, HDC context, int width, int height);

    Damage& Record() { return record_; }

    // What is stale where the context can be drawn on is composed again, from nothing unless it covers all.
    template <class Compose>
    void Mend(HDC context, bool coversAll, Compose compose) {
        const Region drawable;
        GetDrawableRgn(context, drawable);
        PartialRepaint repair(record_, context, drawable, drawable);
        if (!repair.IsNeeded()) return;
        repair.InBands([&](const Region&) {
            if (!coversAll) Gdiplus::Graphics(context).Clear(Gdiplus::Color(0));
            compose();
        });
        repair.Done();
        met_ = true;
    }

  private:
    Damage record_;
    bool met_ = false;  // something was composed
    bool shared_ = false;
};

}  // namespace qkui
