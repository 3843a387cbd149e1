// Those who watch the keyboard.
#pragma once

#include <memory>
#include <vector>

#include <platform/foreign.h>

#include "platform/base/handle_table.h"
#include "platform/window/window_events.h"

namespace platform {

class KeyHooks {
  public:
    HHOOK Add(HOOKPROC procedure);  // throws std::bad_alloc
    bool Remove(HHOOK hook);
    bool IsEmpty() const { return hooks_.empty(); }
    void Clear();
    // Asks all of them, the youngest first, each as far as the one before passes it on.
    void Run(const event::KeySeen& event);
    // From inside a procedure.
    LRESULT Next(int code, WPARAM wParam, LPARAM lParam);

  private:
    struct Hook {
        HHOOK handle;
        HOOKPROC procedure;
        std::uint64_t serial;
    };
    // The procedures may add and remove hooks, themselves included, and may run a loop that asks all again.
    HandleTable<HHOOK, const Hook> table_;
    std::vector<std::shared_ptr<const Hook>> hooks_;  // the oldest first
    std::uint64_t lastSerial_ = 0;
    std::uint64_t asked_ = 0;  // the serial of the hook being asked; 0: none is
};

KeyHooks& Hooks();

// A window system was chosen, or the hooks changed: it watches as long as there are any.
bool UpdateKeyWatch();

}  // namespace platform
