#include "dialog/damage.h"

#include <utility>
#include <vector>

namespace qkui {

DisplayList& Damage::NewList() {
    coming_.Clear();
    return coming_;
}

void Damage::TakeList() {
    const std::vector<CRect> differing = DisplayList::Difference(current_, coming_);
    std::swap(current_, coming_);
    const Region part;
    for (const CRect& one : differing) {
        CRect inside;
        if (!inside.IntersectRect(one, Whole())) continue;
        part.Set(inside);
        CombineRgn(area_, area_, part, RGN_OR);
        empty_ = false;
    }
}

void Damage::Add(HRGN region) {
    const Region inside;
    inside.Set(Whole());
    CombineRgn(inside, inside, region, RGN_AND);
    empty_ = CombineRgn(area_, area_, inside, RGN_OR) == NULLREGION;
}

void Damage::AddAll() {
    area_.Set(Whole());
    empty_ = Whole().IsRectEmpty();
}

void Damage::Resize(int width, int height) {
    width_ = width;
    height_ = height;
    AddAll();
}

void Damage::Repainted(HRGN part, HDC context) {
    empty_ = CombineRgn(area_, area_, part, RGN_DIFF) == NULLREGION;
    revision_ = GetSurfaceRevision(context);
}

PartialRepaint::PartialRepaint(Damage& damage, HDC context, HRGN wanted, HRGN drawable)
    : damage_(damage), context_(context), drawable_(drawable) {
    needed_ = CombineRgn(part_, damage.Area(), wanted, wanted ? RGN_AND : RGN_COPY) > NULLREGION;
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
