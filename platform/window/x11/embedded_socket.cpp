#include "platform/window/x11/embedded_socket.h"

#include <algorithm>
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

enum : std::uint32_t {
    kEmbeddedNotify = 0,
    kWindowActivate = 1,
    kRequestFocus = 3,
    kFocusIn = 4,
    kFocusOut = 5,
    kFocusNext = 6,
    kFocusPrevious = 7
};
constexpr std::size_t kMostKeys = 64;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

}  // namespace

EmbeddedSocket::EmbeddedSocket(std::shared_ptr<Connection> connection, HWND topLevel, xcb_window_t parent,
                               EmbeddedEvents& events, std::function<void(EmbeddedSocket&)> forget)
    : connection_(std::move(connection)),
      topLevel_(topLevel),
      events_(events),
      forget_(std::move(forget)),
      id_(xcb_generate_id(connection_->Get())) {
    // Without an alpha channel, whatever the top-level has. White, as long as nothing is drawn inside.
    const PixelFormat& format = connection_->OpaqueFormat();
    const std::uint32_t values[] = {kWhite, 0, format.colormap};
    xcb_create_window(connection_->Get(), format.depth, id_, parent, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, format.visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values);
    // The other library has a connection of its own, on which the window must exist already.
    const Reply<xcb_get_input_focus_reply_t> roundTrip(
        xcb_get_input_focus_reply(connection_->Get(), xcb_get_input_focus(connection_->Get()), nullptr));
}

EmbeddedSocket::~EmbeddedSocket() {
    if (forget_) forget_(*this);
    if (!CanSend()) return;
    xcb_destroy_window(connection_->Get(), id_);
    connection_->Flush();
}

void EmbeddedSocket::Adopt(std::uint64_t window) {
    plug_ = static_cast<xcb_window_t>(window);
    Send(kEmbeddedNotify);
    Send(kWindowActivate);
}

void EmbeddedSocket::Configure(xcb_window_t window, const CRect& rect) {
    const std::uint32_t values[] = {ToBits(ToX(rect.left)), ToBits(ToX(rect.top)), ToExtent(rect.Width()),
                                    ToExtent(rect.Height())};
    xcb_configure_window(
        connection_->Get(), window,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        values);
}

void EmbeddedSocket::SetBounds(const CRect& whole, const CRect& seen) {
    if (!CanSend() || plug_ == 0) return;
    const bool show = !seen.IsRectEmpty();
    if (show == shown_ && (!show || (whole == whole_ && seen == seen_))) return;
    xcb_connection_t* const c = connection_->Get();
    if (show) {
        CRect inside = whole;
        inside.OffsetRect(-seen.left, -seen.top);
        Configure(id_, seen);
        Configure(plug_, inside);
        whole_ = whole;
        seen_ = seen;
    }
    if (show && !shown_) {
        xcb_map_window(c, plug_);
        xcb_map_window(c, id_);
    } else if (!show && shown_) {
        xcb_unmap_window(c, id_);
        xcb_unmap_window(c, plug_);
    }
    shown_ = show;
    connection_->Flush();
}

void EmbeddedSocket::MoveTo(xcb_window_t parent) {
    if (!CanSend()) return;
    xcb_reparent_window(connection_->Get(), id_, parent, ToX(seen_.left), ToX(seen_.top));
}

void EmbeddedSocket::SetFocus(bool focused) {
    keys_.clear();
    if (std::exchange(focused_, focused) == focused) return;
    if (focused) Send(kWindowActivate);
    Send(focused ? kFocusIn : kFocusOut);
}

void EmbeddedSocket::Send(std::uint32_t message, std::uint32_t detail) {
    if (!CanSend() || plug_ == 0) return;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = plug_;
    event.type = connection_->Names().xembed;
    event.data.data32[0] = XCB_CURRENT_TIME;
    event.data.data32[1] = message;
    event.data.data32[2] = detail;
    if (message == kEmbeddedNotify) event.data.data32[3] = id_;
    xcb_send_event(connection_->Get(), 0, plug_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    connection_->Flush();
}

void EmbeddedSocket::OnMessage(const xcb_client_message_event_t& event) {
    if (event.format != 32 || event.type != connection_->Names().xembed) return;
    const std::uint32_t message = event.data.data32[1];
    if (message == kRequestFocus) events_.FocusWanted();
    if (message == kFocusNext || message == kFocusPrevious) events_.FocusLeaves(message == kFocusNext);
}

void EmbeddedSocket::KeepKey(const xcb_key_press_event_t& event, UINT virtualKey, bool down) {
    if (keys_.size() >= kMostKeys) keys_.pop_front();
    keys_.push_back({event, virtualKey, down});
}

bool EmbeddedSocket::PassKey(UINT virtualKey, bool down) {
    const auto found = std::find_if(keys_.begin(), keys_.end(), [&](const Key& key) {
        return key.virtualKey == virtualKey && key.down == down;
    });
    if (found == keys_.end()) return false;
    SendKey(found->event);
    keys_.erase(keys_.begin(), found + 1);
    return true;
}

void EmbeddedSocket::SendKey(xcb_key_press_event_t event) {
    if (!CanSend() || plug_ == 0) return;
    event.event = plug_;
    event.child = XCB_WINDOW_NONE;
    xcb_send_event(connection_->Get(), 0, plug_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    connection_->Flush();
}

// ---- EmbeddedSockets

EmbeddedSockets::~EmbeddedSockets() {
    for (EmbeddedSocket* const socket : sockets_)
        socket->LoseSystem();
}

std::unique_ptr<EmbeddingSite> EmbeddedSockets::Make(const std::shared_ptr<Connection>& connection,
                                                     HWND topLevel, xcb_window_t parent,
                                                     EmbeddedEvents& events) {
    auto socket =
        std::make_unique<EmbeddedSocket>(connection, topLevel, parent, events,
                                         [this](EmbeddedSocket& ending) { std::erase(sockets_, &ending); });
    sockets_.push_back(socket.get());
    return socket;
}

bool EmbeddedSockets::Handle(const xcb_client_message_event_t& event) {
    const auto socket = std::ranges::find(sockets_, event.window, &EmbeddedSocket::Id);
    if (socket == sockets_.end()) return false;
    (*socket)->OnMessage(event);
    return true;
}

EmbeddedSocket* EmbeddedSockets::FocusedIn(HWND topLevel) const {
    for (EmbeddedSocket* const socket : sockets_)
        if (socket->TopLevel() == topLevel && socket->HasFocus()) return socket;
    return nullptr;
}

void EmbeddedSockets::Move(HWND topLevel, xcb_window_t parent) {
    for (EmbeddedSocket* const socket : sockets_)
        if (socket->TopLevel() == topLevel) socket->MoveTo(parent);
}

void EmbeddedSockets::LoseParent(HWND topLevel) {
    for (EmbeddedSocket* const socket : sockets_)
        if (socket->TopLevel() == topLevel) socket->LoseParent();
}

// ---- the window system's part

std::unique_ptr<EmbeddingSite> X11WindowSystem::Embed(HWND topLevel, EmbeddedEvents& events) {
    NativeWindow* const window = Find(topLevel);
    if (!window || window->id == 0) return nullptr;
    MakeKeyTarget(*window);
    return sockets_.Make(connection_, topLevel, window->id, events);
}

// While the focus is on a top-level the server gives keys to the window under the pointer inside of it. So
// the focus goes to a child that nobody sees and the pointer never reaches.
void X11WindowSystem::MakeKeyTarget(NativeWindow& window) {
    if (window.keyTarget != 0) return;
    xcb_connection_t* const c = connection_->Get();
    window.keyTarget = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(c, 0, window.keyTarget, window.id, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(c, window.keyTarget);
    byId_[window.keyTarget] = &window;
    if (window.focused) xcb_set_input_focus(c, XCB_INPUT_FOCUS_PARENT, window.keyTarget, XCB_CURRENT_TIME);
}

void X11WindowSystem::MoveEmbedded(NativeWindow& window, xcb_window_t oldKeyTarget) {
    if (oldKeyTarget == 0) return;
    byId_.erase(oldKeyTarget);
    window.keyTarget = 0;
    MakeKeyTarget(window);
    sockets_.Move(window.handle, window.id);
}

void X11WindowSystem::LoseEmbedded(NativeWindow& window) {
    if (window.keyTarget == 0) return;
    byId_.erase(window.keyTarget);
    window.keyTarget = 0;
    sockets_.LoseParent(window.handle);
}

}  // namespace platform::x11
