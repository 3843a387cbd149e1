#include "list/entry_geometry.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qkui {
namespace {

using Extent = Entry::Extent;

}  // namespace

CRect EntryGeometry::FromOrigin(CRect rect) const {
    if (!(origin_ == CPoint())) rect.OffsetRect(-origin_.x, -origin_.y);
    return rect;
}

CPoint EntryGeometry::FromOrigin(CPoint point) const {
    point.Offset(-origin_.x, -origin_.y);
    return point;
}

CRect EntryGeometry::ToClient(CRect rect) const {
    if (!(origin_ == CPoint())) rect.OffsetRect(origin_.x, origin_.y);
    return rect;
}

bool EntryGeometry::IsExactFromOrigin(const CRect& rect) const {
    constexpr int kNear = 1 << 30;
    const auto near = [](int edge) { return edge > -kNear && edge < kNear; };
    return origin_ == CPoint() ||
           (near(rect.left) && near(rect.top) && near(rect.right) && near(rect.bottom));
}

void EntryGeometry::EnsureExact(const EntryRects& rects) {
    for (const CRect* rect : {&rects.cell, &rects.caption, &rects.hit, &rects.focus})
        if (!IsExactFromOrigin(*rect)) return MoveOriginBack();
}

// Rectangles far away are exact only in client pixels.
void EntryGeometry::MoveOriginBack() {
    for (const auto& entry : store_) {
        entry->cell = ToClient(entry->cell);
        entry->caption = ToClient(entry->caption);
        if (!entry->look) continue;
        entry->look->hit = ToClient(entry->look->hit);
        entry->look->focus = ToClient(entry->look->focus);
    }
    origin_ = CPoint();
    extentKnown_ = false;
    ++pictureRevision_;
    DropIndex();
}

// ---- Entries that come and go

void EntryGeometry::Prepare(Entry& entry, const ListMeasure* measure) {
    EntryRects rects{entry.cell, entry.caption, {}, {}};
    if (measure && HasHitCover(*measure, rects.cell, rects.caption)) {
        MeasureLaterBy(*measure);
        entry.extent = Extent::kCover;
    } else if (measure) {
        MeasureFocus(*measure, entry.Text(), rects);
        MeasureHit(*measure, entry.Text(), rects);
        entry.Look();
        entry.extent = Extent::kKnown;
    }
    Keep(entry, rects);
}

void EntryGeometry::Prepare(Entry& entry, const EntryRects& rects) {
    MarkMeasured(entry);
    entry.extent = Extent::kKnown;
    Keep(entry, rects);
}

void EntryGeometry::Keep(Entry& entry, const EntryRects& rects) {
    EnsureExact(rects);
    entry.placed = IsPlaced(rects.cell);
    entry.cell = FromOrigin(rects.cell);
    entry.caption = FromOrigin(rects.caption);
    if (entry.extent != Extent::kKnown) return;
    entry.look->hit = FromOrigin(rects.hit);
    entry.look->focus = FromOrigin(rects.focus);
}

void EntryGeometry::Join(Entry& entry) {
    unmeasured_ += entry.extent == Extent::kCover;
    unplaced_ += !entry.placed;
    Occupy(entry, entry.cell);
    entry.reach = CRect();
    UpdateReach(entry);
}

void EntryGeometry::Leave(Entry& entry) {
    Vacate(entry);
    if (isIndexed_) index_.Remove(entry);
    ++indexRevision_;
    unmeasured_ -= entry.extent == Extent::kCover;
    unplaced_ -= !entry.placed;
}

void EntryGeometry::Clear() {
    DropIndex();
    search_.Begin();
    unmeasured_ = unplaced_ = 0;
    someHeld_ = extentKnown_ = false;
}

// ---- Rectangles

EntryRects EntryGeometry::RectsOf(const Entry& entry) const {
    EntryRects rects{ToClient(entry.cell), ToClient(entry.caption), {}, {}};
    switch (entry.extent) {
        case Extent::kEmpty:
            break;
        case Extent::kUnplaced:
            rects.hit = rects.focus = NoPlace();
            break;
        case Extent::kCover:
            rects.hit = rects.focus = HitCover(measureBy_.metrics, rects.cell, rects.caption);
            break;
        case Extent::kKnown:
            rects.hit = ToClient(entry.look->hit);
            rects.focus = ToClient(entry.look->focus);
    }
    return rects;
}

void EntryGeometry::SetRects(Entry& entry, const EntryRects& rects, Extent extent) {
    if (extent == Extent::kKnown) entry.Look();
    EnsureExact(rects);
    const CRect cell = FromOrigin(rects.cell);
    if (!(cell == entry.cell)) {
        Vacate(entry);
        Occupy(entry, cell);
    }
    unmeasured_ += static_cast<int>(extent == Extent::kCover) - (entry.extent == Extent::kCover);
    unplaced_ += static_cast<int>(entry.placed) - static_cast<int>(IsPlaced(rects.cell));
    entry.extent = extent;
    Keep(entry, rects);
    entry.ForgetPicture();
    UpdateReach(entry);
}

void EntryGeometry::Occupy(Entry& entry, const CRect& cell) {
    entry.cell = cell;
    if (IsPlaced(ToClient(cell)))
        extent_ = CPoint(std::max(extent_.x, cell.right), std::max(extent_.y, cell.bottom));
    search_.Note(ToClient(cell));
}

void EntryGeometry::Vacate(const Entry& entry) {
    search_.Forget(ToClient(entry.cell));
    // The one that reached farthest may have gone.
    if (entry.cell.right >= extent_.x || entry.cell.bottom >= extent_.y) extentKnown_ = false;
}

void EntryGeometry::Place(Entry& entry, const CRect& cell, const CRect& caption, const ListMeasure* measure) {
    if (!measure) EnsureMeasured(entry);
    EntryRects rects = RectsOf(entry);
    rects.cell = cell;
    rects.caption = caption;
    if (measure && entry.focus == 1 && HasHitCover(*measure, cell, caption)) {
        MeasureLaterBy(*measure);
        return SetRects(entry, rects, Extent::kCover);
    }
    SetRects(entry, rects, entry.extent);
    if (measure) Measure(entry, *measure);
}

// ---- Measuring

// A host may have changed the caption of an entry that it holds: it is measured with every layout.
bool EntryGeometry::IsMeasured(const Entry& entry) const {
    if (entry.extent == Extent::kCover) return false;
    return !entry.record || entry.extent != Extent::kKnown || entry.look->layout == layout_;
}

void EntryGeometry::EnsureMeasured(Entry& entry) {
    if (!IsMeasured(entry)) Measure(entry, measureBy_);
}

void EntryGeometry::MarkMeasured(Entry& entry) {
    entry.Look().layout = layout_;
    someHeld_ = true;
}

void EntryGeometry::Measure(Entry& entry, const ListMeasure& measure) {
    CaptionExtents* known = nullptr;
    if (entry.record) {
        EntryLook& look = entry.Look();
        if (!look.extents) look.extents = std::make_unique<CaptionExtents>();
        known = look.extents.get();
        look.layout = layout_;
    }
    EntryRects rects = RectsOf(entry);
    MeasureFocus(measure, entry.Text(), rects, known);
    MeasureHit(measure, entry.Text(), rects, known);
    SetRects(entry, rects, Extent::kKnown);
}

// Those that wait already are measured by what held when they were placed.
void EntryGeometry::MeasureLaterBy(const ListMeasure& measure) {
    if (measure == measureBy_) return;
    for (int i = 0; (unmeasured_ > 0 || someHeld_) && i < store_.Count(); ++i)
        EnsureMeasured(store_[i]);
    measureBy_ = measure;
    DropIndex();
}

// ---- All entries

void EntryGeometry::Unplace() {
    DropIndex();
    search_.Begin();
    origin_ = CPoint();
    for (const auto& entry : store_) {
        entry->cell = entry->caption = NoPlace();
        entry->extent = Extent::kUnplaced;
        entry->placed = false;
        entry->ForgetPicture();
    }
    unplaced_ = store_.Count();
    unmeasured_ = 0;
    extentKnown_ = false;
}

void EntryGeometry::Move(CPoint by, const ListMeasure& measure) {
    MeasureLaterBy(measure);
    origin_.Offset(by);
    search_.Offset(by);
    ++layout_;
}

void EntryGeometry::Scroll(CPoint by) {
    std::vector<std::pair<Entry*, EntryRects>> staying;
    for (int i = 0; static_cast<int>(staying.size()) < unplaced_ && i < store_.Count(); ++i)
        if (!store_[i].placed) staying.emplace_back(&store_[i], RectsOf(store_[i]));
    origin_.Offset(by);
    search_.Offset(by);
    for (const auto& [entry, rects] : staying)
        SetRects(*entry, rects, entry->extent);
}

CPoint EntryGeometry::End() {
    if (!extentKnown_) {
        constexpr LONG kLeast = std::numeric_limits<LONG>::min();
        extent_ = CPoint(kLeast, kLeast);
        for (const auto& entry : store_)
            if (entry->placed)
                extent_ =
                    CPoint(std::max(extent_.x, entry->cell.right), std::max(extent_.y, entry->cell.bottom));
        extentKnown_ = true;
    }
    return extent_;
}

}  // namespace qkui
