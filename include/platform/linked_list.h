/// @file
/// Lists whose elements keep their addresses, walked by positions.
#pragma once

#include <cstddef>

#include <platform/collections.h>

/// A place in a collection: null behind the last element. It stays good until its element is removed.
struct PositionTag;
using POSITION = PositionTag*;

/// A null position raises CInvalidArgException, as do the ends of an empty list.
template <class T, class Argument = const T&>
class CList {
  public:
    CList() = default;
    ~CList() { RemoveAll(); }
    CList(const CList&) = delete;
    CList& operator=(const CList&) = delete;

    INT_PTR GetCount() const { return count_; }
    INT_PTR GetSize() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }
    T& GetHead() { return Checked(Of(head_))->value; }
    const T& GetHead() const { return Checked(Of(head_))->value; }
    T& GetTail() { return Checked(Of(tail_))->value; }
    const T& GetTail() const { return Checked(Of(tail_))->value; }

    POSITION AddHead(Argument value) { return Of(Link(value, nullptr, head_)); }
    POSITION AddTail(Argument value) { return Of(Link(value, tail_, nullptr)); }
    POSITION InsertBefore(POSITION at, Argument value) {
        Node* const node = Checked(at);
        return Of(Link(value, node->previous, node));
    }
    POSITION InsertAfter(POSITION at, Argument value) {
        Node* const node = Checked(at);
        return Of(Link(value, node, node->next));
    }

    POSITION GetHeadPosition() const { return Of(head_); }
    POSITION GetTailPosition() const { return Of(tail_); }
    ///@{
    /// The element at a position, which moves on (back).
    T& GetNext(POSITION& at) { return Walk(at, &Node::next); }
    const T& GetNext(POSITION& at) const { return Walk(at, &Node::next); }
    ///@}
    T& GetPrev(POSITION& at) { return Walk(at, &Node::previous); }
    const T& GetPrev(POSITION& at) const { return Walk(at, &Node::previous); }
    T& GetAt(POSITION at) { return Checked(at)->value; }
    const T& GetAt(POSITION at) const { return Checked(at)->value; }
    void SetAt(POSITION at, Argument value) { Checked(at)->value = value; }
    /// Null when there is none, or `index` lies outside.
    POSITION Find(Argument value, POSITION after = nullptr) const {
        Node* node = after ? Checked(after)->next : head_;
        while (node && !(node->value == value))
            node = node->next;
        return Of(node);
    }
    POSITION FindIndex(INT_PTR index) const {
        Node* node = index < 0 ? nullptr : head_;
        while (node && index-- > 0)
            node = node->next;
        return Of(node);
    }

    void RemoveAt(POSITION at) {
        Node* const node = Checked(at);
        (node->previous ? node->previous->next : head_) = node->next;
        (node->next ? node->next->previous : tail_) = node->previous;
        --count_;
        delete node;
    }
    T RemoveHead() { return Take(head_); }
    T RemoveTail() { return Take(tail_); }
    void RemoveAll() {
        while (head_)
            RemoveAt(Of(head_));
    }

  private:
    struct Node {
        T value;
        Node* previous;
        Node* next;
    };

    static POSITION Of(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* Checked(POSITION at) {
        if (!at) AfxThrowInvalidArgException();
        return reinterpret_cast<Node*>(at);
    }
    static T& Walk(POSITION& at, Node* Node::*step) {
        Node* const node = Checked(at);
        at = Of(node->*step);
        return node->value;
    }
    Node* Link(Argument value, Node* previous, Node* next) {
        Node* const node = new Node{value, previous, next};
        (previous ? previous->next : head_) = node;
        (next ? next->previous : tail_) = node;
        ++count_;
        return node;
    }
    T Take(Node* node) {
        T value = std::move(Checked(Of(node))->value);
        RemoveAt(Of(node));
        return value;
    }

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
    INT_PTR count_ = 0;
};

using CPtrList = CList<void*, void*>;
using CStringList = CList<CString>;
