// A table that gives out handles: values with an index and a generation, so that a handle whose object is
// gone is recognised.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <platform/types.h>

namespace platform {

// Owns its objects through shared_ptr, so that a caller may keep one alive across a callback that deletes
// it. Not locked: each table says which thread it belongs to.
template <class H, class T>
class HandleTable {
  public:
    H Insert(std::shared_ptr<T> object) {
        std::uint32_t index;
        if (free_.empty()) {
            index = static_cast<std::uint32_t>(slots_.size());
            slots_.push_back({});
            // Removing needs no memory, then.
            try {
                free_.reserve(slots_.capacity());
            } catch (...) {
                slots_.pop_back();
                throw;
            }
        } else {
            index = free_.back();
            free_.pop_back();
        }
        slots_[index].object = std::move(object);
        return H(index, slots_[index].generation);
    }
    // Null for a stale, foreign or empty handle.
    T* Find(H handle) const { return Live(handle) ? slots_[handle.Index()].object.get() : nullptr; }
    std::shared_ptr<T> Share(H handle) const {
        return Live(handle) ? slots_[handle.Index()].object : std::shared_ptr<T>();
    }
    // The handle is stale from here on. Returns the object, null when it was stale already.
    std::shared_ptr<T> Remove(H handle) {
        if (!Live(handle)) return {};
        Slot& slot = slots_[handle.Index()];
        std::shared_ptr<T> object = std::move(slot.object);
        slot.object.reset();
        if (++slot.generation == 0) slot.generation = 1;
        free_.push_back(handle.Index());
        return object;
    }
    std::size_t Count() const { return slots_.size() - free_.size(); }
    // Calls f(handle, object) for every object; f may remove the one it is given.
    template <class F>
    void ForEach(F f) {
        for (std::uint32_t i = 0; i < slots_.size(); ++i)
            if (slots_[i].object) f(H(i, slots_[i].generation), *slots_[i].object);
    }

  private:
    struct Slot {
        std::shared_ptr<T> object;
        std::uint32_t generation = 1;
    };
    bool Live(H handle) const {
        return handle && handle.Index() < slots_.size() &&
               slots_[handle.Index()].generation == handle.Generation() && slots_[handle.Index()].object;
    }
    std::vector<Slot> slots_;
    std::vector<std::uint32_t> free_;
};

}  // namespace platform
