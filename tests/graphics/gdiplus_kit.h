// Images in tests: made of plain pixels, or of frames that are made up.
#pragma once

#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include <platform/gdiplus.h>

#include "graphics/picture_kit.h"
#include "platform/graphics/image_data.h"

namespace kit {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

inline std::unique_ptr<Gdiplus::Bitmap> MakeBitmap(const Pixels& pixels) {
    auto bitmap = std::make_unique<Gdiplus::Bitmap>(pixels.width, pixels.height);
    Put(*bitmap->Data()->Writable(), pixels);
    return bitmap;
}

inline Pixels PixelsOf(const Gdiplus::Image& image) {
    return PixelsOf(*image.Data()->Pixels());
}

// `pixels` after draw(graphics).
template <class Draw>
Pixels DrawnOn(const Pixels& pixels, const Draw& draw) {
    const auto bitmap = MakeBitmap(pixels);
    Gdiplus::Graphics graphics(bitmap.get());
    draw(graphics);
    return PixelsOf(*bitmap);
}
template <class Draw>
Pixels Drawn(int width, int height, const Draw& draw) {
    return DrawnOn(Pixels(width, height), draw);
}

inline Gdiplus::Rect RectOf(const RECT& rect) {
    return Gdiplus::Rect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

// Plain frames. One of width 0 is damaged.
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
        return frame.width == 0 ? nullptr : SurfaceOf(frame);
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
