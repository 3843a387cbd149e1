#include "list/list_entries.h"

#include <algorithm>
#include <utility>

namespace qkui {

// ---- The collection

Entry* ListEntries::At(int position) {
    if (position < 0 || position >= Count()) return nullptr;
    SyncFromRecord(store_[position]);
    return &store_[position];
}

Entry* ListEntries::Find(const QKListItem* item) {
    Entry* first = nullptr;
    records_.ForEachOf(item, [&](Entry& entry) {
        if (!first || entry.order < first->order) first = &entry;
    });
    if (first) SyncFromRecord(*first);
    return first;
}

void ListEntries::Insert(std::unique_ptr<Entry> entry, int position, const ListMeasure* measure) {
    geometry_.Prepare(*entry, measure);
    Join(store_.Insert(std::move(entry), position));
}

void ListEntries::Extract(Entry& entry) {
    Leave(entry);
    store_.Erase(entry);
}

void ListEntries::Replace(Entry& entry, QKListItem* item) {
    // Where it stands already: what one place does to it, the others must see.
    bool isShared = false;
    records_.ForEachOf(item, [&](Entry& other) {
        SyncRecord(other);
        isShared = isShared || &other != &entry;
    });
    auto look = std::make_unique<EntryLook>();
    if (entry.record && selection_.entries.contains(&entry)) selection_.others.insert(entry.record);
    records_.Prepare(item, entry);

    Leave(entry);
    entry.TakeFrom(item);
    entry.look = std::move(look);
    records_.Add(entry);
    captions_.MarkWritten(entry);
    if (isShared) records_.ForEachOf(item, [&](Entry& at) { records_.Share(at); });
    geometry_.Prepare(entry, records_.Of(entry).seen.rects);
    Join(entry);
}

// The entries change places, and take all that is known of them with them.
void ListEntries::Swap(Entry& a, Entry& b) {
    states_.Remove(a);
    states_.Remove(b);
    store_.Swap(a, b);
    geometry_.NoteReordered();
    ++generation_;
    states_.Add(a);
    states_.Add(b);
}

void ListEntries::Release() {
    selection_.Clear();
    captions_.Clear();
    records_.Release();
    store_.Clear();
    icons_.Clear();
    geometry_.Clear();
    ids_.Clear();
    states_.Clear();
    ++generation_;
}

// In one go, whatever number they are: taking out one by one costs each time what lies behind it.
bool ListEntries::ReleaseSelected() {
    SyncAll();
    const auto leaves = [](const Entry& entry) { return entry.unselected == 0; };
    std::vector<Entry*> leaving;
    for (Entry* entry : states_.Selected())
        if (leaves(*entry)) leaving.push_back(entry);
    std::vector<QKListItem*> records;
    for (Entry* entry : leaving)
        if (entry->record) records.push_back(entry->record);
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    for (Entry* entry : leaving)
        Leave(*entry);
    store_.EraseIf(leaves);
    for (QKListItem* record : records) {
        selection_.others.erase(record);
        ReleaseRecord()(record);
    }
    return !leaving.empty();
}

void ListEntries::Join(Entry& entry) {
    ids_.Add(entry.id);
    states_.Add(entry);
    geometry_.Join(entry);
    ++generation_;
}

void ListEntries::Leave(Entry& entry) {
    selection_.entries.erase(&entry);
    ids_.Remove(entry.id);
    states_.Remove(entry);
    geometry_.Leave(entry);
    if (entry.record) records_.Remove(entry);
    captions_.Forget(entry);
    ++generation_;
}

int ListEntries::NextId() {
    Sync();
    const std::optional<int> largest = ids_.Largest([this](auto visit) {
        for (const auto& entry : store_)
            visit(entry->id);
    });
    return largest ? static_cast<int>(static_cast<unsigned>(*largest) + 1U) : 0;
}

// ---- Layout

std::optional<CRect> ListEntries::FirstFree(const CellGrid& grid, std::int64_t start) {
    Sync();
    return geometry_.FirstFree(grid, start);
}

void ListEntries::Unplace() {
    SyncAll();
    geometry_.Unplace();
    ++generation_;
}

void ListEntries::Place(Entry& entry, const CRect& cell, const CRect& caption, const ListMeasure* measure) {
    geometry_.Place(entry, cell, caption, measure);
    ++generation_;
    if (entry.record && records_.Of(entry).isShared) WriteRecord(entry);
}

void ListEntries::Move(CPoint by, const ListMeasure& measure) {
    geometry_.Move(by, measure);
    WriteExposed();
}

// Records that the host may be looking at are brought there at once.
void ListEntries::Scroll(CPoint by) {
    Sync();
    geometry_.Scroll(by);
    if (lastLayout_) lastLayout_->corner.Offset(by);
    WriteExposed();
}

void ListEntries::MeasureAnew(const ListMeasure& measure) {
    SyncAll();
    for (const auto& entry : store_) {
        if (!entry->placed) continue;
        const EntryRects rects = RectsOf(*entry);
        Place(*entry, rects.cell, rects.caption, &measure);
    }
    WriteExposed();
}

std::uint64_t ListEntries::Generation() {
    Sync();
    return generation_;
}

}  // namespace qkui
