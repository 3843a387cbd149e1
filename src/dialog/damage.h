// What a surface was last composed of, and where it does not show that.
#pragma once

#include <algorithm>
#include <cstdint>

#include <platform/gdi.h>

#include "dialog/display_list.h"
#include "dialog/region.h"

namespace qkui {

class Damage {
  public:
    // The inputs of the coming frame, to be filled in; then TakeInputs finds what they make stale.
    DisplayList& NewInputs();
    void TakeInputs();

    // What does not show the current inputs yet, and the whole of the surface that it lies in.
    const Region& Stale() const { return stale_; }
    void AddStale(HRGN region);
    void MakeAllStale();
    void Resize(int width, int height);  // all is stale then
    int Width() const { return width_; }
    int Height() const { return height_; }

    // `part` of the surface behind `context` shows the current inputs now. Whoever draws on it afterwards
    // breaks the seal.
    void Seal(HRGN part, HDC context);
    void BreakSeal() { seal_ = 0; }
    bool IsSealed(HDC context) const { return seal_ != 0 && GetSurfaceRevision(context) == seal_; }

  private:
    CRect Whole() const { return {0, 0, width_, height_}; }

    int width_ = 0;
    int height_ = 0;
    DisplayList current_;
    DisplayList coming_;
    Region stale_;
    std::uint64_t seal_ = 0;  // the surface's revision
};

// The part of a record's surface that is to be composed again. While it lasts, the context is confined to
// that part; then it has its clip again. The part counts as current once it is Done.
class PartialRepaint {
  public:
    // What is stale in `wanted` (null: everywhere) is composed as far as `drawable` reaches, which lives on.
    PartialRepaint(Damage& record, HDC context, HRGN wanted, HRGN drawable);
    ~PartialRepaint();
    PartialRepaint(const PartialRepaint&) = delete;
    PartialRepaint& operator=(const PartialRepaint&) = delete;

    // False when nothing is stale there.
    bool IsNeeded() const { return needed_; }
    const Region& Part() const { return part_; }
    // Calls compose(band) for one band of the part's rows after another, the context confined to it: what is
    // drawn first is then still near the processor when the rest is drawn on it.
    template <class Compose>
    void InBands(const Compose& compose) const {
        const CRect box = part_.Box();
        const int rows = std::max(kBandPixels / box.Width(), 1);
        if (box.Height() < 2 * rows) return compose(part_);
        for (int top = box.top; top < box.bottom; top += rows) {
            const Region band;
            band.Set(CRect(box.left, top, box.right, std::min(top + rows, box.bottom)));
            CombineRgn(band, band, part_, RGN_AND);
            Confine(band);
            compose(band);
        }
    }
    void Done() { record_.Seal(part_, context_); }

  private:
    static constexpr int kBandPixels = 1 << 18;
    void Confine(HRGN to) const;

    Damage& record_;
    const HDC context_;
    const HRGN drawable_;
    Region part_;
    Region clip_;
    bool needed_ = false;
    bool hadClip_ = false;
};

}  // namespace qkui
