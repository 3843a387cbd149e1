#include "platform/graphics/graphics_data.h"

#include "platform/graphics/ground.h"

namespace platform {

Gdiplus::Status GraphicsData::Check() {
    Ground ground;
    return ground.Take(*this);
}

}  // namespace platform
