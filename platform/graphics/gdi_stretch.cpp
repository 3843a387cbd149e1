// Block copies that scale.
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include <platform/geometry.h>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/resample.h"

namespace platform {
namespace {

// A rectangle of the interface on a context's surface, with positive sides, and whether each side was below
// 0.
struct Sides {
    CRect rect;
    bool turnedX, turnedY;
    Sides(const DeviceContext& context, int x, int y, int width, int height)
        : rect(context.ToSurface(CRect(CPoint(std::min(x, x + width), std::min(y, y + height)),
                                       CSize(std::abs(width), std::abs(height))))),
          turnedX(width < 0),
          turnedY(height < 0) {}
};

void Mirror(Surface& pixels, bool columns, bool rows) {
    for (int y = 0; columns && y < pixels.Height(); ++y)
        std::reverse(pixels.Row(y), pixels.Row(y) + pixels.Width());
    for (int y = 0; rows && y < pixels.Height() / 2; ++y)
        std::swap_ranges(pixels.Row(y), pixels.Row(y) + pixels.Width(), pixels.Row(pixels.Height() - 1 - y));
}

bool IsFar(int value) {
    constexpr int kFarthest = 1 << 20;
    return value < -kFarthest || value > kFarthest;
}

// Made as the source is, and turned over at the end.
BOOL Stretch(DeviceContext& to, const Sides& written, DeviceContext& from, const Sides& read, Filter filter) {
    if (read.rect.IsRectEmpty() || written.rect.IsRectEmpty()) return TRUE;
    const Surface& picture = *from.GetSurface();
    Scaling scaling;
    scaling.sourceX = read.rect.left;
    scaling.sourceY = read.rect.top;
    scaling.sourceWidth = read.rect.Width();
    scaling.sourceHeight = read.rect.Height();
    scaling.width = written.rect.Width();
    scaling.height = written.rect.Height();
    scaling.filter = filter;
    const Span across = CoveredBy(scaling.sourceX, scaling.sourceWidth, picture.Width(), scaling.width);
    const Span down = CoveredBy(scaling.sourceY, scaling.sourceHeight, picture.Height(), scaling.height);
    if (across.first >= across.second || down.first >= down.second) return TRUE;
    const bool mirroredX = read.turnedX != written.turnedX;
    const bool mirroredY = read.turnedY != written.turnedY;
    CRect covered(mirroredX ? scaling.width - across.second : across.first,
                  mirroredY ? scaling.height - down.second : down.first,
                  mirroredX ? scaling.width - across.first : across.second,
                  mirroredY ? scaling.height - down.first : down.second);
    covered.OffsetRect(written.rect.TopLeft());
    // Only what can be seen is made.
    CRect seen;
    if (!seen.IntersectRect(covered, to.Drawable().Box())) return TRUE;
    CRect part = seen;
    part.OffsetRect(-written.rect.left, -written.rect.top);
    scaling.left = mirroredX ? scaling.width - part.right : part.left;
    scaling.right = mirroredX ? scaling.width - part.left : part.right;
    scaling.top = mirroredY ? scaling.height - part.bottom : part.top;
    scaling.bottom = mirroredY ? scaling.height - part.top : part.bottom;
    const std::shared_ptr<Surface> scaled = Resample(picture, scaling);
    if (!scaled) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FALSE;
    }
    Mirror(*scaled, mirroredX, mirroredY);
    Surface& surface = *to.GetSurface();
    to.Drawable().ForEachIn(
        seen, [&](const CRect& piece) { CopyPixels(surface, piece, *scaled, seen.left, seen.top); });
    surface.Touch();
    to.Note(seen);
    return TRUE;
}

}  // namespace

BOOL StretchUnits(DeviceContext& to, const CRect& written, DeviceContext& from, const CRect& read) {
    for (const CRect& rect : {written, read})
        if (IsFar(rect.left) || IsFar(rect.top) || IsFar(rect.right) || IsFar(rect.bottom)) return TRUE;
    return Stretch(to, {to, written.left, written.top, written.Width(), written.Height()}, from,
                   {from, read.left, read.top, read.Width(), read.Height()}, Filter::Smooth);
}

}  // namespace platform

using namespace platform;

int SetStretchBltMode(HDC context, int mode) {
    if (mode != COLORONCOLOR && mode != HALFTONE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    return found ? std::exchange(found->Text().stretchMode, mode) : 0;
}

BOOL StretchBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                int sourceWidth, int sourceHeight, DWORD operation) {
    if (width == sourceWidth && height == sourceHeight && width >= 0 && height >= 0)
        return BitBlt(destination, x, y, width, height, source, sourceX, sourceY, operation);
    const auto to = ShareContext(destination);
    const auto from = ShareContext(source);
    if (!to || !from) return FALSE;
    const int values[] = {x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight};
    if (operation != SRCCOPY || std::any_of(std::begin(values), std::end(values), IsFar)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!to->GetSurface() || !from->GetSurface()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return Stretch(*to, {*to, x, y, width, height}, *from,
                   {*from, sourceX, sourceY, sourceWidth, sourceHeight},
                   to->Text().stretchMode == HALFTONE ? Filter::Smooth : Filter::Nearest);
}
