#include "examples/gallery/user.h"

namespace gallery {
namespace {

void MoveTo(HWND window, CPoint point) {
    ::ClientToScreen(window, &point);
    Headless::MovePointer(point.x, point.y);
}

}  // namespace

void Click() {
    Headless::ButtonDown();
    Headless::ButtonUp();
    Headless::RunPending();
    // So that the next press is no double click.
    Headless::Advance(GetDoubleClickTime() + 1);
}

void PointAt(const CWnd& window, CPoint point) {
    MoveTo(window.m_hWnd, point);
    Headless::RunPending();
}

void PointAt(const CWnd& window, const QKItemBase& item) {
    PointAt(window, PlaceOf(item).CenterPoint());
}

void ClickOn(const CWnd& window, const QKItemBase& item) {
    PointAt(window, item);
    Click();
}

void Drag(const CWnd& window, CPoint from, CPoint to) {
    MoveTo(window.m_hWnd, from);
    Headless::ButtonDown();
    MoveTo(window.m_hWnd, to);
    Headless::RunPending();
}

void ClickOn(HWND window, int control) {
    CRect place;
    GetWindowRect(GetDlgItem(window, control), place);
    Headless::MovePointer(place.CenterPoint().x, place.CenterPoint().y);
    Click();
}

void DoubleClickAndDrag(const CWnd& window, CPoint from, CPoint to) {
    MoveTo(window.m_hWnd, from);
    Headless::ButtonDown();
    Headless::ButtonUp();
    Headless::ButtonDown();
    MoveTo(window.m_hWnd, to);
    Headless::RunPending();
}

}  // namespace gallery
