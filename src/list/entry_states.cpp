// Which entries are hovered, focused and selected.
#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

#include "list/list_change.h"

namespace {

// A number of its own for each node, with all bits in use.
std::uint64_t MarkOf(const QKListNode& node) {
    std::uint64_t mark = reinterpret_cast<std::uintptr_t>(&node);
    for (const std::uint64_t factor : {0xBF58476D1CE4E5B9U, 0x94D049BB133111EBU})
        mark = (mark ^ (mark >> 29U)) * factor;
    return mark ^ (mark >> 32U);
}

}  // namespace

void QKListEntries::AddToSets(QKListNode& node) {
    if (node.mouse != 0) hovered_.insert(&node);
    if (node.focus != 1) focused_.insert(&node);
    if (node.unselected != 1) selectedFlags_.insert(&node);
    if (node.unselected == 0) selectionMark_ += MarkOf(node);
}

void QKListEntries::TakeFromSets(QKListNode& node) {
    if (node.mouse != 0) hovered_.erase(&node);
    if (node.focus != 1) focused_.erase(&node);
    if (node.unselected != 1) selectedFlags_.erase(&node);
    if (node.unselected == 0) selectionMark_ -= MarkOf(node);
}

void QKListEntries::Restate(QKListNode& node, std::int8_t mouse, std::int8_t focus, std::int8_t unselected) {
    Change change(*this);
    TakeFromSets(node);
    const bool isRefocused = (node.focus != 1) != (focus != 1);
    node.mouse = mouse;
    node.focus = focus;
    node.unselected = unselected;
    AddToSets(node);
    node.ForgetPicture();
    if (isRefocused) SetReach(node);
    change.Complete();
}

// What is derived from the entry is made anew where it could not be changed.
void QKListEntries::ChangeState(QKListNode& node, std::int8_t QKListNode::*state, int QKListItem::*inRecord,
                                int QKRecordState::*seen, int value) {
    try {
        if (node.record) Pull(node);
        auto [mouse, focus, unselected] = std::tuple(node.mouse, node.focus, node.unselected);
        (state == &QKListNode::mouse   ? mouse
         : state == &QKListNode::focus ? focus
                                       : unselected) = QKListNode::State(value);
        if (node.record) {
            node.record->*inRecord = value;
            HeldOf(node).seen.*seen = value;
        }
        Restate(node, mouse, focus, unselected);
        if (node.record && HeldOf(node).isShared) Pull(node);
    } catch (const std::bad_alloc&) {
        node.*state = QKListNode::State(value);
        if (node.record) node.record->*inRecord = HeldOf(node).seen.*seen = value;
        stale_ = true;
    }
}

void QKListEntries::SetMouse(QKListNode& node, int state) {
    ChangeState(node, &QKListNode::mouse, &QKListItem::nMouseState, &QKRecordState::mouse, state);
}

void QKListEntries::SetFocus(QKListNode& node, int state) {
    Resolve(node);
    EmptyCaption(node);
    ChangeState(node, &QKListNode::focus, &QKListItem::nFocusState, &QKRecordState::focus, state);
}

void QKListEntries::SetUnselected(QKListNode& node, int state) {
    ChangeState(node, &QKListNode::unselected, &QKListItem::nSelState, &QKRecordState::unselected, state);
}

const QKListEntries::NodeSet& QKListEntries::Hovered() {
    Sync();
    return hovered_;
}

const QKListEntries::NodeSet& QKListEntries::Focused() {
    Sync();
    return focused_;
}

const QKListEntries::NodeSet& QKListEntries::Selected() {
    Sync();
    return selectedFlags_;
}

// ---- The selection

void QKListEntries::SetSelected(QKListNode& node, bool selected) {
    if (selected)
        selection_.entries.insert(&node);
    else if (node.record)
        Deselect(node.record);
    else
        selection_.entries.erase(&node);
    SetUnselected(node, selected ? 0 : 1);
}

bool QKListEntries::IsSelected(const QKListItem* item) const {
    if (selection_.others.contains(item)) return true;
    const auto [begin, end] = byItem_.equal_range(item);
    return std::any_of(begin, end, [this](const auto& at) { return selection_.entries.contains(at.second); });
}

void QKListEntries::Select(const QKListItem* item) {
    selection_.others.insert(item);
}

void QKListEntries::Deselect(const QKListItem* item) {
    selection_.others.erase(item);
    ForEachOf(item, [this](QKListNode& node) { selection_.entries.erase(&node); });
}

void QKListEntries::DeselectEntries(const std::function<bool(const QKListNode*)>& stays) {
    std::erase_if(selection_.entries, [&](const QKListNode* node) { return !stays(node); });
    std::erase_if(selection_.others, [&](const QKListItem* item) {
        const QKListNode* node = Find(item);
        return node && !stays(node);
    });
}
