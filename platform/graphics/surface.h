// The memory that everything is drawn into: premultiplied 32-bit ARGB.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

typedef struct _cairo_surface cairo_surface_t;

namespace platform {

class Surface {
  public:
    // Whether a surface may have this size.
    static bool IsPossible(std::int64_t width, std::int64_t height);
    // Zeroed. Null for a size below 1 or above the limits of CreateCompatibleBitmap, or without memory.
    // Memory of surfaces released lately is used again.
    static std::shared_ptr<Surface> Create(int width, int height);
    // The same, but holds anything: for who writes every pixel.
    static std::shared_ptr<Surface> CreateUnset(int width, int height);
    // Over memory of somebody else (a shared memory segment). `stride` in bytes, negative when the rows run
    // upwards in memory; `top` is the first pixel of the top row. `keep` is released with the surface.
    static std::shared_ptr<Surface> Wrap(std::uint32_t* top, int width, int height, std::ptrdiff_t stride,
                                         std::shared_ptr<void> keep);
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    int Width() const { return width_; }
    int Height() const { return height_; }
    std::ptrdiff_t Stride() const { return stride_; }
    // How many pixels a unit of the coordinates is that are drawn in, each way: 1, but for dense screens.
    int Scale() const { return scale_; }
    void SetScale(int scale) { scale_ = scale; }
    std::uint32_t* Row(int y) {
        return reinterpret_cast<std::uint32_t*>(reinterpret_cast<std::byte*>(top_) + y * stride_);
    }
    const std::uint32_t* Row(int y) const { return const_cast<Surface*>(this)->Row(y); }

    // A cairo view of the same pixels, made when first asked for. Whoever writes the rows directly calls
    // Touch afterwards; drawing through cairo must be followed by Touch as well.
    cairo_surface_t* Cairo();
    // Marks the pixels as changed, and tells cairo of direct writes.
    void Touch();
    // Tells cairo alone.
    void NoteWrites();
    // Unique in the process for what the surface shows.
    std::uint64_t Revision() const { return revision_; }

  private:
    Surface() = default;
    std::uint32_t* top_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    int scale_ = 1;
    std::ptrdiff_t stride_ = 0;
    std::uint64_t revision_ = 0;
    std::shared_ptr<void> keep_;
    cairo_surface_t* cairo_ = nullptr;
};

// The next number of the process-wide count of changes.
std::uint64_t NextRevision();

}  // namespace platform
