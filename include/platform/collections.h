/// @file
/// Growable collections. A position outside the collection raises CInvalidArgException in every build.
#pragma once

#include <list>
#include <utility>
#include <vector>

#include <platform/exception.h>
#include <platform/text.h>
#include <platform/types.h>

/// An array that grows. Elements move when it grows: keep positions, not addresses.
/// The second parameter, the type that elements are handed in as elsewhere, changes nothing.
template <class T, class Argument = const T&>
class CArray {
  public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(items_.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    bool IsEmpty() const { return items_.empty(); }
    T& ElementAt(INT_PTR index) { return GetAt(index); }
    T& GetAt(INT_PTR index) { return items_[Checked(index)]; }
    const T& GetAt(INT_PTR index) const { return items_[Checked(index)]; }
    T& operator[](INT_PTR index) { return GetAt(index); }
    const T& operator[](INT_PTR index) const { return GetAt(index); }
    void SetAt(INT_PTR index, T value) { GetAt(index) = std::move(value); }
    /// Appends and returns the new element's index.
    INT_PTR Add(T value) {
        items_.push_back(std::move(value));
        return GetSize() - 1;
    }
    /// Returns the index of the first that was added.
    INT_PTR Append(const CArray& other) {
        const INT_PTR first = GetSize();
        const std::size_t count = other.items_.size();
        items_.reserve(items_.size() + count);
        for (std::size_t i = 0; i < count; ++i)
            items_.push_back(other.items_[i]);  // which may be this array's own
        return first;
    }
    void Copy(const CArray& other) { items_ = other.items_; }
    ///@{
    /// Index GetSize() appends; beyond that raises.
    void InsertAt(INT_PTR index, T value) {
        if (index != GetSize()) Checked(index);
        items_.insert(items_.begin() + index, std::move(value));
    }
    void InsertAt(INT_PTR index, T value, INT_PTR count) {
        if (index != GetSize()) Checked(index);
        if (count < 0) AfxThrowInvalidArgException();
        items_.insert(items_.begin() + index, static_cast<std::size_t>(count), value);
    }
    ///@}
    /// The array grows to hold the element, with empty ones before it.
    void SetAtGrow(INT_PTR index, T value) {
        if (index >= GetSize()) SetSize(index + 1);
        SetAt(index, std::move(value));
    }
    /// Later elements move down in order. A range that leaves the array raises and changes nothing.
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        if (index < 0 || count < 0 || index > GetSize() || count > GetSize() - index)
            AfxThrowInvalidArgException();
        items_.erase(items_.begin() + index, items_.begin() + index + count);
    }
    /// Releases the storage too.
    void RemoveAll() { std::vector<T>().swap(items_); }
    void SetSize(INT_PTR size, INT_PTR /*growBy*/ = -1) {
        if (size < 0) AfxThrowInvalidArgException();
        items_.resize(static_cast<std::size_t>(size));
    }
    void FreeExtra() { items_.shrink_to_fit(); }
    T* GetData() { return items_.data(); }
    const T* GetData() const { return items_.data(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

  private:
    std::size_t Checked(INT_PTR index) const {
        if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException();
        return static_cast<std::size_t>(index);
    }
    std::vector<T> items_;
};

using CByteArray = CArray<BYTE>;
using CWordArray = CArray<WORD>;
using CDWordArray = CArray<DWORD>;
using CUIntArray = CArray<UINT>;
using CStringArray = CArray<CString>;
using CPtrArray = CArray<void*, void*>;
