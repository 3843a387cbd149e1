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

    void Notify(WindowEvent happened) override {
        std::visit(Overloaded{
                       [](event::Pointer& pointer) { pointer.screen = Units(pointer.screen); },
                       [](event::BoundsChanged& bounds) { bounds.screen = Units(bounds.screen); },
                       [](event::FilesDropped& files) { files.drop.screen = Units(files.drop.screen); },
                       [](const auto&) {},
                   },
                   happened);
        to_.Notify(std::move(happened));
    }
    DROPEFFECT FilesOver(HWND window, POINT screen, DROPEFFECT wanted) override {
        return to_.FilesOver(window, Units(screen), wanted);
    }

  private:
    static POINT Units(POINT pixel) { return UnitOf(pixel, ScreenScale()); }
    // A size that somebody else gave may be no number of units: what is left over stays empty.
    static CRect Units(const CRect& pixels) {
        const int scale = ScreenScale();
        return CRect(UnitOf(pixels.TopLeft(), scale), CSize(pixels.Width() / scale, pixels.Height() / scale));
    }

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

void ScaledSystem::SetBounds(HWND window, const RECT& rect) {
    system_->SetBounds(window, ScaledRect(rect, ScreenScale()));
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
