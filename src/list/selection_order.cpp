#include "list/selection_order.h"

#include <new>

void QKSelectionOrder::Add(QKListItem* item) {
    if (Contains(item)) return;
    const auto added = items_.insert(items_.end(), item);
    try {
        places_.emplace(item, added);
    } catch (const std::bad_alloc&) {
        items_.erase(added);
        throw;
    }
}

void QKSelectionOrder::Remove(const QKListItem* item) {
    const auto found = places_.find(item);
    if (found == places_.end()) return;
    items_.erase(found->second);
    places_.erase(found);
}

void QKSelectionOrder::Clear() {
    items_.clear();
    places_.clear();
}
