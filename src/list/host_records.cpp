// Records that the host holds, and may read or change between any two questions.
#include <utility>

#include "list/list_entries.h"
#include "list/uninterrupted.h"

QKListItem* QKListEntries::HandOut(QKListNode& node) {
    Settle(node);
    Resolve(node);
    if (!node.handedOut) {
        handedOut_.push_back({&node, node.item, std::nullopt});
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
    const std::uint64_t stretch = QKUninterrupted::Current();
    if (stretch != 0 && stretch == lookedIn_) return;
    // Each record lies somewhere else in memory: it is on its way while those before it are compared.
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < handedOut_.size(); ++i) {
        if (i + kAhead < handedOut_.size()) QKRecordState::Prefetch(*handedOut_[i + kAhead].record);
        const HandedOutNode& held = handedOut_[i];
        if (held.seen != QKRecordState(*held.record)) Reread(*held.node);
    }
    lookedIn_ = stretch;
}
