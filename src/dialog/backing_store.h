// The off-screen frame of a dialog, kept between paints, and what it needs to know to recompose only what
// would look different from the last time.
#pragma once

#include <cstdint>

#include <platform/gdi.h>

#include "dialog/damage.h"
#include "dialog/underlay.h"

namespace qkui {

// The frame's pixels: a memory context with a bitmap in it.
class BackingStore {
  public:
    BackingStore() = default;
    ~BackingStore();
    BackingStore(const BackingStore&) = delete;
    BackingStore& operator=(const BackingStore&) = delete;

    // Makes the frame `width` by `height` units of `compatible`; a new size damages all of it, and so does
    // a host that did not leave the context as it was. False without memory.
    bool Prepare(HDC compatible, int width, int height);

    HDC Context() const { return context_; }
    Damage& Damaged() { return damage_; }

    // Gives the context to a host as if it held a fresh surface that shows `under` (null: nothing) and has no
    // clip. Its pixels are the last frame's until somebody wants them: only then are they made what they are
    // to seem. TakeBack tells whether nobody did. Withdraw ends it, and forgets what lay under.
    void Lend(const Gdiplus::Bitmap* under);
    bool TakeBack();
    void Withdraw();
    bool LiesOnPicture() const { return underlay_.Revision() != 0; }

    // Before the damage takes a list: adds what the context's clip, the picture under the frame and drawing
    // of others make of it.
    void TakeSurroundings();
    // What is damaged in `wanted` (null: everywhere) starts from what lies under the frame and is composed
    // again, confined to the clip that the context has.
    template <class Compose>
    void Repaint(HRGN wanted, const Compose& compose) {
        if (damage_.IsEmpty()) return;
        PartialRepaint repaint(damage_, context_, wanted, drawable_);
        if (!repaint.IsNeeded()) return;
        repaint.InBands([&](const Region& band) {
            RestoreUnderlay(band);
            compose();
        });
        repaint.Done();
        changed_.UnionRect(CRect(changed_), repaint.Part().Box());
    }

    // The rectangle outside of which no pixel has changed since the last call. Whoever could not show it
    // damages all.
    CRect TakeChanges();

  private:
    static void StartOver(void* frame);
    void Release();
    void RestoreUnderlay(const Region& region);

    HDC context_;
    HBITMAP bitmap_;
    void* bits_ = nullptr;    // top-down
    int scale_ = 1;           // pixels to a unit
    bool untouched_ = false;  // since Lend
    Underlay underlay_;
    Damage damage_;
    // What the frame was last composed in.
    std::uint64_t underlayRevision_ = 0;
    Region drawable_;
    CRect changed_;  // repainted since TakeChanges
};

}  // namespace qkui
