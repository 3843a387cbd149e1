// The selected entries of a list, in the order in which they were selected; may hold records that are no
// entries.
#pragma once

#include <list>
#include <unordered_map>

#include "list/list_item.h"

class QKSelectionOrder {
  public:
    bool Contains(const QKListItem* item) const { return places_.count(item) != 0; }
    // At the end, once. Without memory nothing changes.
    void Add(QKListItem* item);
    void Remove(const QKListItem* item);
    template <class Test>
    void RemoveIf(Test test) {
        for (auto at = items_.begin(); at != items_.end();) {
            const QKListItem* const item = *at++;
            if (test(item)) Remove(item);
        }
    }
    void Clear();

  private:
    std::list<QKListItem*> items_;
    std::unordered_map<const QKListItem*, std::list<QKListItem*>::iterator> places_;
};
