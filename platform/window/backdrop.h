// The picture that a screen shows behind all windows.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <platform/geometry.h>

#include "platform/graphics/surface.h"

namespace platform {

// For any thread, one at a time: what is opened here has nothing in common with the window system in use.
class Backdrop {
  public:
    virtual ~Backdrop() = default;
    virtual CSize Size() = 0;
    // Opaque pixels of that size, and the path of the file that they come from. They stay when this object
    // goes.
    virtual bool Show(const Surface& pixels, const std::string& path) = 0;
    // Of what shows now; empty when somebody else has put it there.
    virtual std::string Path() = 0;
    // A program that keeps a window of its own in front of it.
    struct Cover {
        std::string program;  // the class that it gives its windows
        int process = 0;      // 0: not known
    };
    virtual std::optional<Cover> CoveredBy() = 0;
};

// Null where no X server can be reached.
std::unique_ptr<Backdrop> OpenX11Backdrop();
// Null while the headless screen is not in use.
std::unique_ptr<Backdrop> OpenHeadlessBackdrop();

}  // namespace platform
