// The largest identifier of a list's entries.
#pragma once

#include <map>
#include <optional>

namespace qkui {

// Entries are numbered upwards, so that the largest is known as a rule; they are counted only when it left.
class Identifiers {
  public:
    void Add(int id);
    void Remove(int id);
    void Clear();
    // Nothing without entries. `forEach(visit)` calls `visit(id)` for every entry.
    template <class ForEach>
    std::optional<int> Largest(ForEach forEach) {
        if (total_ == 0) return std::nullopt;
        if (!isCounted_ && !isKnown_) {
            counts_.clear();
            forEach([this](int id) { ++counts_[id]; });
            isCounted_ = true;
        }
        return isCounted_ ? counts_.rbegin()->first : bound_;
    }

  private:
    std::size_t total_ = 0;
    int bound_ = 0;        // no identifier is larger
    bool isKnown_ = true;  // one is as large
    bool isCounted_ = false;
    std::map<int, int> counts_;  // how many entries have each
};

}  // namespace qkui
