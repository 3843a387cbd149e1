// Pictures as strangers send them: load, step through the frames, read every pixel, draw.
#include <QKUILib.h>

#include <algorithm>
#include <cstring>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const HGLOBAL block = GlobalAlloc(GMEM_FIXED, size);
    if (void* bytes = GlobalLock(block)) std::copy_n(data, size, static_cast<std::uint8_t*>(bytes));
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(block, TRUE, &stream))) __builtin_trap();
    {
        Gdiplus::Bitmap picture(stream);
        const Gdiplus::FrameDimension time = Gdiplus::FrameDimensionTime;
        const UINT frames = std::min(picture.GetFrameCount(&time), 8U);
        for (UINT frame = 0; frame < frames; ++frame)
            picture.SelectActiveFrame(&time, frame);
        const UINT bytes = picture.GetPropertyItemSize(Gdiplus::PropertyTagFrameDelay);
        if (bytes != 0) {
            const auto buffer = std::make_unique<std::max_align_t[]>(bytes / sizeof(std::max_align_t) + 1);
            picture.GetPropertyItem(Gdiplus::PropertyTagFrameDelay, bytes,
                                    reinterpret_cast<Gdiplus::PropertyItem*>(buffer.get()));
        }
        Gdiplus::BitmapData pixels{};
        if (picture.LockBits(nullptr, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppARGB, &pixels) ==
            Gdiplus::Ok)
            picture.UnlockBits(&pixels);
        Gdiplus::Bitmap target(32, 32);
        Gdiplus::Graphics(&target).DrawImage(&picture, 0, 0, 32, 32);
    }
    stream->Release();
    return 0;
}
