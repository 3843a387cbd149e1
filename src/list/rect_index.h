// Finds the entries whose reach holds a point or meets an area, however many there are.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include <platform/geometry.h>

namespace qkui {

struct Entry;

// Buckets of a plane, in layers by size: a rectangle lies in a layer whose buckets are about twice its size,
// so it is in few of them, and a point asks one bucket of each layer. Empty rectangles are nowhere.
class RectIndex {
  public:
    // The reach of a entry must not change while it is in the index.
    void Insert(Entry& entry);
    void Remove(Entry& entry);
    void Clear() { layers_.clear(); }

    // Sorted by the entries' order, each once.
    std::vector<Entry*> At(CPoint point) const;
    std::vector<Entry*> Meeting(const CRect& area) const;

  private:
    using Bucket = std::vector<Entry*>;
    struct Hash {
        std::size_t operator()(std::uint64_t key) const {
            return static_cast<std::size_t>((key ^ (key >> 29)) * 0x9E3779B97F4A7C15U);
        }
    };
    struct Layer {
        int bitsX, bitsY;  // a bucket is 2^bits pixels
        std::unordered_map<std::uint64_t, Bucket, Hash> buckets;
    };
    struct Span {
        std::int64_t left, top, right, bottom;  // buckets, inclusive
    };
    static std::uint64_t Key(std::int64_t x, std::int64_t y);
    static Span SpanOf(const Layer& layer, const CRect& rect);
    Layer& LayerOf(const CRect& rect);

    std::vector<Layer> layers_;
};

}  // namespace qkui
