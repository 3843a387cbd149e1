// Animated pictures of every make, sound and damaged: a frame shows the same however it is reached, and a
// sound picture shows what was written.
#include <QKUILib.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "support/random_gif.h"

namespace {

using namespace Gdiplus;
using kit::Bytes;
using kit::RandomGif;
using kit::RandomInput;
using kit::Screen;

// Damage can make hundreds of frames, and screens on which each costs much.
constexpr UINT kMostFrames = 16;
constexpr UINT kMostPixels = 1 << 16;
constexpr INT kDrawnSide = 24;

void Expect(bool right) {
    if (!right) __builtin_trap();
}

std::unique_ptr<Bitmap> Load(const Bytes& bytes) {
    const HGLOBAL block = GlobalAlloc(GMEM_FIXED, bytes.size());
    if (void* memory = GlobalLock(block))
        std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(memory));
    IStream* stream = nullptr;
    Expect(SUCCEEDED(CreateStreamOnHGlobal(block, TRUE, &stream)));
    auto picture = std::make_unique<Bitmap>(stream);
    stream->Release();
    return picture;
}

Screen PixelsOf(Bitmap& bitmap) {
    BitmapData data{};
    Expect(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data) == Ok);
    Screen pixels;
    for (UINT y = 0; y < data.Height; ++y) {
        const auto* row = reinterpret_cast<const ARGB*>(static_cast<const char*>(data.Scan0) +
                                                        static_cast<INT>(y) * data.Stride);
        pixels.insert(pixels.end(), row, row + data.Width);
    }
    Expect(bitmap.UnlockBits(&data) == Ok);
    return pixels;
}

Screen Stretched(Bitmap& bitmap) {
    Bitmap target(kDrawnSide, kDrawnSide);
    Expect(Graphics(&target).DrawImage(&bitmap, 0, 0, kDrawnSide, kDrawnSide) == Ok);
    return PixelsOf(target);
}

std::vector<std::uint32_t> DelaysOf(const Bitmap& picture) {
    const UINT size = picture.GetPropertyItemSize(PropertyTagFrameDelay);
    if (size == 0) return {};
    std::vector<PropertyItem> block(size / sizeof(PropertyItem) + 1);
    Expect(picture.GetPropertyItem(PropertyTagFrameDelay, size, block.data()) == Ok);
    std::vector<std::uint32_t> delays(block[0].length / 4);
    std::memcpy(delays.data(), block[0].value, block[0].length);
    return delays;
}

// What an image shows of a frame that it was sent to right after loading.
struct Reached {
    Status status;
    Screen pixels;
    Screen stretched;
};

class Player {
  public:
    explicit Player(const RandomGif& animation) : animation_(animation), image_(Load(animation.Written())) {
        if (animation.IsSound()) screens_ = kit::ScreensOf(animation.Description());
    }

    void Play(RandomInput& input) {
        const bool isGood = image_->GetLastStatus() == Ok;
        Expect(isGood || !animation_.IsSound());
        if (!isGood) {
            Expect(image_->GetWidth() == 0 && image_->GetHeight() == 0);
            Expect(image_->GetFrameDimensionsCount() == 0);
            return;
        }
        width_ = image_->GetWidth();
        height_ = image_->GetHeight();
        Expect(image_->GetFrameDimensionsList(&dimension_, 1) == Ok);
        count_ = image_->GetFrameCount(&dimension_);
        Expect(width_ > 0 && height_ > 0 && count_ > 0);
        const std::vector<std::uint32_t> delays = DelaysOf(*image_);
        Expect(delays.empty() || delays.size() == count_);
        if (animation_.IsSound()) {
            const kit::GifFile& wanted = animation_.Description();
            Expect(width_ == static_cast<UINT>(wanted.width) && height_ == static_cast<UINT>(wanted.height));
            Expect(count_ == wanted.images.size());
            Expect(delays == kit::DelaysOf(wanted));
        }
        if (std::uint64_t{width_} * height_ > kMostPixels) {
            for (UINT frame = 0; frame < std::min(count_, 3U); ++frame)
                image_->SelectActiveFrame(&dimension_, frame);
            return;
        }
        Wander(input);
    }

  private:
    void Wander(RandomInput& input) {
        const UINT frames = std::min(count_, kMostFrames);
        for (UINT frame = 0; frame < frames; ++frame)
            reached_.push_back(Reach(frame));
        Expect(reached_[0].status == Ok);
        Expect(image_->SelectActiveFrame(&dimension_, count_) == InvalidParameter);
        Look(*image_, 0);

        std::unique_ptr<Bitmap> clone(image_->Clone());
        UINT at = 0;
        UINT cloneAt = 0;
        const UINT most = frames + 12;
        for (UINT moves = 0; moves < most && (moves <= frames || !input.IsEmpty()); ++moves) {
            const unsigned move = input.Byte();
            const bool movesClone = (move & 4) != 0;
            Bitmap& image = movesClone ? *clone : *image_;
            UINT& shown = movesClone ? cloneAt : at;
            const UINT frame = (move & 3) == 3 ? (move >> 3) % frames : (shown + 1) % frames;
            Expect(image.SelectActiveFrame(&dimension_, frame) == reached_[frame].status);
            // A damaged frame leaves the one that shows.
            if (reached_[frame].status == Ok) shown = frame;
            Look(image, shown);
            if (move == 0xFF) {
                clone.reset(image_->Clone());
                cloneAt = at;
            }
        }
        Look(*image_, at);
        Look(*clone, cloneAt);
    }
    Reached Reach(UINT frame) const {
        const std::unique_ptr<Bitmap> fresh = Load(animation_.Written());
        const Status status = fresh->SelectActiveFrame(&dimension_, frame);
        Reached reached{status, PixelsOf(*fresh), Stretched(*fresh)};
        if (animation_.IsSound()) Expect(status == Ok && reached.pixels == screens_[frame]);
        return reached;
    }
    void Look(Bitmap& image, UINT frame) const {
        Expect(image.GetWidth() == width_ && image.GetHeight() == height_);
        Expect(PixelsOf(image) == reached_[frame].pixels);
        Expect(Stretched(image) == reached_[frame].stretched);
    }

    const RandomGif& animation_;
    std::vector<std::optional<Screen>> screens_;  // of a sound one
    std::unique_ptr<Bitmap> image_;
    FrameDimension dimension_{};
    UINT count_ = 0;
    UINT width_ = 0;
    UINT height_ = 0;
    std::vector<Reached> reached_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RandomInput input(data, size);
    const RandomGif animation(input);
    Player(animation).Play(input);
    return 0;
}
