// What can be asked about the entries of a list.
#include <algorithm>
#include <limits>

#include "list/list_entries.h"

int QKListEntries::NextId() {
    Sync();
    const std::optional<int> largest = ids_.Largest([this](auto visit) {
        for (const auto& node : nodes_)
            visit(node->id);
    });
    return largest ? static_cast<int>(static_cast<unsigned>(*largest) + 1U) : 0;
}

QKListNode* QKListEntries::OccupantOf(CPoint point) {
    NeedIndex();
    const CPoint at = FromOrigin(point);
    for (QKListNode* node : index_.At(at))
        if (node->cell.PtInRect(at)) return node;
    return nullptr;
}

std::optional<CRect> QKListEntries::OccupantAt(CPoint point) {
    Sync();
    const QKListNode* node = OccupantOf(point);
    return node ? std::optional(ToClient(node->cell)) : std::nullopt;
}

std::vector<QKListNode*> QKListEntries::Meeting(const CRect& area) {
    Sync();
    NeedIndex();
    std::vector<QKListNode*> nodes = index_.Meeting(FromOrigin(area));
    constexpr std::size_t kAhead = 8;  // on their way from memory
    for (std::size_t i = 0; isMany_ && i < nodes.size(); ++i) {
        if (i + kAhead < nodes.size() && nodes[i + kAhead]->record)
            QKRecordState::Prefetch(*nodes[i + kAhead]->record);
        Pull(*nodes[i]);
    }
    return nodes;
}

QKListNode* QKListEntries::FirstMeeting(const CRect& rect) {
    for (QKListNode* node : Meeting(rect))
        if (CRect common; common.IntersectRect(ToClient(node->cell), rect)) return node;
    return nullptr;
}

std::vector<QKListNode*> QKListEntries::HitBy(CPoint point) {
    Sync();
    NeedIndex();
    std::vector<QKListNode*> nodes = index_.At(FromOrigin(point));
    std::erase_if(nodes, [&](QKListNode* node) {
        if (isMany_) Pull(*node);
        Resolve(*node);
        return !RectsOf(*node).hit.PtInRect(point);
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::HitBy(const CRect& area) {
    std::vector<QKListNode*> nodes = Meeting(area);
    std::erase_if(nodes, [&](QKListNode* node) {
        Resolve(*node);
        CRect common;
        return !common.IntersectRect(RectsOf(*node).hit, area);
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::DrawnIn(const CRect& area, const QKDrawnMetrics& metrics) {
    if (!(metrics == drawnBy_)) {
        drawnBy_ = metrics;
        ++pictureEpoch_;
        DropIndex();
    }
    std::vector<QKListNode*> nodes = Meeting(area);
    for (QKListNode* node : nodes)
        if (node->mouse != 0 || node->focus != 1 || node->unselected != 1) Resolve(*node);
    return nodes;
}

void QKListEntries::FindExtent() {
    Sync();
    if (extentKnown_) return;
    constexpr LONG kLeast = std::numeric_limits<LONG>::min();
    extent_ = CPoint(kLeast, kLeast);
    for (const auto& node : nodes_)
        if (node->placed)
            extent_ = CPoint(std::max(extent_.x, node->cell.right), std::max(extent_.y, node->cell.bottom));
    extentKnown_ = true;
}

int QKListEntries::LowestBottom() {
    FindExtent();
    return nodes_.empty() ? 0 : std::max(0, ToClient(CRect(0, 0, 0, extent_.y)).bottom);
}

int QKListEntries::RightmostRight() {
    FindExtent();
    return nodes_.empty() ? 0 : std::max(0, ToClient(CRect(0, 0, extent_.x, 0)).right);
}
