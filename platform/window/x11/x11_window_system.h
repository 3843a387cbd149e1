// The window system over an X server. One class by its interface; its parts stand in files of their own:
// window_life (create, destroy, traits), visibility (map, activate, stack), minimising, placement,
// hosting (in the desktop's window), presenting, event_loop, structure_events, pointer_events, key_events and
// screen_queries.
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include "platform/window/foreign_windows.h"
#include "platform/window/window_system.h"
#include "platform/window/x11/backdrop_copy.h"
#include "platform/window/x11/client_leader.h"
#include "platform/window/x11/clipboard.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/cursors.h"
#include "platform/window/x11/desktop_windows.h"
#include "platform/window/x11/drag/drag_source.h"
#include "platform/window/x11/drag/drop_receiver.h"
#include "platform/window/x11/embedded_socket.h"
#include "platform/window/x11/event_queue.h"
#include "platform/window/x11/keyboard.h"
#include "platform/window/x11/main_context_waiter.h"
#include "platform/window/x11/native_window.h"
#include "platform/window/x11/pointer_grab.h"
#include "platform/window/x11/raw_keys.h"
#include "platform/window/x11/server_clock.h"
#include "platform/window/x11/show_desktop.h"
#include "platform/window/x11/startup_notice.h"
#include "platform/window/x11/window_manager.h"
#include "platform/window/x11/window_properties.h"

namespace platform::x11 {

class X11WindowSystem final : public WindowSystem, private ForeignWindows {
  public:
    X11WindowSystem(std::shared_ptr<Connection> connection, WindowEvents& events);
    ~X11WindowSystem() override;

    bool Create(HWND window, const RECT& rect, const WindowTraits& traits) override;
    void Destroy(HWND window) override;
    void SetTraits(HWND window, const WindowTraits& traits) override;

    Capabilities Can() const override { return {.embedsWindows = true}; }
    void SetBounds(HWND window, const RECT& rect) override;
    void Show(HWND window, Visibility visibility) override;
    void Restack(HWND window, StackPlace place, HWND reference) override;
    void Activate(HWND window) override;
    void SetShape(HWND window, const Region* region) override;
    void SetCompositing(HWND window, const Compositing& compositing) override;

    std::shared_ptr<Surface> NewSurface(HWND window, int width, int height) override;
    void BeginWrite(HWND window) override;
    void Present(HWND window, const Region& damage) override;

    bool GrabPointer(HWND window) override;
    void ReleasePointer() override { grab_.Release(); }
    void SetCursor(HWND window, CursorShape shape) override;
    POINT PointerPosition() override;
    bool IsButtonHeld() override;
    KeySet KeysDown() override;
    HWND WindowAt(POINT screen) override;
    CSize ScreenSize() override { return screenSize_; }
    int Dpi() override;
    std::vector<Monitor> Monitors() override;

    std::unique_ptr<EmbeddingSite> Embed(HWND topLevel, EmbeddedEvents& events) override;

    std::uint64_t Now() override { return MonotonicMilliseconds(); }
    bool Poll() override;
    bool Wait(std::optional<std::uint64_t> deadline) override;
    void Wake() override { waiter_.Wake(); }
    bool IsAlive() override { return connection_->IsAlive(); }
    FileDragger* FileDrags() override { return &drag_; }
    FileReceiver* FileDrops() override { return &drop_; }
    ForeignWindows* Foreign() override { return this; }
    KeyWatch* KeyWatcher() override { return &rawKeys_; }
    TextClipboard* CopiedText() override { return &clipboard_; }

  private:
    // ---- windows of others
    std::vector<ForeignWindow> In(ForeignId parent) override { return desktops_.In(parent); }
    bool Exists(ForeignId window) override { return desktops_.Exists(window); }
    bool IsShown(ForeignId window) override { return desktops_.IsShown(window); }
    void SetShown(ForeignId window, bool shown) override { desktops_.SetShown(window, shown); }
    bool PutInto(HWND window, ForeignId parent) override;

    // ---- records
    // Null for a handle that has no window here, and for all once the connection is gone.
    NativeWindow* Find(HWND window);
    NativeWindow* FindById(xcb_window_t id);
    xcb_window_t IdOf(HWND window);
    // The sink; using it counts as having reported something.
    WindowEvents& Report() {
        reported_ = true;
        return events_;
    }

    // ---- window_life
    void CreateNative(NativeWindow& window, bool alphaChannel);
    void DestroyNative(NativeWindow& window);
    // Replaces the native window by one with or without an alpha channel.
    void Recreate(NativeWindow& window, bool alphaChannel);

    // ---- visibility
    void Map(NativeWindow& window, bool activate, bool minimised);
    void Withdraw(NativeWindow& window);
    void Focus(NativeWindow& window);
    void Raise(NativeWindow& window);
    void RequestRestack(const NativeWindow& window, xcb_window_t sibling, std::uint8_t mode);
    void LetGo(NativeWindow& window);

    // ---- minimising
    void Minimise(NativeWindow& window);
    // It is reported when nothing comes of it.
    void AwaitMinimised(NativeWindow& window, bool byHint);
    void SettleMinimising();
    // Reported with the next events, never from inside a call of the core.
    void SetMinimised(NativeWindow& window, bool minimised);
    void ReportMinimised();
    void ReadManagerState(NativeWindow& window);
    void LoseMinimiser(NativeWindow& window);

    // ---- placement
    void RequestPlace(NativeWindow& window);
    // Somebody puts the window where it belongs: the position counts when that is over.
    void AwaitPlacement(NativeWindow& window);
    // An event says where the window was when it came: nothing else does so as early, or as surely.
    void BelieveOrigin(NativeWindow& window, CPoint origin, bool pressed);
    void PositionReported(NativeWindow& window, const CRect& screen);
    void PositionChanged(NativeWindow& window);
    // Reports the windows whose place has changed by itself; asks the server where it must.
    void SettlePlacements();
    std::optional<CRect> AskPlace(const NativeWindow& window);

    // ---- hosting
    void EnterHost(NativeWindow& window, const DesktopWindows::Host& host);
    void Join(NativeWindow& window);
    void FinishJoining(NativeWindow& window);
    void SettleJoining();
    void LeaveHost(NativeWindow& window);
    void LoseHost(NativeWindow& window);
    bool SurviveHost(NativeWindow& window);  // false: it went by itself
    void ReportPutOut();
    void HostMoved(xcb_window_t host);
    void HostHidden(xcb_window_t host);
    void BackdropChanged();
    // A window that is meant to be seen while the desktop shows.
    void KeepShown();

    // ---- presenting
    // Brings what the server knows of a window in line with its compositing mode and the compositor.
    void Replan(NativeWindow& window);
    DisplayPlan PlanOf(const NativeWindow& window);
    void SendOutline(NativeWindow& window);
    void OutlineFrame(NativeWindow& window);
    // A frame is not always in place when the window hears of it.
    void OutlineSettledFrame(NativeWindow& window);
    // The outermost frame around a window; 0 without one, or when it shows more than the window.
    xcb_window_t FindFrame(const NativeWindow& window);
    // Sends pixels of the current surface, as the plan has them.
    void Put(NativeWindow& window, const Region& damage);
    void PutAll(NativeWindow& window);
    PixelBuffer* Convert(NativeWindow& window, const Region& damage);

    // ---- event_loop
    bool DispatchArrived();
    void Dispatch(const xcb_generic_event_t& event);
    bool DispatchInput(const xcb_generic_event_t& event);  // false: not about input
    void DispatchStructure(const xcb_generic_event_t& event);
    bool ReportIfLost();
    int TimeoutUntil(std::optional<std::uint64_t> deadline);
    void ManagerChanged();
    // Whether a window manager looks after a window, or will once it is shown.
    bool HasManager(const NativeWindow& window) const { return manager_.IsPresent() && window.host == 0; }

    // ---- structure_events
    void OnConfigure(const xcb_configure_notify_event_t& event);
    void OnMap(const xcb_map_notify_event_t& event);
    void OnUnmap(const xcb_unmap_notify_event_t& event);
    void OnReparent(const xcb_reparent_notify_event_t& event);
    void OnDestroy(const xcb_destroy_notify_event_t& event);
    void OnProperty(const xcb_property_notify_event_t& event);
    void OnClientMessage(const xcb_client_message_event_t& event);
    void ReadMaximised(NativeWindow& window);
    void OnExpose(const xcb_expose_event_t& event);
    void OnShape(const xcb_shape_notify_event_t& event);
    void OnSelection(const xcb_xfixes_selection_notify_event_t& event);

    // ---- pointer_events
    void OnMotion(const xcb_motion_notify_event_t& event);
    void OnButton(const xcb_button_press_event_t& event, bool down);
    void OnEnter(const xcb_enter_notify_event_t& event);
    void OnLeave(const xcb_leave_notify_event_t& event);
    void LoseGrab(HWND window);
    void PointerGone(NativeWindow& window);
    // Reports a pointer that was taken away and did not come back.
    void SettleLeaving();

    // ---- key_events
    void OnKey(const xcb_key_press_event_t& event, bool down);
    void OnKeymap(const xcb_keymap_notify_event_t& event);
    void OnRawKey(const xcb_ge_generic_event_t& event);
    void OnFocus(const xcb_focus_in_event_t& event, bool focused);
    // Reports a focus that did not come back, and that keys are out of sight with the focus.
    void SettleFocus();
    std::uint64_t EventTime(xcb_timestamp_t time) { return clock_.ToLocal(time, Now()); }

    // ---- embedded_socket
    void MakeKeyTarget(NativeWindow& window);
    void MoveEmbedded(NativeWindow& window, xcb_window_t oldKeyTarget);
    void LoseEmbedded(NativeWindow& window);

    // Ends the connection after everything that uses it, also while surfaces are still held by others.
    struct CloseAtEnd {
        std::shared_ptr<Connection> connection;
        ~CloseAtEnd() { connection->Close(); }
    };

    std::shared_ptr<Connection> connection_;
    CloseAtEnd closeAtEnd_;
    WindowEvents& events_;
    WindowManager manager_;
    ClientLeader leader_;
    StartupNotice startup_;
    WindowProperties properties_;
    Keyboard keyboard_;
    RawKeys rawKeys_;
    DesktopWindows desktops_;
    BackdropCopy backdrop_;
    ShowDesktop showDesktop_;
    Cursors cursors_;
    ServerClock clock_;
    Clipboard clipboard_;
    DragSource drag_;
    DropReceiver drop_;
    PointerGrab grab_;
    EventQueue queue_;
    EmbeddedSockets sockets_;
    MainContextWaiter waiter_;
    CSize screenSize_;

    std::unordered_map<std::uint64_t, std::unique_ptr<NativeWindow>> windows_;  // by HWND::ToParam
    std::unordered_map<xcb_window_t, NativeWindow*> byId_;
    std::vector<HWND> moved_;          // windows with a change of place to look at
    std::vector<HWND> minimising_;     // windows whose minimising is awaited
    std::vector<HWND> minimisedNews_;  // windows to report as minimised or restored
    std::vector<HWND> joining_;        // windows that wait to go into the desktop's
    std::vector<HWND> putOut_;         // windows to report as out of it
    // What must have become of a window by a certain time, or it is taken for refused.
    struct Expectation {
        HWND window;
        std::uint64_t due = 0;
    };
    Expectation leaving_;  // another program's grab has taken the pointer from it, perhaps for a moment
    Expectation awaited_;  // had the focus, and should get it again as a new native window
    HWND focused_;
    bool keysFollow_ = false;     // the next KeymapNotify belongs to a FocusIn
    bool keysMayBeDown_ = false;  // as far as was reported
    bool reported_ = false;
    bool lostReported_ = false;
};

// Modifiers and buttons of the core protocol.
InputState ToInputState(std::uint16_t state);

}  // namespace platform::x11
