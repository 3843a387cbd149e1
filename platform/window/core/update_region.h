// What of a window waits to be painted.
#pragma once

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "platform/graphics/region.h"

namespace platform {

// Collects rectangles as they come and joins them when somebody looks: ten thousand small ones, one by one,
// would each cost as much as all those before.
class UpdateRegion {
  public:
    // `rect` is not empty. Without memory, the box around all becomes what waits: rather more than less.
    void Add(const CRect& rect) {
        if (!added_.empty() && added_.back() == rect) return;
        try {
            added_.push_back(rect);
        } catch (const std::bad_alloc&) {
            BecomeBox(rect);
        }
        if (added_.size() >= std::max<std::size_t>(kFewest, static_cast<std::size_t>(region_.Count())))
            Join();
    }
    bool IsEmpty() const { return added_.empty() && region_.IsEmpty(); }
    CRect Box() { return Joined().Box(); }
    Region Take() {
        Join();
        return std::exchange(region_, Region());
    }
    void Clear() { Take(); }
    void Subtract(const RECT& rect) { Joined().Subtract(Region(rect)); }
    void Intersect(const RECT& rect) { Joined().Intersect(rect); }
    const Region& Get() { return Joined(); }

  private:
    static constexpr std::size_t kFewest = 1024;
    Region& Joined() {
        Join();
        return region_;
    }
    void Join() {
        if (added_.empty()) return;
        try {
            if (added_.size() == 1)
                region_.Add(added_.front());
            else
                region_.Add(Region(added_));
        } catch (const std::bad_alloc&) {
            BecomeBox(added_.front());
        }
        added_.clear();
    }
    void BecomeBox(CRect box) {
        if (!region_.IsEmpty()) box.UnionRect(box, region_.Box());
        for (const RECT& one : added_)
            box.UnionRect(box, one);
        added_.clear();
        region_ = Region(box);
    }
    Region region_;
    std::vector<RECT> added_;
};

}  // namespace platform
