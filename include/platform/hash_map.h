/// @file
/// Maps from keys to values, in no order.
#pragma once

#include <functional>
#include <string_view>
#include <type_traits>
#include <unordered_map>

#include <platform/linked_list.h>
#include <platform/text.h>

/// What a key is found by. Texts, numbers, addresses and handles have one; for other types a program
/// specialises it.
template <class Argument>
UINT HashKey(Argument key) {
    using Key = std::remove_cvref_t<Argument>;
    if constexpr (std::is_convertible_v<const Key&, LPCWSTR>)
        return static_cast<UINT>(std::hash<std::u16string_view>()(static_cast<LPCWSTR>(key)));
    else if constexpr (requires { key.ToParam(); })
        return static_cast<UINT>(std::hash<std::uint64_t>()(key.ToParam()));
    else
        return static_cast<UINT>(std::hash<Key>()(key));
}

template <class Key, class KeyArgument = const Key&, class Value = void*, class ValueArgument = const Value&>
class CMap {
  public:
    INT_PTR GetCount() const { return static_cast<INT_PTR>(pairs_.size()); }
    INT_PTR GetSize() const { return GetCount(); }
    bool IsEmpty() const { return pairs_.empty(); }
    void InitHashTable(UINT buckets) { pairs_.reserve(buckets); }

    /// False, and `value` as it was, for a key that is not there.
    bool Lookup(KeyArgument key, Value& value) const {
        const auto found = pairs_.find(Key(key));
        if (found == pairs_.end()) return false;
        value = found->second;
        return true;
    }
    /// A key that is not there comes with a value of its own.
    Value& operator[](KeyArgument key) { return pairs_[Key(key)]; }
    void SetAt(KeyArgument key, ValueArgument value) { pairs_[Key(key)] = value; }
    bool RemoveKey(KeyArgument key) { return pairs_.erase(Key(key)) != 0; }
    void RemoveAll() { pairs_.clear(); }

    POSITION GetStartPosition() const { return pairs_.empty() ? nullptr : Of(&*pairs_.begin()); }
    /// The pair at a position, which moves on. The map may not grow on the way.
    void GetNextAssoc(POSITION& at, Key& key, Value& value) const {
        if (!at) AfxThrowInvalidArgException();
        auto pair = pairs_.find(reinterpret_cast<const typename Pairs::value_type*>(at)->first);
        key = pair->first;
        value = pair->second;
        at = ++pair == pairs_.end() ? nullptr : Of(&*pair);
    }

  private:
    struct Hash {
        std::size_t operator()(const Key& key) const {
            return HashKey<KeyArgument>(const_cast<Key&>(key));  // the argument may be a plain reference
        }
    };
    using Pairs = std::unordered_map<Key, Value, Hash>;
    static POSITION Of(const typename Pairs::value_type* pair) {
        return reinterpret_cast<POSITION>(const_cast<typename Pairs::value_type*>(pair));
    }
    Pairs pairs_;
};

using CMapStringToString = CMap<CString, LPCWSTR, CString, LPCWSTR>;
using CMapStringToPtr = CMap<CString, LPCWSTR, void*, void*>;
using CMapPtrToPtr = CMap<void*, void*, void*, void*>;
using CMapWordToPtr = CMap<WORD, WORD, void*, void*>;
