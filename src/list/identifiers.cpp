#include "list/identifiers.h"

#include <new>

namespace qkui {

void Identifiers::Add(int id) {
    if (total_++ == 0 || id >= bound_) {
        bound_ = id;
        isKnown_ = true;
    }
    if (!isCounted_) return;
    try {
        ++counts_[id];
    } catch (const std::bad_alloc&) {  // counted again when somebody asks
        counts_.clear();
        isCounted_ = isKnown_ = false;
    }
}

void Identifiers::Remove(int id) {
    if (--total_ == 0) return Clear();
    if (id == bound_) isKnown_ = false;
    if (!isCounted_) return;
    const auto found = counts_.find(id);
    if (--found->second == 0) counts_.erase(found);
}

void Identifiers::Clear() {
    *this = Identifiers();
}

}  // namespace qkui
