// The seam between the window core and a window system. The core decides everything that can be decided
// without a display; a window system is asked for the rest, and reports events into the core's sink.
//
// Only top-level windows reach a window system. Children live in the core and paint into the surface of
// their top-level. All calls come on the thread that owns the windows.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <platform/geometry.h>
#include <platform/ole.h>
#include <platform/text.h>
#include <platform/types.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"
#include "platform/window/embedding.h"

namespace platform {

class FileDragger;
class FileReceiver;
class ForeignWindows;
class KeyWatch;
struct FileDrop;
class TextClipboard;

// How the pixels of a window become visible.
struct Compositing {
    enum class Mode {
        Nothing,   // layered and not fed yet: invisible, and the pointer passes
        Opaque,    // alpha channel ignored
        ColorKey,  // opaque, but pixels whose colour is `key` are left out
        Constant,  // opaque pixels under `alpha`; `alpha` with a key: both
        PerPixel   // premultiplied pixels under `alpha`
    };
    Mode mode = Mode::Opaque;
    std::uint32_t key = 0;  // 0x00RRGGBB
    std::uint8_t alpha = 255;
    bool hasKey = false;  // with Constant
    friend bool operator==(const Compositing&, const Compositing&) = default;
};

// What a window system must know of a window besides its pixels. The core sends the whole record again when
// any of it changes.
struct WindowTraits {
    bool decorated = false;  // asks the window manager for a frame and title
    bool minimizable = false;
    bool maximizable = false;
    bool resizable = false;  // by its user, between the two sizes
    bool maximised = false;  // and decorated: the window manager is to know
    SIZE least{0, 0};
    SIZE most{32767, 32767};
    bool topmost = false;
    bool toolWindow = false;  // not in task lists
    bool activates = true;    // takes the focus when shown or clicked
    bool takesFiles = false;  // that are dropped somewhere on it
    bool dialog = true;       // transient for its owner
    bool modal = false;       // its owner is disabled while it shows
    HWND owner;
    std::array<std::shared_ptr<const Surface>, 2> icons;  // large and small, or null
    CString title;                                        // last, since copying it may fail
    friend bool operator==(const WindowTraits&, const WindowTraits&) = default;
};

enum class Visibility { Hidden, Shown, ShownInactive, Minimised, Restored };
enum class StackPlace {
    Top,
    Bottom,
    Above /* directly over `reference` */,
    Below /* directly under `reference` */
};
enum class CursorShape {
    Arrow,
    Hand,
    IBeam,
    SizeAll,
    None,
    DropCopy,
    DropMove,
    DropRefused,
    SizeWE,
    SizeNS,
    SizeNWSE,
    SizeNESW,
    Wait,
    Cross,
    Count
};

using KeySet = std::bitset<256>;  // by virtual key

// A part of the screen with a display of its own.
struct Monitor {
    CRect whole;
    CRect work;  // without panels that keep their place
    friend bool operator==(const Monitor&, const Monitor&) = default;
};

// Modifier and button state that accompanies pointer and key events.
struct InputState {
    bool shift = false, control = false, alt = false;
    bool left = false, middle = false, right = false;
};

// Where a window system reports events: the core. Every call names the top-level concerned. Handles may be
// stale by then; the sink ignores those. Times are milliseconds of the window system's clock.
class WindowEvents {
  public:
    virtual ~WindowEvents() = default;
    // `window` is empty when the pointer is over none of ours (only while it is captured or watched).
    virtual void PointerMoved(HWND window, POINT screen, InputState state, std::uint64_t time) = 0;
    virtual void PointerLeft(HWND window) = 0;
    // Buttons: 1 left, 2 middle, 3 right.
    virtual void PointerButton(HWND window, int button, bool down, POINT screen, InputState state,
                               std::uint64_t time) = 0;
    virtual void PointerWheel(HWND window, int delta, POINT screen, InputState state, std::uint64_t time) = 0;
    // `character` is the UTF-16 text of the key (may be 0); repeats come as further downs.
    virtual void Key(HWND window, UINT virtualKey, bool down, char16_t character, InputState state,
                     std::uint64_t time) = 0;
    // All the keys that are down, after a time in which the keyboard was somebody else's; none when that
    // begins.
    virtual void KeysHeld(const KeySet& keys) = 0;
    virtual void FocusChanged(HWND window, bool focused) = 0;
    virtual void Placed(HWND window, const RECT& screen) = 0;  // moved or sized by the outside
    virtual void Exposed(HWND window,
                         const Region& region) = 0;  // the display lost these pixels of the surface
    virtual void MinimisedChanged(HWND window, bool minimised) = 0;
    // A window manager has maximised the window, or no longer does. Its new place is reported besides.
    virtual void MaximisedChanged(HWND /*window*/, bool /*maximised*/) {}
    virtual void CloseRequested(HWND window) = 0;
    virtual void GrabLost(HWND window) = 0;
    virtual void SystemDestroyed(HWND window) = 0;  // somebody else destroyed the native window
    // While the keyboard is watched: any key, whoever has the keyboard. `held` are those down after it,
    // `scanCode` is the window system's own number of the key.
    virtual void KeySeen(UINT /*virtualKey*/, UINT /*scanCode*/, bool /*down*/, const KeySet& /*held*/,
                         std::uint64_t /*time*/) {}
    // A window lies on the screen again: the other program's window that it was put into is gone.
    virtual void PutOut(HWND /*window*/) {}
    // Files are held over a window: what would be done with them there, of what is wanted. No event, but a
    // question that is answered at once, and that nobody hears of.
    virtual DROPEFFECT FilesOver(HWND /*window*/, POINT /*screen*/, DROPEFFECT /*wanted*/) {
        return DROPEFFECT_NONE;
    }
    virtual void FilesDropped(HWND /*window*/, FileDrop&& /*drop*/) {}
    // The connection is gone for good. No further call of the window system does anything.
    virtual void ConnectionLost() = 0;
};

class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    // ---- life. `rect` in screen coordinates. The window starts hidden.
    [[nodiscard]] virtual bool Create(HWND window, const RECT& rect, const WindowTraits& traits) = 0;
    virtual void Destroy(HWND window) = 0;
    virtual void SetTraits(HWND window, const WindowTraits& traits) = 0;

    // ---- place
    virtual void Place(HWND window, const RECT& rect) = 0;
    virtual void Show(HWND window, Visibility visibility) = 0;
    virtual void Restack(HWND window, StackPlace place, HWND reference) = 0;
    virtual void Activate(HWND window) = 0;  // raises it and asks for the focus
    // Clips window and input to a region in window coordinates; null removes it.
    virtual void SetShape(HWND window, const Region* region) = 0;
    virtual void SetCompositing(HWND window, const Compositing& compositing) = 0;

    // ---- pixels
    // A surface of the given size in pixels for the window's pixels, zeroed, in memory that Present shows
    // from without a further copy where possible. The old one stays valid for who holds it, but is no longer
    // shown. Null without memory; then the old one stays the one that is shown.
    [[nodiscard]] virtual std::shared_ptr<Surface> NewSurface(HWND window, int width, int height) = 0;
    // Called before the core writes into a surface that was presented: returns once the display no longer
    // reads from it.
    virtual void BeginWrite(HWND window) = 0;
    // Shows a region of the current surface, in its pixels.
    virtual void Present(HWND window, const Region& damage) = 0;

    // ---- pointer and keyboard
    // Pointer events of all buttons go to `window` with coordinates outside it too, until ReleasePointer.
    // False when it is refused: another program holds the pointer.
    virtual bool GrabPointer(HWND window) = 0;
    virtual void ReleasePointer() = 0;
    virtual void SetCursor(HWND window, CursorShape shape) = 0;
    virtual POINT PointerPosition() = 0;
    // Whether the left button is down by the display's own word. It may have been let go where nobody told,
    // and who follows the pointer until then would wait for ever. When it is up, all that led to that has
    // arrived.
    virtual bool IsButtonHeld() { return true; }
    // All keys and buttons that are down now, whoever has the keyboard.
    virtual KeySet KeysDown() = 0;
    // The topmost of our windows that takes the pointer at a point of the screen; empty when none does.
    virtual HWND WindowAt(POINT screen) = 0;
    virtual CSize ScreenSize() = 0;
    // Dots to an inch, as far as its user or desktop says.
    virtual int Dpi() { return 96; }
    // The primary one first. Never empty.
    virtual std::vector<Monitor> Monitors() = 0;

    // ---- windows of other libraries
    // A place for one in a top-level, hidden until it is placed. Null when the window system has none to
    // give.
    [[nodiscard]] virtual std::unique_ptr<EmbeddedPlace> Embed(HWND /*topLevel*/,
                                                               EmbeddedEvents& /*events*/) {
        return nullptr;
    }

    // ---- time and waiting
    virtual std::uint64_t Now() = 0;  // milliseconds
    // Reports every event that has arrived; never blocks. Also runs ready sources of GLib's main context
    // once. True when any event was reported or any source ran.
    virtual bool Poll() = 0;
    // Blocks until an event arrives, a GLib source runs, Wake is called, or `deadline` (in Now's time) is
    // reached; then reports what arrived. False when waiting makes no sense any more: the connection is
    // gone, or (headless) nothing happens any more by itself: time stands still there.
    virtual bool Wait(std::optional<std::uint64_t> deadline) = 0;
    // Ends a Wait early. The one call that any thread may make.
    virtual void Wake() = 0;
    virtual bool IsAlive() = 0;

    // ---- abilities that a window system has or lacks: null, or its own as long as it lives
    virtual FileDragger* FileDrags() { return nullptr; }
    virtual FileReceiver* FileDrops() { return nullptr; }
    virtual ForeignWindows* Foreign() { return nullptr; }
    virtual KeyWatch* KeyWatcher() { return nullptr; }
    virtual TextClipboard* CopiedText() { return nullptr; }
};

// Each returns null with the thread's last error set when the system cannot be reached.
std::unique_ptr<WindowSystem> MakeX11WindowSystem(WindowEvents& events);
std::unique_ptr<WindowSystem> MakeHeadlessWindowSystem(WindowEvents& events, int screenWidth,
                                                       int screenHeight);

}  // namespace platform
