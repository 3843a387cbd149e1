// The windows of other programs, where a window system lets us see them and go into them.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/text.h>
#include <platform/types.h>

namespace platform {

// A window of another program, as long as it lives; never given again to another. 0 is the screen.
using ForeignId = std::uint64_t;
constexpr ForeignId kScreen = 0;

struct ForeignWindow {
    ForeignId id = kScreen;
    CString className;
    CString title;
};

class ForeignWindows {
  public:
    virtual ~ForeignWindows() = default;
    // What lies directly in a window (or on the screen), in the order in which a search meets them.
    virtual std::vector<ForeignWindow> In(ForeignId parent) = 0;
    virtual bool Exists(ForeignId window) = 0;
    virtual bool IsShown(ForeignId window) = 0;
    virtual void SetShown(ForeignId window, bool shown) = 0;
    // A top-level of ours lies in `parent` from now on, or on the screen again; it keeps its place on the
    // screen. False when that cannot be. What comes between later is reported by WindowEvents::PutOut.
    virtual bool PutInto(HWND window, ForeignId parent) = 0;
};

}  // namespace platform
