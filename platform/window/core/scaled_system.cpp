#include "platform/window/core/scaled_system.h"

#include <utility>

#include "platform/graphics/resample.h"
#include "platform/graphics/scale.h"
#include "platform/window/file_drag.h"
#include "platform/window/file_drop.h"

namespace platform {

// What the window system reports, in units.
class ScaledSystem::Events final : public WindowEvents {
  public:
    explicit Events(WindowEvents& to) : to_(to) {}

    void PointerMoved(HWND window, POINT screen, InputState state, std::uint64_t time) override {
        to_.PointerMoved(window, Units(screen), state, time);
    }
    void PointerLeft(HWND window) override { to_.PointerLeft(window); }
    void PointerButton(HWND window, int button, bool down, POINT screen, InputState state,
                       std::uint64_t time) override {
        to_.PointerButton(window, button, down, Units(screen), state, time);
    }
    void PointerWheel(HWND window, int delta, POINT screen, InputState state, std::uint64_t time) override {
        to_.PointerWheel(window, delta, Units(screen), state, time);
    }
    void Key(HWND window, UINT virtualKey, bool down, char16_t character, InputState state,
             std::uint64_t time) override {
        to_.Key(window, virtualKey, down, character, state, time);
    }
    void KeysHeld(const KeySet& keys) override { to_.KeysHeld(keys); }
    void FocusChanged(HWND window, bool focused) override { to_.FocusChanged(window, focused); }
    // A size that somebody else gave may be no number of units: what is left over stays empty.
    void Placed(HWND window, const RECT& screen) override {
        const CRect pixels(screen);
        const int scale = ScreenScale();
        to_.Placed(window, CRect(UnitOf(pixels.TopLeft(), scale),
                                 CSize(pixels.Width() / scale, pixels.Height() / scale)));
    }
    void Exposed(HWND window, const Region& region) override { to_.Exposed(window, region); }
    void MinimisedChanged(HWND window, bool minimised) override { to_.MinimisedChanged(window, minimised); }
    void MaximisedChanged(HWND window, bool maximised) override { to_.MaximisedChanged(window, maximised); }
    void CloseRequested(HWND window) override { to_.CloseRequested(window); }
    void GrabLost(HWND window) override { to_.GrabLost(window); }
    void SystemDestroyed(HWND window) override { to_.SystemDestroyed(window); }
    void KeySeen(UINT virtualKey, UINT scanCode, bool down, const KeySet& held, std::uint64_t time) override {
        to_.KeySeen(virtualKey, scanCode, down, held, time);
    }
    void PutOut(HWND window) override { to_.PutOut(window); }
    DROPEFFECT FilesOver(HWND window, POINT screen, DROPEFFECT wanted) override {
        return to_.FilesOver(window, Units(screen), wanted);
    }
    void FilesDropped(HWND window, FileDrop&& drop) override {
        drop.screen = Units(drop.screen);
        to_.FilesDropped(window, std::move(drop));
    }
    void ConnectionLost() override { to_.ConnectionLost(); }

  private:
    static POINT Units(POINT pixel) { return UnitOf(pixel, ScreenScale()); }

    WindowEvents& to_;
};

class ScaledSystem::Dragger final : public FileDragger {
  public:
    explicit Dragger(FileDragger& dragger) : dragger_(dragger) {}

    bool Begin(const FileOffer& offer, const DragPoint& at) override {
        FileOffer larger = offer;
        larger.hot = ScaledPoint(offer.hot, ScreenScale());
        if (offer.picture && ScreenScale() > 1) larger.picture = Enlarged(*offer.picture);
        return dragger_.Begin(larger, Pixels(at));
    }
    void Follow(const DragPoint& to) override { dragger_.Follow(Pixels(to)); }
    void Drop(const DragPoint& at) override { dragger_.Drop(Pixels(at)); }
    void Cancel() override { dragger_.Cancel(); }
    std::optional<DROPEFFECT> Outcome() const override { return dragger_.Outcome(); }

  private:
    static DragPoint Pixels(DragPoint point) {
        point.screen = ScaledPoint(point.screen, ScreenScale());
        return point;
    }
    static std::shared_ptr<const Surface> Enlarged(const Surface& picture) {
        Scaling scaling;
        scaling.sourceWidth = picture.Width();
        scaling.sourceHeight = picture.Height();
        scaling.right = scaling.width = ScaledLength(picture.Width(), ScreenScale());
        scaling.bottom = scaling.height = ScaledLength(picture.Height(), ScreenScale());
        return Resample(picture, scaling);
    }

    FileDragger& dragger_;
};

ScaledSystem::ScaledSystem() = default;
ScaledSystem::~ScaledSystem() = default;

std::unique_ptr<ScaledSystem> ScaledSystem::Over(WindowEvents& events, const Maker& make) {
    std::unique_ptr<ScaledSystem> scaled(new ScaledSystem);
    scaled->events_ = std::make_unique<Events>(events);
    scaled->system_ = make(*scaled->events_);
    if (!scaled->system_) return nullptr;
    if (FileDragger* const dragger = scaled->system_->FileDrags())
        scaled->dragger_ = std::make_unique<Dragger>(*dragger);
    return scaled;
}

namespace {

// The sizes that a user may give a window stay numbers of units.
WindowTraits InPixels(const WindowTraits& traits, int scale) {
    WindowTraits pixels = traits;
    pixels.least = {ScaledLength(traits.least.cx, scale), ScaledLength(traits.least.cy, scale)};
    pixels.most = {ScaledLength(traits.most.cx, scale), ScaledLength(traits.most.cy, scale)};
    return pixels;
}

}  // namespace

bool ScaledSystem::Create(HWND window, const RECT& rect, const WindowTraits& traits) {
    return system_->Create(window, ScaledRect(rect, ScreenScale()), InPixels(traits, ScreenScale()));
}

void ScaledSystem::SetTraits(HWND window, const WindowTraits& traits) {
    system_->SetTraits(window, InPixels(traits, ScreenScale()));
}

void ScaledSystem::Place(HWND window, const RECT& rect) {
    system_->Place(window, ScaledRect(rect, ScreenScale()));
}

void ScaledSystem::SetShape(HWND window, const Region* region) {
    if (!region || ScreenScale() == 1) return system_->SetShape(window, region);
    const Region pixels = region->Scaled(ScreenScale());
    system_->SetShape(window, &pixels);
}

POINT ScaledSystem::PointerPosition() {
    return UnitOf(system_->PointerPosition(), ScreenScale());
}

HWND ScaledSystem::WindowAt(POINT screen) {
    return system_->WindowAt(ScaledPoint(screen, ScreenScale()));
}

CSize ScaledSystem::ScreenSize() {
    const CSize pixels = system_->ScreenSize();
    return {pixels.cx / ScreenScale(), pixels.cy / ScreenScale()};
}

std::vector<Monitor> ScaledSystem::Monitors() {
    std::vector<Monitor> monitors = system_->Monitors();
    for (Monitor& monitor : monitors)
        for (CRect* const rect : {&monitor.whole, &monitor.work})
            *rect = CRect(UnitOf(rect->TopLeft(), ScreenScale()), UnitOf(rect->BottomRight(), ScreenScale()));
    return monitors;
}

FileDragger* ScaledSystem::FileDrags() {
    return dragger_.get();
}

}  // namespace platform
