#include "platform/graphics/region.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "platform/graphics/scale.h"

namespace platform {
namespace {

// Coordinates are cut here, so that neither a width nor a moved edge leaves the range of an int.
constexpr int kLimit = 1 << 29;

int Cut(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -kLimit, kLimit));
}

cairo_rectangle_int_t ToCairo(const RECT& rect) {
    const int left = Cut(rect.left);
    const int top = Cut(rect.top);
    return {left, top, std::max(Cut(rect.right) - left, 0), std::max(Cut(rect.bottom) - top, 0)};
}

CRect FromCairo(const cairo_rectangle_int_t& rect) {
    return CRect(rect.x, rect.y, rect.x + rect.width, rect.y + rect.height);
}

bool IsEmptyRect(const RECT& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

// How many pixels of a row at `distance` rows from the middle of an ellipse lie left of its vertical
// extent's middle: those whose centres are inside.
int CornerInset(double radiusX, double radiusY, double rowCentre) {
    const double fromMiddle = (radiusY - rowCentre) / radiusY;
    const double reach = radiusX * std::sqrt(std::max(0.0, 1.0 - fromMiddle * fromMiddle));
    return static_cast<int>(std::ceil(radiusX - reach - 0.5));
}

}  // namespace

Region::Region() : region_(cairo_region_create()), intact_(cairo_region_status(region_) == 0) {}

Region::Region(const RECT& rect) {
    const cairo_rectangle_int_t box = ToCairo(rect);
    region_ = box.width > 0 && box.height > 0 ? cairo_region_create_rectangle(&box) : cairo_region_create();
    Keep(cairo_region_status(region_));
}

Region::Region(const std::vector<RECT>& rects) {
    std::vector<cairo_rectangle_int_t> boxes;
    boxes.reserve(rects.size());
    for (const RECT& rect : rects)
        if (!IsEmptyRect(rect)) boxes.push_back(ToCairo(rect));
    region_ = cairo_region_create_rectangles(boxes.data(), static_cast<int>(boxes.size()));
    Keep(cairo_region_status(region_));
}

Region Region::RoundRect(const RECT& rect, int ellipseWidth, int ellipseHeight) {
    if (IsEmptyRect(rect)) return Region();
    const CRect box = FromCairo(ToCairo(rect));
    const int height = box.Height();
    const double radiusX = std::min(std::abs(static_cast<double>(ellipseWidth)), 1.0 * box.Width()) / 2;
    const double radiusY = std::min(std::abs(static_cast<double>(ellipseHeight)), 1.0 * height) / 2;
    if (radiusX <= 0 || radiusY <= 0) return Region(rect);

    const int cornerRows = std::min(static_cast<int>(std::ceil(radiusY)), (height + 1) / 2);
    if (cornerRows > kMostCornerRows) {
        Region none;
        none.Lose();
        return none;
    }
    std::vector<RECT> bands;
    for (int row = 0; row < cornerRows; ++row) {
        const int inset = CornerInset(radiusX, radiusY, row + 0.5);
        const RECT upper{box.left + inset, box.top + row, box.right - inset, box.top + row + 1};
        const RECT lower{upper.left, box.bottom - row - 1, upper.right, box.bottom - row};
        bands.push_back(upper);
        bands.push_back(lower);
    }
    bands.push_back({box.left, box.top + cornerRows, box.right, box.bottom - cornerRows});
    return Region(bands);
}

Region::~Region() {
    cairo_region_destroy(region_);
}

Region::Region(const Region& other) : region_(cairo_region_copy(other.region_)) {
    Keep(cairo_region_status(region_), other);
}

Region::Region(Region&& other) noexcept
    : region_(std::exchange(other.region_, cairo_region_create())),
      intact_(std::exchange(other.intact_, true)) {}

Region& Region::operator=(const Region& other) {
    if (this != &other) *this = Region(other);
    return *this;
}

Region& Region::operator=(Region&& other) noexcept {
    std::swap(region_, other.region_);
    std::swap(intact_, other.intact_);
    return *this;
}

void Region::Keep(int cairoStatus) {
    if (cairoStatus != CAIRO_STATUS_SUCCESS) Lose();
}

void Region::Keep(int cairoStatus, const Region& other) {
    Keep(cairoStatus);
    intact_ = intact_ && other.intact_;
}

void Region::Lose() {
    cairo_region_destroy(region_);
    region_ = cairo_region_create();
    intact_ = false;
}

bool Region::IsEmpty() const {
    return cairo_region_is_empty(region_) != 0;
}

CRect Region::Box() const {
    cairo_rectangle_int_t box;
    cairo_region_get_extents(region_, &box);
    return FromCairo(box);
}

bool Region::Contains(int x, int y) const {
    return cairo_region_contains_point(region_, x, y) != 0;
}

bool Region::Intersects(const RECT& rect) const {
    const cairo_rectangle_int_t box = ToCairo(rect);
    return box.width > 0 && box.height > 0 &&
           cairo_region_contains_rectangle(region_, &box) != CAIRO_REGION_OVERLAP_OUT;
}

bool Region::Covers(const RECT& rect) const {
    const cairo_rectangle_int_t box = ToCairo(rect);
    return box.width <= 0 || box.height <= 0 ||
           cairo_region_contains_rectangle(region_, &box) == CAIRO_REGION_OVERLAP_IN;
}

int Region::Count() const {
    return cairo_region_num_rectangles(region_);
}

CRect Region::Rect(int index) const {
    if (index < 0 || index >= Count()) return CRect();
    cairo_rectangle_int_t rect;
    cairo_region_get_rectangle(region_, index, &rect);
    return FromCairo(rect);
}

int Region::FirstBelow(int y) const {
    int low = 0;
    int high = Count();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (Rect(middle).bottom > y)
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

void Region::Add(const RECT& rect) {
    const cairo_rectangle_int_t box = ToCairo(rect);
    if (box.width > 0 && box.height > 0) Keep(cairo_region_union_rectangle(region_, &box));
}

void Region::Add(const Region& other) {
    Keep(cairo_region_union(region_, other.region_), other);
}

void Region::Subtract(const Region& other) {
    Keep(cairo_region_subtract(region_, other.region_), other);
}

void Region::Intersect(const Region& other) {
    Keep(cairo_region_intersect(region_, other.region_), other);
}

void Region::Intersect(const RECT& rect) {
    const cairo_rectangle_int_t box = ToCairo(rect);
    Keep(cairo_region_intersect_rectangle(region_, &box));
}

void Region::Xor(const Region& other) {
    Keep(cairo_region_xor(region_, other.region_), other);
}

Region Region::FromParts(const std::vector<RECT>& rects) const {
    Region made(rects);
    made.intact_ = made.intact_ && intact_;
    return made;
}

Region Region::Scaled(int factor) const {
    if (factor == 1) return *this;
    std::vector<RECT> rects;
    ForEachIn(Box(), [&](const CRect& part) { rects.push_back(ScaledRect(part, factor)); });
    return FromParts(rects);
}

Region Region::Units(int scale) const {
    if (scale == 1) return *this;
    std::vector<RECT> rects;
    ForEachIn(Box(), [&](const CRect& part) { rects.push_back(UnitsOf(part, scale)); });
    return FromParts(rects);
}

void Region::Offset(int dx, int dy) {
    if (IsEmpty()) return;
    const CRect box = Box();
    cairo_region_translate(region_, std::clamp(dx, -kLimit - box.left, kLimit - box.right),
                           std::clamp(dy, -kLimit - box.top, kLimit - box.bottom));
}

bool Region::Equal(const Region& other) const {
    return cairo_region_equal(region_, other.region_) != 0;
}

}  // namespace platform
