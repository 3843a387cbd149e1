// Records that the host holds, and may read or change between any two questions.
#include <utility>

#include "list/list_entries.h"

QKListItem* QKListEntries::HandOut(QKListNode& node) {
    Settle(node);
    Resolve(node);
    if (!node.handedOut) {
        handedOut_.push_back({&node, std::nullopt});
        node.handedOutAt = handedOut_.size() - 1;
        node.handedOut = true;
    }
    return node.item;
}

void QKListEntries::HandOutAll(const QKListItem* item) {
    Repair();
    const auto [begin, end] = byItem_.equal_range(item);
    std::vector<QKListNode*> nodes;
    for (auto at = begin; at != end; ++at)
        nodes.push_back(at->second);
    for (QKListNode* node : nodes)
        HandOut(*node);
}

const QKListItem* QKListEntries::Show(QKListNode& node) {
    if (!node.lookedAt) {
        lookedAt_.insert(&node);
        node.lookedAt = true;
    }
    return node.item;
}

void QKListEntries::StopHandingOut(QKListNode& node) {
    if (node.lookedAt) lookedAt_.erase(&node);
    node.lookedAt = false;
    if (!node.handedOut) return;
    handedOut_.back().node->handedOutAt = node.handedOutAt;
    handedOut_[node.handedOutAt] = handedOut_.back();
    handedOut_.pop_back();
    node.handedOut = false;
}

void QKListEntries::Sync() {
    Repair();
    for (const HandedOutNode& held : handedOut_)
        if (held.seen != QKRecordState(*held.node->item)) Reread(*held.node);
}
