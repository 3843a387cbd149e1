// The states of entries and the selection, as they are changed.
#include <tuple>

#include "list/list_entries.h"
#include "list/memory.h"

namespace qkui {

const EntrySet& ListEntries::Hovered() {
    Sync();
    return states_.Hovered();
}

const EntrySet& ListEntries::Focused() {
    Sync();
    return states_.Focused();
}

const EntrySet& ListEntries::Selected() {
    Sync();
    return states_.Selected();
}

std::uint64_t ListEntries::SelectionMark() {
    Sync();
    return states_.SelectionMark();
}

void ListEntries::Restate(Entry& entry, std::int8_t mouse, std::int8_t focus, std::int8_t unselected) {
    if (entry.mouse == mouse && entry.focus == focus && entry.unselected == unselected) return;
    states_.Remove(entry);
    const bool isRefocused = entry.focus != focus;
    entry.mouse = mouse;
    entry.focus = focus;
    entry.unselected = unselected;
    states_.Add(entry);
    entry.ForgetPicture();
    if (isRefocused) geometry_.UpdateReach(entry);
}

void ListEntries::ChangeState(Entry& entry, std::int8_t Entry::*state, int QKListItem::*inRecord,
                              int RecordState::*seen, int value) {
    // Without memory, what a host wrote is found at the next comparison.
    const auto sync = [&] { WithinMemory([&] { SyncFromRecord(entry); }); };
    sync();
    auto [mouse, focus, unselected] = std::tuple(entry.mouse, entry.focus, entry.unselected);
    (state == &Entry::mouse ? mouse : state == &Entry::focus ? focus : unselected) = Entry::State(value);
    if (entry.record) entry.record->*inRecord = records_.Of(entry).seen.*seen = value;
    Restate(entry, mouse, focus, unselected);
    if (entry.record && records_.Of(entry).isShared) sync();
}

void ListEntries::SetMouse(Entry& entry, int state) {
    ChangeState(entry, &Entry::mouse, &QKListItem::nMouseState, &RecordState::mouse, state);
}

void ListEntries::SetFocus(Entry& entry, int state) {
    geometry_.EnsureMeasured(entry);
    captions_.Empty(entry);
    ChangeState(entry, &Entry::focus, &QKListItem::nFocusState, &RecordState::focus, state);
}

void ListEntries::SetUnselected(Entry& entry, int state) {
    ChangeState(entry, &Entry::unselected, &QKListItem::nSelState, &RecordState::unselected, state);
}

// ---- The selection

void ListEntries::SetSelected(Entry& entry, bool selected) {
    if (selected)
        selection_.entries.insert(&entry);
    else if (entry.record)
        Deselect(entry.record);
    else
        selection_.entries.erase(&entry);
    SetUnselected(entry, selected ? 0 : 1);
}

bool ListEntries::IsSelected(const QKListItem* item) const {
    bool isSelected = selection_.others.contains(item);
    records_.ForEachOf(
        item, [&](const Entry& entry) { isSelected = isSelected || selection_.entries.contains(&entry); });
    return isSelected;
}

void ListEntries::Deselect(const QKListItem* item) {
    selection_.others.erase(item);
    records_.ForEachOf(item, [this](const Entry& entry) { selection_.entries.erase(&entry); });
}

void ListEntries::DeselectEntries(const std::function<bool(const Entry*)>& stays) {
    std::erase_if(selection_.entries, [&](const Entry* entry) { return !stays(entry); });
    std::erase_if(selection_.others, [&](const QKListItem* item) {
        const Entry* entry = Find(item);
        return entry && !stays(entry);
    });
}

}  // namespace qkui
