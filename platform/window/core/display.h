// The connection to the window system, and the scale of its screen.
#pragma once

#include <cstdint>

#include "platform/window/core/window_record.h"
#include "platform/window/window_system.h"

namespace platform {

// The living window system; null when none was chosen yet or it is lost.
WindowSystem* System();
// The window system, if it knows this top-level.
WindowSystem* SystemOf(const Window& topLevel);
// Counts the window systems.
unsigned SystemSerial();
// Connects when needed. Null with the last error set when no display can be reached.
WindowSystem* EnsureSystem();
bool IsSystemLost();
void MarkSystemLost();
// Ends the window system and forgets which one was chosen.
void DropSystem();
void WakeSystem();            // any thread
std::uint64_t CurrentTime();  // milliseconds, of the window system where there is one; any thread

}  // namespace platform
