#include "dialog/frame_record.h"

#include <utility>

QKFrameInputs& QKFrameRecord::NewInputs() {
    coming_.Clear();
    return coming_;
}

void QKFrameRecord::TakeInputs() {
    QKFrameInputs::Difference(current_, coming_, stale_);
    std::swap(current_, coming_);
    const QKRegion whole;
    whole.Set(Whole());
    CombineRgn(stale_, stale_, whole, RGN_AND);
}

void QKFrameRecord::AddStale(HRGN region) {
    CombineRgn(stale_, stale_, region, RGN_OR);
}

void QKFrameRecord::MakeAllStale() {
    stale_.Set(Whole());
}

void QKFrameRecord::Resize(int width, int height) {
    width_ = width;
    height_ = height;
    MakeAllStale();
}

void QKFrameRecord::Seal(HRGN part, HDC context) {
    CombineRgn(stale_, stale_, part, RGN_DIFF);
    seal_ = GetSurfaceRevision(context);
}

QKFrameRepair::QKFrameRepair(QKFrameRecord& record, HDC context, HRGN wanted, HRGN drawable)
    : record_(record), context_(context), drawable_(drawable) {
    CombineRgn(part_, record.Stale(), wanted, wanted ? RGN_AND : RGN_COPY);
    needed_ = !part_.Box().IsRectEmpty();
    if (!needed_) return;
    hadClip_ = GetClipRgn(context_, clip_) == 1;
    Confine(part_);
}

void QKFrameRepair::Confine(HRGN to) const {
    const QKRegion confined;
    CombineRgn(confined, to, drawable_, RGN_AND);
    SelectClipRgn(context_, confined);
}

QKFrameRepair::~QKFrameRepair() {
    if (needed_) SelectClipRgn(context_, hadClip_ ? HRGN(clip_) : HRGN());
}
