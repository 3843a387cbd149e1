// Internal to QKListEntries.
#pragma once

#include "list/list_entries.h"

// What is derived from the entries is stale from here on, until the change is complete.
class QKListEntries::Change {
  public:
    explicit Change(QKListEntries& entries) : stale_(entries.stale_), before_(entries.stale_) {
        stale_ = true;
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    void Complete() { stale_ = before_; }

  private:
    bool& stale_;
    bool before_;
};
