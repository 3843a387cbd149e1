// What outlived a call into the host.
#pragma once

#include <qkui/dialog/dialog_base.h>

namespace qkui {

// A callback, an overridden virtual or a handler may delete the dialog, and take items off it and delete
// those. Who runs one and goes on afterwards makes a Alive before the call and asks it after:
//
//     const Alive alive(*this, item);
//     UpdateViewRect(rect);
//     if (!alive) return 1;
//
// A dialog without a window is alive. An item is as long as it is registered; one that was not registered to
// begin with is its caller's to keep.
class Alive {
  public:
    explicit Alive(CQKDialogBase& dialog) : Alive(dialog, dialog.m_pLife) {}
    Alive(CQKDialogBase& dialog, QKItemBase* item) : Alive(dialog) { item_ = dialog.GetQKItem(item); }
    // The dialog, and something that its owner shares.
    Alive(CQKDialogBase& dialog, const std::shared_ptr<const void>& other)
        : dialog_(&dialog), life_(dialog.m_pLife), other_(other) {}

    explicit operator bool() const {
        return !life_.expired() && !other_.expired() && (!item_ || dialog_->GetQKItem(item_));
    }

  private:
    CQKDialogBase* dialog_;
    std::weak_ptr<const void> life_;
    std::weak_ptr<const void> other_;
    QKItemBase* item_ = nullptr;
};

}  // namespace qkui
