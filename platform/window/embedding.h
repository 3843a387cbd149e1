// Windows of another library inside our top-levels, such as a browser's. A window system that can hold them
// gives out sites; the other library makes its window inside of one.
#pragma once

#include <cstdint>

#include <platform/geometry.h>
#include <platform/types.h>

namespace platform {

// What the embedded window reports. The window system may be in the middle of its own work: do no more than
// note it.
class EmbeddedEvents {
  public:
    virtual void FocusWanted() = 0;               // it was pressed, and wants the keyboard
    virtual void FocusLeaves(bool forwards) = 0;  // it was left by Tab

  protected:
    ~EmbeddedEvents() = default;
};

class EmbeddingSite {
  public:
    // The embedded window must be gone by then.
    virtual ~EmbeddingSite() = default;
    // The native window to be embedded in, as a number of the window system.
    virtual std::uint64_t Socket() const = 0;
    // The window that was made inside.
    virtual void Adopt(std::uint64_t window) = 0;
    // `whole` is where the embedded window stands and `seen` the part of it that shows, both in pixels
    // of the top-level. Nothing shows while `seen` is empty.
    virtual void SetBounds(const CRect& whole, const CRect& seen) = 0;
    virtual void SetFocus(bool focused) = 0;
    // Hands on the native event behind a key that the top-level reported while this has the focus: the oldest
    // such, and none older than it later. False when there is none.
    virtual bool PassKey(UINT virtualKey, bool down) = 0;
};

}  // namespace platform
