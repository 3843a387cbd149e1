// The state that all windows share, and the thread and the window system that they belong to.
//
// One thread owns all windows: the one that made the first. Everything here is that thread's alone, but for
// what says otherwise.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/base/handle_table.h"
#include "platform/graphics/scale.h"
#include "platform/window/core/foreign.h"
#include "platform/window/core/hooks.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/scaled_system.h"
#include "platform/window/core/stacking_order.h"
#include "platform/window/core/timers.h"
#include "platform/window/core/window_record.h"
#include "platform/window/file_drag.h"
#include "platform/window/file_drop.h"
#include "platform/window/window_system.h"

namespace platform {

struct PointerTracking {
    POINT screen{-1, -1};  // as of the message being handled
    HWND capture;
    HWND hover;    // the window that the last move went to
    HWND tracked;  // asked for WM_MOUSELEAVE
    // The last press that may become the first half of a double click.
    struct {
        HWND window;
        int button = 0;
        POINT screen{0, 0};
        std::uint64_t time = 0;
    } press;
    HCURSOR cursor;
    HWND cursorWindow;  // the top-level it is shown over
    bool checkPending = false;
};

struct KeyboardTracking {
    bool down[256] = {};
    bool toggled[256] = {};
    // The key message taken last, for TranslateMessage.
    MSG lastKey{};
    char16_t lastCharacter = 0;
    // What is down while a hook is asked: all keys, whoever has the keyboard.
    std::optional<KeySet> watched;
};

struct Activation {
    HWND active;       // a top-level
    HWND focus;        // it, or one of its children
    HWND systemFocus;  // what the window system last said
    // The core activates at once and the window system follows; what it reports meanwhile may be older than
    // the request.
    HWND asked;
    std::uint64_t askedUntil = 0;
    std::uint64_t serial = 0;  // counts changes of `active`
};

// A window being moved by its caption, or sized by its border.
struct CaptionMove {
    HWND window;           // empty: no move
    int hit = HTCAPTION;   // or the sizing code of what is dragged
    POINT anchor{0, 0};    // the pointer at the start
    POINT followed{0, 0};  // and as of the last move
    CRect start;
    std::uint64_t serial = 0;  // counts moves
};

// Files being dragged out of the program.
struct FileDragging {
    bool running = false;
    bool decided = false;  // dropped or given up: only the answer is still to come
    DROPEFFECT allowed = DROPEFFECT_NONE;
};

// A message that another thread waits for.
struct SentFromElsewhere {
    MSG message;
    std::promise<LRESULT> result;
};

class Core {
  public:
    // Its memory is never given back: objects of the host that outlive the library's own may still ask.
    static Core& Get();
    Core(const Core&) = delete;
    Core& operator=(const Core&) = delete;

    // ---- windows
    // Null with the last error set, for a stale handle or on another thread.
    Window* Find(HWND window);
    std::shared_ptr<Window> Share(HWND window);
    // Without touching the last error; on the owning thread only.
    Window* Peek(HWND window) const { return windows_.Find(window); }
    std::shared_ptr<Window> PeekShared(HWND window) const { return windows_.Share(window); }
    HWND Insert(std::shared_ptr<Window> window);
    void Remove(HWND window);
    bool IsLive(HWND window);  // any thread
    std::size_t WindowCount() const { return windows_.Count(); }
    template <class F>
    void ForEachWindow(F f) {
        windows_.ForEach(f);
    }

    // ---- thread
    bool IsOwningThread() const;
    // Makes the calling thread the owner when no window exists. False with the last error set when another
    // thread owns windows.
    bool Claim();
    bool HasOwner() const { return owner_.load() != kNoThread; }
    // The calling thread ends: its windows go without a message, and it never owns any again.
    void LeaveThread();

    // ---- window system
    // The living window system; null when none was chosen yet or it is lost.
    WindowSystem* System() const { return lost_ ? nullptr : system_.get(); }
    // The window system, if it knows this top-level.
    WindowSystem* SystemOf(const Window& topLevel) const {
        return topLevel.systemSerial == systemSerial_ ? System() : nullptr;
    }
    unsigned SystemSerial() const { return systemSerial_; }
    // Connects when needed. Null with the last error set when no display can be reached.
    WindowSystem* EnsureSystem();
    bool UseHeadless(int screenWidth, int screenHeight);
    // The program wants a number of pixels to a unit of the screen, or what the screen asks for (0). Nothing
    // changes while windows exist.
    void WantScale(int scale);
    void SettleScale();
    bool IsLost() const { return lost_; }
    void MarkLost();
    std::uint64_t Now();  // any thread

    // ---- what other threads hand over
    bool PostFromElsewhere(const MSG& message);
    LRESULT SendFromElsewhere(const MSG& message);
    void TakeInbox();     // posted messages, into the queue
    void RunSentInbox();  // sent ones, at once
    void FailSentTo(HWND window);

    void ShutDown();
    // Shuts down for good and releases everything. Every later call fails.
    void End();
    bool HasEnded() const { return ended_; }

    // ---- the parts
    StackingOrder stack;  // top-levels
    std::unordered_map<std::u16string, std::shared_ptr<const WindowClass>> classes;
    std::deque<HWND> dirty;        // windows that may have something to paint, longest waiting first
    bool dirtyIncomplete = false;  // there was no memory to list one
    struct ContextOwner {
        HWND window;
        bool paint;
    };
    std::unordered_map<std::uint64_t, ContextOwner> contexts;  // by the parameter form of the HDC
    std::shared_ptr<Surface> nowhere;                          // one pixel, for contexts without a surface
    MessageQueue queue;
    TimerTable timers;
    ForeignHandles foreign;
    KeyHooks hooks;
    PointerTracking pointer;
    KeyboardTracking keyboard;
    Activation activation;
    CaptionMove captionMove;
    FileDragging fileDrag;
    std::optional<int> quit;
    std::uint64_t quitTime = 0;
    std::size_t paintsBeforeQuit = 0;
    bool quitMadeUp = false;  // the quit just returned was the window system's, not a host's
    bool (*messageFilter)(MSG*) = nullptr;

  private:
    Core();
    void AddStandardClasses();
    void DropWindows();
    void DropSystem();

    HandleTable<HWND, Window> windows_;
    // Threads are told apart by numbers: the address of something of a thread's own comes again with the
    // next.
    static constexpr std::uint64_t kNoThread = 0;
    std::atomic<std::uint64_t> owner_ = kNoThread;
    std::uint64_t lastThread_ = kNoThread;
    std::unique_ptr<WindowEvents> sink_;
    std::unique_ptr<ScaledSystem> system_;
    int wantedScale_ = 1;
    unsigned systemSerial_ = 1;
    bool headless_ = false;
    bool lost_ = false;
    bool ended_ = false;

    // Guards changes of `windows_` and `system_`, which the owner reads freely, and all of the inboxes.
    std::mutex shared_;
    std::deque<MSG> posted_;
    std::deque<std::shared_ptr<SentFromElsewhere>> sent_;
    std::atomic<bool> sentWaiting_ = false;
    std::atomic<bool> postedWaiting_ = false;
};

// Runs a window's procedure. The record stays alive for the call; a stale handle gives 0.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallProcedure(const std::shared_ptr<Window>& window, UINT message, WPARAM wParam, LPARAM lParam);

std::unique_ptr<WindowEvents> MakeEventSink(Core& core);

inline WPARAM ToWParam(HWND window) {
    return static_cast<WPARAM>(window.ToParam());
}
inline LPARAM ToLParam(HWND window) {
    return static_cast<LPARAM>(window.ToParam());
}

}  // namespace platform
