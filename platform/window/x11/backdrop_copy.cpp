#include "platform/window/x11/backdrop_copy.h"

#include "platform/window/x11/property_words.h"

namespace platform::x11 {

bool BackdropCopy::IsThere() {
    if (!read_ && connection_->IsAlive()) Read();
    return !pixels_.empty();
}

void BackdropCopy::Forget() {
    read_ = false;
    pixels_.clear();
    pixels_.shrink_to_fit();
}

void BackdropCopy::Read() {
    constexpr std::uint32_t kLongestSide = 16384;
    read_ = true;
    xcb_connection_t* c = connection_->Get();
    const auto named = ReadWords(c, AskWords(c, connection_->Root(), connection_->Names().rootPixmap));
    if (named.size() != 1) return;
    const xcb_pixmap_t pixmap = named.front();
    const Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, pixmap), nullptr));
    if (!size || size->width == 0 || size->height == 0 || size->width > kLongestSide) return;
    if (size->depth != connection_->OpaqueFormat().depth && size->depth != connection_->AlphaFormat().depth)
        return;
    std::vector<std::uint32_t> pixels;
    pixels.reserve(std::size_t{size->width} * size->height);
    // In bands: an answer has its longest, too.
    constexpr int kBand = 64;
    for (int y = 0; y < size->height; y += kBand) {
        const auto rows = static_cast<std::uint16_t>(std::min<int>(kBand, size->height - y));
        const Reply<xcb_get_image_reply_t> image(
            xcb_get_image_reply(c,
                                xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0,
                                              static_cast<std::int16_t>(y), size->width, rows, ~0U),
                                nullptr));
        const std::size_t count = std::size_t{size->width} * rows;
        if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < count * 4) return;
        const auto* words = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        pixels.insert(pixels.end(), words, words + count);
    }
    width_ = size->width;
    height_ = size->height;
    pixels_ = std::move(pixels);
}

void BackdropCopy::Row(int x, int y, std::uint32_t* pixels, std::size_t count) const {
    const auto wrapped = [](int value, int size) { return ((value % size) + size) % size; };
    const std::uint32_t* row = pixels_.data() + static_cast<std::ptrdiff_t>(wrapped(y, height_)) * width_;
    for (std::size_t i = 0; i < count; ++i)
        pixels[i] = row[wrapped(x + static_cast<int>(i), width_)];
}

}  // namespace platform::x11
