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
    // The list of the coming frame, to be filled in; then TakeList finds what it makes differ.
    DisplayList& NewList();
    void TakeList();
    const DisplayList& List() const { return current_; }

    // What does not show the list yet, and the size of the surface that it lies in.
    const Region& Area() const { return area_; }
    bool IsEmpty() const { return empty_; }
    void Add(HRGN region);
    void AddAll();
    void Resize(int width, int height);  // all is damaged then
    int Width() const { return width_; }
    int Height() const { return height_; }

    // `part` of the surface behind `context` shows the list now. That is void as soon as somebody else draws
    // on it.
    void Repainted(HRGN part, HDC context);
    void Void() { revision_ = 0; }
    bool IsValid(HDC context) const { return revision_ != 0 && GetSurfaceRevision(context) == revision_; }

  private:
    CRect Whole() const { return {0, 0, width_, height_}; }

    int width_ = 0;
    int height_ = 0;
    DisplayList current_;
    DisplayList coming_;
    Region area_;
    bool empty_ = true;
    std::uint64_t revision_ = 0;  // of the surface, when it was last repainted
};

// The part of a damaged surface that is to be composed again. While it lasts, the context is confined to that
// part; then it has its clip again. The damage is gone once it is Done.
class PartialRepaint {
  public:
    // What is damaged in `wanted` (null: everywhere) is composed as far as `drawable` reaches, which lives
    // on.
    PartialRepaint(Damage& damage, HDC context, HRGN wanted, HRGN drawable);
    ~PartialRepaint();
    PartialRepaint(const PartialRepaint&) = delete;
    PartialRepaint& operator=(const PartialRepaint&) = delete;

    // False when nothing is damaged there.
    bool IsNeeded() const { return needed_; }
    const Region& Part() const { return part_; }
    // Calls compose(band) for one band of the part's rows after another, the context confined to it: what is
    // drawn first is then still near the processor when the rest is drawn on it. They part where little lies
    // across, which is drawn twice.
    template <class Compose>
    void InBands(const Compose& compose) const {
        const CRect box = part_.Box();
        const int rows = std::max(kBandPixels / box.Width(), 2);
        if (box.Height() < 2 * rows) return compose(part_);
        for (int top = box.top, bottom; top < box.bottom; top = bottom) {
            bottom = box.bottom - top <= rows ? box.bottom
                                              : damage_.List().QuietestRow(top + rows / 2, top + rows);
            const Region band;
            band.Set(CRect(box.left, top, box.right, bottom));
            CombineRgn(band, band, part_, RGN_AND);
            Confine(band);
            compose(band);
        }
    }
    void Done() { damage_.Repainted(part_, context_); }

  private:
    static constexpr int kBandPixels = 1 << 18;
    void Confine(HRGN to) const;

    Damage& damage_;
    const HDC context_;
    const HRGN drawable_;
    Region part_;
    Region clip_;
    bool needed_ = false;
    bool hadClip_ = false;
};

}  // namespace qkui
