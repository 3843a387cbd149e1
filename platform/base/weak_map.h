// Objects under a key for as long as somebody holds them: finds them again without keeping them. Not locked.
#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>

namespace platform {

template <class Key, class Value>
class WeakMap {
  public:
    std::shared_ptr<Value> Find(const Key& key) const {
        const auto found = values_.find(key);
        return found != values_.end() ? found->second.lock() : nullptr;
    }
    void Put(Key key, const std::shared_ptr<Value>& value) {
        if (values_.size() >= sweepAt_) {
            std::erase_if(values_, [](const auto& entry) { return entry.second.expired(); });
            sweepAt_ = std::max(kLeastSwept, values_.size() * 2);
        }
        values_[std::move(key)] = value;
    }

  private:
    static constexpr std::size_t kLeastSwept = 64;
    std::map<Key, std::weak_ptr<Value>> values_;
    std::size_t sweepAt_ = kLeastSwept;
};

}  // namespace platform
