// Items that a part of the gallery makes, registered with a dialog as long as the set holds them.
#pragma once

#include <memory>
#include <vector>

#include <QKUILib.h>

namespace gallery {

class ItemSet {
  public:
    ItemSet() = default;
    ~ItemSet() { Clear(); }
    ItemSet(const ItemSet&) = delete;
    ItemSet& operator=(const ItemSet&) = delete;

    // A new item above all others of the dialog, which outlives the set.
    template <class Item>
    Item& Add(CQKDialogBase& dialog) {
        const auto item = std::make_shared<Item>();
        items_.push_back(item);
        dialog_ = &dialog;
        dialog.AddQKItem(item.get());
        return *item;
    }
    void Clear() {
        for (const auto& item : items_)
            dialog_->RemoveQKItem(item.get());
        items_.clear();
    }

  private:
    CQKDialogBase* dialog_ = nullptr;
    std::vector<std::shared_ptr<QKItemBase>> items_;
};

}  // namespace gallery
