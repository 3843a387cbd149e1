// Tells the host that a selection has changed: once for an event, and when that is done with the lists.
#pragma once

#include <cstdint>
#include <vector>

#include "dialog/alive.h"

class QKListCtrl;

namespace qkui {

// Made when an event begins. It looks at those lists of the dialog that have a function for it.
class SelectionWatch {
  public:
    explicit SelectionWatch(CQKDialogBase& dialog, const CArray<QKItemBase*>& items);
    // Calls the functions of those whose selection is no longer what it was. Anything may be gone afterwards.
    void Notify();

  private:
    struct Watched {
        QKListCtrl* list;
        Alive alive;
        std::uint64_t before;
    };
    CQKDialogBase& dialog_;
    std::vector<Watched> watched_;
};

}  // namespace qkui
