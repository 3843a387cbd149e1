// The entries of a list in their order.
#pragma once

#include <deque>
#include <memory>

#include "list/entry.h"

namespace qkui {

// Owns the entries, not the records of those that hosts hold. Without memory nothing changes.
class EntryStore {
  public:
    int Count() const { return static_cast<int>(entries_.size()); }
    Entry& operator[](int position) const { return *entries_[static_cast<std::size_t>(position)]; }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }
    int PositionOf(const Entry& entry) const;

    // Before the entry at `position`, which may be the count.
    Entry& Insert(std::unique_ptr<Entry> entry, int position);
    void Erase(const Entry& entry) { entries_.erase(entries_.begin() + PositionOf(entry)); }
    template <class Test>
    void EraseIf(Test test) {
        std::erase_if(entries_, [&](const auto& entry) { return test(*entry); });
    }
    void Swap(Entry& a, Entry& b);
    void Clear() { entries_.clear(); }

  private:
    void Renumber();

    std::deque<std::unique_ptr<Entry>> entries_;  // both ends are cheap to change
};

}  // namespace qkui
