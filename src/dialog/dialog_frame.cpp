#include "dialog/dialog_frame.h"

#include <utility>

QKFrame::~QKFrame() {
    Release();
}

void QKFrame::Release() {
    SetFirstUseProc(context_, nullptr, nullptr);
    SelectObject(context_, HBITMAP());
    DeleteObject(bitmap_);
    DeleteDC(context_);
    bitmap_ = nullptr;
    context_ = nullptr;
    bits_ = nullptr;
    width_ = height_ = 0;
}

bool QKFrame::Prepare(HDC compatible, int width, int height) {
    // The host may have taken the bitmap out, and may even have deleted one of the two.
    const bool mine = bitmap_ && SelectObject(context_, bitmap_) == bitmap_;
    if (mine && width == width_ && height == height_) return true;
    if (context_) Release();
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    context_ = CreateCompatibleDC(compatible);
    bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_);
    if (!bitmap_) {
        Release();
        return false;
    }
    SelectObject(context_, bitmap_);
    width_ = width;
    height_ = height;
    MakeAllStale();
    return true;
}

void QKFrame::HandOut(const Gdiplus::Bitmap* under) {
    SelectClipRgn(context_, HRGN());
    underlay_.Take(under);
    untouched_ = SetFirstUseProc(context_, &QKFrame::StartOver, this);
}

bool QKFrame::TakeBack() {
    SetFirstUseProc(context_, nullptr, nullptr);
    return std::exchange(untouched_, false);
}

void QKFrame::Withdraw() {
    TakeBack();
    underlay_.Take(nullptr);
}

// Somebody wants the surface before the frame is on it.
void QKFrame::StartOver(void* frame) {
    QKFrame& self = *static_cast<QKFrame*>(frame);
    self.untouched_ = false;
    self.seal_ = 0;
    self.MakeAllStale();
    self.RestoreUnderlay(self.stale_);
}

void QKFrame::RestoreUnderlay(const QKRegion& region) {
    const QKUnderlay::Pixels pixels{static_cast<std::uint32_t*>(bits_), width_, height_};
    region.ForEachRect([&](const CRect& rect) { underlay_.Restore(pixels, rect); });
    GdiFlush();
}

QKFrameInputs& QKFrame::NewInputs() {
    coming_.Clear();
    return coming_;
}

void QKFrame::TakeInputs() {
    if (GetSurfaceRevision(context_) != seal_ || underlay_.Revision() != underlayRevision_) MakeAllStale();
    underlayRevision_ = underlay_.Revision();

    const QKRegion now;
    GetDrawableRgn(context_, now);
    CombineRgn(drawable_, drawable_, now, RGN_XOR);
    CombineRgn(stale_, stale_, drawable_, RGN_OR);
    drawable_.Copy(now);

    QKFrameInputs::Difference(current_, coming_, stale_);
    std::swap(current_, coming_);
    now.Set(CRect(0, 0, width_, height_));
    CombineRgn(stale_, stale_, now, RGN_AND);
}

void QKFrame::MakeAllStale() {
    stale_.Set(CRect(0, 0, width_, height_));
}

CRect QKFrame::TakeChanges() {
    const CRect repaired = std::exchange(changed_, CRect());
    const bool sealed = !untouched_ && GetSurfaceRevision(context_) == seal_;
    return sealed ? repaired : CRect(0, 0, width_, height_);
}

QKFrameRepair::QKFrameRepair(QKFrame& frame, HRGN wanted) : frame_(frame) {
    CombineRgn(part_, frame.stale_, wanted, wanted ? RGN_AND : RGN_COPY);
    needed_ = !part_.Box().IsRectEmpty();
    if (!needed_) return;
    frame.RestoreUnderlay(part_);
    hadClip_ = GetClipRgn(frame.context_, clip_) == 1;
    const QKRegion confined;
    CombineRgn(confined, part_, frame.drawable_, RGN_AND);
    SelectClipRgn(frame.context_, confined);
}

QKFrameRepair::~QKFrameRepair() {
    if (needed_) SelectClipRgn(frame_.context_, hadClip_ ? HRGN(clip_) : HRGN());
}

void QKFrameRepair::Done() {
    CombineRgn(frame_.stale_, frame_.stale_, part_, RGN_DIFF);
    frame_.seal_ = GetSurfaceRevision(frame_.context_);
    frame_.changed_.UnionRect(CRect(frame_.changed_), part_.Box());
}
