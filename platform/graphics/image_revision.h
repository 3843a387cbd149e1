// One state of the pixels of an image, and what is known of it as long as they do not change.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include <platform/geometry.h>

#include "platform/graphics/surface.h"

namespace platform {

// Shared by all clones that show it. Its end takes along the
// scaled copies that were made of these pixels.
class ImageRevision {
  public:
    explicit ImageRevision(std::uint64_t id) : id_(id) {}
    ~ImageRevision();
    ImageRevision(const ImageRevision&) = delete;
    ImageRevision& operator=(const ImageRevision&) = delete;

    std::uint64_t Id() const { return id_; }
    // Whether no pixel of `part`, which lies inside, lets anything shine through. Looked up after the first
    // time; a strip has few frames, so few answers are kept.
    bool IsOpaque(const Surface& pixels, const CRect& part);
    // Scaled copies exist that have to go when the pixels do.
    void NoteScaled() { scaled_.store(true, std::memory_order_relaxed); }

  private:
    struct Answer {
        CRect part;
        bool opaque = false;
    };
    const std::uint64_t id_;
    std::atomic<bool> scaled_{false};
    std::mutex mutex_;
    bool wholeIsOpaque_ = false;
    std::array<Answer, 8> answers_;
    std::size_t next_ = 0;
};

}  // namespace platform
