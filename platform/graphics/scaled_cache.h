// Scaled copies of pictures, kept under everything that determines them.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include "platform/graphics/resample.h"
#include "platform/graphics/surface.h"

namespace platform {

struct ScaledKey {
    std::uint64_t revision = 0;  // of the image; first, so that what goes with it lies together
    Scaling scaling;
    friend auto operator<=>(const ScaledKey&, const ScaledKey&) = default;
};

struct ScaledPicture {
    std::shared_ptr<const Surface> pixels;
    bool opaque = false;
};

// One for the process, usable from every thread. Bounded by DrawingCacheLimit; what was not used for longest
// goes first.
class ScaledCache {
  public:
    static ScaledCache& Get();

    // Whether a copy of so many pixels can be kept at all.
    static bool Admits(std::int64_t pixels);
    // Empty pixels when there is none.
    ScaledPicture Find(const ScaledKey& key);
    // Notes that so many pixels of a copy were scaled and not kept. True once that makes up the whole copy:
    // then keeping it costs no more than what was scaled in vain, as for a window that is being resized.
    bool IsWorthKeeping(const ScaledKey& key, std::int64_t pixels);
    // Without effect for a picture that is not admitted.
    void Insert(const ScaledKey& key, const ScaledPicture& picture);
    // Everything that was made of an image.
    void Drop(std::uint64_t revision);
    void Trim();
    std::size_t Bytes() const;

  private:
    struct Entry;
    using Map = std::map<ScaledKey, Entry>;
    using Order = std::list<Map::iterator>;
    struct Demand {
        ScaledKey key;
        std::int64_t pixels = 0;
    };
    struct Entry {
        ScaledPicture picture;
        std::size_t bytes;
        Order::iterator place;
    };
    void Erase(Map::iterator entry);
    void TrimTo(std::size_t limit);

    mutable std::mutex mutex_;
    Map entries_;
    Order order_;  // the one used last in front
    std::size_t bytes_ = 0;
    std::array<Demand, 4> demands_;  // the latest first
};

}  // namespace platform
