// What a list calls besides the record of its callbacks: anything that can be called.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <platform/geometry.h>

struct QKListItem;

namespace qkui {

// Shared by copies of the list. Each lives until its own call is over, whatever that does to the list.
struct ListCalls {
    template <class... Arguments>
    using Call = std::shared_ptr<const std::function<void(Arguments...)>>;

    Call<QKListItem*, CPoint> click;
    Call<QKListItem*, CPoint> rightClick;
    Call<QKListItem*> doubleClick;
    Call<> selection;
};

}  // namespace qkui
