// The records that a host holds, and may read or change between any two questions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <vector>

#include "list/entry.h"
#include "list/record_state.h"

namespace qkui {

// Which they are, and which of them are to be compared with what was last seen of them. While they are few
// that is all of them. Once there were more than Pace::all, it is those exposed lately, and some of the
// others in turn.
class HeldRecords {
  public:
    struct Pace {
        std::size_t all = 1024;   // so long as there were never more: all
        std::size_t lately = 64;  // then: those exposed last
        std::size_t inTurn = 64;  // and others with each frame and layout
    };
    struct Held {
        Entry* entry;
        QKListItem* item;
        RecordState seen;       // when it was last read or written
        bool lately = false;    // among those exposed last
        bool isShared = false;  // stands in several places
    };

    void SetPace(const Pace& pace) { pace_ = pace; }
    bool IsEmpty() const { return held_.empty(); }
    bool AreMany() const { return isMany_; }
    Held& Of(const Entry& entry) { return held_[entry.heldAt]; }
    const std::vector<Held>& All() const { return held_; }

    // The item is to become the entry's record: Add cannot fail then. Throws std::bad_alloc.
    void Prepare(const QKListItem* item, Entry& entry);
    void Add(Entry& entry);
    void Share(Entry& entry);
    void Remove(Entry& entry);
    // Frees every record, one that stands in several places once.
    void Release();
    // The entry is exposed: it is among the latest. Calls `sync` for the one that gives way to it.
    template <class Sync>
    void NoteLately(Entry& entry, Sync sync);

    // In each place where the record stands.
    template <class Visit>
    void ForEachOf(const QKListItem* item, Visit visit) const {
        const auto [begin, end] = byItem_.equal_range(item);
        for (auto at = begin; at != end; ++at)
            visit(*at->second);
    }
    // Those that are to be compared before each answer; the next in turn; all.
    template <class Sync>
    void Compare(Sync sync) {
        if (!isMany_) return CompareAll(sync);
        for (std::size_t i = 0; i < lately_.size(); ++i)
            sync(*lately_[i]);
    }
    template <class Sync>
    void CompareInTurn(Sync sync) {
        if (!isMany_) return;
        if (turn_ >= held_.size()) turn_ = 0;
        const std::size_t end = std::min(turn_ + pace_.inTurn, held_.size());
        CompareSome(turn_, end, sync);
        turn_ = end;
    }
    template <class Sync>
    void CompareAll(Sync sync) {
        CompareSome(0, held_.size(), sync);
    }
    // Those that a host may be looking at.
    template <class Write>
    void ForEachLooked(Write write) {
        if (isMany_ && shared_ == 0) {
            for (std::size_t i = 0; i < lately_.size(); ++i)
                write(*lately_[i]);
            return;
        }
        for (std::size_t i = 0; i < held_.size(); ++i)
            if (!isMany_ || held_[i].lately || held_[i].isShared) write(*held_[i].entry);
    }

  private:
    template <class Sync>
    void CompareSome(std::size_t first, std::size_t end, Sync sync);

    std::vector<Held> held_;
    std::unordered_multimap<const QKListItem*, Entry*> byItem_;
    Pace pace_;
    bool isMany_ = false;         // there were more than Pace::all since there were none
    std::vector<Entry*> lately_;  // the last one at the end
    int shared_ = 0;              // of those held
    std::size_t turn_ = 0;        // of those held, which is compared next
};

// Each record lies somewhere else in memory: it is on its way while those before it are compared.
template <class Sync>
void HeldRecords::CompareSome(std::size_t first, std::size_t end, Sync sync) {
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = first; i < end; ++i) {
        if (i + kAhead < held_.size()) RecordState::Prefetch(*held_[i + kAhead].item);
        if (held_[i].seen != RecordState(*held_[i].item)) sync(*held_[i].entry);
    }
}

template <class Sync>
void HeldRecords::NoteLately(Entry& entry, Sync sync) {
    lately_.reserve(pace_.lately + 1);
    if (!Of(entry).lately) {
        if (lately_.size() >= pace_.lately) {
            Entry& first = *lately_.front();
            sync(first);
            Of(first).lately = false;
            lately_.erase(lately_.begin());
        }
        Of(entry).lately = true;
        lately_.push_back(&entry);
    } else if (lately_.back() != &entry) {
        const auto at = std::find(lately_.begin(), lately_.end(), &entry);
        std::rotate(at, at + 1, lately_.end());
    }
}

}  // namespace qkui
