#include "list/list_entries.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include <platform/gdi.h>

namespace {

constexpr std::uint64_t kOrderStep = std::uint64_t{1} << 32U;

}  // namespace

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
    for (auto at = byItem_.begin(); at != byItem_.end(); at = byItem_.equal_range(at->first).second)
        Release(at->second->item);
    nodes_.clear();
    byItem_.clear();
    handedOut_.clear();
    cells_.Clear();
    hits_.Clear();
    drawn_.Clear();
    search_.Clear();
    ids_.clear();
    hovered_.clear();
    focused_.clear();
    selectedFlags_.clear();
    captions_.clear();
    captionBytes_ = 0;
    unmeasured_ = unplaced_ = 0;
    extentKnown_ = false;
    ++generation_;
}

QKListNode* QKListEntries::At(int position) {
    if (position < 0 || position >= Count()) return nullptr;
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

QKListNode* QKListEntries::Find(const QKListItem* item) const {
    const auto [begin, end] = byItem_.equal_range(item);
    QKListNode* first = nullptr;
    for (auto at = begin; at != end; ++at)
        if (!first || at->second->order < first->order) first = at->second;
    return first;
}

QKListNode& QKListEntries::Insert(QKListItem* item, int position) {
    const auto order = [&](int at) { return nodes_[static_cast<std::size_t>(at)]->order; };
    const auto before = [&] { return position == 0 ? 0 : order(position - 1); };
    if (position < Count() && order(position) - before() < 2) Renumber();
    auto node = std::make_unique<QKListNode>();
    node->item = item;
    node->order = position == Count() ? before() + kOrderStep : before() + (order(position) - before()) / 2;
    QKListNode& added = *node;
    nodes_.insert(nodes_.begin() + position, std::move(node));
    Join(added);
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
    Leave(node);
    const std::uint64_t order = node.order;
    node = QKListNode();
    node.item = item;
    node.order = order;
    Join(node);
}

// The nodes change places, and take all that is known of their records with them.
void QKListEntries::Swap(QKListNode& a, QKListNode& b) {
    TakeFromSets(a);
    TakeFromSets(b);
    std::swap(nodes_[static_cast<std::size_t>(PositionOf(a))],
              nodes_[static_cast<std::size_t>(PositionOf(b))]);
    std::swap(a.order, b.order);
    AddToSets(a);
    AddToSets(b);
    ++generation_;
}

void QKListEntries::Join(QKListNode& node) {
    byItem_.emplace(node.item, &node);
    node.origin = origin_;
    node.captionEpoch = captionEpoch_;
    const QKListItem& entry = *node.item;
    node.id = entry.nID;
    node.mouse = entry.nMouseState;
    node.focus = entry.nFocusState;
    node.unselected = entry.nSelState;
    CountId(node.id, 1);
    AddToSets(node);
    SetRects(node);
    ++generation_;
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
    ForgetCaption(node);
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

// ---- What the host holds

QKListItem* QKListEntries::HandOut(QKListNode& node) {
    Settle(node);
    Resolve(node);
    if (!node.handedOut) {
        node.handedOut = true;
        node.handedOutAt = handedOut_.size();
        handedOut_.push_back(&node);
    }
    return node.item;
}

void QKListEntries::StopHandingOut(QKListNode& node) {
    if (!node.handedOut) return;
    handedOut_.back()->handedOutAt = node.handedOutAt;
    handedOut_[node.handedOutAt] = handedOut_.back();
    handedOut_.pop_back();
    node.handedOut = false;
}

void QKListEntries::Sync() {
    for (QKListNode* node : handedOut_)
        Reread(*node);
}

void QKListEntries::Reread(QKListNode& node) {
    Settle(node);
    const QKListItem& entry = *node.item;
    if (entry.nID != node.id) {
        CountId(node.id, -1);
        CountId(node.id = entry.nID, 1);
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
}

// ---- Rectangles

CRect QKListEntries::FromOrigin(CRect rect) const {
    rect.OffsetRect(-origin_.x, -origin_.y);
    return rect;
}

CRect QKListEntries::ToClient(CRect rect) const {
    rect.OffsetRect(origin_.x, origin_.y);
    return rect;
}

// Brings the record to where its entry is.
void QKListEntries::Settle(QKListNode& node) {
    if (!(node.origin == origin_)) {
        QKOffset(*node.item, CPoint(origin_.x - node.origin.x, origin_.y - node.origin.y));
        node.origin = origin_;
    }
    if (node.captionEpoch != captionEpoch_) {
        node.item->szTextCath[0] = u'\0';
        node.captionEpoch = captionEpoch_;
    }
}

void QKListEntries::Resolve(QKListNode& node) {
    if (!node.measured) Measure(node, measureBy_);
}

void QKListEntries::Measure(QKListNode& node, const QKListMetrics& metrics) {
    Settle(node);
    QKMeasureFocus(metrics, style_, *node.item);
    QKMeasureHit(metrics, style_, *node.item);
    unmeasured_ -= !node.measured;
    node.measured = true;
    SetRects(node);
}

CRect QKListEntries::HitOf(const QKListNode& node) const {
    return node.measured ? node.item->rcMState : QKHitCover(measureBy_, *node.item);
}

void QKListEntries::Move(QKRectIndex& index, QKListNode& node, CRect QKListNode::*rect, const CRect& value) {
    if (node.*rect == value) return;
    index.Remove(node);
    node.*rect = value;
    index.Insert(node);
}

void QKListEntries::MoveCell(QKListNode& node, const CRect& value) {
    if (node.cell == value) return;
    search_.Forget(ToClient(node.cell));
    // The one that reached farthest may have gone.
    if (node.cell.right >= extent_.x || node.cell.bottom >= extent_.y) extentKnown_ = false;
    extent_ = CPoint(std::max(extent_.x, value.right), std::max(extent_.y, value.bottom));
    Move(cells_, node, &QKListNode::cell, value);
}

void QKListEntries::SetRects(QKListNode& node) {
    const QKListItem& entry = *node.item;
    MoveCell(node, FromOrigin(entry.rcItem));
    const bool placed = QKIsPlaced(entry);
    unplaced_ += static_cast<int>(node.placed) - static_cast<int>(placed);
    node.placed = placed;
    const CRect hit = HitOf(node);
    Move(hits_, node, &QKListNode::hit, FromOrigin(hit));
    Move(drawn_, node, &QKListNode::drawn,
         placed ? FromOrigin(QKDrawnBounds(drawnBy_, entry, hit)) : CRect());
}

// ---- Answers

int QKListEntries::NextId() {
    Sync();
    return ids_.empty() ? 0 : static_cast<int>(static_cast<unsigned>(ids_.rbegin()->first) + 1U);
}

std::optional<CRect> QKListEntries::OccupantAt(CPoint point) {
    Sync();
    const QKListNode* node = cells_.AnyAt(CPoint(point.x - origin_.x, point.y - origin_.y));
    return node ? std::optional(ToClient(node->cell)) : std::nullopt;
}

QKListNode* QKListEntries::FirstMeeting(const CRect& rect) {
    Sync();
    const std::vector<QKListNode*> nodes = cells_.Meeting(FromOrigin(rect));
    return nodes.empty() ? nullptr : nodes.front();
}

std::vector<QKListNode*> QKListEntries::HitBy(CPoint point) {
    Sync();
    const CPoint seen(point.x - origin_.x, point.y - origin_.y);
    std::vector<QKListNode*> nodes = hits_.At(seen);
    std::erase_if(nodes, [&](QKListNode* node) {
        Resolve(*node);
        return !node->hit.PtInRect(seen);
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::HitBy(const CRect& area) {
    Sync();
    const CRect seen = FromOrigin(area);
    std::vector<QKListNode*> nodes = hits_.Meeting(seen);
    std::erase_if(nodes, [&](QKListNode* node) {
        Resolve(*node);
        CRect common;
        return !common.IntersectRect(node->hit, seen);
    });
    return nodes;
}

std::vector<QKListNode*> QKListEntries::DrawnIn(const CRect& area, const QKListMetrics& metrics) {
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
    Reread(node);
}

void QKListEntries::SetFocus(QKListNode& node, int state) {
    Settle(node);
    Resolve(node);
    node.item->nFocusState = state;
    node.item->szTextCath[0] = u'\0';
    Reread(node);
}

void QKListEntries::SetUnselected(QKListNode& node, int state) {
    node.item->nSelState = state;
    Reread(node);
}

// ---- Layout

std::optional<CRect> QKListEntries::FirstFree(const QKCellGrid& grid, std::int64_t start) {
    Sync();
    return search_.FirstFree(grid, start, [this](CPoint point) {
        const QKListNode* node = cells_.AnyAt(CPoint(point.x - origin_.x, point.y - origin_.y));
        return node ? std::optional(ToClient(node->cell)) : std::nullopt;
    });
}

void QKListEntries::Unplace() {
    cells_.Clear();
    hits_.Clear();
    drawn_.Clear();
    search_.Clear();
    origin_ = CPoint();
    for (const auto& node : nodes_) {
        node->origin = origin_;
        Settle(*node);
        QKUnplace(*node->item);
        node->cell = node->hit = node->item->rcItem;
        node->drawn = CRect();
        node->measured = true;
        node->placed = false;
    }
    unplaced_ = Count();
    unmeasured_ = 0;
    extentKnown_ = false;
    ++generation_;
}

void QKListEntries::Placed(QKListNode& node, const QKListMetrics& metrics, bool emptiesCaption) {
    node.origin = origin_;
    if (emptiesCaption) node.item->szTextCath[0] = u'\0';
    if (node.handedOut || !QKHasHitCover(*node.item)) {
        Measure(node, metrics);
        return;
    }
    if (!(metrics == measureBy_)) {
        // Those that wait are measured by what held when they were placed.
        for (std::size_t i = 0; unmeasured_ > 0 && i < nodes_.size(); ++i)
            Resolve(*nodes_[i]);
        measureBy_ = metrics;
    }
    unmeasured_ += node.measured;
    node.measured = false;
    SetRects(node);
}

void QKListEntries::Offset(CPoint by, const QKListMetrics& metrics) {
    origin_.Offset(by.x, by.y);
    search_.Offset(by);
    for (QKListNode* node : handedOut_) {
        Settle(*node);
        node->item->rcText = QKCaptionCell(metrics, node->item->rcItem);
        Measure(*node, metrics);
    }
}

std::uint64_t QKListEntries::Generation() {
    Sync();
    return generation_;
}

// ---- Selection

void QKListEntries::Select(QKListItem* item) {
    if (IsSelected(item)) return;
    inSelection_.emplace(item, selection_.insert(selection_.end(), item));
}

void QKListEntries::Deselect(const QKListItem* item) {
    const auto found = inSelection_.find(item);
    if (found == inSelection_.end()) return;
    selection_.erase(found->second);
    inSelection_.erase(found);
}

void QKListEntries::DeselectEntries(const std::function<bool(const QKListNode*)>& stays) {
    for (auto at = selection_.begin(); at != selection_.end();) {
        const QKListNode* node = Find(*at);
        if (!node || stays(node)) {
            ++at;
            continue;
        }
        inSelection_.erase(*at);
        at = selection_.erase(at);
    }
}

void QKListEntries::ClearSelection() {
    selection_.clear();
    inSelection_.clear();
}

// ---- Rendered captions

QKListNode::Rendering QKListEntries::RenderingFor(const QKListNode& node,
                                                  const QKListNode::Rendering& asked) const {
    const QKListItem& entry = *node.item;
    const bool sameText = std::u16string_view(entry.szText) == entry.szTextCath;
    return node.droppedCaption && sameText && node.rendering.age == captionAge_ ? node.rendering : asked;
}

void QKListEntries::CaptionSeen(QKListNode& node, const QKListNode::Rendering* rendered) {
    if (rendered) {
        ForgetCaption(node);
        node.rendering = *rendered;
        node.rendering.age = captionAge_;
        node.captionBytes =
            static_cast<std::size_t>(rendered->size.cx) * static_cast<std::size_t>(rendered->size.cy) * 4;
        captionBytes_ += node.captionBytes;
        node.captionSeen = captions_.insert(captions_.begin(), &node);
        node.hasCaption = true;
    } else if (node.hasCaption) {
        captions_.splice(captions_.begin(), captions_, node.captionSeen);
    }
    node.captionFrame = frame_;
}

void QKListEntries::ForgetCaption(QKListNode& node) {
    node.droppedCaption = false;
    if (!node.hasCaption) return;
    captions_.erase(node.captionSeen);
    captionBytes_ -= node.captionBytes;
    node.hasCaption = false;
}

void QKListEntries::TrimCaptions(std::size_t bytes) {
    while (captionBytes_ > bytes && captions_.back()->captionFrame != frame_) {
        QKListNode& node = *captions_.back();
        ForgetCaption(node);
        if (node.handedOut) continue;  // the host may be using it
        delete std::exchange(node.item->pTextImage, nullptr);
        node.droppedCaption = true;
    }
}

void QKListEntries::ReleaseCaptions() {
    const auto release = [](QKListNode* node) { delete std::exchange(node->item->pTextImage, nullptr); };
    std::for_each(captions_.begin(), captions_.end(), release);
    std::for_each(handedOut_.begin(), handedOut_.end(), release);
    for (QKListNode* node : captions_)
        node->hasCaption = false;
    captions_.clear();
    captionBytes_ = 0;
    ++captionAge_;
}
