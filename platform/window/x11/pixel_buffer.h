// Memory for the pixels of a window that the server reads from: a shared segment, or where server and client
// share none, plain memory that travels through the socket.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include "platform/graphics/region.h"
#include "platform/window/x11/connection.h"

namespace platform::x11 {

// A point in the stream of requests that can be waited for. The server carries out the requests of one
// client in order, so the answer to a trivial question tells that all before it is done. Unlike completion
// events it also arrives when the request itself failed, and leaves the event queue alone.
class Fence {
  public:
    explicit Fence(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
    ~Fence();
    Fence(const Fence&) = delete;
    Fence& operator=(const Fence&) = delete;
    void Set();
    void Wait();

  private:
    std::shared_ptr<Connection> connection_;
    bool set_ = false;
    xcb_get_input_focus_cookie_t cookie_{};
};

class PixelBuffer {
  public:
    // Zeroed. Null without memory, or for a size beyond the protocol's.
    static std::shared_ptr<PixelBuffer> Create(const std::shared_ptr<Connection>& connection, int width,
                                               int height);
    ~PixelBuffer();
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    int Width() const { return width_; }
    int Height() const { return height_; }
    bool IsShared() const { return segment_ != 0; }
    std::uint32_t* Row(int y) { return pixels_ + static_cast<std::ptrdiff_t>(y) * width_; }

    // Sends the pixels of a region, clipped to the buffer, to the same place of a window.
    void Put(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth, const Region& region);
    // Returns once the server has read what was put; until then the pixels must not change.
    void WaitUntilRead() { fence_.Wait(); }

  private:
    PixelBuffer(std::shared_ptr<Connection> connection, int width, int height)
        : connection_(connection), fence_(std::move(connection)), width_(width), height_(height) {}
    bool Share();
    void PutShared(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth, const RECT& rect);
    void PutThroughSocket(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth,
                          const RECT& rect);

    std::shared_ptr<Connection> connection_;
    Fence fence_;
    int width_;
    int height_;
    std::uint32_t* pixels_ = nullptr;
    xcb_shm_seg_t segment_ = 0;                // 0: not shared
    std::unique_ptr<std::uint32_t[]> memory_;  // when not shared
    std::vector<std::uint32_t> packed_;        // rows of a part, on their way through the socket
};

}  // namespace platform::x11
