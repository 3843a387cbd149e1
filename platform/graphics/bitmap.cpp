// Bitmaps: images whose pixels can be made, read and written one by one or through a lock.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include <platform/gdiplus.h>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/scale.h"

namespace platform {
namespace {

using Gdiplus::PixelFormat32bppARGB;
using Gdiplus::PixelFormat32bppPARGB;
using Gdiplus::PixelFormat32bppRGB;

bool IsKnown(Gdiplus::PixelFormat format) {
    return format == PixelFormat32bppARGB || format == PixelFormat32bppPARGB || format == PixelFormat32bppRGB;
}

// The size in units of `scale` pixels.
std::shared_ptr<ImageData> MakeBitmap(int width, int height, Gdiplus::PixelFormat format, int scale = 1) {
    if (!IsKnown(format) || !Surface::IsPossible(width, height))
        return ImageData::Failed(Gdiplus::InvalidParameter);
    auto image = ImageData::FromSurface(
        Surface::Create(ScaledLength(width, scale), ScaledLength(height, scale)), format);
    image->SetScale(scale);
    image->RestoreOpacity();
    return image;
}

std::shared_ptr<ImageData> CopyBitmap(HBITMAP bitmap) {
    std::shared_ptr<Surface> from;
    {
        const std::lock_guard lock(Gdi().mutex);
        if (const GdiBitmap* const found = Gdi().bitmaps.Find(bitmap)) from = found->surface;
    }
    if (!from) return ImageData::Failed(Gdiplus::InvalidParameter);
    std::shared_ptr<Surface> copy = Surface::CreateUnset(from->Width(), from->Height());
    if (copy) {
        CopyPixels(*copy, CRect(0, 0, copy->Width(), copy->Height()), *from, 0, 0);
        copy->SetScale(from->Scale());
    }
    return ImageData::FromSurface(std::move(copy), PixelFormat32bppARGB);
}

// Between premultiplied rows and the format of a lock.
void Export(std::uint32_t* to, const std::uint32_t* from, std::size_t count, Gdiplus::PixelFormat format) {
    if (format == PixelFormat32bppPARGB) {
        std::memcpy(to, from, count * 4);
        return;
    }
    UnpremultiplyRow(to, from, count);
    if (format == PixelFormat32bppRGB) MakeOpaqueRow(to, to, count);
}

void Import(std::uint32_t* to, const std::uint32_t* from, std::size_t count, Gdiplus::PixelFormat format) {
    if (format == PixelFormat32bppPARGB)
        ClampPremultipliedRow(to, from, count);
    else if (format == PixelFormat32bppRGB)
        MakeOpaqueRow(to, from, count);
    else
        PremultiplyRow(to, from, count);
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

using platform::ImageData;
using platform::Surface;

// An open lock: which pixels, and the memory that shows them to the caller.
struct Bitmap::Lock {
    CRect rect;
    UINT flags;
    Gdiplus::PixelFormat format;
    std::vector<std::uint32_t> own;
    std::byte* scan;
    std::ptrdiff_t stride;

    std::uint32_t* Row(int y) const { return reinterpret_cast<std::uint32_t*>(scan + y * stride); }
    std::size_t Width() const { return static_cast<std::size_t>(rect.Width()); }
};

Bitmap::Bitmap(LPCWSTR path, BOOL) : Image(ImageData::FromFile(path)) {}

Bitmap::Bitmap(IStream* stream, BOOL colorManagement) : Image(stream, colorManagement) {}

Bitmap::Bitmap(INT width, INT height, Gdiplus::PixelFormat format)
    : Image(platform::MakeBitmap(width, height, format)) {}

Bitmap::Bitmap(INT width, INT height, Graphics* target)
    : Image(target ? platform::MakeBitmap(width, height, PixelFormat32bppARGB, target->GetScale())
                   : ImageData::Failed(InvalidParameter)) {}

Bitmap::Bitmap(HBITMAP bitmap) : Image(platform::CopyBitmap(bitmap)) {}

Bitmap::Bitmap(std::shared_ptr<ImageData> data) : Image(std::move(data)) {}

Bitmap* Bitmap::Clone() const {
    std::shared_ptr<ImageData> data = data_->Clone();
    last_ = data ? Ok : data_->LoadStatus() != Ok ? data_->LoadStatus() : OutOfMemory;
    return data ? new Bitmap(std::move(data)) : nullptr;
}

Status Bitmap::GetPixel(INT x, INT y, Color* color) const {
    if (!color || x < 0 || y < 0 || x >= data_->Width() || y >= data_->Height())
        return last_ = InvalidParameter;
    color->SetValue(platform::Unpremultiply(std::as_const(*data_->Pixels()).Row(y)[x]));
    return last_ = Ok;
}

Status Bitmap::SetPixel(INT x, INT y, const Color& color) {
    if (x < 0 || y < 0 || x >= data_->Width() || y >= data_->Height()) return last_ = InvalidParameter;
    const std::shared_ptr<Surface> surface = data_->Writable();
    if (!surface) return last_ = OutOfMemory;
    const ARGB value = color.GetValue();
    surface->Row(y)[x] = data_->IsOpaqueFormat() ? value | 0xFF000000U : platform::Premultiply(value);
    surface->Touch();
    return last_ = Ok;
}

Status Bitmap::LockBits(const Rect* rect, UINT flags, Gdiplus::PixelFormat format, BitmapData* data) try {
    if (!data_->IsGood() || !data || !platform::IsKnown(format) ||
        (flags & (ImageLockModeRead | ImageLockModeWrite)) == 0)
        return last_ = InvalidParameter;
    if (lock_) return last_ = WrongState;
    const CRect whole(0, 0, data_->Width(), data_->Height());
    CRect wanted = whole;
    if (rect) {
        if (rect->X < 0 || rect->Y < 0 || rect->Width < 1 || rect->Height < 1 ||
            rect->X > whole.right - rect->Width || rect->Y > whole.bottom - rect->Height)
            return last_ = InvalidParameter;
        wanted = CRect(rect->X, rect->Y, rect->X + rect->Width, rect->Y + rect->Height);
    }
    auto lock = std::make_shared<Lock>();
    lock->rect = wanted;
    lock->flags = flags;
    lock->format = format;
    const std::ptrdiff_t pitch = std::ptrdiff_t{wanted.Width()} * 4;
    if (flags & ImageLockModeUserInputBuf) {
        const std::ptrdiff_t stride = data->Stride;
        if (!data->Scan0 || stride % 4 != 0 || std::abs(stride) < pitch ||
            reinterpret_cast<std::uintptr_t>(data->Scan0) % 4 != 0)
            return last_ = InvalidParameter;
        lock->scan = static_cast<std::byte*>(data->Scan0);
        lock->stride = stride;
    } else {
        lock->own.resize(lock->Width() * static_cast<std::size_t>(wanted.Height()));
        lock->scan = reinterpret_cast<std::byte*>(lock->own.data());
        lock->stride = pitch;
    }
    if (flags & ImageLockModeRead) {
        const Surface& pixels = *data_->Pixels();
        for (int y = 0; y < wanted.Height(); ++y)
            platform::Export(lock->Row(y), pixels.Row(wanted.top + y) + wanted.left, lock->Width(), format);
    }
    *data = {static_cast<UINT>(wanted.Width()),
             static_cast<UINT>(wanted.Height()),
             static_cast<INT>(lock->stride),
             format,
             lock->scan,
             0};
    lock_ = std::move(lock);
    return last_ = Ok;
} catch (const std::bad_alloc&) {
    return last_ = OutOfMemory;
}

Status Bitmap::UnlockBits(BitmapData* data) {
    if (!data) return last_ = InvalidParameter;
    if (!lock_) return last_ = WrongState;
    const std::shared_ptr<Lock> lock = std::exchange(lock_, nullptr);
    if (!(lock->flags & ImageLockModeWrite)) return last_ = Ok;
    // The image may have been turned meanwhile.
    if (lock->rect.right > data_->Width() || lock->rect.bottom > data_->Height()) return last_ = WrongState;
    const std::shared_ptr<Surface> surface = data_->Writable();
    if (!surface) return last_ = OutOfMemory;
    for (int y = 0; y < lock->rect.Height(); ++y) {
        std::uint32_t* const row = surface->Row(lock->rect.top + y) + lock->rect.left;
        platform::Import(row, lock->Row(y), lock->Width(), lock->format);
        if (data_->IsOpaqueFormat()) platform::MakeOpaqueRow(row, row, lock->Width());
    }
    surface->Touch();
    return last_ = Ok;
}

}  // namespace Gdiplus
