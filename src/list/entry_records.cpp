// Between entries and the records that hosts hold of them.
#include <utility>

#include "list/list_entries.h"
#include "list/uninterrupted.h"

namespace qkui {

QKListItem* ListEntries::Expose(Entry& entry, bool toChange) {
    if (entry.record) {
        SyncRecord(entry);
    } else {
        geometry_.EnsureMeasured(entry);
        OwnedRecord record = entry.MakeRecord();
        entry.Look();
        records_.Prepare(record.get(), entry);
        entry.GiveTo(*record.release(), captions_.Epoch());
        records_.Add(entry);
        captions_.MarkWritten(entry);
        geometry_.MarkMeasured(entry);
        WriteRecord(entry);
        geometry_.UpdateReach(entry);
    }
    records_.NoteLately(entry, [this](Entry& old) { SyncFromRecord(old); });
    entry.mayChange = entry.mayChange || toChange;
    return entry.record;
}

// Once in a stretch in which no host can have written anything.
void ListEntries::Sync() {
    const std::uint64_t stretch = Uninterrupted::Current();
    if (stretch != 0 && stretch == syncedIn_) return;
    records_.Compare([this](Entry& entry) { SyncFromRecord(entry); });
    syncedIn_ = stretch;
}

void ListEntries::SyncInTurn() {
    records_.CompareInTurn([this](Entry& entry) { SyncFromRecord(entry); });
}

void ListEntries::SyncAll() {
    records_.CompareAll([this](Entry& entry) { SyncFromRecord(entry); });
}

void ListEntries::SyncRecord(Entry& entry) {
    SyncFromRecord(entry);
    WriteRecord(entry);
}

void ListEntries::SyncFromRecord(Entry& entry) {
    if (!entry.record) return;
    SyncOne(entry);
    if (records_.Of(entry).isShared) records_.ForEachOf(entry.record, [this](Entry& at) { SyncOne(at); });
}

void ListEntries::SyncOne(Entry& entry) {
    const RecordState now(*entry.record);
    const RecordState seen = records_.Of(entry).seen;
    if (now == seen) return;
    if (now.id != seen.id) {
        ids_.Remove(entry.id);
        entry.id = now.id;
        ids_.Add(entry.id);
    }
    const auto state = [](int is, int was, std::int8_t known) {
        return is != was ? Entry::State(is) : known;
    };
    if (now.mouse != seen.mouse || now.focus != seen.focus || now.unselected != seen.unselected)
        Restate(entry, state(now.mouse, seen.mouse, entry.mouse), state(now.focus, seen.focus, entry.focus),
                state(now.unselected, seen.unselected, entry.unselected));
    if (entry.focus != 1 || now.rects != seen.rects) geometry_.EnsureMeasured(entry);
    EntryRects rects = RectsOf(entry);
    Entry::Extent extent = entry.extent;
    for (CRect EntryRects::*rect :
         {&EntryRects::cell, &EntryRects::caption, &EntryRects::hit, &EntryRects::focus}) {
        if (now.rects.*rect == seen.rects.*rect) continue;
        rects.*rect = now.rects.*rect;
        if (rect == &EntryRects::cell || rect == &EntryRects::caption)
            ++generation_;
        else
            extent = Entry::Extent::kKnown;
    }
    geometry_.SetRects(entry, rects, extent);
    records_.Of(entry).seen = now;
}

// Others that have the same record find out by it.
void ListEntries::WriteRecord(Entry& entry) {
    geometry_.EnsureMeasured(entry);
    const EntryRects rects = RectsOf(entry);
    HeldRecords::Held& held = records_.Of(entry);
    QKListItem& record = *held.item;
    record.rcItem = rects.cell;
    record.rcText = rects.caption;
    record.rcMState = rects.hit;
    record.rcFState = rects.focus;
    held.seen.rects = rects;
    captions_.WriteTo(entry);
    if (!held.isShared) return;
    records_.ForEachOf(&record, [&](Entry& at) {
        if (&at != &entry) SyncOne(at);
    });
}

void ListEntries::WriteExposed() {
    records_.ForEachLooked([this](Entry& entry) { WriteRecord(entry); });
}

}  // namespace qkui
