// The atoms that this window system speaks in, resolved once per connection.
#pragma once

#include <xcb/xcb.h>

namespace platform::x11 {

struct Atoms {
    xcb_atom_t utf8String = 0;
    // Between a client and its window manager.
    xcb_atom_t wmProtocols = 0;
    xcb_atom_t wmDeleteWindow = 0;
    xcb_atom_t wmState = 0;
    xcb_atom_t wmChangeState = 0;
    xcb_atom_t motifHints = 0;
    xcb_atom_t netWmPing = 0;
    xcb_atom_t netWmName = 0;
    xcb_atom_t netWmPid = 0;
    xcb_atom_t netWmState = 0;
    xcb_atom_t netWmStateAbove = 0;
    xcb_atom_t netWmStateHidden = 0;
    xcb_atom_t netWmStateMaximisedAcross = 0;
    xcb_atom_t netWmStateMaximisedDown = 0;
    xcb_atom_t netWmStateModal = 0;
    xcb_atom_t netWmStateSkipTaskbar = 0;
    xcb_atom_t netWmStateSkipPager = 0;
    xcb_atom_t netWmWindowType = 0;
    xcb_atom_t netWmWindowTypeNormal = 0;
    xcb_atom_t netWmWindowTypeDialog = 0;
    xcb_atom_t netWmWindowTypeDesktop = 0;
    xcb_atom_t netWmUserTime = 0;
    xcb_atom_t netActiveWindow = 0;
    xcb_atom_t netSupportingWmCheck = 0;
    xcb_atom_t netSupported = 0;
    xcb_atom_t netWmIcon = 0;
    xcb_atom_t wmClientLeader = 0;
    xcb_atom_t netStartupId = 0;
    xcb_atom_t netStartupInfoBegin = 0;
    xcb_atom_t netStartupInfo = 0;
    xcb_atom_t netCurrentDesktop = 0;
    xcb_atom_t netWorkarea = 0;
    xcb_atom_t netClientList = 0;
    xcb_atom_t netShowingDesktop = 0;
    // The wallpaper, as whoever drew it left it.
    xcb_atom_t rootPixmap = 0;
    // Between a window and the one embedded in it.
    xcb_atom_t xembed = 0;
    // Of windows that take what is dropped.
    xcb_atom_t xdndAware = 0;
    // Between programs that copy and paste.
    xcb_atom_t clipboard = 0;
    xcb_atom_t clipboardAnswer = 0;
    xcb_atom_t targets = 0;
    xcb_atom_t timestamp = 0;
    xcb_atom_t plainText = 0;
    xcb_atom_t incremental = 0;
    // Owned by the compositor of the screen, while there is one.
    xcb_atom_t compositorSelection = 0;
};

// Atoms that cannot be resolved (the connection is dying) stay 0.
Atoms ResolveAtoms(xcb_connection_t* connection, int screenNumber);

}  // namespace platform::x11
