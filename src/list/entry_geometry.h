// Where the entries of a list are: their rectangles, seen from a common origin, and what can be asked by
// place.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "list/cell_search.h"
#include "list/entry_store.h"
#include "list/list_metrics.h"
#include "list/rect_index.h"

namespace qkui {

// Captions are measured when somebody asks for what depends on it. Until then an entry's hit rectangle is
// only known to lie inside another one, its cover. The index over what questions may meet is made in one go
// when the first is asked; where memory runs out, it is made anew at the next.
class EntryGeometry {
  public:
    explicit EntryGeometry(const EntryStore& store) : store_(store) {}

    // ---- Entries that come and go. All rectangles that are handed in or out are in client pixels.

    // Rectangles of an entry that will join; one that is placed and has a cover is measured later.
    void Prepare(Entry& entry, const ListMeasure* measure);
    // As a record says; they count as measured.
    void Prepare(Entry& entry, const EntryRects& rects);
    void Join(Entry& entry);
    void Leave(Entry& entry);
    void Clear();

    // ---- Rectangles

    // The state rectangles of an entry that is not measured yet are no more than its cover.
    EntryRects RectsOf(const Entry& entry) const;
    CRect CellOf(const Entry& entry) const { return ToClient(entry.cell); }
    CPoint Origin() const { return origin_; }
    CRect FromOrigin(CRect rect) const;
    CRect ToClient(CRect rect) const;
    void SetRects(Entry& entry, const EntryRects& rects, Entry::Extent extent);
    // Cell and caption; the state rectangles follow later, or stay what they are without `measure`.
    void Place(Entry& entry, const CRect& cell, const CRect& caption, const ListMeasure* measure);
    void EnsureMeasured(Entry& entry);
    // A record was made from the entry, or for it, and is up to date.
    void MarkMeasured(Entry& entry);
    // Whatever else of an entry decides what questions meet it has changed.
    void UpdateReach(Entry& entry);

    // ---- All entries

    // Takes every entry's place, and the origin back to the client's.
    void Unplace();
    // Moves every entry, as a new layout of the same cells would; they must all be placed.
    void Move(CPoint by, const ListMeasure& measure);
    // Moves every entry that has a place, and leaves its caption as it is. Those without one cost a walk.
    void Scroll(CPoint by);
    bool AllPlaced() const { return unplaced_ == 0; }
    bool NonePlaced() const { return unplaced_ == store_.Count(); }
    // The largest right and bottom of placed cells: meaningful when there is one.
    CPoint End();

    // ---- Questions

    std::optional<CRect> FirstFree(const CellGrid& grid, std::int64_t start);
    std::optional<CRect> OccupantAt(CPoint point);
    // Whatever may have its cell, be hit or draw there, in the entries' order.
    std::vector<Entry*> At(CPoint point);
    std::vector<Entry*> Meeting(const CRect& area);
    // What entries draw follows from these now.
    void SetDrawnBy(const DrawnMetrics& metrics);

    // Grows when the answer to Meeting may be another one.
    std::uint64_t IndexRevision() const { return indexRevision_; }
    void NoteReordered() { ++indexRevision_; }
    // Grows when all pictures of entries may look different.
    std::uint64_t PictureRevision() const { return pictureRevision_; }

  private:
    CPoint FromOrigin(CPoint point) const;
    // Whether it keeps its size when it is seen from the origin.
    bool IsExactFromOrigin(const CRect& rect) const;
    void EnsureExact(const EntryRects& rects);
    void MoveOriginBack();
    void Keep(Entry& entry, const EntryRects& rects);
    bool IsMeasured(const Entry& entry) const;
    void Measure(Entry& entry, const ListMeasure& measure);
    void MeasureLaterBy(const ListMeasure& measure);
    void Occupy(Entry& entry, const CRect& cell);
    void Vacate(const Entry& entry);

    CRect ReachOf(const Entry& entry) const;
    void NeedIndex();
    void DropIndex();

    const EntryStore& store_;
    CPoint origin_;  // of the rectangles in the entries, in client pixels
    bool extentKnown_ = true;
    CPoint extent_;          // the largest right and bottom of all cells, seen from the origin
    ListMeasure measureBy_;  // of the entries not yet measured
    bool someHeld_ = false;  // some entries had a record since there were none
    int unmeasured_ = 0;
    int unplaced_ = 0;
    std::uint64_t layout_ = 0;  // grows when entries move: captions that a host may have changed are measured
    std::uint64_t pictureRevision_ = 0;

    CellSearch search_;
    RectIndex index_;
    bool isIndexed_ = false;
    std::uint64_t indexRevision_ = 0;
    DrawnMetrics drawnBy_ = {};
};

}  // namespace qkui
