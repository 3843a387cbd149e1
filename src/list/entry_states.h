// Which entries of a list are hovered, focused and selected by their flags.
#pragma once

#include <cstdint>
#include <set>

#include "list/entry_store.h"

namespace qkui {

struct InOrder {
    bool operator()(const Entry* a, const Entry* b) const { return a->order < b->order; }
};
using EntrySet = std::set<Entry*, InOrder>;

// Where memory runs out, the sets are made anew from the store at the next question.
class EntryStates {
  public:
    explicit EntryStates(const EntryStore& store) : store_(store) {}

    // An entry is taken out before its flags or its order change, and put in again afterwards.
    void Add(Entry& entry);
    void Remove(Entry& entry);
    void Clear();

    const EntrySet& Hovered() { return Known().hovered; }    // nMouseState is not 0
    const EntrySet& Focused() { return Known().focused; }    // nFocusState is not 1
    const EntrySet& Selected() { return Known().selected; }  // nSelState is not 1
    // The same number for the same set of selected entries, and as good as always another one for another.
    std::uint64_t SelectionMark() const { return mark_; }

  private:
    struct Sets {
        EntrySet hovered, focused, selected;
        void Add(Entry& entry);
    };
    const Sets& Known();

    const EntryStore& store_;
    Sets sets_;
    bool isKnown_ = true;
    std::uint64_t mark_ = 0;  // the sum of a number for each selected entry
};

}  // namespace qkui
