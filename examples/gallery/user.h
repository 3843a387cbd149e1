// A user for the headless window system: what the pages do to pose for a picture.
#pragma once

#include <QKUILib.h>

#include "examples/gallery/push_button.h"

namespace gallery {

// Coordinates are client pixels of the window.
void PointAt(const CWnd& window, CPoint point);
// A press and release where the pointer is.
void Click();
void PointAt(const CWnd& window, const QKItemBase& item);
void ClickOn(const CWnd& window, const QKItemBase& item);
// The button goes down where one point is, and is held at another.
void Drag(const CWnd& window, CPoint from, CPoint to);
// The middle of the place that a control of the window's template holds.
void ClickOn(HWND window, int control);
// A double click, with the second press held and drawn to another point.
void DoubleClickAndDrag(const CWnd& window, CPoint from, CPoint to);

}  // namespace gallery
