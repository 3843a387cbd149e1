#include "list/icon_pool.h"

#include <algorithm>
#include <new>

namespace qkui {

std::shared_ptr<Gdiplus::Image> IconPool::Share(const Gdiplus::Image& image) {
    if (image.GetWidth() == 0) return nullptr;
    if (const auto found = icons_.find(image.GetRevision());
        found != icons_.end() && found->second->IsCloneOf(image))
        return found->second;
    std::shared_ptr<Gdiplus::Image> icon(image.Clone());
    if (!icon) throw std::bad_alloc();
    if (icons_.size() >= room_) DropUnused();
    icons_.insert_or_assign(icon->GetRevision(), icon);
    return icon;
}

void IconPool::DropUnused() {
    std::erase_if(icons_, [](const auto& icon) { return icon.second.use_count() == 1; });
    room_ = std::max(kLeastRoom, 2 * icons_.size());
}

void IconPool::Clear() {
    icons_.clear();
    room_ = kLeastRoom;
}

}  // namespace qkui
