// The window system over an X server. One class by its interface; its parts stand in files of their own:
// window_life (create, destroy, traits), visibility (map, minimise, activate, stack), placement, presenting,
// event_loop, structure_events, pointer_events, key_events and screen_queries.
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include "platform/window/window_system.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/cursors.h"
#include "platform/window/x11/keyboard.h"
#include "platform/window/x11/main_context_waiter.h"
#include "platform/window/x11/native_window.h"
#include "platform/window/x11/reply.h"
#include "platform/window/x11/server_clock.h"
#include "platform/window/x11/window_manager.h"
#include "platform/window/x11/window_properties.h"

namespace platform::x11 {

class X11WindowSystem final : public WindowSystem {
  public:
    X11WindowSystem(std::shared_ptr<Connection> connection, WindowEvents& events);
    ~X11WindowSystem() override;

    bool Create(HWND window, const RECT& rect, const WindowTraits& traits) override;
    void Destroy(HWND window) override;
    void SetTraits(HWND window, const WindowTraits& traits) override;

    void Place(HWND window, const RECT& rect) override;
    void Show(HWND window, Visibility visibility) override;
    void Restack(HWND window, StackPlace place, HWND reference) override;
    void Activate(HWND window) override;
    void SetShape(HWND window, const Region* region) override;
    void SetCompositing(HWND window, const Compositing& compositing) override;

    std::shared_ptr<Surface> NewSurface(HWND window, int width, int height) override;
    void BeginWrite(HWND window) override;
    void Present(HWND window, const Region& damage) override;

    bool GrabPointer(HWND window) override;
    void ReleasePointer() override;
    void SetCursor(HWND window, CursorShape shape) override;
    POINT PointerPosition() override;
    HWND WindowAt(POINT screen) override;
    CSize ScreenSize() override { return screenSize_; }

    std::uint64_t Now() override { return MonotonicMilliseconds(); }
    bool Poll() override;
    bool Wait(std::optional<std::uint64_t> deadline) override;
    void Wake() override { waiter_.Wake(); }
    bool IsAlive() override { return connection_->IsAlive(); }

  private:
    using Event = Reply<xcb_generic_event_t>;

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
    void ForgetGrab(HWND window);

    // ---- visibility
    void Map(NativeWindow& window, bool activate, bool minimised);
    void Withdraw(NativeWindow& window);
    void Minimise(NativeWindow& window);
    void Focus(NativeWindow& window);
    void Raise(NativeWindow& window);
    void RequestRestack(const NativeWindow& window, xcb_window_t sibling, std::uint8_t mode);
    // Reported with the next events, never from inside a call of the core.
    void SetMinimised(NativeWindow& window, bool minimised);
    void ReportMinimised();
    void ReadManagerState(NativeWindow& window);
    void LetGo(NativeWindow& window);

    // ---- placement
    void PositionTold(NativeWindow& window, const CRect& screen);
    void PositionChanged(NativeWindow& window);
    // Reports the windows whose place has changed by itself; asks the server where it must.
    void SettlePlacements();
    std::optional<CRect> AskPlace(const NativeWindow& window);

    // ---- presenting
    // Brings what the server knows of a window in line with its compositing mode and the compositor.
    void Replan(NativeWindow& window);
    DisplayPlan PlanOf(const NativeWindow& window) const;
    // Sends pixels of the current surface, as the plan has them.
    void Put(NativeWindow& window, const Region& damage);
    void PutAll(NativeWindow& window);
    PixelBuffer* Convert(NativeWindow& window, const Region& damage);

    // ---- event_loop
    Event NextEvent();
    Event TakeEvent();
    bool DispatchArrived();
    void Dispatch(const xcb_generic_event_t& event);
    bool DispatchInput(const xcb_generic_event_t& event);  // false: not about input
    void DispatchStructure(const xcb_generic_event_t& event);
    bool ReportIfLost();
    int TimeoutUntil(std::optional<std::uint64_t> deadline);
    void ManagerChanged();

    // ---- structure_events
    void OnConfigure(const xcb_configure_notify_event_t& event);
    void OnMap(const xcb_map_notify_event_t& event);
    void OnUnmap(const xcb_unmap_notify_event_t& event);
    void OnReparent(const xcb_reparent_notify_event_t& event);
    void OnDestroy(const xcb_destroy_notify_event_t& event);
    void OnProperty(const xcb_property_notify_event_t& event);
    void OnClientMessage(const xcb_client_message_event_t& event);
    void OnExpose(const xcb_expose_event_t& event);
    void OnSelection(const xcb_xfixes_selection_notify_event_t& event);

    // ---- pointer_events
    void OnMotion(const xcb_motion_notify_event_t& event);
    void OnButton(const xcb_button_press_event_t& event, bool down);
    void OnEnter(const xcb_enter_notify_event_t& event);
    void OnLeave(const xcb_leave_notify_event_t& event);
    bool Grab(NativeWindow& window);

    // ---- key_events
    void OnKey(const xcb_key_press_event_t& event, bool down);
    void OnFocus(const xcb_focus_in_event_t& event, bool focused);
    std::uint64_t EventTime(xcb_timestamp_t time) { return clock_.ToLocal(time, Now()); }

    // Ends the connection after everything that uses it, also while surfaces are still held by others.
    struct CloseAtEnd {
        std::shared_ptr<Connection> connection;
        ~CloseAtEnd() { connection->Close(); }
    };

    std::shared_ptr<Connection> connection_;
    CloseAtEnd closeAtEnd_;
    WindowEvents& events_;
    WindowManager manager_;
    WindowProperties properties_;
    Keyboard keyboard_;
    Cursors cursors_;
    ServerClock clock_;
    MainContextWaiter waiter_;
    CSize screenSize_;

    std::unordered_map<std::uint64_t, std::unique_ptr<NativeWindow>> windows_;  // by HWND::ToParam
    std::unordered_map<xcb_window_t, NativeWindow*> byId_;
    std::vector<HWND> moved_;          // windows with a change of place to look at
    std::vector<HWND> minimisedNews_;  // windows to report as minimised or restored
    HWND grabbed_;                     // holds the pointer by our explicit grab
    HWND grabWhenMapped_;
    Event ahead_;  // read, and not dispatched yet
    bool reported_ = false;
    bool lostReported_ = false;
};

// Modifiers and buttons of the core protocol.
InputState ToInputState(std::uint16_t state);

}  // namespace platform::x11
