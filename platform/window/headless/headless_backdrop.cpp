#include "platform/window/headless/headless_backdrop.h"

#include <cstring>

#include "platform/window/backdrop.h"

namespace platform {

namespace {

class Opened final : public Backdrop {
  public:
    CSize Size() override {
        const std::lock_guard lock(State().mutex);
        return State().size;
    }
    bool Show(const Surface& pixels, const std::string& path) override {
        const std::shared_ptr<Surface> copy = Surface::Create(pixels.Width(), pixels.Height());
        if (!copy) return false;
        for (int y = 0; y < pixels.Height(); ++y)
            std::memcpy(copy->Row(y), pixels.Row(y),
                        static_cast<std::size_t>(pixels.Width()) * sizeof(std::uint32_t));
        const std::lock_guard lock(State().mutex);
        if (!State().inUse || !(State().size == CSize(pixels.Width(), pixels.Height()))) return false;
        State().pixels = copy;
        State().path = path;
        return true;
    }
    std::string Path() override {
        const std::lock_guard lock(State().mutex);
        return State().path;
    }
    std::optional<Cover> CoveredBy() override { return std::nullopt; }

  private:
    static HeadlessBackdrop& State() { return HeadlessBackdrop::Get(); }
};

}  // namespace

HeadlessBackdrop& HeadlessBackdrop::Get() {
    static HeadlessBackdrop* const state = new HeadlessBackdrop;
    return *state;
}

void HeadlessBackdrop::Use(CSize screen) {
    const std::lock_guard lock(mutex);
    inUse = screen.cx > 0;
    if (size == screen) return;
    size = screen;
    pixels.reset();
    if (!inUse) path.clear();
}

std::shared_ptr<const Surface> HeadlessBackdrop::Pixels() {
    const std::lock_guard lock(mutex);
    return pixels;
}

std::unique_ptr<Backdrop> OpenHeadlessBackdrop() {
    HeadlessBackdrop& state = HeadlessBackdrop::Get();
    const std::lock_guard lock(state.mutex);
    return state.inUse ? std::make_unique<Opened>() : nullptr;
}

}  // namespace platform
