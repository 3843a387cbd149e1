// Entries that move or change their looks without a layout.
#include <utility>

#include "list/list_entries.h"

// Records that the host may be looking at are brought there at once.
void QKListEntries::Scroll(CPoint by) {
    Sync();
    std::vector<std::pair<QKListNode*, QKEntryRects>> staying;
    for (std::size_t i = 0; static_cast<int>(staying.size()) < unplaced_ && i < nodes_.size(); ++i)
        if (!nodes_[i]->placed) staying.emplace_back(nodes_[i].get(), RectsOf(*nodes_[i]));
    origin_.Offset(by);
    search_.Offset(by);
    if (lastLayout_) lastLayout_->corner.Offset(by);
    for (const auto& [node, rects] : staying)
        SetRects(*node, rects, node->extent);
    PushKept();
}

void QKListEntries::MeasureAnew(const QKListMeasure& measure) {
    LookAtAll();
    for (const auto& node : nodes_) {
        if (!node->placed) continue;
        const QKEntryRects rects = RectsOf(*node);
        Place(*node, rects.cell, rects.caption, &measure);
    }
    PushKept();
}

CRect QKListEntries::CellOf(const QKListNode& node) const {
    return ToClient(node.cell);
}

std::optional<CPoint> QKListEntries::ContentEnd() {
    FindExtent();
    if (unplaced_ == Count()) return std::nullopt;
    return ToClient(CRect(extent_.x, extent_.y, extent_.x, extent_.y)).TopLeft();
}

std::uint64_t QKListEntries::SelectionMark() {
    Sync();
    return selectionMark_;
}
