/// @file
/// The in-memory window system: a screen composed of windows, injected input and a clock that moves only
/// when told to. For tests, servers and screenshots.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/geometry.h>
#include <platform/ole.h>
#include <platform/text.h>
#include <platform/types.h>

namespace Headless {

struct PLATFORM_API Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> argb;  ///< premultiplied, top-down

    /// 0 outside the picture.
    std::uint32_t At(int x, int y) const;
    /// Straight-alpha PNG. False when the file cannot be written.
    bool SavePng(const CString& path) const;
    /// The picture of a file (its first frame), for comparisons; what SavePng wrote comes back as it was.
    /// Empty where there is none that can be read.
    static Picture Load(const CString& path);
};

/// Where two pictures differ.
struct PLATFORM_API Difference {
    int pixels = 0;             ///< that differ by more than the tolerance, or that only one of the two has
    int largest = 0;            ///< of any channel, 0 to 255; also where it is within the tolerance
    RECT place = {0, 0, 0, 0};  ///< the smallest that holds them all
    Picture picture;  ///< the wanted one in pale grey, what differs in red: to be saved and looked at
};
/// Channels (of the premultiplied pixels) may be apart by `tolerance`: 1 or 2 hides rounding; text of other
/// fonts differs by more than any.
PLATFORM_API Difference Compare(const Picture& shown, const Picture& wanted, int tolerance = 0);

/// Chooses this window system for the process, with a screen of the given size in pixels and dots to the
/// inch. Call it before the process's first window; later calls resize the screen and change nothing else.
/// False when windows of another window system exist already.
PLATFORM_API bool Use(int screenWidth = 1280, int screenHeight = 800, int dpi = 96);

struct Monitor {
    RECT bounds;  ///< on the screen
    RECT work;    ///< without panels
};
/// Divides the screen into monitors, the primary one first. Until then, for an empty list and after another
/// Use, the screen is one monitor without panels.
PLATFORM_API void SetMonitors(const std::vector<Monitor>& monitors);

/// Input. Coordinates are those of the program, on the screen: pixels, unless it asked for others
/// (SetScreenScale). What the input causes is dispatched before the call returns.
PLATFORM_API void MovePointer(int x, int y);
PLATFORM_API void ButtonDown(int button = 1);  ///< 1 left, 2 middle, 3 right
PLATFORM_API void ButtonUp(int button = 1);
PLATFORM_API void KeyDown(UINT virtualKey);
PLATFORM_API void KeyUp(UINT virtualKey);
/// Turns the wheel where the pointer is; positive is away from the user.
PLATFORM_API void Wheel(int notches);
/// Types a text: each of its units goes down and up, capitals with Shift. A line break is Enter. What is no
/// letter, digit or blank comes from the key VK_PACKET, which has every character.
PLATFORM_API void Type(const CString& text);
/// Gestures of several events, the pointer's way to their place included. A click is one by itself, however
/// soon after another; DoubleClick is two that belong together. Drag holds the left button from one place to
/// the other; with `presses` 2 it begins with a double click, as files are dragged out of a list. Where
/// something blocks in the middle (a menu, a drag of files, DoModal), its loop gets the rest of the gesture,
/// before any step of WhenIdle.
PLATFORM_API void Click(int x, int y, int button = 1);
PLATFORM_API void DoubleClick(int x, int y, int button = 1);
PLATFORM_API void Drag(int fromX, int fromY, int toX, int toY, int presses = 1);
/// The same, in client coordinates of a window as it lies now.
PLATFORM_API void MovePointer(HWND window, int x, int y);
PLATFORM_API void Click(HWND window, int x, int y, int button = 1);
PLATFORM_API void DoubleClick(HWND window, int x, int y, int button = 1);
PLATFORM_API void Drag(HWND window, int fromX, int fromY, int toX, int toY, int presses = 1);
/// The request that a window manager's close button makes.
PLATFORM_API void RequestClose(HWND window);

/// Moves the clock step by step to each timer that falls due, and delivers what each causes. Nothing else
/// moves it. Timers that fall due behind a WM_QUIT wait until that is taken.
PLATFORM_API void Advance(unsigned milliseconds);
/// Dispatches until no message and no update region is left. Timers need Advance. A window that invalidates
/// itself in every paint is given up on: after a thousand paints in a row more than there are windows.
PLATFORM_API void RunPending();
/// Runs `step` from inside the next wait of a loop (a modal dialog, GetMessageW) that has nothing else to do.
/// Steps run in the order given, one per wait: this is how a test acts while DoModal blocks, Advance
/// included. Time stands still in a loop, so without a step nothing can happen any more, whatever timers are
/// set: the loop ends then as if WM_QUIT had come, instead of hanging, and DoModal returns IDCANCEL.
PLATFORM_API void WhenIdle(void (*step)(void*), void* argument);

/// A window of another program, which lies below all of the program's own and which FindWindowExW finds
/// behind those added to the same parent before. In another such window (empty: on the screen). `place`: on
/// the screen; null is all of it. It shows one colour, opaque, but for 0, which shows nothing. Empty for a
/// stale parent, or before Use.
PLATFORM_API HWND AddForeignWindow(LPCWSTR className, LPCWSTR title, HWND parent = HWND(),
                                   const RECT* place = nullptr, std::uint32_t colour = 0);
/// The other program closes it, with all that lies in it.
PLATFORM_API void CloseForeignWindow(HWND window);

///@{
/// What a window shows: all its pixels as composed on the screen, before it is blended with what lies behind.
PLATFORM_API Picture Capture(HWND window);
PLATFORM_API Picture CaptureScreen();  ///< over an opaque 0xFF3A6EA5 desktop, or the wallpaper
///@}
/// What a task list shows for a window: the large icon, or else the small one. Empty without either.
PLATFORM_API Picture CaptureIcon(HWND window);
/// The resource identifier of the cursor shown (32512 arrow, 32649 hand, 32648 while what is dragged would
/// not be taken).
PLATFORM_API UINT CursorShown();

/// What a receiver is told of files that are dragged over it.
struct PLATFORM_API DraggedFiles {
    std::vector<BYTE> block;               ///< as COleDataSource was given it, every byte
    DROPEFFECT allowed = DROPEFFECT_NONE;  ///< one, while a key asks for it
    POINT screen = {0, 0};
    WPARAM keys = 0;  ///< MK_SHIFT and MK_CONTROL

    /// What is in the block, as far as a receiver reads it.
    std::vector<CString> Paths() const;
};

/// Another program that files can be dragged to: a rectangle of the screen, behind all windows and above
/// older ones of its kind, from its construction to its end.
///
/// A drag blocks like a modal dialog, so steps of WhenIdle act for the user while it runs. When none is left
/// the drag ends without a drop.
class PLATFORM_API DropTarget {
  public:
    explicit DropTarget(const RECT& place);
    virtual ~DropTarget();
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;
    CRect Place() const { return place_; }

    /// The drag is over it, or a key has changed: what it would do with the files. Anything but one of the
    /// allowed effects means nothing, as it does in a program that never answers. Here: a move where that is
    /// allowed.
    virtual DROPEFFECT Over(const DraggedFiles& files);
    /// The files are dropped, after Over took them. What is returned is what the source is told.
    virtual DROPEFFECT Drop(const DraggedFiles& files) = 0;
    /// The drag goes elsewhere, or ends without a drop.
    virtual void Leave();

  private:
    CRect place_;
};

/// Another program drops files where the pointer is, and waits for what becomes of them, which is the result;
/// the keys that are down count. DROPEFFECT_NONE where no window takes files.
PLATFORM_API DROPEFFECT DropFiles(const std::vector<CString>& paths,
                                  DROPEFFECT allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE);

}  // namespace Headless
