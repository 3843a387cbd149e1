#include "examples/desktop/shot.h"

#include <algorithm>
#include <cstdio>

#include "examples/desktop/view.h"

namespace desktop {
namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 800;

// What the folder's threads found comes in through GLib's main context; timers need the clock.
void WaitFor(const View& view) {
    while (!view.IsSettled())
        g_main_context_iteration(nullptr, TRUE);
    Headless::RunPending();
}

void MoveTo(CPoint point) {
    Headless::MovePointer(point.x, point.y);
}

void SelectByBand(CPoint from, CPoint to) {
    MoveTo(from);
    Headless::ButtonDown();
    MoveTo(to);
    Headless::RunPending();
}

// A menu on one entry, the pointer on one of its lines.
void OpenMenu(View& view, int entry, std::size_t line) {
    constexpr int kRightButton = 3;
    MoveTo(view.PlaceOf(entry).CenterPoint());
    Headless::ButtonDown(kRightButton);
    Headless::ButtonUp(kRightButton);
    Headless::RunPending();
    Menu& menu = view.ContextMenu();
    if (!menu.IsOpen()) return;
    CRect place = menu.PlaceOf(line);
    menu.ClientToScreen(place);
    MoveTo(place.CenterPoint());
    Headless::RunPending();
}

bool IsInSight(View& view, int entry) {
    const CRect place = view.PlaceOf(entry);
    return !place.IsRectEmpty() && place.right <= kWidth && place.bottom <= kHeight;
}

void Pose(View& view) {
    int count = 0;
    while (IsInSight(view, count))
        ++count;
    if (count == 0) return;
    const CRect corner = view.PlaceOf(count / 2);
    SelectByBand(CPoint(corner.right + 60, corner.bottom + 4), CPoint(corner.left + 30, corner.top - 150));
    Headless::ButtonUp();
    int entry = count - 1;
    while (entry > 0 && !view.IsPicture(entry))
        --entry;
    OpenMenu(view, entry, view.IsPicture(entry) ? 1 : 0);
}

}  // namespace

int Shoot(const std::string& folder, const std::string& file) {
    Headless::Use(kWidth, kHeight);
    View view(folder, std::string());
    if (!view.Open()) {
        std::fprintf(stderr, "qk-desktop: no window: %s\n", ErrorText(GetLastError()));
        return 1;
    }
    WaitFor(view);
    Pose(view);
    if (Headless::CaptureScreen().SavePng(FromUtf8(file))) return 0;
    std::fprintf(stderr, "qk-desktop: cannot write %s\n", file.c_str());
    return 1;
}

}  // namespace desktop
