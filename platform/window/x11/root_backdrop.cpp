// The backdrop of an X screen: the root's background, left in a pixmap for whoever wants to see it.
#include <cstring>
#include <vector>

#include "platform/window/backdrop.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/desktop_windows.h"
#include "platform/window/x11/property_words.h"

namespace platform::x11 {

namespace {

std::string TextOf(xcb_connection_t* c, xcb_window_t window, xcb_atom_t property) {
    constexpr std::uint32_t kMost = 2048;  // words
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        c, xcb_get_property(c, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMost), nullptr));
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

xcb_atom_t AtomOf(xcb_connection_t* c, const char* name) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// A connection of its own: a pixmap that stays behind keeps all of its client's resources alive.
class RootBackdrop final : public Backdrop {
  public:
    explicit RootBackdrop(std::shared_ptr<Connection> connection)
        : connection_(std::move(connection)),
          setRoot_(AtomOf(connection_->Get(), "ESETROOT_PMAP_ID")),
          file_(AtomOf(connection_->Get(), "_XROOTPMAP_FILE")) {}

    CSize Size() override { return connection_->RootSize(); }
    bool Show(const Surface& pixels, const std::string& path) override;
    std::string Path() override;
    std::optional<Cover> CoveredBy() override;

  private:
    xcb_pixmap_t PixmapNow(xcb_atom_t property);
    void Put(xcb_pixmap_t pixmap, const Surface& pixels);
    // The path counts only for the pixmap that it was written for.
    std::string Prefix(xcb_pixmap_t pixmap) const { return std::to_string(pixmap) + ' '; }

    std::shared_ptr<Connection> connection_;
    xcb_atom_t setRoot_, file_;
};

xcb_pixmap_t RootBackdrop::PixmapNow(xcb_atom_t property) {
    xcb_connection_t* c = connection_->Get();
    const std::vector<std::uint32_t> words = ReadWords(c, AskWords(c, connection_->Root(), property));
    return words.size() == 1 ? words.front() : 0;
}

void RootBackdrop::Put(xcb_pixmap_t pixmap, const Surface& pixels) {
    xcb_connection_t* c = connection_->Get();
    const xcb_gcontext_t context = xcb_generate_id(c);
    xcb_create_gc(c, context, pixmap, 0, nullptr);
    const std::size_t bytes = static_cast<std::size_t>(pixels.Width()) * 4;
    const std::size_t room = connection_->MaximumRequest() - 64;
    const int band = static_cast<int>(std::clamp<std::size_t>(room / bytes, 1, 256));
    std::vector<std::uint8_t> rows;
    for (int y = 0; y < pixels.Height(); y += band) {
        const int count = std::min(band, pixels.Height() - y);
        rows.resize(bytes * static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            std::memcpy(rows.data() + bytes * static_cast<std::size_t>(i), pixels.Row(y + i), bytes);
        xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, ToExtent(pixels.Width()),
                      ToExtent(count), 0, static_cast<std::int16_t>(y), 0, connection_->OpaqueFormat().depth,
                      static_cast<std::uint32_t>(rows.size()), rows.data());
    }
    xcb_free_gc(c, context);
}

bool RootBackdrop::Show(const Surface& pixels, const std::string& path) {
    xcb_connection_t* c = connection_->Get();
    const xcb_window_t root = connection_->Root();
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, root), nullptr));
    if (!geometry || geometry->depth != connection_->OpaqueFormat().depth) return false;
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_create_pixmap(c, geometry->depth, pixmap, root, ToExtent(pixels.Width()), ToExtent(pixels.Height()));
    Put(pixmap, pixels);
    xcb_set_close_down_mode(c, XCB_CLOSE_DOWN_RETAIN_PERMANENT);
    const xcb_atom_t rootPixmap = connection_->Names().rootPixmap;
    const std::string file = Prefix(pixmap) + path;
    // Nobody may look at the two properties while they differ.
    xcb_grab_server(c);
    const xcb_pixmap_t before = PixmapNow(rootPixmap);
    // Only what was left behind as this is: the two name the same. Others look after theirs themselves.
    if (before != 0 && before == PixmapNow(setRoot_)) xcb_kill_client(c, before);
    for (const xcb_atom_t property : {rootPixmap, setRoot_})
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, root, property, XCB_ATOM_PIXMAP, 32, 1, &pixmap);
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, root, file_, connection_->Names().utf8String, 8,
                        static_cast<std::uint32_t>(file.size()), file.data());
    const std::uint32_t background = pixmap;
    xcb_change_window_attributes(c, root, XCB_CW_BACK_PIXMAP, &background);
    xcb_clear_area(c, 0, root, 0, 0, 0, 0);
    xcb_ungrab_server(c);
    const bool shown = PixmapNow(rootPixmap) == pixmap;
    return shown && connection_->IsAlive();
}

std::string RootBackdrop::Path() {
    const std::string file = TextOf(connection_->Get(), connection_->Root(), file_);
    const std::string prefix = Prefix(PixmapNow(connection_->Names().rootPixmap));
    return file.starts_with(prefix) ? file.substr(prefix.size()) : std::string();
}

std::optional<Backdrop::Cover> RootBackdrop::CoveredBy() {
    xcb_connection_t* c = connection_->Get();
    const std::vector<xcb_window_t> desktops = DesktopWindows(connection_).FindAll();
    if (desktops.empty()) return std::nullopt;
    // Two texts, each with its end: the instance and the class.
    const std::string names = TextOf(c, desktops.front(), XCB_ATOM_WM_CLASS);
    const std::size_t second = std::min(names.find('\0'), names.size() - 1) + 1;
    const auto process = ReadWords(c, AskWords(c, desktops.front(), connection_->Names().netWmPid));
    return Cover{names.empty() ? std::string() : names.substr(second, names.find('\0', second) - second),
                 process.empty() ? 0 : static_cast<int>(process.front())};
}

}  // namespace

}  // namespace platform::x11

namespace platform {

std::unique_ptr<Backdrop> OpenX11Backdrop() {
    std::shared_ptr<x11::Connection> connection = x11::Connection::Open();
    if (!connection) return nullptr;
    return std::make_unique<x11::RootBackdrop>(std::move(connection));
}

}  // namespace platform
