#include "platform/graphics/scale.h"

#include <atomic>

namespace platform {
namespace {
std::atomic<int> screenScale{1};
}  // namespace

int ScreenScale() {
    return screenScale.load(std::memory_order_relaxed);
}

void SetScreenScaleTo(int scale) {
    screenScale.store(scale, std::memory_order_relaxed);
}

}  // namespace platform
