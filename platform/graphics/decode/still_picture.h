// Pictures of one frame, decoded by the picture library.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/decode/signature.h"

namespace platform {

// Null with `status` set when nothing can be shown of the bytes. What is missing from a picture whose data
// ends or turns bad within it is transparent, or black in formats without alpha, or what the decoder of a
// JPEG guesses.
std::shared_ptr<Surface> DecodeStill(PictureKind kind, std::span<const std::uint8_t> bytes,
                                     Gdiplus::Status& status);

// One frame without delays. The pixels decoded to find out whether the picture is sound are handed out by
// the first Frame(0) and not kept; asked again, the picture decodes again.
class StillPicture final : public EncodedPicture {
  public:
    using Decoder = std::shared_ptr<Surface> (*)(PictureKind, std::span<const std::uint8_t>,
                                                 Gdiplus::Status&);

    static std::unique_ptr<EncodedPicture> Open(PictureKind kind, std::vector<std::uint8_t> bytes,
                                                Decoder decode, Gdiplus::Status& status);
    int Width() const override { return width_; }
    int Height() const override { return height_; }
    int FrameCount() const override { return 1; }
    const std::vector<std::uint32_t>& Delays() const override { return delays_; }
    int LoopCount() const override { return -1; }
    std::shared_ptr<Surface> Frame(int index) override;

  private:
    StillPicture() = default;
    PictureKind kind_ = PictureKind::Unknown;
    std::vector<std::uint8_t> bytes_;
    Decoder decode_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> delays_;
    std::shared_ptr<Surface> first_;
};

}  // namespace platform
