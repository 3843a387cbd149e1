#include "platform/graphics/scaled_cache.h"

#include <algorithm>

#include "platform/graphics/counters.h"

namespace platform {
namespace {

// What an entry takes besides its pixels, roughly.
constexpr std::size_t kEntryOverhead = 320;

std::size_t BytesOf(std::int64_t pixels) {
    return static_cast<std::size_t>(pixels) * 4 + kEntryOverhead;
}

}  // namespace

// Never destroyed: images of static storage drop their copies when the process ends.
ScaledCache& ScaledCache::Get() {
    static ScaledCache* const cache = new ScaledCache;
    return *cache;
}

bool ScaledCache::Admits(std::int64_t pixels) {
    return BytesOf(pixels) <= DrawingCacheLimit().load();
}

ScaledPicture ScaledCache::Find(const ScaledKey& key) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(key);
    if (found == entries_.end()) return {};
    order_.splice(order_.begin(), order_, found->second.place);
    return found->second.picture;
}

bool ScaledCache::IsWorthKeeping(const ScaledKey& key, std::int64_t pixels) {
    const std::lock_guard lock(mutex_);
    auto known = std::find_if(demands_.begin(), demands_.end(),
                              [&](const Demand& demand) { return demand.key == key; });
    if (known == demands_.end()) *--known = {key, 0};
    std::rotate(demands_.begin(), known, known + 1);
    Demand& demand = demands_.front();
    const Scaling& whole = key.scaling;
    if (demand.pixels >= std::int64_t{whole.right - whole.left} * (whole.bottom - whole.top)) return true;
    demand.pixels += pixels;
    return false;
}

void ScaledCache::Insert(const ScaledKey& key, const ScaledPicture& picture) {
    const std::size_t bytes = BytesOf(std::int64_t{picture.pixels->Width()} * picture.pixels->Height());
    const std::size_t limit = DrawingCacheLimit().load();
    const std::lock_guard lock(mutex_);
    if (bytes > limit) {
        TrimTo(limit);
        return;
    }
    if (const auto old = entries_.find(key); old != entries_.end()) Erase(old);
    TrimTo(limit - bytes);
    const auto entry = entries_.emplace(key, Entry{picture, bytes, {}}).first;
    order_.push_front(entry);
    entry->second.place = order_.begin();
    bytes_ += bytes;
}

void ScaledCache::Drop(std::uint64_t revision) {
    const std::lock_guard lock(mutex_);
    ScaledKey first;
    first.revision = revision;
    first.scaling = Scaling::Lowest();
    auto entry = entries_.lower_bound(first);
    while (entry != entries_.end() && entry->first.revision == revision)
        Erase(entry++);
}

void ScaledCache::Trim() {
    const std::lock_guard lock(mutex_);
    TrimTo(DrawingCacheLimit().load());
}

std::size_t ScaledCache::Bytes() const {
    const std::lock_guard lock(mutex_);
    return bytes_;
}

void ScaledCache::Erase(Map::iterator entry) {
    bytes_ -= entry->second.bytes;
    order_.erase(entry->second.place);
    entries_.erase(entry);
}

void ScaledCache::TrimTo(std::size_t limit) {
    while (bytes_ > limit)
        Erase(order_.back());
}

}  // namespace platform

Gdiplus::DrawingCounters Gdiplus::GetDrawingCounters() {
    return Counters();
}

void Gdiplus::SetDrawingCacheLimit(std::size_t bytes) {
    platform::DrawingCacheLimit().store(bytes);
    platform::ScaledCache::Get().Trim();
}
