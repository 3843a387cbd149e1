// The in-memory window system: it stands in for the display server, the window manager and the user.
//
// Like a display server it keeps what was presented apart from what is being drawn; like a window manager it
// has layers, keeps transients above their owners and decides who gets the focus.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/window/core/stacking_order.h"
#include "platform/window/headless/file_drag.h"
#include "platform/window/headless/foreign_tree.h"
#include "platform/window/key_watch.h"
#include "platform/window/text_clipboard.h"
#include "platform/window/window_system.h"

namespace platform {

class HeadlessSystem : public WindowSystem, private KeyWatch, private TextClipboard {
  public:
    HeadlessSystem(WindowEvents& events, int screenWidth, int screenHeight);
    ~HeadlessSystem() override;
    // The one in use; null when there is none.
    static HeadlessSystem* Current();

    // ---- what stands on the screen
    struct NativeWindow {
        HWND handle;
        CRect rect;
        WindowTraits traits;
        std::vector<HWND> owned;
        bool mapped = false;
        bool minimised = false;
        bool held = false;         // an owner is minimised
        ForeignId host = kScreen;  // what it lies in
        std::optional<Region> shape;
        Compositing compositing;
        CursorShape cursor = CursorShape::Arrow;
        std::shared_ptr<Surface> drawn;  // what the core draws on
        std::shared_ptr<Surface> shown;  // what was presented
    };

    // One monitor again.
    void SetScreen(int width, int height, int dpi);
    void SetMonitors(std::vector<Monitor> monitors) { monitors_ = std::move(monitors); }
    const NativeWindow* Find(HWND window) const;
    // On the screen: mapped, what it lies in is shown, and neither it nor an owner is minimised.
    bool IsOnScreen(const NativeWindow& window) const {
        return window.mapped && !window.minimised && !window.held &&
               (window.host == kScreen || !foreign_.VisiblePart(window.host).IsRectEmpty());
    }
    // Of the window, where it is not cut off by what it lies in.
    CRect VisibleRect(const NativeWindow& window) const;
    // What a window shows, before it is blended; transparent where its shape leaves it out. Clipped to
    // `part` (window coordinates).
    std::vector<std::uint32_t> ShownPixels(const NativeWindow& window, const CRect& part) const;
    std::vector<std::uint32_t> ScreenPixels() const;
    CursorShape CursorShown() const;

    // ---- other programs
    ForeignTree& OtherPrograms() { return foreign_; }
    bool SetHost(HWND window, ForeignId host);
    // It is gone: what lay in it is on the screen again.
    void PutOutOf(ForeignId host);
    void HostsChanged();

    // ---- the user
    void MovePointer(POINT screen);
    void Button(int button, bool down);
    void Wheel(int delta);
    void Key(UINT virtualKey, bool down);
    // `text`: what the key writes, whatever else is held.
    void KeyWithText(UINT virtualKey, bool down, char16_t text);
    void RequestClose(HWND window);
    void AddStep(void (*step)(void*), void* argument) { steps_.push_back({step, argument}); }
    void SetClock(std::uint64_t now);
    // What the user is about to do. Also a loop that has nothing else to do performs it, ahead of the steps.
    using Action = std::function<void(HeadlessSystem&)>;
    void Expect(std::vector<Action> actions) {
        actions_.insert(actions_.end(), actions.begin(), actions.end());
    }
    bool PerformNext();  // false when nothing is left

    // ---- files on the move
    WindowEvents& Events() { return events_; }
    const InputState& Input() const { return input_; }
    HeadlessFileDrops& Drops() { return fileDrops_; }

    // ---- WindowSystem
    bool Create(HWND window, const RECT& rect, const WindowTraits& traits) override;
    void Destroy(HWND window) override;
    void SetTraits(HWND window, const WindowTraits& traits) override;
    void SetBounds(HWND window, const RECT& rect) override;
    void Show(HWND window, Visibility visibility) override;
    void Restack(HWND window, StackPlace place, HWND reference) override;
    void Activate(HWND window) override;
    void SetShape(HWND window, const Region* region) override;
    void SetCompositing(HWND window, const Compositing& compositing) override;
    std::shared_ptr<Surface> NewSurface(HWND window, int width, int height) override;
    void BeginWrite(HWND) override {}
    void Present(HWND window, const Region& damage) override;
    bool GrabPointer(HWND window) override;
    void ReleasePointer() override;
    void SetCursor(HWND window, CursorShape shape) override;
    POINT PointerPosition() override { return pointer_; }
    KeySet KeysDown() override;
    HWND WindowAt(POINT screen) override;
    CSize ScreenSize() override { return screen_; }
    int Dpi() override { return dpi_; }
    std::vector<Monitor> Monitors() override;
    std::uint64_t Now() override { return now_; }
    bool Poll() override;
    bool Wait(std::optional<std::uint64_t> deadline) override;
    void Wake() override { woken_ = true; }
    bool IsAlive() override { return true; }
    FileDragger* FileDrags() override { return &fileDrag_; }
    FileReceiver* FileDrops() override { return &fileDrops_; }
    ForeignWindows* Foreign() override { return &foreign_; }
    KeyWatch* KeyWatcher() override { return this; }
    TextClipboard* CopiedText() override { return this; }
    bool Put(std::optional<std::string> utf8) override {
        clipboard_ = std::move(utf8);
        return true;
    }
    std::optional<std::string> Get() override { return clipboard_; }

  private:
    struct Step {
        void (*run)(void*);
        void* argument;
    };
    using Layer = StackingOrder::Layer;
    NativeWindow* Find(HWND window);
    static Layer LayerOf(const NativeWindow& window) {
        if (window.host != kScreen) return Layer::Desktop;
        return window.traits.topmost ? Layer::Topmost : Layer::Normal;
    }
    bool Watch(bool on) override {
        watching_ = on;
        return true;
    }
    void SetOwner(NativeWindow& window, HWND before, HWND now);
    void UpdateHeld(NativeWindow& window);
    bool CatchesPointer(const NativeWindow& window, POINT screen) const;
    void RaiseWithOwned(HWND window);
    void GiveFocus(HWND window);
    void PassFocusOn(const NativeWindow& from);
    // The pointer may be over another window now, although it did not move. The second looks only at what one
    // window, changed in its place, shape or pixels, makes of that.
    void PointerMayHaveChangedWindow();
    void PointerMayHaveChangedWindow(const NativeWindow& changed);

    WindowEvents& events_;
    CSize screen_;
    int dpi_ = 96;
    std::vector<Monitor> monitors_;                                             // empty: the screen is one
    std::unordered_map<std::uint64_t, std::unique_ptr<NativeWindow>> windows_;  // by HWND::ToParam
    StackingOrder stack_;
    HWND focus_;
    POINT pointer_{-1, -1};  // outside, until it is moved
    HWND under_;             // the window that the pointer is over
    HWND grab_;
    InputState input_;
    std::atomic<std::uint64_t> now_ = 1000;
    std::atomic<bool> woken_ = false;
    std::deque<Step> steps_;
    std::deque<Action> actions_;
    HeadlessFileDrops fileDrops_;
    HeadlessFileDrag fileDrag_{*this};
    ForeignTree foreign_{*this};
    bool watching_ = false;  // the keyboard
    KeySet keysDown_;
    std::optional<std::string> clipboard_;
};

}  // namespace platform
