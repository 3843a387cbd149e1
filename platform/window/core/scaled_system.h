// Between a window system, which counts in pixels, and the core, which counts in units (ScreenScale): of one
// size for the whole screen, so that a place on it means one thing in the program. Surfaces, and what is
// shown of them, are pixels on both sides; so are the places of embedded windows.
#pragma once

#include <functional>
#include <memory>

#include "platform/window/window_system.h"

namespace platform {

class ScaledSystem final : public WindowSystem {
  public:
    using Maker = std::function<std::unique_ptr<WindowSystem>(WindowEvents& events)>;
    // `make` gets the sink that counts for `events`. Null when it makes none.
    static std::unique_ptr<ScaledSystem> Over(WindowEvents& events, const Maker& make);
    ~ScaledSystem() override;

    Capabilities Can() const override { return system_->Can(); }
    bool Create(HWND window, const RECT& rect, const WindowTraits& traits) override;
    void Destroy(HWND window) override { system_->Destroy(window); }
    void SetTraits(HWND window, const WindowTraits& traits) override;
    void SetBounds(HWND window, const RECT& rect) override;
    void Show(HWND window, Visibility visibility) override { system_->Show(window, visibility); }
    void Restack(HWND window, StackPlace place, HWND reference) override {
        system_->Restack(window, place, reference);
    }
    void Activate(HWND window) override { system_->Activate(window); }
    void SetShape(HWND window, const Region* region) override;
    void SetCompositing(HWND window, const Compositing& compositing) override {
        system_->SetCompositing(window, compositing);
    }
    std::shared_ptr<Surface> NewSurface(HWND window, int width, int height) override {
        return system_->NewSurface(window, width, height);
    }
    void BeginWrite(HWND window) override { system_->BeginWrite(window); }
    void Present(HWND window, const Region& damage) override { system_->Present(window, damage); }
    bool GrabPointer(HWND window) override { return system_->GrabPointer(window); }
    void ReleasePointer() override { system_->ReleasePointer(); }
    void SetCursor(HWND window, CursorShape shape) override { system_->SetCursor(window, shape); }
    POINT PointerPosition() override;
    bool IsButtonHeld() override { return system_->IsButtonHeld(); }
    KeySet KeysDown() override { return system_->KeysDown(); }
    HWND WindowAt(POINT screen) override;
    CSize ScreenSize() override;
    std::vector<Monitor> Monitors() override;
    int Dpi() override { return system_->Dpi(); }
    std::unique_ptr<EmbeddingSite> Embed(HWND topLevel, EmbeddedEvents& events) override {
        return system_->Embed(topLevel, events);
    }
    std::uint64_t Now() override { return system_->Now(); }
    bool Poll() override { return system_->Poll(); }
    bool Wait(std::optional<std::uint64_t> deadline) override { return system_->Wait(deadline); }
    void Wake() override { system_->Wake(); }
    bool IsAlive() override { return system_->IsAlive(); }
    FileDragger* FileDrags() override;
    FileReceiver* FileDrops() override { return system_->FileDrops(); }
    ForeignWindows* Foreign() override { return system_->Foreign(); }
    KeyWatch* KeyWatcher() override { return system_->KeyWatcher(); }
    TextClipboard* CopiedText() override { return system_->CopiedText(); }

  private:
    class Events;
    class Dragger;
    ScaledSystem();

    std::unique_ptr<Events> events_;
    std::unique_ptr<WindowSystem> system_;
    std::unique_ptr<Dragger> dragger_;
};

}  // namespace platform
