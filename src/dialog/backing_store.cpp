#include "dialog/backing_store.h"

#include <utility>

namespace qkui {

BackingStore::~BackingStore() {
    Release();
}

void BackingStore::Release() {
    SetFirstUseProc(context_, nullptr, nullptr);
    SelectObject(context_, HBITMAP());
    DeleteObject(bitmap_);
    DeleteDC(context_);
    bitmap_ = nullptr;
    context_ = nullptr;
    bits_ = nullptr;
    damage_.Resize(0, 0);
}

bool BackingStore::Prepare(HDC compatible, int width, int height) {
    // The host may have taken the bitmap out, and may even have deleted one of the two.
    const bool mine = bitmap_ && SelectObject(context_, bitmap_) == bitmap_;
    const int scale = GetDeviceScale(compatible);
    if (mine && scale == scale_ && width == damage_.Width() && height == damage_.Height()) return true;
    if (context_) Release();
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width * scale;
    info.bmiHeader.biHeight = -height * scale;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    context_ = CreateCompatibleDC(compatible);
    bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_);
    if (!bitmap_) {
        Release();
        return false;
    }
    SetBitmapScale(bitmap_, scale);
    scale_ = scale;
    SelectObject(context_, bitmap_);
    damage_.Resize(width, height);
    return true;
}

void BackingStore::Lend(const Gdiplus::Bitmap* under) {
    SelectClipRgn(context_, HRGN());
    underlay_.Take(under);
    untouched_ = SetFirstUseProc(context_, &BackingStore::StartOver, this);
}

bool BackingStore::TakeBack() {
    SetFirstUseProc(context_, nullptr, nullptr);
    return std::exchange(untouched_, false);
}

void BackingStore::Withdraw() {
    TakeBack();
    underlay_.Take(nullptr);
}

// Somebody wants the surface before the frame is on it.
void BackingStore::StartOver(void* frame) {
    BackingStore& self = *static_cast<BackingStore*>(frame);
    self.untouched_ = false;
    self.damage_.Void();
    self.damage_.AddAll();
    self.RestoreUnderlay(self.damage_.Area());
}

void BackingStore::RestoreUnderlay(const Region& region) {
    const Underlay::Pixels pixels{static_cast<std::uint32_t*>(bits_), damage_.Width() * scale_,
                                  damage_.Height() * scale_};
    region.ForEachRect([&](const CRect& rect) {
        underlay_.Restore(
            pixels, CRect(rect.left * scale_, rect.top * scale_, rect.right * scale_, rect.bottom * scale_));
    });
    GdiFlush();
}

void BackingStore::TakeSurroundings() {
    if (!damage_.IsValid(context_) || underlay_.Revision() != underlayRevision_) damage_.AddAll();
    underlayRevision_ = underlay_.Revision();
    const Region now;
    GetDrawableRgn(context_, now);
    CombineRgn(drawable_, drawable_, now, RGN_XOR);
    damage_.Add(drawable_);
    drawable_.Copy(now);
}

CRect BackingStore::TakeChanges() {
    const CRect changed = std::exchange(changed_, CRect());
    const bool valid = !untouched_ && damage_.IsValid(context_);
    return valid ? changed : CRect(0, 0, damage_.Width(), damage_.Height());
}

}  // namespace qkui
