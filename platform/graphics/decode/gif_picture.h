// Animated pictures, composed from their encoded bytes frame by frame.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/graphics/decode/gif_index.h"
#include "platform/graphics/decode/gif_pixels.h"
#include "platform/graphics/decode/picture.h"

namespace platform {

// Keeps the encoded bytes, the screen as the last asked frame left it, and a few earlier screens, evenly
// spread, to start from when an earlier frame is asked for. However many frames there are, the pixels kept
// stay below kKeptBytes, besides the one screen.
class GifPicture final : public EncodedPicture {
  public:
    static constexpr std::size_t kKeptBytes = std::size_t{8} << 20;

    static std::unique_ptr<EncodedPicture> Open(std::vector<std::uint8_t> bytes, Gdiplus::Status& status);
    int Width() const override { return index_.width; }
    int Height() const override { return index_.height; }
    int FrameCount() const override { return static_cast<int>(index_.frames.size()); }
    const std::vector<std::uint32_t>& Delays() const override { return index_.delays; }
    int LoopCount() const override { return index_.loopCount; }
    std::shared_ptr<Surface> Frame(int index) override;

  private:
    using Screen = std::vector<std::uint32_t>;  // width x height, premultiplied
    struct Place {                              // the part of a frame that is on the screen
        int left, top, right, bottom;
    };

    GifPicture() = default;
    Place PlaceOf(const GifFrame& frame) const;
    bool Covers(int index) const;
    bool StartsAnew(int index) const;
    void Compose(int index);
    bool Restart(int index);
    void Dispose(int index);
    void KeepScreen(int index);
    std::optional<GifPixels> Unpack(int index);
    void Show(int index, const std::optional<GifPixels>& pixels);
    void Paste(const GifFrame& frame, const GifPixels& pixels);
    std::uint32_t* At(int x, int y) {
        return screen_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(index_.width) +
               static_cast<std::size_t>(x);
    }

    std::vector<std::uint8_t> bytes_;
    GifIndex index_;
    std::vector<bool> damaged_;  // by frame: known to be
    int keepEvery_ = 0;          // frames; 0 when not even one screen may be kept
    int shown_ = -1;             // the frame on the screen, -1 for none
    Screen screen_;
    Screen under_;                // what the shown frame covers, when it is to be taken off again
    std::map<int, Screen> kept_;  // by frame: the screen that it is drawn on
};

}  // namespace platform
