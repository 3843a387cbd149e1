// What the headless screen shows behind all windows. It may be changed from any thread.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include <platform/geometry.h>

#include "platform/graphics/surface.h"

namespace platform {

struct HeadlessBackdrop {
    std::mutex mutex;
    bool inUse = false;
    CSize size;
    std::shared_ptr<const Surface> pixels;  // null: the plain colour
    std::string path;

    // The one there is.
    static HeadlessBackdrop& Get();
    // A screen of this size begins, or (empty) ends. Another size drops the pixels.
    void Use(CSize screen);
    std::shared_ptr<const Surface> Pixels();
};

}  // namespace platform
