// The connection to the display server, and what of it never changes: screen, visuals, extensions, atoms.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <platform/geometry.h>
#include <xcb/xcb.h>

#include "platform/window/x11/atoms.h"

namespace platform::x11 {

// A way to store 32-bit pixels in windows.
struct PixelFormat {
    xcb_visualid_t visual = 0;
    std::uint8_t depth = 0;  // 24: the alpha byte is ignored, 32: a compositor blends by it
    xcb_colormap_t colormap = 0;
    explicit operator bool() const { return visual != 0; }
};

struct Extensions {
    bool sharedMemory = false;
    bool shape = false;       // version 1.1: with input shapes
    bool selections = false;  // XFixes tells of selection owners
    bool monitors = false;    // RandR 1.5
    std::uint8_t fixesFirstEvent = 0;
    std::uint8_t shapeFirstEvent = 0;
};

// Shared with the memory segments that the server has attached, which may outlive the window system. After
// Close, or once the server is gone, IsAlive is false and nothing may be sent any more.
class Connection {
  public:
    // Null, with the last error set, when no server answers or it has no 32-bit pixels.
    static std::shared_ptr<Connection> Open();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* Get() const { return connection_; }
    bool IsAlive() const { return connection_ != nullptr && xcb_connection_has_error(connection_) == 0; }
    void Flush() {
        if (connection_ != nullptr) xcb_flush(connection_);
    }
    void Close();

    xcb_window_t Root() const { return screen_->root; }
    CSize RootSize() const { return CSize(screen_->width_in_pixels, screen_->height_in_pixels); }
    const Atoms& Names() const { return atoms_; }
    const Extensions& Has() const { return extensions_; }
    // 0 where the server offers no alpha.
    const PixelFormat& AlphaFormat() const { return alpha_; }
    const PixelFormat& OpaqueFormat() const { return opaque_; }
    // The longest request that the server takes, in bytes.
    std::size_t MaximumRequest() const { return maximumRequest_; }

  private:
    Connection() = default;
    bool FindFormats();
    void FindExtensions();

    xcb_connection_t* connection_ = nullptr;  // owned; null after Close
    const xcb_screen_t* screen_ = nullptr;
    int screenNumber_ = 0;
    Atoms atoms_;
    Extensions extensions_;
    PixelFormat alpha_, opaque_;
    std::size_t maximumRequest_ = 0;
};

}  // namespace platform::x11
