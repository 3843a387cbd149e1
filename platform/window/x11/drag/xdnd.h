// The words of the drag-and-drop protocol of X clients, version 5, and its messages.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <platform/ole.h>
#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

constexpr std::uint32_t kXdndVersion = 5;
constexpr std::uint32_t kOldestXdndVersion = 3;

struct XdndAtoms {
    xcb_atom_t aware = 0;
    xcb_atom_t proxy = 0;
    xcb_atom_t selection = 0;
    xcb_atom_t typeList = 0;
    xcb_atom_t actionList = 0;
    xcb_atom_t enter = 0;
    xcb_atom_t position = 0;
    xcb_atom_t status = 0;
    xcb_atom_t leave = 0;
    xcb_atom_t drop = 0;
    xcb_atom_t finished = 0;
    xcb_atom_t copy = 0;
    xcb_atom_t move = 0;
    xcb_atom_t link = 0;
    // Forms of the data, and what else the owner of a selection is asked for.
    xcb_atom_t uriList = 0;
    xcb_atom_t plainText = 0;
    xcb_atom_t utf8Text = 0;
    xcb_atom_t targets = 0;
    xcb_atom_t timestamp = 0;
    xcb_atom_t pieces = 0;   // the type of what is given bit by bit
    xcb_atom_t typeDnd = 0;  // of the window that shows what is dragged
};
XdndAtoms ResolveXdndAtoms(xcb_connection_t* connection);

// The effect that an action means; nothing for actions that are none of the three.
std::optional<DROPEFFECT> EffectOf(const XdndAtoms& atoms, xcb_atom_t action);
// The action for one effect; that of the least harm where there are several.
xcb_atom_t ActionOf(const XdndAtoms& atoms, DROPEFFECT effect);

// `about` is the window that the message names as its own.
void SendXdnd(const Connection& connection, xcb_window_t receiver, xcb_window_t about, xcb_atom_t type,
              const std::array<std::uint32_t, 5>& data);

}  // namespace platform::x11
