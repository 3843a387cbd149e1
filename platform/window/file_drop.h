// The way of files into the program, as a window system that has it offers it to the core. Files that are
// held over a window, and those that are dropped on it, are reported as events; what became of a drop is said
// here.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/ole.h>
#include <platform/text.h>

namespace platform {

struct FileDrop {
    std::uint64_t id = 0;        // for FileReceiver::Finish
    std::vector<CString> paths;  // absolute, and never empty
    POINT screen{0, 0};
    DROPEFFECT wanted = DROPEFFECT_NONE;  // by the user, of what the source allows
};

class FileReceiver {
  public:
    virtual ~FileReceiver() = default;
    // DROPEFFECT_NONE when nobody took the files. Every drop that was reported is finished once, soon.
    virtual void Finish(std::uint64_t drop, DROPEFFECT performed) = 0;
};

}  // namespace platform
