// Handles of windows of other programs.
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>

#include "platform/base/handle_table.h"
#include "platform/window/foreign_windows.h"

namespace platform {

// Apart from the program's own windows, so that calls which know nothing of the others find them stale: the
// indices of the two tables never meet.
class ForeignHandles {
  public:
    static bool IsForeign(HWND handle);
    // The same handle for the same window. Throws std::bad_alloc.
    HWND Give(ForeignId id);
    // Empty for a handle that is stale as far as is known here.
    std::optional<ForeignId> Find(HWND handle) const;
    void Forget(HWND handle);
    void Clear();

  private:
    HandleTable<HWND, const ForeignId> table_;
    std::unordered_map<ForeignId, HWND> handles_;  // as in the table
};

struct Window;

// Still there; asks the window system. Empty with the last error when not.
std::optional<ForeignId> FindForeign(HWND handle);
bool IsForeignShown(HWND handle);
int ShowForeign(HWND handle, int command);  // ShowWindow

void ClearForeignHandles();

// The window is on the screen again, though nobody asked for it.
void AcceptPutOut(const std::shared_ptr<Window>& window);

}  // namespace platform
