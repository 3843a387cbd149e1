// Which window is active, and which one has the keyboard.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/window/core/window_record.h"

namespace platform {

HWND ActiveWindow();   // a top-level
HWND FocusedWindow();  // it, or one of its children
HWND SystemFocus();    // what the window system last said

// Makes a top-level active: WM_ACTIVATE to the one before and to it, then the focus; asks the window system
// to do the same. False for a window that cannot be: hidden, disabled, minimised.
bool ActivateWindow(HWND topLevel, int how);
// A disabled window was asked for: brings up the window that disabled it, the topmost enabled one of those
// that it owns. False when there is none.
bool ActivateModalOf(HWND topLevel);
// Ends the activation of a window that is minimised.
void DeactivateMinimised(HWND topLevel);
// Ends the activation of a window that is hidden or going away: its owner comes up, where it can; otherwise
// the window system chooses.
void PassActivationOn(const Window& topLevel);
// The window system reports: only where the focus ends up matters, so one check follows all changes on the
// way.
void NoteSystemFocus(const event::FocusChanged& change);
// Handles what the window system last reported about the focus.
void FollowSystemFocus();
// Does so in its turn: a window that the focus is on may have become able to be active.
void RequestFocusCheck();
// A request for activation that nothing came of is given up, and the window system followed. Until when an
// answer is waited for; empty when none is due.
void NoticeRefusedActivation();
std::optional<std::uint64_t> ActivationAnswerDue();
// A key arrived for a top-level: the focus is there, whatever was reported.
void NoteKeyFor(HWND topLevel);
// Moves the keyboard focus; the empty window takes it from all.
void MoveFocus(HWND window);
// The window goes; nobody is told.
void ForgetActivation(HWND window);
void ForgetSystemFocus();
void ResetActivation();

}  // namespace platform
