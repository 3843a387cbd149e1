#include "platform/graphics/surface.h"

#include <cairo.h>

#include <atomic>
#include <limits>
#include <new>
#include <utility>

#include "platform/graphics/pixel_memory.h"

namespace platform {
namespace {

constexpr int kMaxSide = 32767;
constexpr std::int64_t kMaxPixels = std::int64_t{1} << 28;

std::shared_ptr<Surface> OnPooledMemory(int width, int height, PixelMemory::Contents contents) {
    if (!Surface::IsPossible(width, height)) return {};
    const std::ptrdiff_t stride = std::ptrdiff_t{width} * 4;
    std::shared_ptr<void> memory = PixelMemory::Take(static_cast<std::size_t>(stride * height), contents);
    if (!memory) return {};
    auto* const top = static_cast<std::uint32_t*>(memory.get());
    return Surface::Wrap(top, width, height, stride, std::move(memory));
}

}  // namespace

std::uint64_t NextRevision() {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

bool Surface::IsPossible(std::int64_t width, std::int64_t height) {
    return width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide &&
           width * height <= kMaxPixels;
}

std::shared_ptr<Surface> Surface::Create(int width, int height) {
    return OnPooledMemory(width, height, PixelMemory::Contents::Zero);
}

std::shared_ptr<Surface> Surface::CreateUnset(int width, int height) {
    return OnPooledMemory(width, height, PixelMemory::Contents::Any);
}

std::shared_ptr<Surface> Surface::Wrap(std::uint32_t* top, int width, int height, std::ptrdiff_t stride,
                                       std::shared_ptr<void> keep) {
    const std::ptrdiff_t pitch = stride < 0 ? -stride : stride;
    if (!top || !IsPossible(width, height) || pitch % 4 != 0 || pitch < std::ptrdiff_t{width} * 4 ||
        pitch > std::numeric_limits<int>::max())
        return {};
    std::shared_ptr<Surface> surface(new Surface);
    surface->top_ = top;
    surface->width_ = width;
    surface->height_ = height;
    surface->stride_ = stride;
    surface->revision_ = NextRevision();
    surface->keep_ = std::move(keep);
    return surface;
}

Surface::~Surface() {
    if (cairo_) {
        // Whoever still holds a reference of cairo's must not reach the memory any more.
        cairo_surface_finish(cairo_);
        cairo_surface_destroy(cairo_);
    }
}

cairo_surface_t* Surface::Cairo() {
    if (!cairo_)
        cairo_ =
            cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(top_), CAIRO_FORMAT_ARGB32,
                                                width_, height_, static_cast<int>(stride_));
    return cairo_;
}

void Surface::Touch() {
    NoteWrites();
    revision_ = NextRevision();
}

void Surface::NoteWrites() {
    if (cairo_) cairo_surface_mark_dirty(cairo_);
}

}  // namespace platform
