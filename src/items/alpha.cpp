// One alpha for everything that a bitmap shows.
#include <cstdint>

#include <qkui/dialog/dialog_base.h>

void CQKDialogBase::SetALPH255(Gdiplus::Bitmap* bitmap, int alpha) {
    constexpr std::uint32_t kColour = 0x00FFFFFF;
    const std::uint32_t newAlpha = static_cast<std::uint32_t>(alpha & 0xFF) << 24U;
    Gdiplus::BitmapData data = {};
    if (!bitmap || bitmap->LockBits(nullptr, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeWrite,
                                    Gdiplus::PixelFormat32bppARGB, &data) != Gdiplus::Ok)
        return;
    for (UINT y = 0; y < data.Height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(static_cast<std::byte*>(data.Scan0) +
                                                     static_cast<std::ptrdiff_t>(y) * data.Stride);
        for (UINT x = 0; x < data.Width; ++x)
            if (row[x] & kColour) row[x] = (row[x] & kColour) | newAlpha;
    }
    bitmap->UnlockBits(&data);
}
