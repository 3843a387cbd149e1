#include "platform/window/headless/file_drag.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include <platform/window.h>

#include "platform/graphics/scale.h"
#include "platform/ole/file_block.h"
#include "platform/window/headless/headless_system.h"

namespace platform {

namespace {

// The oldest first.
std::vector<Headless::DropTarget*>& Targets() {
    static std::vector<Headless::DropTarget*> targets;
    return targets;
}

bool IsThere(const Headless::DropTarget* target) {
    return std::ranges::find(Targets(), target) != Targets().end();
}

Headless::DraggedFiles Describe(const FileOffer& offer, const DragPoint& at) {
    Headless::DraggedFiles files;
    const auto* bytes = reinterpret_cast<const BYTE*>(offer.block.data());
    files.block.assign(bytes, bytes + offer.block.size());
    files.allowed = at.wanted;
    files.screen = UnitOf(at.screen, ScreenScale());
    files.keys = (at.shift ? MK_SHIFT : WPARAM{0}) | (at.control ? MK_CONTROL : WPARAM{0});
    return files;
}

}  // namespace

Headless::DropTarget* HeadlessFileDrag::TargetAt(POINT screen) const {
    for (auto target = Targets().rbegin(); target != Targets().rend(); ++target)
        if (ScaledRect((*target)->Place(), ScreenScale()).PtInRect(screen)) return *target;
    return nullptr;
}

bool HeadlessFileDrag::Begin(const FileOffer& offer, const DragPoint& at) {
    state_ = std::make_shared<State>();
    state_->offer = offer;
    Follow(at);
    return true;
}

void HeadlessFileDrag::Follow(const DragPoint& to) {
    const std::shared_ptr<State> state = state_;
    if (!state || state->dropped) return;
    state->window = system_.WindowAt(to.screen);
    Headless::DropTarget* const target = state->window ? nullptr : TargetAt(to.screen);
    Headless::DropTarget* const before = std::exchange(state->over, target);
    state->effect =
        state->window ? system_.Events().FilesOver(state->window, to.screen, to.wanted) : DROPEFFECT{0};
    if (before && before != target && IsThere(before)) before->Leave();
    if (target && IsThere(target))
        state->effect = target->Over(Describe(state->offer, to)) & state->offer.allowed;
}

DROPEFFECT HeadlessFileDrag::DropOn(Headless::DropTarget* target, const State& state, const DragPoint& at) {
    if (!target || !IsThere(target)) return DROPEFFECT_NONE;
    if (state.effect != DROPEFFECT_NONE) return target->Drop(Describe(state.offer, at));
    target->Leave();
    return DROPEFFECT_NONE;
}

void HeadlessFileDrag::Drop(const DragPoint& at) {
    const std::shared_ptr<State> state = state_;
    if (!state || state->dropped) return;
    Follow(at);
    state->dropped = true;
    if (state->window && state->effect != DROPEFFECT_NONE) {
        const std::uint64_t id = system_.Drops().Open(state->outcome);
        system_.Events().Notify(
            event::FilesDropped{state->window, {id, state->offer.paths, at.screen, at.wanted}});
    } else {
        *state->outcome = DropOn(std::exchange(state->over, nullptr), *state, at);
    }
}

void HeadlessFileDrag::Cancel() {
    const std::shared_ptr<State> state = std::exchange(state_, nullptr);
    if (state && state->over && IsThere(state->over)) state->over->Leave();
}

// A drag that is no more came to nothing.
std::optional<DROPEFFECT> HeadlessFileDrag::Outcome() const {
    return state_ ? *state_->outcome : std::optional<DROPEFFECT>(DROPEFFECT_NONE);
}

CursorShape HeadlessFileDrag::Cursor() const {
    if (state_->effect & DROPEFFECT_MOVE) return CursorShape::DropMove;
    return state_->effect != DROPEFFECT_NONE ? CursorShape::DropCopy : CursorShape::DropRefused;
}

}  // namespace platform

namespace Headless {

DropTarget::DropTarget(const RECT& place) : place_(place) {
    platform::Targets().push_back(this);
}

DropTarget::~DropTarget() {
    std::erase(platform::Targets(), this);
}

DROPEFFECT DropTarget::Over(const DraggedFiles& files) {
    return files.allowed & DROPEFFECT_MOVE ? DROPEFFECT_MOVE : files.allowed;
}

void DropTarget::Leave() {}

std::vector<CString> DraggedFiles::Paths() const {
    return platform::FilesOf(std::as_bytes(std::span(block)));
}

DROPEFFECT DropFiles(const std::vector<CString>& paths, DROPEFFECT allowed) {
    platform::HeadlessSystem* system = platform::HeadlessSystem::Current();
    if (!system || paths.empty() || !system->WindowAt(system->PointerPosition())) return DROPEFFECT_NONE;
    platform::FileOffer offer;
    offer.paths = paths;
    offer.allowed = allowed;
    const platform::InputState& keys = system->Input();
    const platform::DragPoint at{system->PointerPosition(),
                                 platform::EffectOfKeys(keys.shift, keys.control, allowed), keys.shift,
                                 keys.control, keys.alt};
    platform::HeadlessFileDrag drag(*system);
    if (!drag.Begin(offer, at)) return DROPEFFECT_NONE;
    drag.Drop(at);
    RunPending();
    return drag.Outcome().value_or(DROPEFFECT_NONE);
}

}  // namespace Headless
