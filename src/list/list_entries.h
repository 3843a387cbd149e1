// The entries of a list: what changes them, and fast answers about them. Every answer is what a walk of the
// collection from its head would give.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "list/caption_cache.h"
#include "list/entry_geometry.h"
#include "list/entry_selection.h"
#include "list/entry_states.h"
#include "list/entry_store.h"
#include "list/frame_cache.h"
#include "list/held_records.h"
#include "list/icon_pool.h"
#include "list/identifiers.h"
#include "list/list_layout.h"

namespace qkui {

// The images of the frames around a hovered, a pressed and a selected entry.
using DrawnFrames = std::array<FrameRevisions, 3>;

// Ties together the parts, each of which owns its state: the store, the geometry, the states, the selection,
// the captions, and the records that hosts hold.
//
// An entry's record is made when a host asks for the entry (Expose), and may be written to by the host from
// then on. What differs in a record from when it was last compared, the host wrote, and the entry takes it
// over (SyncFromRecord). What the list finds out is written into records before a host gets them, and into
// those it may be looking at. Records are compared before each answer, as HeldRecords says.
//
// Where memory runs out, std::bad_alloc leaves a call. The collection and its entries are whole then.
class ListEntries {
  public:
    ListEntries() = default;
    ~ListEntries() { Release(); }
    ListEntries(const ListEntries&) = delete;
    ListEntries& operator=(const ListEntries&) = delete;

    // ---- The collection. It owns the entries and their records.

    int Count() const { return store_.Count(); }
    // Null outside. Its record, if any, was compared.
    Entry* At(int position);
    // As it stands, for those who change entries in bulk.
    Entry& EntryAt(int position) { return store_[position]; }
    int PositionOf(const Entry& entry) const { return store_.PositionOf(entry); }
    // The first entry that has a record, which was compared.
    Entry* Find(const QKListItem* item);
    IconPool& Icons() { return icons_; }
    // Before the entry at `position`, which may be the count. Its rectangles are in client pixels; one that
    // was placed is measured by `measure`. Without memory nothing changes.
    void Insert(std::unique_ptr<Entry> entry, int position, const ListMeasure* measure);
    // Takes the entry out; the record, if it has one, is its caller's.
    void Extract(Entry& entry);
    // Puts a host's record into a place. The record that was there is its caller's. Without memory nothing
    // changes.
    void Replace(Entry& entry, QKListItem* item);
    void Swap(Entry& a, Entry& b);
    void Release();  // all of them
    // The selected ones, wherever their records stand, and out of the selection. Whether there were any.
    bool ReleaseSelected();
    int NextId();

    // ---- Records

    HeldRecords& Records() { return records_; }
    // The host gets this record, up to date, and may change it from now on, unless it may only read it.
    QKListItem* Expose(Entry& entry, bool toChange = true);
    // What the record says is the entry's, and that of all places where it stands.
    void SyncFromRecord(Entry& entry);
    // Both ways: the record is up to date.
    void SyncRecord(Entry& entry);
    void SyncAll();
    // A frame or a layout begins: some records more.
    void SyncInTurn();

    // ---- Questions by place, in client pixels

    EntryRects RectsOf(const Entry& entry) const { return geometry_.RectsOf(entry); }
    CRect CellOf(const Entry& entry) const { return geometry_.CellOf(entry); }
    bool IsOccupied(CPoint point);
    Entry* FirstMeeting(const CRect& rect);  // by the cell
    std::vector<Entry*> HitBy(CPoint point);
    std::vector<Entry*> HitBy(const CRect& area);
    // Everything that draws into an area, or has its cell there, in drawing order: those with the focus above
    // all others. `metrics` and `frames`: as the list has them now. Valid until entries
    // change.
    const std::vector<Entry*>& DrawnIn(const CRect& area, const DrawnMetrics& metrics,
                                       const DrawnFrames& frames);
    std::optional<CPoint> ContentEnd();  // the largest right and bottom of placed cells
    int LowestBottom();                  // the largest bottom, never below 0
    int RightmostRight();

    // ---- States

    const EntrySet& Hovered();
    const EntrySet& Focused();
    const EntrySet& Selected();
    std::uint64_t SelectionMark();
    void SetMouse(Entry& entry, int state);
    void SetFocus(Entry& entry, int state);  // also empties the text of the rendered caption
    void SetUnselected(Entry& entry, int state);
    // The flag, and whether the entry is in the selection.
    void SetSelected(Entry& entry, bool selected);

    bool IsSelected(const QKListItem* item) const;
    void Select(const QKListItem* item) { selection_.others.insert(item); }
    void Deselect(const QKListItem* item);
    // Takes out every entry but those that `stays` names; records that are no entries stay.
    void DeselectEntries(const std::function<bool(const Entry*)>& stays);
    void ClearSelection() { selection_.Clear(); }

    // ---- Layout

    std::optional<CRect> FirstFree(const CellGrid& grid, std::int64_t start);
    // Before everything is placed anew: no entry has a place. Then each gets one, and the layout ends.
    void Unplace();
    void Place(Entry& entry, const CRect& cell, const CRect& caption, const ListMeasure* measure);
    void EndLayout() { WriteExposed(); }
    // See EntryGeometry.
    void Move(CPoint by, const ListMeasure& measure);
    void Scroll(CPoint by);
    bool AllPlaced() const { return geometry_.AllPlaced(); }
    // Captions measure differently now; entries stay where they are.
    void MeasureAnew(const ListMeasure& measure);
    // Changes whenever the collection, or a cell or caption in it, changes otherwise than by Move and Scroll.
    std::uint64_t Generation();
    // The last layout of all entries, for who lays them out.
    std::optional<ListLayout>& LastLayout() { return lastLayout_; }

    // ---- Pictures of entries, for who describes frames

    struct Picture {
        std::uint64_t number;  // equal numbers and places: equal pictures
        CPoint place;
        CRect touched;  // client pixels
    };
    // Of an entry that DrawnIn found and that looks as it did; nothing where it has to be described.
    std::optional<Picture> KnownPicture(const Entry& entry) const;
    // The entry was described, with icon and caption as they are. Nothing where its picture may become
    // another one without a change of the entry.
    std::optional<Picture> KeepPicture(Entry& entry, const CRect& touched);
    CaptionCache& Captions() { return captions_; }
    void ReleaseCaptions() { captions_.ReleaseAll(store_); }

  private:
    void Sync();
    void SyncOne(Entry& entry);
    void WriteRecord(Entry& entry);
    void WriteExposed();
    void Join(Entry& entry);
    void Leave(Entry& entry);
    std::vector<Entry*> Meeting(const CRect& area);
    void SyncMany(const std::vector<Entry*>& entries);
    void Restate(Entry& entry, std::int8_t mouse, std::int8_t focus, std::int8_t unselected);
    void ChangeState(Entry& entry, std::int8_t Entry::*state, int QKListItem::*inRecord,
                     int RecordState::*seen, int value);
    // Grows when the picture of the entry, in the state that it is in, may look different.
    std::uint64_t PictureRevision(const Entry& entry) const {
        return geometry_.PictureRevision() + captions_.Revision() + (entry.IsUsual() ? 0 : framesRevision_);
    }

    EntryStore store_;
    EntryGeometry geometry_{store_};
    EntryStates states_{store_};
    EntrySelection selection_;
    HeldRecords records_;
    CaptionCache captions_;
    IconPool icons_;
    Identifiers ids_;

    std::uint64_t syncedIn_ = 0;  // the last Uninterrupted in which records were compared
    std::uint64_t generation_ = 0;
    std::optional<ListLayout> lastLayout_;
    DrawnFrames frames_ = {};
    std::uint64_t framesRevision_ = 0;  // grows with another frames_
    // What DrawnIn answered last: for the largest area, and for a part of it.
    struct Drawn {
        CRect area;
        CPoint origin;
        std::uint64_t revision = 0;
        std::vector<Entry*> inOrder, asDrawn;
        void Sort();
    };
    bool IsCurrent(const Drawn& drawn) const;
    Drawn whole_, part_;
};

}  // namespace qkui
