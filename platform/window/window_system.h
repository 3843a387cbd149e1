// The seam between the window core and a window system. The core decides everything that can be decided
// without a display; a window system is asked for the rest, and reports events into the core's sink.
//
// Only top-level windows reach a window system. Children live in the core and paint into the surface of
// their top-level. All calls come on the thread that owns the windows.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <platform/geometry.h>
#include <platform/text.h>
#include <platform/types.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"
#include "platform/window/compositing.h"
#include "platform/window/embedding.h"
#include "platform/window/window_events.h"

namespace platform {

class FileDragger;
class FileReceiver;
class ForeignWindows;
class KeyWatch;
class TextClipboard;

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
    bool toolWindow = false;                              // not in task lists
    bool activates = true;                                // takes the focus when shown or clicked
    bool takesFiles = false;                              // that are dropped somewhere on it
    bool modal = false;                                   // its owner is disabled while it shows
    HWND owner;                                           // it stays above that, as a dialog does
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

// A part of the screen with a display of its own.
struct Monitor {
    CRect whole;
    CRect work;  // without panels that keep their place
    friend bool operator==(const Monitor&, const Monitor&) = default;
};

// What window systems differ in, besides the abilities that have an interface of their own.
struct Capabilities {
    bool embedsWindows = false;  // of other libraries
};

class WindowSystem {
  public:
    virtual ~WindowSystem() = default;
    virtual Capabilities Can() const { return {}; }

    // ---- life. `rect` in screen coordinates. The window starts hidden.
    [[nodiscard]] virtual bool Create(HWND window, const RECT& rect, const WindowTraits& traits) = 0;
    virtual void Destroy(HWND window) = 0;
    virtual void SetTraits(HWND window, const WindowTraits& traits) = 0;

    // ---- bounds, visibility, order
    virtual void SetBounds(HWND window, const RECT& rect) = 0;
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
    [[nodiscard]] virtual std::unique_ptr<EmbeddingSite> Embed(HWND /*topLevel*/,
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
