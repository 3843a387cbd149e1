// Icons: pictures behind handles of their own.
#include <algorithm>

#include <platform/gdiplus.h>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/resample.h"

namespace platform {
namespace {

std::shared_ptr<GdiIcon> ShareIcon(HICON icon) {
    GdiTables& gdi = Gdi();
    const std::lock_guard lock(gdi.mutex);
    std::shared_ptr<GdiIcon> found = gdi.icons.Share(icon);
    if (!found) SetLastError(ERROR_INVALID_HANDLE);
    return found;
}

// Its pixels are shared with the picture until that changes.
HICON MakeIcon(ImageData& image) {
    std::shared_ptr<ImageData> copy = image.Clone();
    if (!copy) return {};
    GdiTables& gdi = Gdi();
    const std::lock_guard lock(gdi.mutex);
    return gdi.icons.Insert(std::make_shared<GdiIcon>(GdiIcon{std::move(copy)}));
}

}  // namespace

std::shared_ptr<const Surface> IconPicture(HICON icon, int longestSide) {
    const std::shared_ptr<GdiIcon> found = ShareIcon(icon);
    if (!found || !found->image->IsGood()) return {};
    const Surface& pixels = *found->image->Pixels();
    const int longest = std::max({pixels.Width(), pixels.Height(), longestSide});
    const auto scaled = [&](int side) { return std::max(1, side * longestSide / longest); };
    Scaling scaling;
    scaling.sourceWidth = pixels.Width();
    scaling.sourceHeight = pixels.Height();
    scaling.right = scaling.width = scaled(pixels.Width());
    scaling.bottom = scaling.height = scaled(pixels.Height());
    scaling.filter = Filter::Smooth;
    return Resample(pixels, scaling);
}

}  // namespace platform

HICON CopyIcon(HICON icon) {
    const std::shared_ptr<platform::GdiIcon> found = platform::ShareIcon(icon);
    return found ? platform::MakeIcon(*found->image) : HICON();
}

BOOL DestroyIcon(HICON icon) {
    platform::GdiTables& gdi = platform::Gdi();
    std::shared_ptr<platform::GdiIcon> gone;
    {
        const std::lock_guard lock(gdi.mutex);
        gone = gdi.icons.Remove(icon);
    }
    if (!gone) SetLastError(ERROR_INVALID_HANDLE);
    return gone != nullptr;
}

namespace Gdiplus {

Status Bitmap::GetHICON(HICON* icon) const {
    if (!icon) return last_ = InvalidParameter;
    *icon = platform::MakeIcon(*data_);
    return last_ = *icon ? Ok : data_->IsGood() ? OutOfMemory : data_->LoadStatus();
}

Bitmap* Bitmap::FromHICON(HICON icon) {
    const std::shared_ptr<platform::GdiIcon> found = platform::ShareIcon(icon);
    return new Bitmap(found ? found->image->Clone() : platform::ImageData::Failed(InvalidParameter));
}

}  // namespace Gdiplus
