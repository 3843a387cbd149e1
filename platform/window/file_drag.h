// The drag of files out of the program, as a window system that has it offers it to the core. The core
// decides when a drag begins, what the user's hands and keys mean, and when it is dropped or given up; the
// window system finds out who lies under the pointer and speaks with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <platform/ole.h>
#include <platform/text.h>
#include <platform/types.h>

#include "platform/graphics/surface.h"

namespace platform {

// What is dragged.
struct FileOffer {
    std::vector<std::byte> block;  // as the host made it: a DROPFILES and its list
    std::vector<CString> paths;    // what a receiver reads out of that; absolute, and never empty
    DROPEFFECT allowed = DROPEFFECT_NONE;
    std::shared_ptr<const Surface> picture;  // shown at the pointer; null for none
    POINT hot{0, 0};                         // where in it the pointer is
};

// Where the drag is, and what the user wants of it.
struct DragPoint {
    POINT screen{0, 0};
    // Of the allowed effects: the one that a key asks for, or all of them when none does.
    DROPEFFECT wanted = DROPEFFECT_NONE;
    bool shift = false, control = false, alt = false;
};

// What the modifier keys ask for, of the allowed effects. Keys that ask for what is not allowed count for
// nothing.
constexpr DROPEFFECT EffectOfKeys(bool shift, bool control, DROPEFFECT allowed) {
    DROPEFFECT asked = DROPEFFECT_NONE;
    if (control && shift)
        asked = DROPEFFECT_LINK;
    else if (control)
        asked = DROPEFFECT_COPY;
    else if (shift)
        asked = DROPEFFECT_MOVE;
    return asked & allowed ? asked : allowed;
}

// One drag at a time. Nothing here runs the caller's code: a drag goes on while events are reported, and its
// end counts as one.
class FileDragger {
  public:
    virtual ~FileDragger() = default;
    // Takes pointer and keyboard for the drag: their events come without a window from here on. False when
    // another program holds the pointer.
    [[nodiscard]] virtual bool Begin(const FileOffer& offer, const DragPoint& at) = 0;
    virtual void Follow(const DragPoint& to) = 0;
    // The button went up: pointer and keyboard are free again, and what lies under the pointer gets the files
    // or not.
    virtual void Drop(const DragPoint& at) = 0;
    // Takes the files back, and forgets the drag, in whatever state it is. Nothing happens without a drag.
    virtual void Cancel() = 0;
    // What became of it: empty while that is open.
    virtual std::optional<DROPEFFECT> Outcome() const = 0;
};

}  // namespace platform
