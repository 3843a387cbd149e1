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
    CRect Place() const { return PlaceOf(*this); }

    void OnClick(std::function<void()> action) { this->SetCallBack(std::move(action)); }
};

}  // namespace gallery
