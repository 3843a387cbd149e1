#include "platform/window/x11/clipboard.h"

#include <poll.h>

#include <algorithm>
#include <vector>

#include "platform/window/x11/event_type.h"
#include "platform/window/x11/reply.h"
#include "platform/window/x11/selection.h"

namespace platform::x11 {

namespace {

using Event = Reply<xcb_generic_event_t>;

constexpr std::uint64_t kAnswerTime = 1000;  // milliseconds without a sign of life

// One question to whoever owns the selection, over a connection that hears of nothing else.
class Question {
  public:
    explicit Question(const Atoms& names) : names_(names), c_(xcb_connect(nullptr, &screen_)) {}
    ~Question() { xcb_disconnect(c_); }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    std::optional<std::string> Ask() {
        if (xcb_connection_has_error(c_)) return {};
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(c_));
        for (int i = 0; i < screen_ && screens.rem > 1; ++i)
            xcb_screen_next(&screens);
        window_ = xcb_generate_id(c_);
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(c_, 0, window_, screens.data->root, -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        xcb_convert_selection(c_, window_, names_.clipboard, names_.utf8String, names_.clipboardAnswer,
                              XCB_CURRENT_TIME);
        xcb_flush(c_);
        const Event answer = Await(XCB_SELECTION_NOTIFY);
        if (!answer || As<xcb_selection_notify_event_t>(*answer).property == XCB_ATOM_NONE) return {};
        std::string text;
        const std::optional<xcb_atom_t> type = Take(text);
        if (!type) return {};
        if (*type != names_.incremental) return text;
        return InPieces();
    }

  private:
    // A long text comes in pieces, each put down when the one before was taken; an empty one is the last.
    std::optional<std::string> InPieces() {
        std::string all;
        for (;;) {
            const Event news = Await(XCB_PROPERTY_NOTIFY);
            if (!news) return {};
            const auto& change = As<xcb_property_notify_event_t>(*news);
            if (change.atom != names_.clipboardAnswer || change.state != XCB_PROPERTY_NEW_VALUE) continue;
            std::string piece;
            if (!Take(piece)) return {};
            if (piece.empty()) return all;
            all += piece;
        }
    }

    // The next event of a type; empty when its time is over.
    Event Await(std::uint8_t type) {
        const std::uint64_t until = MonotonicMilliseconds() + kAnswerTime;
        for (;;) {
            while (Event event{xcb_poll_for_event(c_)})
                if (TypeOf(*event) == type) return event;
            const std::uint64_t now = MonotonicMilliseconds();
            if (now >= until || xcb_connection_has_error(c_)) return {};
            pollfd ready{xcb_get_file_descriptor(c_), POLLIN, 0};
            poll(&ready, 1, static_cast<int>(until - now));
        }
    }

    // Reads and deletes the answer; its type, or nothing.
    std::optional<xcb_atom_t> Take(std::string& text) {
        constexpr std::uint32_t kMost = 1U << 26;  // words
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            c_, xcb_get_property(c_, 1, window_, names_.clipboardAnswer, XCB_GET_PROPERTY_TYPE_ANY, 0, kMost),
            nullptr));
        if (!reply || reply->type == XCB_ATOM_NONE) return {};
        text.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                    static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        xcb_flush(c_);
        return reply->type;
    }

    const Atoms& names_;
    int screen_ = 0;
    xcb_connection_t* c_;
    xcb_window_t window_ = 0;
};

}  // namespace

Clipboard::~Clipboard() {
    if (owner_ != 0 && connection_->IsAlive()) xcb_destroy_window(connection_->Get(), owner_);
}

bool Clipboard::Put(std::optional<std::string> utf8) {
    constexpr std::size_t kAround = 64;  // bytes of a request beside the text
    if (!connection_->IsAlive()) return false;
    if (utf8 && utf8->size() + kAround > connection_->MaximumRequest()) return false;
    xcb_connection_t* c = connection_->Get();
    if (owner_ == 0) {
        owner_ = xcb_generate_id(c);
        xcb_create_window(c, 0, owner_, connection_->Root(), -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    const xcb_atom_t selection = connection_->Names().clipboard;
    since_ = clock_.Latest();
    xcb_set_selection_owner(c, owner_, selection, since_);
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
    owns_ = owner && owner->owner == owner_;
    text_ = owns_ ? std::move(utf8) : std::nullopt;
    return owns_;
}

std::optional<std::string> Clipboard::Get() {
    if (owns_) return text_;
    return connection_->IsAlive() ? Question(connection_->Names()).Ask() : std::nullopt;
}

bool Clipboard::Handle(const xcb_generic_event_t& event) {
    const xcb_atom_t selection = connection_->Names().clipboard;
    if (TypeOf(event) == XCB_SELECTION_CLEAR) {
        const auto& lost = As<xcb_selection_clear_event_t>(event);
        if (lost.owner != owner_ || lost.selection != selection) return false;
        owns_ = false;
        text_.reset();
        return true;
    }
    if (TypeOf(event) != XCB_SELECTION_REQUEST) return false;
    const auto& request = As<xcb_selection_request_event_t>(event);
    if (request.owner != owner_ || request.selection != selection) return false;
    Answer(request);
    return true;
}

void Clipboard::Answer(const xcb_selection_request_event_t& request) {
    NotifyRequestor(connection_->Get(), request, owns_ && Write(request, PropertyFor(request)));
    connection_->Flush();
}

bool Clipboard::Write(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    const Atoms& names = connection_->Names();
    const auto words = [&](xcb_atom_t type, const std::vector<std::uint32_t>& values) {
        xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, request.requestor, property, type, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
        return true;
    };
    if (request.target == names.targets) {
        std::vector<std::uint32_t> targets{names.targets, names.timestamp};
        if (text_) targets.insert(targets.end(), {names.utf8String, names.plainText});
        return words(XCB_ATOM_ATOM, targets);
    }
    if (request.target == names.timestamp) return words(XCB_ATOM_INTEGER, {since_});
    if (!text_ || (request.target != names.utf8String && request.target != names.plainText)) return false;
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
                        request.target, 8, static_cast<std::uint32_t>(text_->size()), text_->data());
    return true;
}

}  // namespace platform::x11
