#include "list/list_entries.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include <platform/gdi.h>

#include "items/arithmetic.h"

namespace {

constexpr std::uint64_t kOrderStep = std::uint64_t{1} << 32U;

// Whether a rectangle keeps its size when it is seen from another origin.
bool IsNear(const CRect& rect) {
    constexpr int kNear = 1 << 30;
    const auto near = [](int edge) { return edge > -kNear && edge < kNear; };
    return near(rect.left) && near(rect.top) && near(rect.right) && near(rect.bottom);
}

}  // namespace

// What is derived from the records is stale from here on, until the change is complete.
class QKListEntries::Change {
  public:
    explicit Change(QKListEntries& entries) : stale_(entries.stale_), before_(entries.stale_) {
        stale_ = true;
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    void Complete() { stale_ = before_; }

  private:
    bool& stale_;
    bool before_;
};

QKListEntries::~QKListEntries() {
    Release();
}

// ---- The collection

void QKListEntries::Release(QKListItem* item) {
    delete std::exchange(item->pImage, nullptr);
    delete std::exchange(item->pImage2, nullptr);
    delete std::exchange(item->pAlphaImage, nullptr);
    if (item->hIcon) DestroyIcon(std::exchange(item->hIcon, HICON()));
    delete std::exchange(item->pTextImage, nullptr);
    delete item;
}

// A record that stands in several places is freed once.
void QKListEntries::Release() {
    ClearSelection();
    captions_.Clear();
    std::sort(nodes_.begin(), nodes_.end(), [](const auto& a, const auto& b) { return a->item < b->item; });
    const QKListItem* last = nullptr;
    for (const auto& node : nodes_)
        if (node->item != last) {
            last = node->item;
            Release(node->item);
        }
    nodes_.clear();
    handedOut_.clear();
    lookedAt_.clear();
    Forget();
}

// In one go, whatever number they are: taking out one by one costs each time what lies behind it.
bool QKListEntries::ReleaseSelected() {
    std::unordered_set<QKListItem*> released;
    for (const QKListNode* node : Selected())
        if (node->unselected == 0) released.insert(node->item);
    if (released.empty()) return false;
    const auto leaves = [&](const auto& node) { return released.contains(node->item); };
    Change change(*this);
    for (const auto& node : nodes_)
        if (leaves(node)) Leave(*node);
    std::erase_if(nodes_, leaves);
    change.Complete();
    for (QKListItem* item : released) {
        Deselect(item);
        Release(item);
    }
    return true;
}

// Nothing is derived from any record.
void QKListEntries::Forget() {
    byItem_.clear();
    cells_.Clear();
    hits_.Clear();
    drawn_.Clear();
    search_.Clear();
    ids_.clear();
    hovered_.clear();
    focused_.clear();
    selectedFlags_.clear();
    unmeasured_ = unplaced_ = 0;
    extentKnown_ = false;
    stale_ = false;
    ++generation_;
}

void QKListEntries::Repair() {
    if (stale_) Rebuild();
}

void QKListEntries::Rebuild() {
    Forget();
    Change change(*this);
    for (const auto& node : nodes_) {
        Settle(*node);
        node->cell = node->hit = node->drawn = CRect();
        node->placed = true;
        Join(*node);
    }
    change.Complete();
}

// Rectangles far away are exact only as the records have them.
void QKListEntries::MoveOriginBack() {
    for (const auto& node : nodes_)
        Settle(*node);
    origin_ = CPoint();
    for (const auto& node : nodes_)
        node->origin = origin_;
    Rebuild();
}

QKListNode* QKListEntries::At(int position) {
    if (position < 0 || position >= Count()) return nullptr;
    Repair();
    QKListNode& node = *nodes_[static_cast<std::size_t>(position)];
    if (node.handedOut) Reread(node);
    Settle(node);
    Resolve(node);
    return &node;
}

int QKListEntries::PositionOf(const QKListNode& node) const {
    const auto found = std::lower_bound(
        nodes_.begin(), nodes_.end(), node.order,
        [](const std::unique_ptr<QKListNode>& at, std::uint64_t order) { return at->order < order; });
    return static_cast<int>(found - nodes_.begin());
}

QKListNode* QKListEntries::Find(const QKListItem* item) {
    Repair();
    const auto [begin, end] = byItem_.equal_range(item);
    QKListNode* first = nullptr;
    for (auto at = begin; at != end; ++at)
        if (!first || at->second->order < first->order) first = at->second;
    return first;
}

QKListNode& QKListEntries::Insert(QKListItem* item, int position, const QKListMeasure* measure) {
    Repair();
    const auto order = [&](int at) { return nodes_[static_cast<std::size_t>(at)]->order; };
    const auto before = [&] { return position == 0 ? 0 : order(position - 1); };
    if (position < Count() && order(position) - before() < 2) Renumber();
    auto node = std::make_unique<QKListNode>();
    node->item = item;
    node->origin = origin_;
    node->captionEpoch = captionEpoch_;
    node->order = position == Count() ? before() + kOrderStep : before() + (order(position) - before()) / 2;
    if (measure && QKHasHitCover(*measure, *item)) {
        MeasureLaterBy(*measure);
        node->measured = false;
    } else if (measure) {
        QKMeasureFocus(*measure, *item);
        QKMeasureHit(*measure, *item);
    }
    QKListNode& added = *node;
    nodes_.insert(nodes_.begin() + position, std::move(node));
    try {
        Join(added);
    } catch (const std::bad_alloc&) {
        Forget();
        stale_ = true;
        nodes_.erase(nodes_.begin() + position);
        throw;
    }
    return added;
}

void QKListEntries::Renumber() {
    std::uint64_t order = 0;
    for (const auto& node : nodes_)
        node->order = order += kOrderStep;
}

QKListItem* QKListEntries::Extract(QKListNode& node) {
    Settle(node);
    Leave(node);
    QKListItem* item = node.item;
    nodes_.erase(nodes_.begin() + PositionOf(node));
    return item;
}

void QKListEntries::Replace(QKListNode& node, QKListItem* item) {
    HandOutAll(item);  // where it stands already: what one place does to it, the others must see
    handedOut_.reserve(handedOut_.size() + 1);
    Leave(node);
    const std::uint64_t order = node.order;
    node = QKListNode();
    node.item = item;
    node.order = order;
    node.origin = origin_;
    node.captionEpoch = captionEpoch_;
    try {
        Join(node);
    } catch (const std::bad_alloc&) {
        stale_ = true;
    }
    HandOut(node);
}

// The nodes change places, and take all that is known of their records with them.
void QKListEntries::Swap(QKListNode& a, QKListNode& b) {
    Change change(*this);
    TakeFromSets(a);
    TakeFromSets(b);
    std::swap(nodes_[static_cast<std::size_t>(PositionOf(a))],
              nodes_[static_cast<std::size_t>(PositionOf(b))]);
    std::swap(a.order, b.order);
    ++generation_;
    AddToSets(a);
    AddToSets(b);
    change.Complete();
}

void QKListEntries::Join(QKListNode& node) {
    Change change(*this);
    byItem_.emplace(node.item, &node);
    const QKListItem& entry = *node.item;
    node.id = entry.nID;
    node.mouse = entry.nMouseState;
    node.focus = entry.nFocusState;
    node.unselected = entry.nSelState;
    unmeasured_ += !node.measured;
    CountId(node.id, 1);
    AddToSets(node);
    SetRects(node);
    ++generation_;
    change.Complete();
}

void QKListEntries::Leave(QKListNode& node) {
    const auto [begin, end] = byItem_.equal_range(node.item);
    byItem_.erase(std::find_if(begin, end, [&](const auto& at) { return at.second == &node; }));
    CountId(node.id, -1);
    TakeFromSets(node);
    MoveCell(node, CRect());
    Move(hits_, node, &QKListNode::hit, CRect());
    Move(drawn_, node, &QKListNode::drawn, CRect());
    extentKnown_ = false;
    unmeasured_ -= !node.measured;
    unplaced_ -= !node.placed;
    StopHandingOut(node);
    captions_.Forget(node);
    ++generation_;
}

void QKListEntries::AddToSets(QKListNode& node) {
    if (node.mouse != 0) hovered_.insert(&node);
    if (node.focus != 1) focused_.insert(&node);
    if (node.unselected != 1) selectedFlags_.insert(&node);
}

void QKListEntries::TakeFromSets(QKListNode& node) {
    hovered_.erase(&node);
    focused_.erase(&node);
    selectedFlags_.erase(&node);
}

void QKListEntries::CountId(int id, int change) {
    if ((ids_[id] += change) == 0) ids_.erase(id);
}

void QKListEntries::Reread(QKListNode& node) {
    Settle(node);
    const QKListItem& entry = *node.item;
    Change change(*this);
    if (entry.nID != node.id) {
        CountId(std::exchange(node.id, entry.nID), -1);
        CountId(node.id, 1);
    }
    if (entry.nMouseState != node.mouse || entry.nFocusState != node.focus ||
        entry.nSelState != node.unselected) {
        TakeFromSets(node);
        node.mouse = entry.nMouseState;
        node.focus = entry.nFocusState;
        node.unselected = entry.nSelState;
        AddToSets(node);
    }
    const CRect cell = node.cell;
    SetRects(node);
    if (!(cell == node.cell)) ++generation_;
    if (node.handedOut) handedOut_[node.handedOutAt].seen = QKRecordState(entry);
    change.Complete();
}

void QKListEntries::RereadOthers(const QKListNode& node) {
    const auto [begin, end] = byItem_.equal_range(node.item);
    for (auto at = begin; at != end; ++at)
        if (at->second != &node) Reread(*at->second);
}

// ---- Rectangles

CRect QKListEntries::FromOrigin(CRect rect) const {
    rect.OffsetRect(-origin_.x, -origin_.y);
    return rect;
}

CPoint QKListEntries::FromOrigin(CPoint point) const {
    point.Offset(-origin_.x, -origin_.y);
    return point;
}

CRect QKListEntries::ToClient(CRect rect) const {
    rect.OffsetRect(origin_.x, origin_.y);
    return rect;
}

// Brings the record to where its entry is, once for all places where it stands.
void QKListEntries::Settle(QKListNode& node) {
    if (!(node.origin == origin_)) {
        QKOffset(*node.item, CPoint(origin_.x - node.origin.x, origin_.y - node.origin.y));
        node.origin = origin_;
        const auto [begin, end] = byItem_.equal_range(node.item);
        for (auto at = begin; at != end; ++at)
            at->second->origin = origin_;
    }
    if (node.captionEpoch != captionEpoch_) {
        node.item->szTextCath[0] = u'\0';
        node.captionEpoch = captionEpoch_;
    }
}

void QKListEntries::Resolve(QKListNode& node) {
    if (!node.measured) Measure(node, measureBy_);
}

// What the host holds is measured with every layout; most captions are the same each time.
void QKListEntries::Measure(QKListNode& node, const QKListMeasure& measure) {
    Settle(node);
    if ((node.handedOut || node.lookedAt) && !node.extents)
        node.extents = std::make_unique<QKCaptionExtents>();
    QKMeasureFocus(measure, *node.item, node.extents.get());
    QKMeasureHit(measure, *node.item, node.extents.get());
    unmeasured_ -= !node.measured;
    node.measured = true;
    SetRects(node);
}

CRect QKListEntries::HitOf(const QKListNode& node) const {
    return node.measured ? node.item->rcMState : QKHitCover(measureBy_.metrics, *node.item);
}

void QKListEntries::Move(QKRectIndex& index, QKListNode& node, CRect QKListNode::*rect, const CRect& value) {
    if (node.*rect == value) return;
    index.Remove(node);
    node.*rect = value;
    index.Insert(node);
}

void QKListEntries::MoveCell(QKListNode& node, const CRect& value) {
    extent_ = CPoint(std::max(extent_.x, value.right), std::max(extent_.y, value.bottom));
    if (node.cell == value) return;
    search_.Forget(ToClient(node.cell));
    // The one that reached farthest may have gone.
    if (node.cell.right >= extent_.x || node.cell.bottom >= extent_.y) extentKnown_ = false;
    Move(cells_, node, &QKListNode::cell, value);
}

void QKListEntries::SetRects(QKListNode& node) {
    const QKListItem& entry = *node.item;
    const bool placed = QKIsPlaced(entry);
    const CRect hit = HitOf(node);
    const CRect drawn = placed ? QKDrawnBounds(drawnBy_, entry, hit) : CRect();
    if (!(origin_ == CPoint()) && !(IsNear(entry.rcItem) && IsNear(hit) && IsNear(drawn))) {
        MoveOriginBack();  // and with it this one
        return;
    }
    Change change(*this);
    MoveCell(node, FromOrigin(entry.rcItem));
    unplaced_ += static_cast<int>(node.placed) - static_cast<int>(placed);
    node.placed = placed;
    Move(hits_, node, &QKListNode::hit, FromOrigin(hit));
    Move(drawn_, node, &QKListNode::drawn, placed ? FromOrigin(drawn) : CRect());
    change.Complete();
}

// ---- Answers

int QKListEntries::NextId() {
    Sync();
    return ids_.empty() ? 0 : static_cast<int>(static_cast<unsigned>(ids_.rbegin()->first) + 1U);
}

std::optional<CRect> QKListEntries::OccupantAt(CPoint point) {
    Sync();
    const QKListNode* node = cells_.AnyAt(FromOrigin(point));
    return node ? std::optional(ToClient(node->cell)) : std::nullopt;
}

QKListNode* QKListEntries::FirstMeeting(const CRect& rect) {
    Sync();
    const std::vector<QKListNode*> nodes = cells_.Meeting(FromOrigin(rect));
    return nodes.empty() ? nullptr : nodes.front();
}

std::vector<QKListNode*> QKListEntries::HitBy(CPoint point) {
    Sync();
    std::vector<QKListNode*> nodes = hits_.At(FromOrigin(point));
    std::erase_if(nodes, [&](QKListNode* node) {
        Resolve(*node);
        return !node->hit.PtInRect(FromOrigin(point));
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::HitBy(const CRect& area) {
    Sync();
    std::vector<QKListNode*> nodes = hits_.Meeting(FromOrigin(area));
    std::erase_if(nodes, [&](QKListNode* node) {
        Resolve(*node);
        CRect common;
        return !common.IntersectRect(node->hit, FromOrigin(area));
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::DrawnIn(const CRect& area, const QKDrawnMetrics& metrics) {
    Sync();
    if (!(metrics == drawnBy_)) {
        drawnBy_ = metrics;
        for (const auto& node : nodes_) {
            Settle(*node);
            SetRects(*node);
        }
    }
    std::vector<QKListNode*> nodes = drawn_.Meeting(FromOrigin(area));
    for (QKListNode* node : nodes) {
        Settle(*node);
        if (node->mouse != 0 || node->focus != 1 || node->unselected != 1) Resolve(*node);
    }
    return nodes;
}

void QKListEntries::FindExtent() {
    Sync();
    if (extentKnown_) return;
    constexpr LONG kLeast = std::numeric_limits<LONG>::min();
    extent_ = CPoint(kLeast, kLeast);
    for (const auto& node : nodes_)
        extent_ = CPoint(std::max(extent_.x, node->cell.right), std::max(extent_.y, node->cell.bottom));
    extentKnown_ = true;
}

int QKListEntries::LowestBottom() {
    FindExtent();
    return nodes_.empty() ? 0 : std::max(0, ToClient(CRect(0, 0, 0, extent_.y)).bottom);
}

int QKListEntries::RightmostRight() {
    FindExtent();
    return nodes_.empty() ? 0 : std::max(0, ToClient(CRect(0, 0, extent_.x, 0)).right);
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

// ---- Changes by the list

void QKListEntries::SetMouse(QKListNode& node, int state) {
    node.item->nMouseState = state;
    Changed(node);
}

void QKListEntries::SetFocus(QKListNode& node, int state) {
    Settle(node);
    Resolve(node);
    node.item->nFocusState = state;
    node.item->szTextCath[0] = u'\0';
    Changed(node);
}

void QKListEntries::SetUnselected(QKListNode& node, int state) {
    node.item->nSelState = state;
    Changed(node);
}

// What is derived from the record is made anew where it could not be changed.
void QKListEntries::Changed(QKListNode& node) {
    try {
        Reread(node);
    } catch (const std::bad_alloc&) {
        stale_ = true;
    }
}

void QKListEntries::DeselectEntries(const std::function<bool(const QKListNode*)>& stays) {
    selection_.RemoveIf([&](const QKListItem* item) {
        const QKListNode* node = Find(item);
        return node && !stays(node);
    });
}

void QKListEntries::ReleaseCaptions() {
    for (const auto& node : nodes_)
        delete std::exchange(node->item->pTextImage, nullptr);
    captions_.Clear();
}
