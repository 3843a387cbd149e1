// An item with a closure behind its click.
#pragma once

#include <functional>
#include <utility>

#include <QKUILib.h>

namespace gallery {

inline CRect PlaceOf(const QKItemBase& item) {
    CRect place;
    item.GetRect(&place);
    return place;
}

template <class Item>
class Clickable : public Item {
  public:
    Clickable() = default;
    Clickable(const Clickable&) = delete;  // the callback holds on to this object
    Clickable& operator=(const Clickable&) = delete;

    CRect Place() const { return PlaceOf(*this); }

    void OnClick(std::function<void()> action) {
        action_ = std::move(action);
        QKCallbacks callbacks;
        callbacks.pfnClick = [](LPVOID self) {
            // The action may delete the item.
            const std::function<void()> copy = static_cast<Clickable*>(self)->action_;
            copy();
        };
        callbacks.pArgument = this;
        this->SetCallBack(&callbacks);
    }

  private:
    std::function<void()> action_;
};

}  // namespace gallery
