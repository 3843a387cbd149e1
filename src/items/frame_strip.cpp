#include <qkui/items/frame_strip.h>

#include <cstdint>

#include <qkui/items/item_base.h>

CSize QKFrameStrip::FrameSize() const {
    return vertical ? CSize(width, height / count) : CSize(width / count, height);
}

int QKFrameOffset(const QKFrameStrip& strip, const QKFrameState& state) {
    const int count = strip.count;
    const int length = strip.vertical ? strip.height : strip.width;
    const auto multiple = [&](std::int64_t times) { return static_cast<int>(times * length / count); };
    const bool showsActive = state.active && count == 4;

    if (!state.enabled && count == 5) return multiple(4);
    if (state.status == QKItemBase::QK_NORMAL) return showsActive ? multiple(3) : 0;
    if (count == 1) return 0;
    if (state.status == QKItemBase::QK_MOUSEON)
        return strip.vertical && showsActive ? multiple(3) : length / count;
    return count == 2 ? length / count : length / count * 2;
}
