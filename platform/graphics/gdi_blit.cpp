// Block copies and fills through device contexts.
#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include <platform/geometry.h>
#include <platform/saturate.h>
#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

struct Copy {
    Surface& target;
    const Surface& source;
    int dx, dy;  // from a pixel of the target to its pixel of the source
};

void CopyPart(const Copy& copy, const CRect& part) {
    const std::size_t bytes = static_cast<std::size_t>(part.Width()) * 4;
    const auto from = [&](int y) { return copy.source.Row(y + copy.dy) + part.left + copy.dx; };
    const auto to = [&](int y) { return copy.target.Row(y) + part.left; };
    const std::ptrdiff_t pitch = static_cast<std::ptrdiff_t>(bytes);
    if (copy.target.Stride() == pitch && copy.source.Stride() == pitch) {
        std::memmove(to(part.top), from(part.top), bytes * static_cast<std::size_t>(part.Height()));
    } else if (&copy.target == &copy.source && copy.dy < 0) {
        for (int y = part.bottom; y-- > part.top;)
            std::memmove(to(y), from(y), bytes);
    } else {
        for (int y = part.top; y < part.bottom; ++y)
            std::memmove(to(y), from(y), bytes);
    }
}

// Within one surface, a part is copied before the parts that overwrite what it reads: in the direction of
// the movement, the foremost first.
void CopyWithin(const Copy& copy, const Region& clip, const RECT& rect) {
    std::vector<CRect> parts;
    clip.ForEachIn(rect, [&](const CRect& part) { parts.push_back(part); });
    std::sort(parts.begin(), parts.end(), [&](const CRect& a, const CRect& b) {
        if (a.top != b.top) return copy.dy < 0 ? a.top > b.top : a.top < b.top;
        return copy.dx < 0 ? a.left > b.left : a.left < b.left;
    });
    for (const CRect& part : parts)
        CopyPart(copy, part);
}

RECT BoxAt(int x, int y, int width, int height) {
    return {x, y, SaturatedSum(x, std::max(width, 0)), SaturatedSum(y, std::max(height, 0))};
}

// The shift between two places, if both ends of it can hold pixels at all.
bool ShiftBetween(int from, int to, int& shift) {
    const std::int64_t distance = std::int64_t{to} - from;
    shift = Saturate(distance);
    return shift == distance;
}

std::shared_ptr<DeviceContext> Drawing(HDC context) {
    std::shared_ptr<DeviceContext> found = ShareContext(context);
    if (found && !found->GetSurface()) {
        SetLastError(ERROR_INVALID_HANDLE);
        found.reset();
    }
    return found;
}

void Finish(DeviceContext& context, const RECT& touched) {
    context.GetSurface()->Touch();
    context.Note(touched);
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL BitBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
            DWORD operation) {
    if (operation != SRCCOPY) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto to = Drawing(destination);
    const auto from = Drawing(source);
    if (!to || !from) return FALSE;

    if (to->Scale() != from->Scale())
        return StretchUnits(*to, BoxAt(x, y, width, height), *from, BoxAt(sourceX, sourceY, width, height));
    const RECT wanted = to->ToSurface(BoxAt(x, y, width, height));
    const RECT read = from->ToSurface(BoxAt(sourceX, sourceY, width, height));
    int dx = 0;
    int dy = 0;
    if (!ShiftBetween(wanted.left, read.left, dx) || !ShiftBetween(wanted.top, read.top, dy)) return TRUE;

    const Copy copy{*to->GetSurface(), *from->GetSurface(), dx, dy};
    const RECT readable{Saturate(0 - std::int64_t{dx}), Saturate(0 - std::int64_t{dy}),
                        Saturate(std::int64_t{copy.source.Width()} - dx),
                        Saturate(std::int64_t{copy.source.Height()} - dy)};
    CRect rect;
    if (!rect.IntersectRect(wanted, readable) || !rect.IntersectRect(rect, to->Drawable().Box())) return TRUE;
    if (&copy.target == &copy.source)
        CopyWithin(copy, to->Drawable(), rect);
    else
        to->Drawable().ForEachIn(rect, [&](const CRect& part) { CopyPart(copy, part); });
    Finish(*to, rect);
    return TRUE;
}

HBRUSH CreateSolidBrush(COLORREF colour) {
    auto brush = std::make_shared<GdiBrush>(GdiBrush{colour});
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().brushes.Insert(std::move(brush));
}

BOOL DeleteObject(HBRUSH brush) {
    const std::lock_guard lock(Gdi().mutex);
    if (Gdi().brushes.Remove(brush)) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

int FillRect(HDC context, const RECT* rect, HBRUSH brush) {
    const auto target = Drawing(context);
    const auto paint = ShareBrush(brush);
    if (!target || !paint) return 0;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const COLORREF c = paint->colour;
    const std::uint32_t pixel = 0xFF000000U | ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
    CRect box;
    if (!box.IntersectRect(target->ToSurface(*rect), target->Drawable().Box())) return 1;
    Surface& surface = *target->GetSurface();
    target->Drawable().ForEachIn(box, [&](const CRect& part) { FillPixels(surface, part, pixel); });
    Finish(*target, box);
    return 1;
}
