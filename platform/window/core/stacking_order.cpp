#include "platform/window/core/stacking_order.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace platform {

namespace {

// Room is left above and below everything, and a group that is put together window by window takes little of
// it: only what is put between the same two again and again makes them move apart.
constexpr std::int64_t kRoom = std::int64_t{1} << 40;
constexpr std::int64_t kStep = std::int64_t{1} << 20;
constexpr std::int64_t kFarthest = std::int64_t{1} << 62;

}  // namespace

void StackingOrder::Insert(HWND window, Layer layer) {
    const auto [known, isNew] = places_.try_emplace(window.ToParam());
    if (!isNew) return Raise(window, layer);
    try {
        known->second = {layer, TopOf(layer)};
        order_.emplace(known->second, window);
    } catch (...) {
        places_.erase(known);
        throw;
    }
}

void StackingOrder::Remove(HWND window) {
    const auto found = places_.find(window.ToParam());
    if (found == places_.end()) return;
    order_.erase(found->second);
    places_.erase(found);
}

void StackingOrder::Clear() {
    order_.clear();
    places_.clear();
}

void StackingOrder::Raise(HWND window, Layer layer) {
    const HWND above = Above(window);
    if (LayerOf(window) == layer && (!above || LayerOf(above) != layer)) return;
    if (TopOf(layer) > kFarthest) Spread();
    Move(window, {layer, TopOf(layer)});
}

void StackingOrder::Lower(HWND window, Layer layer) {
    const HWND below = Below(window);
    if (LayerOf(window) == layer && (!below || LayerOf(below) != layer)) return;
    if (BottomOf(layer) < -kFarthest) Spread();
    Move(window, {layer, BottomOf(layer)});
}

void StackingOrder::PutBeside(HWND window, HWND reference, Side side) {
    if (window == reference || Find(reference) == order_.end()) return;
    const HWND next = side == Side::Above ? Above(reference) : Below(reference);
    const bool hasNext = next && LayerOf(next) == LayerOf(reference);
    if (hasNext && next == window) return;
    const auto room = [&] {
        return hasNext ? std::abs(PlaceOf(next).second - PlaceOf(reference).second) : kRoom;
    };
    if (room() < 2) Spread();
    const auto [layer, number] = PlaceOf(reference);
    const std::int64_t step = std::min(kStep, room() / 2);
    Move(window, {layer, side == Side::Above ? number + step : number - step});
}

HWND StackingOrder::Above(HWND window) const {
    auto at = Find(window);
    return at == order_.end() || ++at == order_.end() ? HWND() : at->second;
}

HWND StackingOrder::Below(HWND window) const {
    const auto at = Find(window);
    return at == order_.end() || at == order_.begin() ? HWND() : std::prev(at)->second;
}

StackingOrder::Place StackingOrder::PlaceOf(HWND window) const {
    const auto found = places_.find(window.ToParam());
    return found == places_.end() ? Place() : found->second;
}

StackingOrder::Order::const_iterator StackingOrder::Find(HWND window) const {
    const auto found = places_.find(window.ToParam());
    return found == places_.end() ? order_.end() : order_.find(found->second);
}

std::int64_t StackingOrder::TopOf(Layer layer) const {
    const auto behind = order_.upper_bound({layer, std::numeric_limits<std::int64_t>::max()});
    const bool isEmpty = behind == order_.begin() || std::prev(behind)->first.first != layer;
    return isEmpty ? 0 : std::prev(behind)->first.second + kRoom;
}

std::int64_t StackingOrder::BottomOf(Layer layer) const {
    const auto first = order_.lower_bound({layer, std::numeric_limits<std::int64_t>::min()});
    return first == order_.end() || first->first.first != layer ? 0 : first->first.second - kRoom;
}

void StackingOrder::Move(HWND window, Place place) {
    const auto known = places_.find(window.ToParam());
    if (known == places_.end()) return;
    auto node = order_.extract(known->second);
    node.key() = known->second = place;
    order_.insert(std::move(node));
}

void StackingOrder::Spread() {
    Order spread;
    std::int64_t number = 0;
    while (!order_.empty()) {
        auto node = order_.extract(order_.begin());
        node.key().second = number += kRoom;
        places_.find(node.mapped().ToParam())->second = node.key();
        spread.insert(spread.end(), std::move(node));
    }
    order_ = std::move(spread);
}

}  // namespace platform
