// The monitors behind their handles.
#include <algorithm>

#include "platform/window/core/coordinates.h"
#include "platform/window/core/display.h"
#include "platform/window/core/window_table.h"

using namespace platform;

namespace {

// A handle's generation counts the arrangements of monitors, its index the monitors of one.
struct Arrangement {
    std::vector<Monitor> monitors;
    std::uint32_t generation = 0;
};

// As it is now; without monitors, and with the last error set, where no window system can be reached.
Arrangement Arranged() {
    static Arrangement known;
    WindowSystem* system = EnsureSystem();
    if (!system) return {};
    std::vector<Monitor> now = system->Monitors();
    const auto sameBounds = [](const Monitor& a, const Monitor& b) { return a.whole == b.whole; };
    const bool same =
        std::equal(now.begin(), now.end(), known.monitors.begin(), known.monitors.end(), sameBounds);
    known.monitors = std::move(now);
    if (!same) ++known.generation;
    return known;
}

std::int64_t Common(const CRect& a, const CRect& b) {
    CRect common;
    if (!common.IntersectRect(a, b)) return 0;
    return std::int64_t{common.Width()} * common.Height();
}

// The square of the distance between two rectangles.
std::int64_t Distance(const CRect& a, const CRect& b) {
    const std::int64_t x =
        std::max<std::int64_t>({0, std::int64_t{a.left} - b.right, std::int64_t{b.left} - a.right});
    const std::int64_t y =
        std::max<std::int64_t>({0, std::int64_t{a.top} - b.bottom, std::int64_t{b.top} - a.bottom});
    return x * x + y * y;
}

HMONITOR FindMonitor(const CRect& rect, DWORD otherwise) {
    const Arrangement arranged = Arranged();
    const std::vector<Monitor>& all = arranged.monitors;
    if (all.empty()) return HMONITOR();
    const auto handle = [&](auto found) {
        return HMONITOR(static_cast<std::uint32_t>(found - all.begin()), arranged.generation);
    };
    const auto most = std::max_element(all.begin(), all.end(), [&](const Monitor& a, const Monitor& b) {
        return Common(a.whole, rect) < Common(b.whole, rect);
    });
    if (Common(most->whole, rect) > 0) return handle(most);
    if (otherwise == MONITOR_DEFAULTTOPRIMARY) return handle(all.begin());
    if (otherwise != MONITOR_DEFAULTTONEAREST) return HMONITOR();
    return handle(std::min_element(all.begin(), all.end(), [&](const Monitor& a, const Monitor& b) {
        return Distance(a.whole, rect) < Distance(b.whole, rect);
    }));
}

}  // namespace

HMONITOR MonitorFromWindow(HWND window, DWORD otherwise) {
    if (!window) {
        const Arrangement arranged = otherwise == MONITOR_DEFAULTTONULL ? Arrangement() : Arranged();
        return HMONITOR(0, arranged.monitors.empty() ? 0 : arranged.generation);
    }
    const Window* found = Require(window);
    if (!found) return HMONITOR();
    const bool minimised = !found->IsChild() && found->IsMinimised();
    return FindMonitor(minimised ? found->rect : ScreenRect(*found), otherwise);
}

HMONITOR MonitorFromPoint(POINT point, DWORD otherwise) {
    return FindMonitor(CRect(point.x, point.y, point.x + 1, point.y + 1), otherwise);
}

BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info) {
    if (!info || info->cbSize != sizeof(MONITORINFO)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const Arrangement arranged = Arranged();
    if (arranged.monitors.empty()) return FALSE;
    if (monitor.Generation() != arranged.generation || monitor.Index() >= arranged.monitors.size()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    const Monitor& found = arranged.monitors[monitor.Index()];
    info->rcMonitor = found.whole;
    info->rcWork = found.work;
    info->dwFlags = monitor.Index() == 0 ? DWORD{MONITORINFOF_PRIMARY} : 0;
    return TRUE;
}
