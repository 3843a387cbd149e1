#include "list/held_records.h"

#include <utility>

namespace qkui {

void HeldRecords::Prepare(const QKListItem* item, Entry& entry) {
    constexpr std::size_t kLeast = 16;
    if (held_.size() == held_.capacity()) held_.reserve(std::max(kLeast, 2 * held_.size()));
    byItem_.emplace(item, &entry);
}

void HeldRecords::Add(Entry& entry) {
    entry.heldAt = static_cast<std::uint32_t>(held_.size());
    held_.push_back({&entry, entry.record, RecordState(*entry.record)});
    isMany_ = isMany_ || held_.size() > pace_.all;
}

void HeldRecords::Share(Entry& entry) {
    shared_ += !std::exchange(Of(entry).isShared, true);
}

void HeldRecords::Remove(Entry& entry) {
    const auto [begin, end] = byItem_.equal_range(entry.record);
    byItem_.erase(std::find_if(begin, end, [&](const auto& at) { return at.second == &entry; }));
    Held& held = Of(entry);
    if (held.lately) std::erase(lately_, &entry);
    shared_ -= held.isShared;
    held_.back().entry->heldAt = entry.heldAt;
    if (&held != &held_.back()) held = held_.back();
    held_.pop_back();
    if (held_.empty()) isMany_ = false;
}

void HeldRecords::Release() {
    const auto byItem = [](const Held& a, const Held& b) { return a.item < b.item; };
    std::sort(held_.begin(), held_.end(), byItem);
    const QKListItem* last = nullptr;
    for (const Held& held : held_)
        if (held.item != std::exchange(last, held.item)) ReleaseRecord()(held.item);
    held_.clear();
    byItem_.clear();
    lately_.clear();
    isMany_ = false;
    shared_ = 0;
}

}  // namespace qkui
