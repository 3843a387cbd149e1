#include "platform/window/x11/drag/drop_receiver.h"

#include <algorithm>

#include "platform/window/file_drag.h"
#include "platform/window/x11/drag/uri_list.h"
#include "platform/window/x11/event_type.h"
#include "platform/window/x11/property_words.h"
#include "platform/window/x11/server_clock.h"

namespace platform::x11 {

namespace {

constexpr std::uint64_t kSilenceTime = 5000;  // milliseconds, for the list and for each piece of it
constexpr std::size_t kLongestList = std::size_t{64} << 20;  // bytes

// The least that a receiver does; the most, where it does both.
DROPEFFECT Announced(DROPEFFECT effects) {
    return effects & DROPEFFECT_MOVE ? DROPEFFECT_MOVE : effects;
}

POINT PlaceOf(std::uint32_t packed) {
    return {static_cast<std::int16_t>(packed >> 16), static_cast<std::int16_t>(packed & 0xFFFF)};
}

}  // namespace

void DropReceiver::OnMessage(HWND window, const xcb_client_message_event_t& event) {
    if (event.format != 32 || !connection_->IsAlive()) return;
    if (atoms_.aware == 0) atoms_ = ResolveXdndAtoms(connection_->Get());
    if (event.type == atoms_.enter) OnEnter(event);
    if (event.type == atoms_.position) OnPosition(window, event);
    if (event.type == atoms_.drop) OnDrop(window, event);
    if (event.type == atoms_.leave) visit_ = Visit();
    connection_->Flush();
}

// ---- Over a window

void DropReceiver::OnEnter(const xcb_client_message_event_t& event) {
    const std::uint32_t(&data)[5] = event.data.data32;
    visit_ = Visit();
    const std::uint32_t version = data[1] >> 24;
    if (version < kOldestXdndVersion) return;
    visit_.parties = {data[0], event.window, std::min(version, kXdndVersion)};
    visit_.hasFiles = OffersFiles(event);
}

bool DropReceiver::OffersFiles(const xcb_client_message_event_t& enter) {
    const std::uint32_t(&data)[5] = enter.data.data32;
    const bool more = (data[1] & 1) != 0;  // than fit into the message
    xcb_connection_t* c = connection_->Get();
    const std::vector<std::uint32_t> types = more ? ReadWords(c, AskWords(c, data[0], atoms_.typeList))
                                                  : std::vector<std::uint32_t>(data + 2, data + 5);
    return std::ranges::find(types, atoms_.uriList) != types.end();
}

// The message names one action, which a source may have been told by the user or not: only what else it
// offers, and the keys, tell.
DROPEFFECT DropReceiver::WantedNow(xcb_window_t source, xcb_atom_t action) {
    xcb_connection_t* c = connection_->Get();
    const auto askedActions = AskWords(c, source, atoms_.actionList);
    const auto askedKeys = xcb_query_pointer(c, connection_->Root());
    DROPEFFECT offered = DROPEFFECT_NONE;
    for (const std::uint32_t one : ReadWords(c, askedActions))
        offered |= EffectOf(atoms_, one).value_or(DROPEFFECT_NONE);
    if (offered == DROPEFFECT_NONE) offered = EffectOf(atoms_, action).value_or(DROPEFFECT_COPY);
    const Reply<xcb_query_pointer_reply_t> keys(xcb_query_pointer_reply(c, askedKeys, nullptr));
    if (!keys) return offered;
    return EffectOfKeys((keys->mask & XCB_MOD_MASK_SHIFT) != 0, (keys->mask & XCB_MOD_MASK_CONTROL) != 0,
                        offered);
}

void DropReceiver::OnPosition(HWND window, const xcb_client_message_event_t& event) {
    const std::uint32_t(&data)[5] = event.data.data32;
    Visit& visit = visit_;
    if (data[0] != visit.parties.source || event.window != visit.parties.target) return;
    visit.screen = PlaceOf(data[2]);
    visit.wanted = WantedNow(visit.parties.source, data[4]);
    const DROPEFFECT effects =
        visit.hasFiles ? events_.FilesOver(window, visit.screen, visit.wanted) : DWORD{DROPEFFECT_NONE};
    visit.accepted = effects != DROPEFFECT_NONE;
    SendStatus(visit.parties, Announced(effects));
}

void DropReceiver::OnDrop(HWND window, const xcb_client_message_event_t& event) {
    const std::uint32_t(&data)[5] = event.data.data32;
    const Visit visit = std::exchange(visit_, Visit());
    if (data[0] == 0 || data[0] != visit.parties.source || event.window != visit.parties.target) return;
    if (visit.accepted)
        BeginTransfer(window, visit, data[2]);
    else
        SendFinished(visit.parties, DROPEFFECT_NONE);
}

// ---- The list

void DropReceiver::BeginTransfer(HWND window, const Visit& visit, xcb_timestamp_t time) {
    EndTransfer(false);
    xcb_connection_t* c = connection_->Get();
    transfer_.window = xcb_generate_id(c);
    transfer_.to = window;
    transfer_.parties = visit.parties;
    transfer_.drop = {++lastDrop_, {}, visit.screen, visit.wanted};
    transfer_.due = MonotonicMilliseconds() + kSilenceTime;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(c, 0, transfer_.window, connection_->Root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_convert_selection(c, transfer_.window, atoms_.selection, atoms_.uriList, atoms_.selection, time);
}

bool DropReceiver::Handle(const xcb_generic_event_t& event) {
    if (transfer_.window == 0) return false;
    switch (TypeOf(event)) {
        case XCB_SELECTION_NOTIFY: {
            const auto& notice = As<xcb_selection_notify_event_t>(event);
            if (notice.requestor != transfer_.window) return false;
            if (notice.property == XCB_ATOM_NONE)
                EndTransfer(false);
            else
                TakeList();
            break;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = As<xcb_property_notify_event_t>(event);
            if (change.window != transfer_.window) return false;
            if (transfer_.inPieces && change.state == XCB_PROPERTY_NEW_VALUE) TakePiece();
            break;
        }
        default:
            return false;
    }
    connection_->Flush();
    return true;
}

std::optional<DropReceiver::Piece> DropReceiver::ReadProperty() {
    xcb_connection_t* c = connection_->Get();
    const std::size_t room = kLongestList - transfer_.list.size();
    const auto asked = xcb_get_property(c, 1, transfer_.window, atoms_.selection, XCB_GET_PROPERTY_TYPE_ANY,
                                        0, static_cast<std::uint32_t>(room / 4));
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, asked, nullptr));
    if (!reply || reply->bytes_after != 0) return std::nullopt;
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return Piece{reply->type, std::string(bytes, count)};
}

void DropReceiver::TakeList() {
    std::optional<Piece> all = ReadProperty();
    if (all && all->type == atoms_.pieces) {
        // The source writes the first one now that the property is gone.
        transfer_.inPieces = true;
        transfer_.due = MonotonicMilliseconds() + kSilenceTime;
        return;
    }
    if (all) transfer_.list = std::move(all->bytes);
    EndTransfer(all.has_value());
}

void DropReceiver::TakePiece() {
    const std::optional<Piece> piece = ReadProperty();
    if (!piece || piece->bytes.empty()) {
        EndTransfer(piece.has_value());
        return;
    }
    transfer_.list += piece->bytes;
    transfer_.due = MonotonicMilliseconds() + kSilenceTime;
}

void DropReceiver::EndTransfer(bool complete) {
    Transfer transfer = std::exchange(transfer_, Transfer());
    if (transfer.window == 0 || !connection_->IsAlive()) return;
    xcb_destroy_window(connection_->Get(), transfer.window);
    if (complete) transfer.drop.paths = FromUriList(transfer.list);
    if (transfer.drop.paths.empty()) {
        SendFinished(transfer.parties, DROPEFFECT_NONE);
        return;
    }
    open_.emplace_back(transfer.drop.id, transfer.parties);
    arrivals_.push_back({transfer.to, std::move(transfer.drop)});
}

void DropReceiver::Settle(std::uint64_t now) {
    if (transfer_.window == 0 || now < transfer_.due) return;
    EndTransfer(false);
    connection_->Flush();
}

std::optional<std::uint64_t> DropReceiver::Due() const {
    return transfer_.window != 0 ? std::optional(transfer_.due) : std::nullopt;
}

std::optional<DropReceiver::Arrival> DropReceiver::TakeArrival() {
    if (arrivals_.empty()) return std::nullopt;
    Arrival first = std::move(arrivals_.front());
    arrivals_.erase(arrivals_.begin());
    return first;
}

// ---- Answers

void DropReceiver::Finish(std::uint64_t drop, DROPEFFECT performed) {
    const auto found = std::ranges::find(open_, drop, [](const auto& one) { return one.first; });
    if (found == open_.end()) return;
    const Parties parties = found->second;
    open_.erase(found);
    SendFinished(parties, performed);
    connection_->Flush();
}

void DropReceiver::SendStatus(const Parties& parties, DROPEFFECT effect) {
    // With the wish to hear of every move: there is no rectangle in which the answer stays the same.
    const std::uint32_t flags = effect != DROPEFFECT_NONE ? 3 : 2;
    SendXdnd(*connection_, parties.source, parties.source, atoms_.status,
             {parties.target, flags, 0, 0, ActionOf(atoms_, effect)});
}

void DropReceiver::SendFinished(const Parties& parties, DROPEFFECT performed) {
    if (!connection_->IsAlive()) return;
    const bool says = parties.version >= 5;
    SendXdnd(*connection_, parties.source, parties.source, atoms_.finished,
             {parties.target, says && performed != DROPEFFECT_NONE ? 1U : 0U,
              says ? ActionOf(atoms_, performed) : xcb_atom_t{XCB_ATOM_NONE}, 0, 0});
}

}  // namespace platform::x11
