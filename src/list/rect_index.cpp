#include "list/rect_index.h"

#include <algorithm>
#include <bit>

#include "list/entry.h"

namespace qkui {
namespace {

// The bits of a bucket's side for a side of a rectangle: at least twice as long, at least 64 pixels.
int BitsFor(LONG low, LONG high) {
    const auto length = static_cast<std::uint64_t>(std::int64_t{high} - low);
    return std::max(6, static_cast<int>(std::bit_width(length * 2 - 1)));
}

void SortOnce(std::vector<Entry*>& entries) {
    std::sort(entries.begin(), entries.end(),
              [](const Entry* a, const Entry* b) { return a->order < b->order; });
    entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
}

}  // namespace

std::uint64_t RectIndex::Key(std::int64_t x, std::int64_t y) {
    return static_cast<std::uint64_t>(x) << 32U | static_cast<std::uint32_t>(y);
}

RectIndex::Span RectIndex::SpanOf(const Layer& layer, const CRect& rect) {
    return {std::int64_t{rect.left} >> layer.bitsX, std::int64_t{rect.top} >> layer.bitsY,
            (std::int64_t{rect.right} - 1) >> layer.bitsX, (std::int64_t{rect.bottom} - 1) >> layer.bitsY};
}

RectIndex::Layer& RectIndex::LayerOf(const CRect& rect) {
    const int bitsX = BitsFor(rect.left, rect.right);
    const int bitsY = BitsFor(rect.top, rect.bottom);
    for (Layer& layer : layers_)
        if (layer.bitsX == bitsX && layer.bitsY == bitsY) return layer;
    return layers_.emplace_back(Layer{bitsX, bitsY, {}});
}

void RectIndex::Insert(Entry& entry) {
    const CRect& rect = entry.reach;
    if (rect.IsRectEmpty()) return;
    Layer& layer = LayerOf(rect);
    const Span span = SpanOf(layer, rect);
    for (std::int64_t x = span.left; x <= span.right; ++x)
        for (std::int64_t y = span.top; y <= span.bottom; ++y)
            layer.buckets[Key(x, y)].push_back(&entry);
}

void RectIndex::Remove(Entry& entry) {
    const CRect& rect = entry.reach;
    if (rect.IsRectEmpty()) return;
    Layer& layer = LayerOf(rect);
    const Span span = SpanOf(layer, rect);
    for (std::int64_t x = span.left; x <= span.right; ++x)
        for (std::int64_t y = span.top; y <= span.bottom; ++y) {
            const auto found = layer.buckets.find(Key(x, y));
            if (found == layer.buckets.end()) continue;
            std::erase(found->second, &entry);
            if (found->second.empty()) layer.buckets.erase(found);
        }
}

std::vector<Entry*> RectIndex::At(CPoint point) const {
    std::vector<Entry*> entries;
    for (const Layer& layer : layers_) {
        const auto found = layer.buckets.find(
            Key(std::int64_t{point.x} >> layer.bitsX, std::int64_t{point.y} >> layer.bitsY));
        if (found == layer.buckets.end()) continue;
        for (Entry* entry : found->second)
            if (entry->reach.PtInRect(point)) entries.push_back(entry);
    }
    SortOnce(entries);
    return entries;
}

std::vector<Entry*> RectIndex::Meeting(const CRect& area) const {
    std::vector<Entry*> entries;
    if (area.IsRectEmpty()) return entries;
    const auto collect = [&](const Bucket& bucket) {
        for (Entry* entry : bucket) {
            const CRect& rect = entry->reach;
            if (rect.left < area.right && area.left < rect.right && rect.top < area.bottom &&
                area.top < rect.bottom)
                entries.push_back(entry);
        }
    };
    for (const Layer& layer : layers_) {
        const Span span = SpanOf(layer, area);
        const auto columns = static_cast<double>(span.right - span.left + 1);
        const auto rows = static_cast<double>(span.bottom - span.top + 1);
        if (columns * rows > static_cast<double>(layer.buckets.size())) {
            for (const auto& [key, bucket] : layer.buckets)
                collect(bucket);
            continue;
        }
        for (std::int64_t x = span.left; x <= span.right; ++x)
            for (std::int64_t y = span.top; y <= span.bottom; ++y)
                if (const auto found = layer.buckets.find(Key(x, y)); found != layer.buckets.end())
                    collect(found->second);
    }
    SortOnce(entries);
    return entries;
}

}  // namespace qkui
