#include "platform/graphics/decode/gif_picture.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/graphics/counters.h"
#include "platform/graphics/decode/signature.h"

namespace platform {

std::unique_ptr<EncodedPicture> GifPicture::Open(std::vector<std::uint8_t> bytes, Gdiplus::Status& status) {
    status = Gdiplus::UnknownImageFormat;
    std::optional<GifIndex> index = IndexGif(bytes);
    if (!index || !IsBelievableSize(PictureKind::Gif, index->width, index->height, bytes.size())) {
        return nullptr;
    }
    std::unique_ptr<GifPicture> picture(new GifPicture);
    picture->bytes_ = std::move(bytes);
    picture->index_ = std::move(*index);
    const std::size_t screen =
        static_cast<std::size_t>(picture->Width()) * static_cast<std::size_t>(picture->Height());
    picture->screen_.resize(screen);
    picture->damaged_.resize(picture->index_.frames.size());
    const auto room = static_cast<int>(kKeptBytes / (screen * sizeof(std::uint32_t)));
    if (room > 0) picture->keepEvery_ = picture->FrameCount() / (room + 1) + 1;

    picture->Compose(0);
    if (picture->damaged_[0]) return nullptr;
    status = Gdiplus::Ok;
    return picture;
}

std::shared_ptr<Surface> GifPicture::Frame(int index) try {
    if (index < 0 || index >= FrameCount()) return nullptr;
    Compose(index);
    if (damaged_[static_cast<std::size_t>(index)]) return nullptr;
    std::shared_ptr<Surface> surface = Surface::Create(Width(), Height());
    if (!surface) return nullptr;
    for (int y = 0; y < Height(); ++y)
        std::copy_n(At(0, y), Width(), surface->Row(y));
    surface->Touch();
    return surface;
} catch (const std::bad_alloc&) {
    shown_ = -1;  // whatever the screen shows now
    return nullptr;
}

GifPicture::Place GifPicture::PlaceOf(const GifFrame& frame) const {
    return {std::min(frame.left, Width()), std::min(frame.top, Height()),
            std::min(frame.left + frame.width, Width()), std::min(frame.top + frame.height, Height())};
}

bool GifPicture::Covers(int index) const {
    const Place place = PlaceOf(index_.frames[static_cast<std::size_t>(index)]);
    return place.left == 0 && place.top == 0 && place.right == Width() && place.bottom == Height();
}

// True when no frame before this one shows through it, nor can be uncovered by it.
bool GifPicture::StartsAnew(int index) const {
    if (index == 0) return true;
    const auto at = static_cast<std::size_t>(index);
    if (index_.frames[at - 1].disposal == GifDisposal::Clear && Covers(index - 1)) return true;
    const GifFrame& frame = index_.frames[at];
    return frame.transparent < 0 && frame.disposal != GifDisposal::Restore && !damaged_[at] && Covers(index);
}

void GifPicture::Compose(int index) {
    const int reachable = shown_ <= index ? shown_ : -1;
    for (int start = index; start > reachable && !Restart(start); --start) {
    }
    while (shown_ < index) {
        Dispose(shown_);
        KeepScreen(shown_ + 1);
        Show(shown_ + 1, Unpack(shown_ + 1));
    }
}

// Shows a frame without composing those before it. False, with the screen as it was, when it needs them.
bool GifPicture::Restart(int index) {
    const auto kept = kept_.find(index);
    if (kept == kept_.end() && !StartsAnew(index)) return false;
    const std::optional<GifPixels> pixels = Unpack(index);
    if (kept != kept_.end()) {
        screen_ = kept->second;
    } else if (StartsAnew(index)) {  // still, now that its pixels are known
        std::fill(screen_.begin(), screen_.end(), 0U);
    } else {
        return false;
    }
    Show(index, pixels);
    return true;
}

void GifPicture::Dispose(int index) {
    const GifFrame& frame = index_.frames[static_cast<std::size_t>(index)];
    const Place place = PlaceOf(frame);
    const int width = place.right - place.left;
    if (frame.disposal == GifDisposal::Clear) {
        for (int y = place.top; y < place.bottom; ++y)
            std::fill_n(At(place.left, y), width, 0U);
    } else if (!under_.empty()) {
        const std::uint32_t* from = under_.data();
        for (int y = place.top; y < place.bottom; ++y, from += width) {
            std::copy_n(from, width, At(place.left, y));
        }
    }
}

void GifPicture::KeepScreen(int index) {
    if (keepEvery_ == 0 || index % keepEvery_ != 0 || StartsAnew(index)) return;
    kept_.try_emplace(index, screen_);
}

// Nothing for a damaged frame, which is known as such from then on.
std::optional<GifPixels> GifPicture::Unpack(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (damaged_[at]) return std::nullopt;
    std::optional<GifPixels> pixels = UnpackGifFrame(bytes_, index_.screenEnd, index_.frames[at]);
    damaged_[at] = !pixels;
    if (pixels) ++Gdiplus::Counters().decodedFrames;
    return pixels;
}

void GifPicture::Show(int index, const std::optional<GifPixels>& pixels) {
    const GifFrame& frame = index_.frames[static_cast<std::size_t>(index)];
    under_.clear();
    if (pixels && frame.disposal == GifDisposal::Restore) {
        const Place place = PlaceOf(frame);
        for (int y = place.top; y < place.bottom; ++y) {
            under_.insert(under_.end(), At(place.left, y), At(place.left, y) + (place.right - place.left));
        }
    }
    if (pixels) Paste(frame, *pixels);
    shown_ = index;
}

void GifPicture::Paste(const GifFrame& frame, const GifPixels& pixels) {
    const Place place = PlaceOf(frame);
    for (int y = place.top; y < place.bottom; ++y) {
        const std::uint8_t* in = pixels.indices.data() + static_cast<std::size_t>(y - frame.top) *
                                                             static_cast<std::size_t>(frame.width);
        std::uint32_t* out = At(place.left, y);
        for (int x = place.left; x < place.right; ++x, ++in, ++out) {
            const std::uint32_t colour = pixels.colours[*in];
            if (colour != 0) *out = colour;  // 0 is the transparent index alone
        }
    }
}

}  // namespace platform
