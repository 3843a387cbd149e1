// Our side of files that another client drops on a window of ours.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/window/file_drop.h"
#include "platform/window/window_system.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/drag/xdnd.h"

namespace platform::x11 {

// Nothing here waits for the source: what it owes is awaited between events, and no longer than so long. One
// list is fetched at a time; a newer drop puts an end to the one before.
class DropReceiver final : public FileReceiver {
  public:
    DropReceiver(std::shared_ptr<Connection> connection, WindowEvents& events)
        : connection_(std::move(connection)), events_(events) {}

    void Finish(std::uint64_t drop, DROPEFFECT performed) override;

    // ---- For the loop that reads events

    // A message to a window of ours, of the protocol or not.
    void OnMessage(HWND window, const xcb_client_message_event_t& event);
    // True when the event was for the receiver alone.
    bool Handle(const xcb_generic_event_t& event);
    // Acts on what has been waited for long enough.
    void Settle(std::uint64_t now);
    std::optional<std::uint64_t> Due() const;
    // Files that have come, to be reported.
    struct Arrival {
        HWND window;
        FileDrop drop;
    };
    std::optional<Arrival> TakeArrival();

  private:
    // Who speaks with whom.
    struct Parties {
        xcb_window_t source = 0;  // 0: nobody
        xcb_window_t target = 0;
        std::uint32_t version = 0;
    };
    // A drag that is over a window of ours.
    struct Visit {
        Parties parties;
        bool hasFiles = false;
        POINT screen{0, 0};
        DROPEFFECT wanted = DROPEFFECT_NONE;
        bool accepted = false;
    };
    // A drop whose list is on its way, to a window that is there for this one alone: what a source writes
    // that was given up reaches nobody.
    struct Transfer {
        xcb_window_t window = 0;  // 0: none
        HWND to;
        Parties parties;
        FileDrop drop;
        bool inPieces = false;
        std::string list;
        std::uint64_t due = 0;
    };

    void OnEnter(const xcb_client_message_event_t& event);
    void OnPosition(HWND window, const xcb_client_message_event_t& event);
    void OnDrop(HWND window, const xcb_client_message_event_t& event);
    bool OffersFiles(const xcb_client_message_event_t& enter);
    DROPEFFECT WantedNow(xcb_window_t source, xcb_atom_t action);

    void BeginTransfer(HWND window, const Visit& visit, xcb_timestamp_t time);
    void TakeList();
    void TakePiece();
    void EndTransfer(bool complete);
    // What the transfer's property holds, which is taken away; null when it holds more than is let in.
    struct Piece {
        xcb_atom_t type = 0;
        std::string bytes;
    };
    std::optional<Piece> ReadProperty();

    void SendStatus(const Parties& parties, DROPEFFECT effect);
    void SendFinished(const Parties& parties, DROPEFFECT performed);

    std::shared_ptr<Connection> connection_;
    WindowEvents& events_;
    XdndAtoms atoms_;  // resolved with the first message

    Visit visit_;
    Transfer transfer_;
    std::vector<Arrival> arrivals_;
    std::vector<std::pair<std::uint64_t, Parties>> open_;  // drops that were reported
    std::uint64_t lastDrop_ = 0;
};

}  // namespace platform::x11
