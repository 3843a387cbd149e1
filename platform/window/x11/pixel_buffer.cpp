#include "platform/window/x11/pixel_buffer.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>
#include <new>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

// More rectangles than this cost the server more than the pixels between them.
constexpr int kMostParts = 256;

}  // namespace

Fence::~Fence() {
    if (set_ && connection_->IsAlive()) xcb_discard_reply(connection_->Get(), cookie_.sequence);
}

void Fence::Set() {
    if (!connection_->IsAlive()) return;
    if (set_) xcb_discard_reply(connection_->Get(), cookie_.sequence);
    cookie_ = xcb_get_input_focus(connection_->Get());
    set_ = true;
}

void Fence::Wait() {
    if (!set_) return;
    set_ = false;
    if (!connection_->IsAlive()) return;
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection_->Get(), cookie_, nullptr));
}

std::shared_ptr<PixelBuffer> PixelBuffer::Create(const std::shared_ptr<Connection>& connection, int width,
                                                 int height) {
    if (width < 1 || height < 1 || width > INT16_MAX || height > INT16_MAX) return nullptr;
    std::shared_ptr<PixelBuffer> result(new PixelBuffer(connection, width, height));
    if (result->Share()) return result;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    result->memory_.reset(new (std::nothrow) std::uint32_t[count]());
    result->pixels_ = result->memory_.get();
    return result->pixels_ ? result : nullptr;
}

PixelBuffer::~PixelBuffer() {
    if (segment_ == 0) return;
    if (connection_->IsAlive()) xcb_shm_detach(connection_->Get(), segment_);
    shmdt(pixels_);
}

bool PixelBuffer::Share() {
    if (!connection_->IsAlive() || !connection_->Has().sharedMemory) return false;
    const std::size_t bytes = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 4;
    const int id = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (id < 0) return false;
    void* address = shmat(id, nullptr, 0);
    bool attached = false;
    if (address != reinterpret_cast<void*>(-1)) {
        xcb_connection_t* c = connection_->Get();
        segment_ = xcb_generate_id(c);
        const Reply<xcb_generic_error_t> error(
            xcb_request_check(c, xcb_shm_attach_checked(c, segment_, static_cast<std::uint32_t>(id), 1)));
        attached = !error && connection_->IsAlive();
        if (!attached) {
            segment_ = 0;
            shmdt(address);
        }
    }
    // Marked for removal while both sides hold it: nothing is left behind, however either of them ends.
    shmctl(id, IPC_RMID, nullptr);
    if (attached) pixels_ = static_cast<std::uint32_t*>(address);
    return attached;
}

void PixelBuffer::Put(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth,
                      const Region& region) {
    if (!connection_->IsAlive()) return;
    const int parts = region.Count() > kMostParts ? 1 : region.Count();
    bool sent = false;
    for (int i = 0; i < parts; ++i) {
        CRect part;
        const CRect whole = parts == region.Count() ? region.Rect(i) : region.Box();
        if (!part.IntersectRect(whole, CRect(0, 0, width_, height_))) continue;
        if (IsShared()) {
            PutShared(target, context, depth, part);
        } else {
            PutThroughSocket(target, context, depth, part);
        }
        sent = true;
    }
    if (sent && IsShared()) fence_.Set();  // what went through the socket was copied already
}

void PixelBuffer::PutShared(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth,
                            const RECT& rect) {
    const CRect part(rect);
    xcb_shm_put_image(connection_->Get(), target, context, static_cast<std::uint16_t>(width_),
                      static_cast<std::uint16_t>(height_), static_cast<std::uint16_t>(part.left),
                      static_cast<std::uint16_t>(part.top), static_cast<std::uint16_t>(part.Width()),
                      static_cast<std::uint16_t>(part.Height()), ToX(part.left), ToX(part.top), depth,
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
}

void PixelBuffer::PutThroughSocket(xcb_drawable_t target, xcb_gcontext_t context, std::uint8_t depth,
                                   const RECT& rect) {
    const CRect part(rect);
    const std::size_t rowWords = static_cast<std::size_t>(part.Width());
    const std::size_t room = connection_->MaximumRequest() - sizeof(xcb_put_image_request_t) - 4;
    const int rowsAtOnce = static_cast<int>(std::max<std::size_t>(room / (rowWords * 4), 1));
    for (int top = part.top; top < part.bottom; top += rowsAtOnce) {
        const int rows = std::min<int>(rowsAtOnce, part.bottom - top);
        packed_.resize(rowWords * static_cast<std::size_t>(rows));
        for (int y = 0; y < rows; ++y)
            std::memcpy(packed_.data() + rowWords * static_cast<std::size_t>(y), Row(top + y) + part.left,
                        rowWords * 4);
        xcb_put_image(connection_->Get(), XCB_IMAGE_FORMAT_Z_PIXMAP, target, context,
                      static_cast<std::uint16_t>(part.Width()), static_cast<std::uint16_t>(rows),
                      ToX(part.left), ToX(top), 0, depth, static_cast<std::uint32_t>(packed_.size() * 4),
                      reinterpret_cast<const std::uint8_t*>(packed_.data()));
    }
}

}  // namespace platform::x11
