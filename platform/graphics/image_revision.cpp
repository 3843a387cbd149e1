#include "platform/graphics/image_revision.h"

#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/scaled_cache.h"

namespace platform {
namespace {

bool ScanOpaque(const Surface& pixels, const CRect& part) {
    for (int y = part.top; y < part.bottom; ++y)
        if (!IsOpaqueRow(pixels.Row(y) + part.left, static_cast<std::size_t>(part.Width()))) return false;
    return true;
}

}  // namespace

ImageRevision::~ImageRevision() {
    if (scaled_.load(std::memory_order_relaxed)) ScaledCache::Get().Drop(id_);
}

bool ImageRevision::IsOpaque(const Surface& pixels, const CRect& part) {
    const std::lock_guard lock(mutex_);
    if (wholeIsOpaque_) return true;
    for (const Answer& answer : answers_)
        if (answer.part == part) return answer.opaque;
    Answer& answer = answers_[next_];
    next_ = (next_ + 1) % answers_.size();
    answer = {part, ScanOpaque(pixels, part)};
    if (answer.opaque && part == CRect(0, 0, pixels.Width(), pixels.Height())) wholeIsOpaque_ = true;
    return answer.opaque;
}

}  // namespace platform
