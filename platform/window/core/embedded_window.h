// A window of another library that stands where a child window of ours is: it moves, hides and is clipped
// with the child and all its parents.
#pragma once

#include <memory>

#include <platform/types.h>

#include "platform/window/embedding.h"

namespace platform {

class EmbeddedWindow {
  public:
    // `inset` pixels inside the child on every side. Null with ERROR_NOT_SUPPORTED where the window system
    // has no place for such windows, or another last error.
    [[nodiscard]] static std::unique_ptr<EmbeddedWindow> Create(HWND child, int inset,
                                                                EmbeddedEvents& events);
    ~EmbeddedWindow();
    EmbeddedWindow(const EmbeddedWindow&) = delete;
    EmbeddedWindow& operator=(const EmbeddedWindow&) = delete;

    EmbeddingSite& Site() { return *site_; }
    // Brings the place in line with the child.
    void Follow();

  private:
    EmbeddedWindow(HWND child, int inset) : child_(child), inset_(inset) {}

    HWND child_;
    int inset_;
    std::unique_ptr<EmbeddingSite> site_;
};

// Some window was moved, shown or hidden.
void FollowEmbeddedWindows();

// False where the window system has no place for windows of other libraries.
bool CanEmbedWindows();

}  // namespace platform
