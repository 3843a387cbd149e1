// The order of top-levels, from the bottom of the screen to its top.
#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include <platform/types.h>

namespace platform {

// Three layers: the windows of an upper one lie above all of a lower one. Where a window stands is a number,
// so that moving one, comparing two and looking at the next cost about the same however many there are.
class StackingOrder {
  public:
    enum class Layer {
        Desktop,  // put into another program's window
        Normal,
        Topmost
    };

    // On top of its layer. All that follows ignores windows that are not in the order, and needs no memory.
    void Insert(HWND window, Layer layer);
    void Remove(HWND window);
    void Clear();

    void Raise(HWND window, Layer layer);  // to the top of a layer, the one it is in or the other
    void Lower(HWND window, Layer layer);  // to the bottom of a layer
    // Directly above or below another window, and into its layer.
    void PutAbove(HWND window, HWND reference) { PutBeside(window, reference, Side::Above); }
    void PutBelow(HWND window, HWND reference) { PutBeside(window, reference, Side::Below); }

    Layer LayerOf(HWND window) const { return PlaceOf(window).first; }
    bool IsAbove(HWND window, HWND other) const { return PlaceOf(other) < PlaceOf(window); }
    // The neighbours; empty at the ends and for a window that is not in the order.
    HWND Above(HWND window) const;
    HWND Below(HWND window) const;
    HWND Top() const { return order_.empty() ? HWND() : order_.rbegin()->second; }

    // The first window below `from` (empty: from the top) that `takes` accepts; empty when there is none.
    template <class Predicate>
    HWND FindDown(HWND from, Predicate takes) const {
        auto at = from ? Find(from) : order_.end();
        if (from && at == order_.end()) return HWND();
        while (at != order_.begin())
            if (takes((--at)->second)) return at->second;
        return HWND();
    }
    // Calls f(window) from the bottom up.
    template <class F>
    void ForEach(F f) const {
        for (const auto& [place, window] : order_)
            f(window);
    }

  private:
    using Place = std::pair<Layer, std::int64_t>;
    using Order = std::map<Place, HWND>;

    Place PlaceOf(HWND window) const;
    Order::const_iterator Find(HWND window) const;
    std::int64_t TopOf(Layer layer) const;     // a number above all in the layer
    std::int64_t BottomOf(Layer layer) const;  // and one below
    enum class Side { Above, Below };
    void PutBeside(HWND window, HWND reference, Side side);
    void Move(HWND window, Place place);
    // Numbers all windows anew, with room between them.
    void Spread();

    Order order_;
    std::unordered_map<std::uint64_t, Place> places_;  // by HWND::ToParam
};

}  // namespace platform
