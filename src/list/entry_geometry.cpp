// Where entries are: their rectangles, seen from a common origin, and the index over them.
#include <algorithm>
#include <limits>

#include "list/list_change.h"

namespace {

using Extent = QKListNode::Extent;

// Whether a rectangle keeps its size when it is seen from another origin.
bool IsNear(const CRect& rect) {
    constexpr int kNear = 1 << 30;
    const auto near = [](int edge) { return edge > -kNear && edge < kNear; };
    return near(rect.left) && near(rect.top) && near(rect.right) && near(rect.bottom);
}

}  // namespace

CRect QKListEntries::FromOrigin(CRect rect) const {
    if (!(origin_ == CPoint())) rect.OffsetRect(-origin_.x, -origin_.y);
    return rect;
}

CPoint QKListEntries::FromOrigin(CPoint point) const {
    point.Offset(-origin_.x, -origin_.y);
    return point;
}

CRect QKListEntries::ToClient(CRect rect) const {
    if (!(origin_ == CPoint())) rect.OffsetRect(origin_.x, origin_.y);
    return rect;
}

bool QKListEntries::AreNear(const QKEntryRects& rects) const {
    return origin_ == CPoint() ||
           (IsNear(rects.cell) && IsNear(rects.caption) && IsNear(rects.hit) && IsNear(rects.focus));
}

// Rectangles far away are exact only in client pixels.
void QKListEntries::MoveOriginBack() {
    for (const auto& node : nodes_) {
        node->cell = ToClient(node->cell);
        node->caption = ToClient(node->caption);
        if (!node->look) continue;
        node->look->hit = ToClient(node->look->hit);
        node->look->focus = ToClient(node->look->focus);
    }
    origin_ = CPoint();
    extentKnown_ = false;
    ++pictureEpoch_;
    DropIndex();
}

QKEntryRects QKListEntries::RectsOf(const QKListNode& node) const {
    QKEntryRects rects{ToClient(node.cell), ToClient(node.caption), {}, {}};
    switch (node.extent) {
        case Extent::kEmpty:
            break;
        case Extent::kUnplaced:
            rects.hit = rects.focus = QKNoPlace();
            break;
        case Extent::kCover:
            rects.hit = rects.focus = QKHitCover(measureBy_.metrics, rects.cell, rects.caption);
            break;
        case Extent::kKnown:
            rects.hit = ToClient(node.look->hit);
            rects.focus = ToClient(node.look->focus);
    }
    return rects;
}

void QKListEntries::SetRects(QKListNode& node, const QKEntryRects& rects, Extent extent) {
    if (extent == Extent::kKnown) node.Look();
    if (!AreNear(rects)) MoveOriginBack();
    Change change(*this);
    const CRect cell = FromOrigin(rects.cell);
    if (!(cell == node.cell)) {
        Vacate(node);
        Occupy(node, cell);
    }
    const bool placed = QKIsPlaced(rects.cell);
    unplaced_ += static_cast<int>(node.placed) - static_cast<int>(placed);
    node.placed = placed;
    node.caption = FromOrigin(rects.caption);
    unmeasured_ += static_cast<int>(extent == Extent::kCover) - (node.extent == Extent::kCover);
    node.extent = extent;
    if (extent == Extent::kKnown) {
        node.look->hit = FromOrigin(rects.hit);
        node.look->focus = FromOrigin(rects.focus);
    }
    node.ForgetPicture();
    SetReach(node);
    change.Complete();
}

void QKListEntries::Occupy(QKListNode& node, const CRect& cell) {
    node.cell = cell;
    if (QKIsPlaced(ToClient(cell)))
        extent_ = CPoint(std::max(extent_.x, cell.right), std::max(extent_.y, cell.bottom));
    search_.Note(ToClient(cell));
}

void QKListEntries::Vacate(QKListNode& node) {
    search_.Forget(ToClient(node.cell));
    // The one that reached farthest may have gone.
    if (node.cell.right >= extent_.x || node.cell.bottom >= extent_.y) extentKnown_ = false;
}

// ---- Measuring

// A host may have changed the caption of an entry that it holds: it is measured with every layout.
bool QKListEntries::IsMeasured(const QKListNode& node) const {
    if (node.extent == Extent::kCover) return false;
    return !node.record || node.extent != Extent::kKnown || HeldOf(node).layout == layout_;
}

void QKListEntries::Resolve(QKListNode& node) {
    if (!IsMeasured(node)) Measure(node, measureBy_);
}

void QKListEntries::Measure(QKListNode& node, const QKListMeasure& measure) {
    QKCaptionExtents* known = nullptr;
    if (node.record) {
        HeldRecord& held = HeldOf(node);
        if (!held.extents) held.extents = std::make_unique<QKCaptionExtents>();
        known = held.extents.get();
        held.layout = layout_;
    }
    QKEntryRects rects = RectsOf(node);
    QKMeasureFocus(measure, node.Text(), rects, known);
    QKMeasureHit(measure, node.Text(), rects, known);
    SetRects(node, rects, Extent::kKnown);
}

// Those that wait already are measured by what held when they were placed.
void QKListEntries::MeasureLaterBy(const QKListMeasure& measure) {
    if (measure == measureBy_) return;
    for (std::size_t i = 0; (unmeasured_ > 0 || !held_.empty()) && i < nodes_.size(); ++i)
        Resolve(*nodes_[i]);
    measureBy_ = measure;
    DropIndex();
}

// ---- The index

CRect QKListEntries::ReachOf(const QKListNode& node) const {
    QKEntryRects rects = RectsOf(node);
    CRect reach;
    const auto include = [&reach](const CRect& rect) { reach.UnionRect(CRect(reach), rect); };
    include(rects.cell);
    include(rects.hit);
    if (!node.placed) return reach;
    // Its caption may be another one by the time it is measured again.
    if (node.record && QKHasHitCover(measureBy_, rects.cell, rects.caption))
        include(QKHitCover(measureBy_.metrics, rects.cell, rects.caption));
    const QKDrawnParts parts{node.focus != 1, node.Icon() != nullptr,
                             node.ShowsText() && !node.Text().empty()};
    include(QKDrawnBounds(drawnBy_, parts, rects));
    return reach;
}

void QKListEntries::SetReach(QKListNode& node) {
    if (!isIndexed_) return;
    const CRect reach = ReachOf(node);
    if (!(origin_ == CPoint()) && !IsNear(reach)) return MoveOriginBack();
    const CRect value = FromOrigin(reach);
    if (node.reach == value) return;
    index_.Remove(node);
    node.reach = value;
    index_.Insert(node);
}

void QKListEntries::NeedIndex() {
    if (isIndexed_) return;
    bool isFar = false;
    const auto setReaches = [&] {
        for (const auto& node : nodes_) {
            const CRect reach = ReachOf(*node);
            isFar = isFar || !IsNear(reach);
            node->reach = FromOrigin(reach);
        }
    };
    setReaches();
    if (isFar && !(origin_ == CPoint())) {
        MoveOriginBack();
        setReaches();
    }
    index_.Clear();
    for (const auto& node : nodes_)
        index_.Insert(*node);
    isIndexed_ = true;
}

void QKListEntries::DropIndex() {
    index_.Clear();
    isIndexed_ = false;
}
