#include "platform/window/x11/drag/drag_source.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/window/x11/drag/uri_list.h"
#include "platform/window/x11/event_type.h"
#include "platform/window/x11/reply.h"
#include "platform/window/x11/selection.h"

namespace platform::x11 {

namespace {

// Milliseconds. Receivers that fetch the list first refuse the first questions.
constexpr std::uint64_t kAskPause = 30;
constexpr std::uint64_t kRefusalTime = 500;
constexpr std::uint64_t kSilenceTime = 1500;
constexpr std::uint64_t kFinishTime = 5000;

bool SamePoint(const DragPoint& a, const DragPoint& b) {
    return CPoint(a.screen) == b.screen && a.wanted == b.wanted;
}

}  // namespace

// ---- What the core asks for

bool DragSource::Begin(const FileOffer& offer, const DragPoint& at) {
    Cancel();
    if (!connection_->IsAlive()) return false;
    if (atoms_.aware == 0) atoms_ = ResolveXdndAtoms(connection_->Get());
    began_ = clock_.Latest();
    cursor_ = CursorShape::DropRefused;
    MakeWindow();
    if (!Grab()) {
        Cancel();
        return false;
    }
    list_ = ToUriList(offer.paths);
    allowed_ = offer.allowed;
    offered_ = DROPEFFECT_NONE;
    outcome_.reset();
    xcb_set_selection_owner(connection_->Get(), window_, atoms_.selection, began_);
    if (offer.picture) icon_.Show(atoms_, *offer.picture, offer.hot, at.screen, manager_.IsCompositing());
    phase_ = Phase::Dragging;
    Follow(at);
    return true;
}

void DragSource::MakeWindow() {
    xcb_connection_t* c = connection_->Get();
    window_ = xcb_generate_id(c);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                           XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                           XCB_EVENT_MASK_POINTER_MOTION};
    // Beside the screen: it must be there to hold the pointer, not to be seen.
    xcb_create_window(c, 0, window_, connection_->Root(), -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    const xcb_atom_t types[] = {atoms_.uriList, atoms_.plainText, atoms_.utf8Text};
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, atoms_.typeList, XCB_ATOM_ATOM, 32,
                        std::size(types), types);
    xcb_map_window(c, window_);
}

bool DragSource::Grab() {
    xcb_connection_t* c = connection_->Get();
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    const auto pointer = xcb_grab_pointer(c, 0, window_, events, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                          XCB_WINDOW_NONE, cursors_.Get(cursor_), XCB_CURRENT_TIME);
    const auto keys =
        xcb_grab_keyboard(c, 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_pointer_reply_t> held(xcb_grab_pointer_reply(c, pointer, nullptr));
    // Where somebody else has the keyboard the drag goes without Escape; the pointer tells of the modifiers.
    const Reply<xcb_grab_keyboard_reply_t> keysGrabbed(xcb_grab_keyboard_reply(c, keys, nullptr));
    return held && held->status == XCB_GRAB_STATUS_SUCCESS;
}

void DragSource::Ungrab() {
    if (!connection_->IsAlive()) return;
    xcb_ungrab_pointer(connection_->Get(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(connection_->Get(), XCB_CURRENT_TIME);
}

void DragSource::Follow(const DragPoint& to) {
    if (phase_ != Phase::Dragging) return;
    point_ = to;
    icon_.Follow(to.screen);
    OfferActions(to.wanted);
    Retarget();
    Ask();
    ShowCursor();
    connection_->Flush();
}

void DragSource::Drop(const DragPoint& at) {
    if (phase_ != Phase::Dragging) return;
    point_ = at;
    icon_.Hide();
    Ungrab();
    phase_ = Phase::Dropping;
    released_ = MonotonicMilliseconds();
    due_ = released_ + kSilenceTime;
    OfferActions(at.wanted);
    Retarget();
    if (!target_)
        Finish(DROPEFFECT_NONE);
    else if (accepted_ && !asking_ && SamePoint(asked_, point_))
        HandOver();
    else
        Ask();
    connection_->Flush();
}

void DragSource::Cancel() {
    if (phase_ == Phase::Dragging || phase_ == Phase::Dropping) Leave();
    if (phase_ == Phase::Dragging) Ungrab();
    phase_ = Phase::None;
    Unwatch();
    target_ = DragTarget();
    icon_.Hide();
    // Selection and what is left of the grabs go with the window.
    const xcb_window_t window = std::exchange(window_, 0);
    if (window == 0 || !connection_->IsAlive()) return;
    xcb_destroy_window(connection_->Get(), window);
    connection_->Flush();
}

std::optional<DROPEFFECT> DragSource::Outcome() const {
    return phase_ == Phase::None ? std::optional<DROPEFFECT>(DROPEFFECT_NONE) : outcome_;
}

void DragSource::Finish(DROPEFFECT outcome) {
    phase_ = Phase::Over;
    Unwatch();
    target_ = DragTarget();
    outcome_ = outcome;
    news_ = true;
}

// ---- Receivers

// A receiver cannot tell a forced action from one that is only proposed, but for what else is offered.
void DragSource::OfferActions(DROPEFFECT wanted) {
    if (std::exchange(offered_, wanted) == wanted || !connection_->IsAlive()) return;
    std::vector<xcb_atom_t> actions;
    for (const DROPEFFECT one : {DROPEFFECT_COPY, DROPEFFECT_MOVE, DROPEFFECT_LINK})
        if (wanted & one) actions.push_back(ActionOf(atoms_, one));
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window_, atoms_.actionList, XCB_ATOM_ATOM,
                        32, static_cast<std::uint32_t>(actions.size()), actions.data());
}

void DragSource::Retarget() {
    const DragTarget target = FindDragTarget(*connection_, atoms_, point_.screen);
    if (target == target_) return;
    Leave();
    if (target) Enter(target);
}

void DragSource::Enter(const DragTarget& target) {
    target_ = target;
    Watch(target);
    Send(atoms_.enter, target.version << 24, atoms_.uriList, atoms_.plainText, atoms_.utf8Text);
}

void DragSource::Leave() {
    if (target_) Send(atoms_.leave);
    Unwatch();
    target_ = DragTarget();
    asking_ = askAgain_ = accepted_ = false;
    effect_ = DROPEFFECT_NONE;
}

// The end of its window. What we hear of it otherwise, as the desktop or as a window of ours, stays.
void DragSource::Watch(const DragTarget& target) {
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, target.receiver), nullptr));
    maskBefore_ = reply ? reply->your_event_mask : std::uint32_t{XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    const std::uint32_t mask = maskBefore_ | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (mask != maskBefore_) xcb_change_window_attributes(c, target.receiver, XCB_CW_EVENT_MASK, &mask);
}

void DragSource::Unwatch() {
    if (!target_ || !connection_->IsAlive() || (maskBefore_ & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0) return;
    xcb_change_window_attributes(connection_->Get(), target_.receiver, XCB_CW_EVENT_MASK, &maskBefore_);
}

void DragSource::Send(xcb_atom_t type, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    if (connection_->IsAlive())
        SendXdnd(*connection_, target_.receiver, target_.window, type, {window_, a, b, c, d});
}

void DragSource::Ask() {
    if (!target_) return;
    askAgain_ = asking_;
    if (asking_) return;
    asking_ = true;
    asked_ = point_;
    const std::uint32_t place = static_cast<std::uint32_t>(point_.screen.x & 0xFFFF) << 16 |
                                static_cast<std::uint32_t>(point_.screen.y & 0xFFFF);
    Send(atoms_.position, 0, place, clock_.Latest(), ActionOf(atoms_, point_.wanted));
}

void DragSource::HandOver() {
    phase_ = Phase::Finishing;
    due_ = MonotonicMilliseconds() + kFinishTime;
    Send(atoms_.drop, 0, clock_.Latest());
}

void DragSource::ShowCursor() {
    CursorShape shape = CursorShape::DropRefused;
    if (accepted_) shape = effect_ == DROPEFFECT_MOVE ? CursorShape::DropMove : CursorShape::DropCopy;
    if (std::exchange(cursor_, shape) == shape || !connection_->IsAlive()) return;
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    xcb_change_active_pointer_grab(connection_->Get(), cursors_.Get(shape), XCB_CURRENT_TIME, events);
}

// ---- What receivers say

bool DragSource::Handle(const xcb_generic_event_t& event) {
    if (phase_ == Phase::None) return false;
    switch (TypeOf(event)) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = As<xcb_client_message_event_t>(event);
            if (message.window != window_) return false;
            if (message.format == 32 && message.type == atoms_.status) OnStatus(message);
            if (message.format == 32 && message.type == atoms_.finished) OnFinished(message);
            break;
        }
        case XCB_SELECTION_REQUEST: {
            const auto& request = As<xcb_selection_request_event_t>(event);
            if (request.owner != window_) return false;
            OnRequest(request);
            break;
        }
        case XCB_DESTROY_NOTIFY:
            OnGone(As<xcb_destroy_notify_event_t>(event).window);
            return false;
        default:
            return false;
    }
    connection_->Flush();
    return true;
}

void DragSource::OnStatus(const xcb_client_message_event_t& event) {
    const std::uint32_t(&data)[5] = event.data.data32;
    const bool waits = phase_ == Phase::Dragging || phase_ == Phase::Dropping;
    if (!waits || data[0] != target_.window || !asking_) return;
    asking_ = false;
    accepted_ = (data[1] & 1) != 0;
    effect_ = accepted_ ? EffectOf(atoms_, data[4]).value_or(DROPEFFECT_COPY) : DROPEFFECT_NONE;
    if (askAgain_)
        Ask();
    else if (phase_ == Phase::Dropping && accepted_)
        HandOver();
    else if (phase_ == Phase::Dropping)
        due_ = MonotonicMilliseconds() + kAskPause;
    if (phase_ == Phase::Dragging) ShowCursor();
}

void DragSource::OnFinished(const xcb_client_message_event_t& event) {
    const std::uint32_t(&data)[5] = event.data.data32;
    if (phase_ != Phase::Finishing || data[0] != target_.window) return;
    // Older receivers do not say how it went: it went as they announced.
    if (target_.version < kXdndVersion)
        Finish(effect_);
    else if ((data[1] & 1) == 0)
        Finish(DROPEFFECT_NONE);
    else
        // Of an action that we know nothing of, it is known that the files are still ours.
        Finish(EffectOf(atoms_, data[2]).value_or(DROPEFFECT_COPY));
}

void DragSource::OnGone(xcb_window_t window) {
    if (!target_ || (window != target_.window && window != target_.receiver)) return;
    target_ = DragTarget();
    if (phase_ != Phase::Dragging) {
        Finish(DROPEFFECT_NONE);
        return;
    }
    Leave();
    Follow(point_);  // somebody else lies there now
}

void DragSource::Settle(std::uint64_t now) {
    const std::optional<std::uint64_t> due = Due();
    if (!due || now < *due) return;
    const bool refused = !asking_ && now < released_ + kRefusalTime;
    if (phase_ == Phase::Dropping && refused) {
        due_ = released_ + kSilenceTime;
        Ask();
    } else {
        if (phase_ == Phase::Dropping) Leave();
        Finish(DROPEFFECT_NONE);
    }
    connection_->Flush();
}

std::optional<std::uint64_t> DragSource::Due() const {
    const bool waits = phase_ == Phase::Dropping || phase_ == Phase::Finishing;
    return waits ? std::optional(due_) : std::nullopt;
}

// ---- The data

void DragSource::OnRequest(const xcb_selection_request_event_t& event) {
    NotifyRequestor(connection_->Get(), event, Answer(event, PropertyFor(event)));
}

bool DragSource::Answer(const xcb_selection_request_event_t& event, xcb_atom_t property) {
    xcb_connection_t* c = connection_->Get();
    if (event.selection != atoms_.selection) return false;
    if (event.target == atoms_.targets) {
        const xcb_atom_t all[] = {atoms_.targets, atoms_.timestamp, atoms_.uriList, atoms_.plainText,
                                  atoms_.utf8Text};
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, event.requestor, property, XCB_ATOM_ATOM, 32,
                            std::size(all), all);
        return true;
    }
    if (event.target == atoms_.timestamp) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, event.requestor, property, XCB_ATOM_INTEGER, 32, 1,
                            &began_);
        return true;
    }
    // As text, too, it is the list of URIs: a line end in a name must not become one in a terminal.
    const bool text = event.target == atoms_.plainText || event.target == atoms_.utf8Text;
    if (!text && event.target != atoms_.uriList) return false;
    Write(event.requestor, property, event.target, list_);
    return true;
}

// In as many requests as it takes; a reader gets it in one, or in as many as it likes.
void DragSource::Write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& bytes) {
    const std::size_t most = connection_->MaximumRequest() - 64;
    std::size_t at = 0;
    do {
        const std::size_t count = std::min(most, bytes.size() - at);
        xcb_change_property(connection_->Get(), at == 0 ? XCB_PROP_MODE_REPLACE : XCB_PROP_MODE_APPEND,
                            window, property, type, 8, static_cast<std::uint32_t>(count), bytes.data() + at);
        at += count;
    } while (at < bytes.size());
}

}  // namespace platform::x11
