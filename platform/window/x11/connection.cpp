#include "platform/window/x11/connection.h"

#include <bit>
#include <csignal>
#include <mutex>

#include <xcb/randr.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

// The client library writes to the socket without MSG_NOSIGNAL, so a server that dies between two requests
// would end the process. A handler that does nothing turns that into an error of the connection; unlike
// SIG_IGN it is not inherited by programs that the host starts. A host with its own choice keeps it.
void KeepBrokenPipesQuiet() {
    static std::once_flag once;
    std::call_once(once, [] {
        struct sigaction current {};
        if (sigaction(SIGPIPE, nullptr, &current) != 0 || current.sa_handler != SIG_DFL) return;
        struct sigaction quiet {};
        quiet.sa_handler = [](int) {};
        quiet.sa_flags = SA_RESTART;
        sigemptyset(&quiet.sa_mask);
        sigaction(SIGPIPE, &quiet, nullptr);
    });
}

const xcb_screen_t* ScreenOf(const xcb_setup_t* setup, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

// Whether pixels of a depth travel as 32-bit words in our own byte order.
bool StoresWords(const xcb_setup_t* setup, std::uint8_t depth) {
    const auto native =
        std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
    if (setup->image_byte_order != native) return false;
    for (auto i = xcb_setup_pixmap_formats_iterator(setup); i.rem > 0; xcb_format_next(&i))
        if (i.data->depth == depth) return i.data->bits_per_pixel == 32 && i.data->scanline_pad == 32;
    return false;
}

xcb_visualid_t VisualOf(const xcb_screen_t* screen, std::uint8_t wanted) {
    xcb_visualid_t found = 0;
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth != wanted) continue;
        for (auto i = xcb_depth_visuals_iterator(depth.data); i.rem > 0; xcb_visualtype_next(&i)) {
            const xcb_visualtype_t& type = *i.data;
            const bool fits = type._class == XCB_VISUAL_CLASS_TRUE_COLOR && type.red_mask == 0xFF0000 &&
                              type.green_mask == 0xFF00 && type.blue_mask == 0xFF;
            // The root's own visual needs no colour map of ours.
            if (fits && (found == 0 || type.visual_id == screen->root_visual)) found = type.visual_id;
        }
    }
    return found;
}

}  // namespace

std::shared_ptr<Connection> Connection::Open() {
    KeepBrokenPipesQuiet();
    std::shared_ptr<Connection> result(new Connection);
    result->connection_ = xcb_connect(nullptr, &result->screenNumber_);
    xcb_connection_t* c = result->connection_;
    if (result->IsAlive()) result->screen_ = ScreenOf(xcb_get_setup(c), result->screenNumber_);
    if (result->screen_ == nullptr) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    if (!result->FindFormats()) {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return nullptr;
    }
    xcb_prefetch_maximum_request_length(c);
    result->FindExtensions();
    result->atoms_ = ResolveAtoms(c, result->screenNumber_);
    result->maximumRequest_ = std::size_t{xcb_get_maximum_request_length(c)} * 4;
    if (!result->IsAlive()) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    return result;
}

Connection::~Connection() {
    Close();
}

void Connection::Close() {
    if (connection_ == nullptr) return;
    xcb_disconnect(connection_);
    connection_ = nullptr;
}

bool Connection::FindFormats() {
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    const auto format = [&](std::uint8_t depth) {
        PixelFormat result;
        if (!StoresWords(setup, depth)) return result;
        result.visual = VisualOf(screen_, depth);
        if (!result.visual) return result;
        result.depth = depth;
        if (result.visual == screen_->root_visual) {
            result.colormap = screen_->default_colormap;
        } else {
            result.colormap = xcb_generate_id(connection_);
            xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, result.colormap, screen_->root,
                                result.visual);
        }
        return result;
    };
    opaque_ = format(24);
    alpha_ = format(32);
    if (!opaque_) opaque_ = alpha_;
    return static_cast<bool>(opaque_);
}

void Connection::FindExtensions() {
    xcb_connection_t* c = connection_;
    for (xcb_extension_t* extension : {&xcb_shm_id, &xcb_shape_id, &xcb_xfixes_id, &xcb_randr_id})
        xcb_prefetch_extension_data(c, extension);
    const auto present = [c](xcb_extension_t* extension) {
        const xcb_query_extension_reply_t* data = xcb_get_extension_data(c, extension);
        return data != nullptr && data->present != 0;
    };
    extensions_.sharedMemory = present(&xcb_shm_id);
    if (present(&xcb_shape_id)) {
        const Reply<xcb_shape_query_version_reply_t> version(
            xcb_shape_query_version_reply(c, xcb_shape_query_version(c), nullptr));
        extensions_.shape = version && (version->major_version > 1 || version->minor_version >= 1);
        extensions_.shapeFirstEvent = xcb_get_extension_data(c, &xcb_shape_id)->first_event;
    }
    if (present(&xcb_randr_id)) {
        const Reply<xcb_randr_query_version_reply_t> version(
            xcb_randr_query_version_reply(c, xcb_randr_query_version(c, 1, 5), nullptr));
        extensions_.monitors = version && (version->major_version > 1 || version->minor_version >= 5);
    }
    if (present(&xcb_xfixes_id)) {
        const Reply<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 5, 0), nullptr));
        extensions_.selections = version != nullptr;
        extensions_.fixesFirstEvent = xcb_get_extension_data(c, &xcb_xfixes_id)->first_event;
    }
}

}  // namespace platform::x11
