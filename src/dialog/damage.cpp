#include "dialog/damage.h"

#include <utility>

namespace qkui {

DisplayList& Damage::NewInputs() {
    coming_.Clear();
    return coming_;
}

void Damage::TakeInputs() {
    DisplayList::Difference(current_, coming_, stale_);
    std::swap(current_, coming_);
    const Region whole;
    whole.Set(Whole());
    CombineRgn(stale_, stale_, whole, RGN_AND);
}

void Damage::AddStale(HRGN region) {
    CombineRgn(stale_, stale_, region, RGN_OR);
}

void Damage::MakeAllStale() {
    stale_.Set(Whole());
}

void Damage::Resize(int width, int height) {
    width_ = width;
    height_ = height;
    MakeAllStale();
}

void Damage::Seal(HRGN part, HDC context) {
    CombineRgn(stale_, stale_, part, RGN_DIFF);
    seal_ = GetSurfaceRevision(context);
}

PartialRepaint::PartialRepaint(Damage& record, HDC context, HRGN wanted, HRGN drawable)
    : record_(record), context_(context), drawable_(drawable) {
    CombineRgn(part_, record.Stale(), wanted, wanted ? RGN_AND : RGN_COPY);
    needed_ = !part_.Box().IsRectEmpty();
    if (!needed_) return;
    hadClip_ = GetClipRgn(context_, clip_) == 1;
    Confine(part_);
}

void PartialRepaint::Confine(HRGN to) const {
    const Region confined;
    CombineRgn(confined, to, drawable_, RGN_AND);
    SelectClipRgn(context_, confined);
}

PartialRepaint::~PartialRepaint() {
    if (needed_) SelectClipRgn(context_, hadClip_ ? HRGN(clip_) : HRGN());
}

}  // namespace qkui
