// Images in tests: made of plain pixels, or of frames that are made up.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <platform/gdiplus.h>

#include "graphics/picture_kit.h"
#include "platform/graphics/image_data.h"

namespace kit {

inline std::unique_ptr<Gdiplus::Bitmap> MakeBitmap(const Pixels& pixels) {
    auto bitmap = std::make_unique<Gdiplus::Bitmap>(pixels.width, pixels.height);
    Gdiplus::BitmapData data{};
    EXPECT_EQ(Gdiplus::Ok,
              bitmap->LockBits(nullptr, Gdiplus::ImageLockModeWrite, Gdiplus::PixelFormat32bppPARGB, &data));
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            reinterpret_cast<std::uint32_t*>(static_cast<char*>(data.Scan0) + y * data.Stride)[x] =
                pixels.At(x, y);
    EXPECT_EQ(Gdiplus::Ok, bitmap->UnlockBits(&data));
    return bitmap;
}

inline Pixels PixelsOf(const Gdiplus::Image& image) {
    return PixelsOf(*image.Data()->Pixels());
}

inline Pixels Scattered(Dice& dice, int width, int height, bool opaque = false) {
    Pixels pixels(width, height);
    for (std::uint32_t& word : pixels.words)
        word = opaque ? dice.Next() | 0xFF000000U : dice.Premultiplied();
    return pixels;
}

// Plain frames; counts how often each is asked for. A frame of width 0 is a damaged one.
class MadeUpPicture final : public platform::EncodedPicture {
  public:
    MadeUpPicture(std::vector<Pixels> frames, std::vector<std::uint32_t> delays, int loops)
        : frames_(std::move(frames)), delays_(std::move(delays)), loops_(loops) {}
    int Width() const override { return frames_[0].width; }
    int Height() const override { return frames_[0].height; }
    int FrameCount() const override { return static_cast<int>(frames_.size()); }
    const std::vector<std::uint32_t>& Delays() const override { return delays_; }
    int LoopCount() const override { return loops_; }
    std::shared_ptr<platform::Surface> Frame(int index) override {
        const Pixels& frame = frames_[static_cast<std::size_t>(index)];
        if (frame.width == 0) return {};
        auto surface = platform::Surface::Create(frame.width, frame.height);
        for (int y = 0; y < frame.height; ++y)
            for (int x = 0; x < frame.width; ++x)
                surface->Row(y)[x] = frame.At(x, y);
        return surface;
    }

  private:
    std::vector<Pixels> frames_;
    std::vector<std::uint32_t> delays_;
    int loops_;
};

class MadeUpImage final : public Gdiplus::Image {
  public:
    explicit MadeUpImage(std::vector<Pixels> frames, std::vector<std::uint32_t> delays = {}, int loops = -1)
        : Image(platform::ImageData::FromPicture(
              std::make_unique<MadeUpPicture>(std::move(frames), std::move(delays), loops))) {}
};

}  // namespace kit
