// Encoded pictures: what a file or a resource holds, decoded frame by frame when asked.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <platform/gdiplus.h>

#include "platform/graphics/surface.h"

namespace platform {

// The limits that a picture's header must keep to, whatever its length.
constexpr int kMaxPictureSide = 32767;  // of a surface
constexpr std::int64_t kMaxPicturePixels = std::int64_t{1} << 26;

class EncodedPicture {
  public:
    virtual ~EncodedPicture() = default;
    virtual int Width() const = 0;
    virtual int Height() const = 0;
    virtual int FrameCount() const = 0;
    // Hundredths of a second as stored, one per frame; empty when the file stores none.
    virtual const std::vector<std::uint32_t>& Delays() const = 0;
    // Times to play, 0 for ever; -1 when the file does not say.
    virtual int LoopCount() const = 0;
    // The composed frame (disposal and transparency applied). Null when its data is damaged. Frames are
    // cheap in order; going back starts from the nearest kept frame.
    virtual std::shared_ptr<Surface> Frame(int index) = 0;
};

// Recognises the format by content. Null with `status` set to OutOfMemory, UnknownImageFormat (unknown,
// damaged, or beyond the limits) otherwise. Whatever was decoded of a still picture before its data ended or
// turned bad is shown. Of an animated one the frames that are whole play, and only they are counted: broken
// off within its first frame it is damaged. A damaged frame between others is counted, and never shown.
std::unique_ptr<EncodedPicture> OpenPicture(std::vector<std::uint8_t> bytes, Gdiplus::Status& status);

// Straight-alpha PNG of a surface.
std::vector<std::uint8_t> EncodePng(const Surface& surface);

}  // namespace platform
