#include "list/entry_states.h"

#include <new>

namespace qkui {
namespace {

// A number of its own for each entry, with all bits in use; 0 while it is not selected.
std::uint64_t MarkOf(const Entry& entry) {
    if (entry.unselected != 0) return 0;
    std::uint64_t mark = reinterpret_cast<std::uintptr_t>(&entry);
    for (const std::uint64_t factor : {0xBF58476D1CE4E5B9U, 0x94D049BB133111EBU})
        mark = (mark ^ (mark >> 29U)) * factor;
    return mark ^ (mark >> 32U);
}

}  // namespace

void EntryStates::Sets::Add(Entry& entry) {
    if (entry.mouse != 0) hovered.insert(&entry);
    if (entry.focus != 1) focused.insert(&entry);
    if (entry.unselected != 1) selected.insert(&entry);
}

void EntryStates::Add(Entry& entry) {
    mark_ += MarkOf(entry);
    try {
        if (isKnown_) sets_.Add(entry);
    } catch (const std::bad_alloc&) {
        sets_ = Sets();
        isKnown_ = false;
    }
}

void EntryStates::Remove(Entry& entry) {
    mark_ -= MarkOf(entry);
    if (entry.mouse != 0) sets_.hovered.erase(&entry);
    if (entry.focus != 1) sets_.focused.erase(&entry);
    if (entry.unselected != 1) sets_.selected.erase(&entry);
}

void EntryStates::Clear() {
    sets_ = Sets();
    isKnown_ = true;
    mark_ = 0;
}

const EntryStates::Sets& EntryStates::Known() {
    if (!isKnown_) {
        Sets sets;
        for (const auto& entry : store_)
            sets.Add(*entry);
        sets_ = std::move(sets);
        isKnown_ = true;
    }
    return sets_;
}

}  // namespace qkui
