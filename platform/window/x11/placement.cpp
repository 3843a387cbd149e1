// Where windows are: what was asked for, what came of it, and which of that is news to the core.
#include <algorithm>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

// For so long after a request of ours a different position is taken for an earlier one that is still on its
// way through the window manager, and so long a window manager may take to settle a new window. Milliseconds.
constexpr std::uint64_t kSettleTime = 250;

// A window of the protocol is never empty; the core's may be.
bool SamePlace(const CRect& core, const CRect& native) {
    return core.left == native.left && core.top == native.top && ToExtent(core.Width()) == native.Width() &&
           ToExtent(core.Height()) == native.Height();
}

}  // namespace

void X11WindowSystem::SetBounds(HWND handle, const RECT& rect) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return;
    const CRect before = window->placement.rect;
    window->placement.rect = rect;
    if (before == rect) return;
    const CRect& now = window->placement.rect;
    window->placement.quietUntil = Now() + kSettleTime;
    window->placement.requested = true;
    // The hints bound the size that the window manager allows: they go first.
    properties_.WriteSizeHints(*window);
    RequestPlace(*window);
    if (window->plan.overBackdrop && window->pixels.presented) PutAll(*window);
    if (now.IsRectEmpty() != before.IsRectEmpty()) Replan(*window);
}

void X11WindowSystem::RequestPlace(NativeWindow& window) {
    CRect now = window.placement.rect;
    if (window.host != 0 && !window.joinBy) now.OffsetRect(-window.hostOrigin.x, -window.hostOrigin.y);
    const std::uint32_t values[] = {ToBits(ToX(now.left)), ToBits(ToX(now.top)), ToExtent(now.Width()),
                                    ToExtent(now.Height())};
    xcb_configure_window(
        connection_->Get(), window.id,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        values);
}

void X11WindowSystem::AwaitPlacement(NativeWindow& window) {
    window.placement.quietUntil = Now() + kSettleTime;
    PositionChanged(window);
}

void X11WindowSystem::BelieveOrigin(NativeWindow& window, CPoint origin, bool pressed) {
    Placement& placement = window.placement;
    if (origin == placement.rect.TopLeft() || !window.mapRequested || window.minimised) return;
    // While the window moves at our request an event may come from further back. A press then means what
    // was seen there and then; moves and releases tell nothing.
    if (placement.requested && Now() < placement.quietUntil && !pressed) return;
    placement.rect = CRect(origin, placement.rect.Size());
    placement.reported.reset();
    PositionChanged(window);
    Report().Notify(event::BoundsChanged{window.handle, placement.rect});
}

void X11WindowSystem::PositionReported(NativeWindow& window, const CRect& screen) {
    window.placement.reported = screen;
    PositionChanged(window);
}

void X11WindowSystem::PositionChanged(NativeWindow& window) {
    if (!window.placement.changed) moved_.push_back(window.handle);
    window.placement.changed = true;
}

void X11WindowSystem::SettlePlacements() {
    if (moved_.empty()) return;
    std::vector<HWND> waiting;
    std::vector<HWND> looking;
    looking.swap(moved_);
    for (const HWND handle : looking) {
        NativeWindow* window = Find(handle);
        if (!window || !window->placement.changed) continue;
        Placement& placement = window->placement;
        if (placement.reported && SamePlace(placement.rect, *placement.reported)) placement.quietUntil = 0;
        if (Now() < placement.quietUntil) {
            placement.reported.reset();  // afterwards the server is asked
            waiting.push_back(handle);
            continue;
        }
        const std::optional<CRect> place = placement.reported ? placement.reported : AskPlace(*window);
        placement.changed = false;
        placement.reported.reset();
        placement.quietUntil = 0;
        placement.requested = false;
        OutlineSettledFrame(*window);
        // Off the screen a window has no place that would be news.
        if (!place || !window->mapRequested || window->minimised || SamePlace(placement.rect, *place))
            continue;
        placement.rect = *place;
        Report().Notify(event::BoundsChanged{handle, *place});
    }
    moved_.insert(moved_.end(), waiting.begin(), waiting.end());
}

std::optional<CRect> X11WindowSystem::AskPlace(const NativeWindow& window) {
    xcb_connection_t* c = connection_->Get();
    const auto position = xcb_translate_coordinates(c, window.id, connection_->Root(), 0, 0);
    const auto size = xcb_get_geometry(c, window.id);
    const Reply<xcb_translate_coordinates_reply_t> at(xcb_translate_coordinates_reply(c, position, nullptr));
    const Reply<xcb_get_geometry_reply_t> extent(xcb_get_geometry_reply(c, size, nullptr));
    if (!at || !extent) return std::nullopt;
    return CRect(at->dst_x, at->dst_y, at->dst_x + extent->width, at->dst_y + extent->height);
}

}  // namespace platform::x11
