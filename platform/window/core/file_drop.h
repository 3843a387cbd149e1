// Files dropped on our windows: who takes them, and the message that brings them.
#pragma once

#include "platform/window/file_drop.h"

namespace platform {

// What would be done with files at a point of a top-level, of what is wanted; one that the window performs in
// any case where that is none. Runs no procedure.
DROPEFFECT EffectsOfDrop(HWND topLevel, POINT screen, DROPEFFECT wanted);
// Sends the message of a drop whose turn has come, and says what became of it.
void DeliverDrop(HWND topLevel, const FileDrop& drop);

}  // namespace platform
