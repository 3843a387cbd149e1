#include "list/entry_store.h"

#include <algorithm>
#include <utility>

namespace qkui {
namespace {

constexpr std::uint64_t kOrderStep = std::uint64_t{1} << 32U;

}  // namespace

int EntryStore::PositionOf(const Entry& entry) const {
    const auto found = std::lower_bound(
        entries_.begin(), entries_.end(), entry.order,
        [](const std::unique_ptr<Entry>& at, std::uint64_t order) { return at->order < order; });
    return static_cast<int>(found - entries_.begin());
}

Entry& EntryStore::Insert(std::unique_ptr<Entry> entry, int position) {
    const auto before = [&] { return position == 0 ? 0 : (*this)[position - 1].order; };
    const auto room = [&] { return (*this)[position].order - before(); };
    if (position < Count() && room() < 2) Renumber();
    entry->order = before() + (position == Count() ? kOrderStep : room() / 2);
    return **entries_.insert(entries_.begin() + position, std::move(entry));
}

void EntryStore::Renumber() {
    std::uint64_t order = 0;
    for (const auto& entry : entries_)
        entry->order = order += kOrderStep;
}

void EntryStore::Swap(Entry& a, Entry& b) {
    std::swap(entries_[static_cast<std::size_t>(PositionOf(a))],
              entries_[static_cast<std::size_t>(PositionOf(b))]);
    std::swap(a.order, b.order);
}

}  // namespace qkui
