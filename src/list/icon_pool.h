// The icons of a list's entries: entries with the same picture share one image.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include <platform/gdiplus.h>

namespace qkui {

class IconPool {
  public:
    // An image that shows what `image` does, also when that changes; null for one that failed to load.
    // Throws std::bad_alloc.
    std::shared_ptr<Gdiplus::Image> Share(const Gdiplus::Image& image);
    void Clear();

  private:
    void DropUnused();

    std::unordered_map<std::uint64_t, std::shared_ptr<Gdiplus::Image>> icons_;  // by their revision
    std::size_t room_ = kLeastRoom;  // icons, before those that no entry has any more are looked for
    static constexpr std::size_t kLeastRoom = 64;
};

}  // namespace qkui
