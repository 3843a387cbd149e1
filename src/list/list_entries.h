// The entries of a list: the collection in its order, and fast answers about it. Every answer is what a walk
// of the collection from its head would give.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "list/caption_store.h"
#include "list/cell_search.h"
#include "list/list_layout.h"
#include "list/list_metrics.h"
#include "list/list_node.h"
#include "list/record_state.h"
#include "list/rect_index.h"
#include "list/selection_order.h"

// Records are read when an entry joins and whenever the list itself changes one. The host changes records,
// too, through pointers that it was handed: those are compared with what was last read before each answer, so
// the more entries a host has asked for, the more an answer costs.
//
// Captions are measured when somebody asks for what depends on it. Until then an entry's hit rectangle is
// only known to lie inside another one.
//
// Where memory runs out, std::bad_alloc leaves a call. The collection and its records are whole then, and
// what is derived from them is made anew before the next answer.
class QKListEntries : public std::enable_shared_from_this<QKListEntries> {
  public:
    QKListEntries() = default;
    ~QKListEntries();
    QKListEntries(const QKListEntries&) = delete;
    QKListEntries& operator=(const QKListEntries&) = delete;

    // ---- The collection. It owns the records.

    int Count() const { return static_cast<int>(nodes_.size()); }
    // Up to date and measured; null outside.
    QKListNode* At(int position);
    // As it stands, for those who change records in bulk.
    QKListNode& Node(int position) { return *nodes_[static_cast<std::size_t>(position)]; }
    int PositionOf(const QKListNode& node) const;
    // The first node that holds a record.
    QKListNode* Find(const QKListItem* item);
    // Before the node at `position`, which may be the count. A record that was placed is measured by
    // `measure`; null leaves its state rectangles alone. Without memory nothing changes.
    QKListNode& Insert(QKListItem* item, int position, const QKListMeasure* measure);
    // Takes the node out; the record is its caller's, and its rectangles are up to date.
    QKListItem* Extract(QKListNode& node);
    // Puts another record into a place, and hands it out; the old one is its caller's. Without memory nothing
    // changes.
    void Replace(QKListNode& node, QKListItem* item);
    void Swap(QKListNode& a, QKListNode& b);
    void Release();  // all of them
    static void Release(QKListItem* item);
    // The selected ones, wherever their records stand, and out of the selection. Whether there were any.
    bool ReleaseSelected();

    // The host gets this record and may change it from now on.
    QKListItem* HandOut(QKListNode& node);
    struct HandedOutNode {
        QKListNode* node;
        const QKListItem* record;           // the node's
        std::optional<QKRecordState> seen;  // when it was last read, if it was since
    };
    const std::vector<HandedOutNode>& HandedOut() const { return handedOut_; }
    // The host gets this record to look at: from now on it is never behind.
    const QKListItem* Show(QKListNode& node);

    // ---- Answers

    int NextId();
    std::optional<CRect> OccupantAt(CPoint point);
    QKListNode* FirstMeeting(const CRect& rect);  // by the cell
    std::vector<QKListNode*> HitBy(CPoint point);
    std::vector<QKListNode*> HitBy(const CRect& area);
    // Everything that draws into an area. `metrics`: as the list has them now.
    std::vector<QKListNode*> DrawnIn(const CRect& area, const QKDrawnMetrics& metrics);
    int LowestBottom();  // the largest bottom, never below 0
    int RightmostRight();

    struct InOrder {
        bool operator()(const QKListNode* a, const QKListNode* b) const { return a->order < b->order; }
    };
    using NodeSet = std::set<QKListNode*, InOrder>;
    const NodeSet& Hovered();   // nMouseState is not 0
    const NodeSet& Focused();   // nFocusState is not 1
    const NodeSet& Selected();  // nSelState is not 1

    // ---- Changes of a record by the list

    void SetMouse(QKListNode& node, int state);
    void SetFocus(QKListNode& node, int state);  // also empties the text of the rendered caption
    void SetUnselected(QKListNode& node, int state);
    // After the list changed a record itself.
    void Reread(QKListNode& node);
    void RereadOthers(const QKListNode& node);  // places where the same record stands

    // ---- Layout

    std::optional<CRect> FirstFree(const QKCellGrid& grid, std::int64_t start);
    // Before everything is placed anew: no entry has a place.
    void Unplace();
    // The record was given a cell; its state rectangles follow when they are asked for.
    void Placed(QKListNode& node, const QKListMeasure& measure);
    // Moves every entry, as a new layout of the same cells would; they must all be placed.
    void Offset(CPoint by, const QKListMeasure& measure);
    bool AllPlaced() const { return unplaced_ == 0; }
    // Changes whenever the collection or a cell in it changes otherwise than by Offset.
    std::uint64_t Generation();
    // The last layout of all entries, for who lays them out.
    std::optional<QKListLayout>& LastLayout() { return lastLayout_; }

    // ---- Selection: in the order in which entries were selected; may hold records that are no entries

    bool IsSelected(const QKListItem* item) const { return selection_.Contains(item); }
    void Select(QKListItem* item) { selection_.Add(item); }
    void Deselect(const QKListItem* item) { selection_.Remove(item); }
    // Takes out every entry but those that `stays` names by their nodes; records that are no entries stay.
    void DeselectEntries(const std::function<bool(const QKListNode*)>& stays);
    void ClearSelection() { selection_.Clear(); }

    // ---- Rendered captions

    QKCaptionStore& Captions() { return captions_; }
    void ReleaseCaptions();
    // Every rendered caption is stale, whatever its text.
    void EmptyCaptions() { ++captionEpoch_; }

  private:
    class Change;

    void Sync();
    void Forget();
    void Repair();
    void Rebuild();
    void MoveOriginBack();
    void Settle(QKListNode& node);
    void Resolve(QKListNode& node);
    void Measure(QKListNode& node, const QKListMeasure& measure);
    void MeasureLaterBy(const QKListMeasure& measure);
    void Join(QKListNode& node);
    void Leave(QKListNode& node);
    void Renumber();
    void Move(QKRectIndex& index, QKListNode& node, CRect QKListNode::*rect, const CRect& value);
    void MoveCell(QKListNode& node, const CRect& value);
    CRect HitOf(const QKListNode& node) const;
    void SetRects(QKListNode& node);
    void CountId(int id, int change);
    void StopHandingOut(QKListNode& node);
    void Changed(QKListNode& node);
    void HandOutAll(const QKListItem* item);
    CRect FromOrigin(CRect rect) const;
    CPoint FromOrigin(CPoint point) const;
    CRect ToClient(CRect rect) const;
    void AddToSets(QKListNode& node);
    void TakeFromSets(QKListNode& node);
    void FindExtent();

    std::deque<std::unique_ptr<QKListNode>> nodes_;  // both ends are cheap to change
    std::unordered_multimap<const QKListItem*, QKListNode*> byItem_;
    std::vector<HandedOutNode> handedOut_;
    std::uint64_t lookedIn_ = 0;  // the last QKUninterrupted in which they were compared
    std::unordered_set<QKListNode*> lookedAt_;
    bool stale_ = false;  // what is derived from the records

    CPoint origin_;  // of the rectangles in the nodes, in client pixels
    QKRectIndex cells_{&QKListNode::cell};
    QKRectIndex hits_{&QKListNode::hit};
    QKRectIndex drawn_{&QKListNode::drawn};
    QKCellSearch search_;
    QKListMeasure measureBy_;  // of the entries not yet measured
    QKDrawnMetrics drawnBy_ = {};
    int unmeasured_ = 0;
    int unplaced_ = 0;
    std::uint64_t generation_ = 0;
    std::optional<QKListLayout> lastLayout_;

    std::map<int, int> ids_;  // how many entries have each
    NodeSet hovered_, focused_, selectedFlags_;
    bool extentKnown_ = true;
    CPoint extent_;  // the largest right and bottom of all cells, seen from the origin

    QKSelectionOrder selection_;

    QKCaptionStore captions_;
    std::uint64_t captionEpoch_ = 0;  // grows when all captions become stale
};
