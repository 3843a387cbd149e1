// How entries get their places, and move with their list.
#include "list/list_entries.h"

std::optional<CRect> QKListEntries::FirstFree(const QKCellGrid& grid, std::int64_t start) {
    Sync();
    return search_.FirstFree(grid, start, [this](CPoint point) {
        const QKListNode* node = cells_.AnyAt(FromOrigin(point));
        return node ? std::optional(ToClient(node->cell)) : std::nullopt;
    });
}

void QKListEntries::Unplace() {
    cells_.Clear();
    hits_.Clear();
    drawn_.Clear();
    search_.Clear();
    origin_ = CPoint();
    for (const auto& node : nodes_) {
        node->origin = origin_;
        Settle(*node);
        QKUnplace(*node->item);
        node->cell = node->hit = node->item->rcItem;
        node->drawn = CRect();
        node->measured = true;
        node->placed = false;
    }
    unplaced_ = Count();
    unmeasured_ = 0;
    extentKnown_ = false;
    ++generation_;
}

void QKListEntries::Placed(QKListNode& node, const QKListMeasure& measure) {
    if (node.handedOut || node.lookedAt || !QKHasHitCover(measure, *node.item)) {
        Measure(node, measure);
        return;
    }
    MeasureLaterBy(measure);
    unmeasured_ += node.measured;
    node.measured = false;
    SetRects(node);
}

// Those that wait already are measured by what held when they were placed.
void QKListEntries::MeasureLaterBy(const QKListMeasure& measure) {
    if (measure == measureBy_) return;
    for (std::size_t i = 0; unmeasured_ > 0 && i < nodes_.size(); ++i)
        Resolve(*nodes_[i]);
    measureBy_ = measure;
}

void QKListEntries::Offset(CPoint by, const QKListMeasure& measure) {
    origin_.Offset(by.x, by.y);
    search_.Offset(by);
    for (QKListNode* node : lookedAt_)
        Settle(*node);
    for (HandedOutNode& held : handedOut_) {
        const QKListItem& entry = *held.node->item;
        const bool isRead = held.seen == QKRecordState(entry);
        Settle(*held.node);
        held.node->item->rcText = QKCaptionCell(measure.metrics, entry.rcItem);
        Measure(*held.node, measure);
        if (isRead) held.seen = QKRecordState(entry);
    }
}

std::uint64_t QKListEntries::Generation() {
    Sync();
    return generation_;
}
