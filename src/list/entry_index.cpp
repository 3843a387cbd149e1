// The index over whatever questions may meet, and the questions.
#include <algorithm>
#include <new>

#include "list/entry_geometry.h"

namespace qkui {

CRect EntryGeometry::ReachOf(const Entry& entry) const {
    const EntryRects rects = RectsOf(entry);
    CRect reach;
    const auto include = [&reach](const CRect& rect) { reach.UnionRect(CRect(reach), rect); };
    include(rects.cell);
    include(rects.hit);
    if (!entry.placed) return reach;
    // Its caption may be another one by the time it is measured again.
    if (entry.record && HasHitCover(measureBy_, rects.cell, rects.caption))
        include(HitCover(measureBy_.metrics, rects.cell, rects.caption));
    const DrawnParts parts{entry.focus != 1, entry.Icon() != nullptr,
                           entry.ShowsText() && !entry.Text().empty()};
    include(DrawnBounds(drawnBy_, parts, rects));
    return reach;
}

void EntryGeometry::UpdateReach(Entry& entry) {
    ++indexRevision_;
    if (!isIndexed_) return;
    const CRect reach = ReachOf(entry);
    if (!IsExactFromOrigin(reach)) return MoveOriginBack();
    const CRect value = FromOrigin(reach);
    if (entry.reach == value) return;
    try {
        index_.Remove(entry);
        entry.reach = value;
        index_.Insert(entry);
    } catch (const std::bad_alloc&) {
        DropIndex();
    }
}

void EntryGeometry::NeedIndex() {
    if (isIndexed_) return;
    bool isExact = true;
    const auto setReaches = [&] {
        for (const auto& entry : store_) {
            const CRect reach = ReachOf(*entry);
            isExact = isExact && IsExactFromOrigin(reach);
            entry->reach = FromOrigin(reach);
        }
    };
    setReaches();
    if (!isExact) {
        MoveOriginBack();
        setReaches();
    }
    index_.Clear();
    for (const auto& entry : store_)
        index_.Insert(*entry);
    isIndexed_ = true;
}

void EntryGeometry::DropIndex() {
    index_.Clear();
    isIndexed_ = false;
    ++indexRevision_;
}

void EntryGeometry::SetDrawnBy(const DrawnMetrics& metrics) {
    if (metrics == drawnBy_) return;
    drawnBy_ = metrics;
    ++pictureRevision_;
    DropIndex();
}

std::vector<Entry*> EntryGeometry::At(CPoint point) {
    NeedIndex();
    return index_.At(FromOrigin(point));
}

std::vector<Entry*> EntryGeometry::Meeting(const CRect& area) {
    NeedIndex();
    return index_.Meeting(FromOrigin(area));
}

std::optional<CRect> EntryGeometry::OccupantAt(CPoint point) {
    const CPoint at = FromOrigin(point);
    for (const Entry* entry : At(point))
        if (entry->cell.PtInRect(at)) return ToClient(entry->cell);
    return std::nullopt;
}

std::optional<CRect> EntryGeometry::FirstFree(const CellGrid& grid, std::int64_t start) {
    return search_.FirstFree(grid, start, [this](CPoint point) { return OccupantAt(point); });
}

}  // namespace qkui
