#include "platform/graphics/graphics_data.h"

#include "platform/graphics/draw_target.h"

namespace platform {

Gdiplus::Status GraphicsData::Check() {
    DrawTarget target;
    return target.Take(*this);
}

}  // namespace platform
