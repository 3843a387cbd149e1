#include "dialog/dialog_frame.h"

#include <algorithm>
#include <utility>

#include <platform/gdiplus.h>

void QKFrameInputs::Clear() {
    values_.clear();
    steps_.clear();
}

void QKFrameInputs::Begin() {
    steps_.push_back({values_.size(), CRect()});
}

void QKFrameInputs::Add(const RECT& rect) {
    for (const LONG value : {rect.left, rect.top, rect.right, rect.bottom})
        values_.push_back(static_cast<std::uint64_t>(value));
}

void QKFrameInputs::Touches(const RECT& rect) {
    CRect& touched = steps_.back().touched;
    touched.UnionRect(CRect(touched), rect);
}

std::size_t QKFrameInputs::End(std::size_t step) const {
    return step + 1 < steps_.size() ? steps_[step + 1].first : values_.size();
}

bool QKFrameInputs::SameStep(const QKFrameInputs& other, std::size_t step) const {
    const auto at = [](const QKFrameInputs& inputs, std::size_t index) {
        return inputs.values_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return steps_[step].touched == other.steps_[step].touched &&
           std::equal(at(*this, steps_[step].first), at(*this, End(step)),
                      at(other, other.steps_[step].first), at(other, other.End(step)));
}

void QKFrameInputs::Difference(const QKFrameInputs& before, const QKFrameInputs& after, HRGN region) {
    // A region of many rectangles costs more than the pixels it saves: beyond this many, their box counts.
    constexpr std::size_t kMaxRects = 32;
    std::vector<CRect> changed;
    const auto add = [&](const CRect& touched) {
        if (changed.size() < kMaxRects)
            changed.push_back(touched);
        else
            changed.back().UnionRect(CRect(changed.back()), touched);
    };
    const std::size_t steps = std::max(before.steps_.size(), after.steps_.size());
    for (std::size_t i = 0; i < steps; ++i) {
        const bool inBoth = i < before.steps_.size() && i < after.steps_.size();
        if (inBoth && before.SameStep(after, i)) continue;
        if (i < before.steps_.size()) add(before.steps_[i].touched);
        if (i < after.steps_.size()) add(after.steps_[i].touched);
    }
    if (changed.empty()) return;
    const HRGN rect = CreateRectRgn(0, 0, 0, 0);
    for (const CRect& touched : changed) {
        SetRectRgn(rect, touched.left, touched.top, touched.right, touched.bottom);
        CombineRgn(region, region, rect, RGN_OR);
    }
    DeleteObject(rect);
}

QKFrame::QKFrame() : stale_(CreateRectRgn(0, 0, 0, 0)), part_(CreateRectRgn(0, 0, 0, 0)) {}

QKFrame::~QKFrame() {
    Release();
    DeleteObject(stale_);
    DeleteObject(part_);
}

void QKFrame::Release() {
    if (context_) SelectObject(context_, HBITMAP());
    DeleteObject(bitmap_);
    DeleteDC(context_);
    bitmap_ = nullptr;
    context_ = nullptr;
    bits_ = nullptr;
    width_ = height_ = 0;
}

bool QKFrame::Prepare(HDC compatible, int width, int height, bool bottomUp) {
    if (context_ && width == width_ && height == height_ && bottomUp == bottomUp_) return true;
    Release();
    context_ = CreateCompatibleDC(compatible);
    if (bottomUp) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_);
    } else {
        bitmap_ = CreateCompatibleBitmap(compatible, width, height);
    }
    if (!bitmap_) {
        Release();
        return false;
    }
    SelectObject(context_, bitmap_);
    width_ = width;
    height_ = height;
    bottomUp_ = bottomUp;
    MakeAllStale();
    Seal();
    return true;
}

QKFrameInputs& QKFrame::NewInputs() {
    coming_.Clear();
    return coming_;
}

void QKFrame::TakeInputs() {
    QKFrameInputs::Difference(current_, coming_, stale_);
    std::swap(current_, coming_);
}

void QKFrame::MakeAllStale() {
    SetRectRgn(stale_, 0, 0, width_, height_);
}

bool QKFrame::BeginPart(HRGN wanted) {
    if (wanted)
        CombineRgn(part_, stale_, wanted, RGN_AND);
    else
        CombineRgn(part_, stale_, HRGN(), RGN_COPY);
    if (!ClipPart()) return false;
    Gdiplus::Graphics(context_).Clear(Gdiplus::Color(0, 0, 0, 0));
    SelectClipRgn(context_, HRGN());
    return true;
}

bool QKFrame::ClipPart() {
    if (SelectClipRgn(context_, part_) != NULLREGION) return true;
    SelectClipRgn(context_, HRGN());
    return false;
}

void QKFrame::EndPart() {
    SelectClipRgn(context_, HRGN());
    CombineRgn(stale_, stale_, part_, RGN_DIFF);
    SetRectRgn(part_, 0, 0, 0, 0);
}

bool QKFrame::IsWholePart() const {
    RECT box;
    return GetRgnBox(part_, &box) == SIMPLEREGION && CRect(box) == CRect(0, 0, width_, height_);
}

bool QKFrame::IsSealed() const {
    return GetSurfaceRevision(context_) == seal_;
}

void QKFrame::Seal() {
    seal_ = GetSurfaceRevision(context_);
}
