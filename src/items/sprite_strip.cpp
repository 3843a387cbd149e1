#include "items/sprite_strip.h"

#include <algorithm>
#include <cstdint>

#include <qkui/items/button.h>

namespace qkui {

CSize SpriteStrip::FrameSize() const {
    return vertical ? CSize(width, height / count) : CSize(width / count, height);
}

int SpriteOffset(const SpriteStrip& strip, const SpriteState& state) {
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

SpriteStrip StripOf(const QKButton& button) {
    const Gdiplus::Image& image = *button.GetImage();
    return {static_cast<int>(image.GetWidth()), static_cast<int>(image.GetHeight()),
            std::max<int>(button.GetEMImages(), 1), button.GetButtonType() != QKButton::QKBT_HORIZONTAL};
}

Sprite SpriteOf(const QKButton& button) {
    CRect rect;
    button.GetRect(&rect);
    Sprite sprite;
    sprite.destination = rect.TopLeft();
    if (!button.IsShow() || !button.GetImage()) return sprite;
    const SpriteStrip strip = StripOf(button);
    CSize size = strip.FrameSize();
    if (button.GetButtonHeight() != -1) size.cy = button.GetButtonHeight();
    const int offset =
        SpriteOffset(strip, {button.GetStatus(), button.GetActive() != 0, button.GetEnable() != 0});
    sprite.source = CRect(strip.vertical ? CPoint(0, offset) : CPoint(offset, 0), size);
    return sprite;
}

}  // namespace qkui
