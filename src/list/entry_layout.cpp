// How entries get their places, and move with their list.
#include "list/list_entries.h"

std::optional<CRect> QKListEntries::FirstFree(const QKCellGrid& grid, std::int64_t start) {
    Sync();
    return search_.FirstFree(grid, start, [this](CPoint point) {
        const QKListNode* node = OccupantOf(point);
        return node ? std::optional(ToClient(node->cell)) : std::nullopt;
    });
}

void QKListEntries::Unplace() {
    LookAtAll();
    DropIndex();
    search_.Begin();
    origin_ = CPoint();
    for (const auto& node : nodes_) {
        node->cell = node->caption = QKNoPlace();
        node->extent = QKListNode::Extent::kUnplaced;
        node->placed = false;
        node->ForgetPicture();
    }
    unplaced_ = Count();
    unmeasured_ = 0;
    extentKnown_ = false;
    ++generation_;
}

void QKListEntries::Place(QKListNode& node, const CRect& cell, const CRect& caption,
                          const QKListMeasure* measure) {
    using Extent = QKListNode::Extent;
    if (!measure) Resolve(node);
    QKEntryRects rects = RectsOf(node);
    rects.cell = cell;
    rects.caption = caption;
    if (!measure) {
        SetRects(node, rects, node.extent);
    } else if (node.focus == 1 && QKHasHitCover(*measure, cell, caption)) {
        MeasureLaterBy(*measure);
        SetRects(node, rects, Extent::kCover);
    } else {
        SetRects(node, rects, node.extent);
        Measure(node, *measure);
    }
    ++generation_;
    if (node.record && HeldOf(node).isShared) Push(node);
}

void QKListEntries::Offset(CPoint by, const QKListMeasure& measure) {
    MeasureLaterBy(measure);
    origin_.Offset(by.x, by.y);
    search_.Offset(by);
    ++layout_;
    PushKept();
}

std::uint64_t QKListEntries::Generation() {
    Sync();
    return generation_;
}
