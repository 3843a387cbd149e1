#include "list/list_entries.h"

#include <algorithm>
#include <new>
#include <utility>

#include "list/list_change.h"
#include "list/list_text.h"

namespace {

constexpr std::uint64_t kOrderStep = std::uint64_t{1} << 32U;

}  // namespace

QKListEntries::~QKListEntries() {
    Release();
}

// A record that stands in several places is freed once.
void QKListEntries::Release() {
    ClearSelection();
    captions_.Clear();
    std::sort(held_.begin(), held_.end(), [](const auto& a, const auto& b) { return a.item < b.item; });
    const QKListItem* last = nullptr;
    for (const HeldRecord& held : held_)
        if (held.item != last) {
            last = held.item;
            QKReleaseRecord()(held.item);
        }
    held_.clear();
    lately_.clear();
    isMany_ = false;
    shared_ = 0;
    nodes_.clear();
    icons_.Clear();
    Forget();
    search_.Begin();
}

// In one go, whatever number they are: taking out one by one costs each time what lies behind it.
bool QKListEntries::ReleaseSelected() {
    LookAtAll();
    const auto leaves = [](const auto& node) { return node->unselected == 0; };
    if (std::none_of(selectedFlags_.begin(), selectedFlags_.end(), leaves)) return false;
    std::vector<QKListItem*> records;
    for (const QKListNode* node : selectedFlags_)
        if (leaves(node) && node->record) records.push_back(node->record);
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    Change change(*this);
    for (const auto& node : nodes_) {
        if (!leaves(node)) continue;
        selection_.entries.erase(node.get());
        Leave(*node);
    }
    std::erase_if(nodes_, leaves);
    change.Complete();
    for (QKListItem* record : records) {
        selection_.others.erase(record);
        QKReleaseRecord()(record);
    }
    return true;
}

// Nothing is derived from any entry.
void QKListEntries::Forget() {
    byItem_.clear();
    DropIndex();
    search_.Clear();
    ids_.Clear();
    hovered_.clear();
    focused_.clear();
    selectedFlags_.clear();
    selectionMark_ = 0;
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
        if (node->record) byItem_.emplace(node->record, node.get());
        Join(*node);
    }
    change.Complete();
}

QKListNode* QKListEntries::At(int position) {
    if (position < 0 || position >= Count()) return nullptr;
    Repair();
    QKListNode& node = Node(position);
    Pull(node);
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
    QKListNode* first = nullptr;
    ForEachOf(item, [&](QKListNode& node) {
        if (!first || node.order < first->order) first = &node;
    });
    if (first) Pull(*first);
    return first;
}

QKListNode& QKListEntries::Insert(std::unique_ptr<QKListNode> node, int position,
                                  const QKListMeasure* measure) {
    Repair();
    const auto order = [&](int at) { return nodes_[static_cast<std::size_t>(at)]->order; };
    const auto before = [&] { return position == 0 ? 0 : order(position - 1); };
    if (position < Count() && order(position) - before() < 2) Renumber();
    node->order = position == Count() ? before() + kOrderStep : before() + (order(position) - before()) / 2;
    QKEntryRects rects{node->cell, node->caption, {}, {}};
    QKListNode& added = *node;
    if (measure && QKHasHitCover(*measure, rects.cell, rects.caption)) {
        MeasureLaterBy(*measure);
        added.extent = QKListNode::Extent::kCover;
    } else if (measure) {
        QKMeasureFocus(*measure, added.Text(), rects);
        QKMeasureHit(*measure, added.Text(), rects);
        added.extent = QKListNode::Extent::kKnown;
        added.Look();
    }
    if (!AreNear(rects)) MoveOriginBack();
    added.placed = QKIsPlaced(rects.cell);
    added.cell = FromOrigin(rects.cell);
    added.caption = FromOrigin(rects.caption);
    if (added.look) {
        added.look->hit = FromOrigin(rects.hit);
        added.look->focus = FromOrigin(rects.focus);
    }
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
    QKListItem* const record = node.record;
    selection_.entries.erase(&node);
    Leave(node);
    nodes_.erase(nodes_.begin() + PositionOf(node));
    return record;
}

void QKListEntries::Replace(QKListNode& node, QKListItem* item) {
    // Where it stands already: what one place does to it, the others must see.
    bool isShared = false;
    ForEachOf(item, [&](QKListNode& other) {
        BringUpToDate(other);
        isShared = isShared || &other != &node;
    });
    auto look = std::make_unique<QKEntryLook>();
    MakeRoomToHold();
    if (node.record && selection_.entries.contains(&node)) selection_.others.insert(node.record);
    byItem_.emplace(item, &node);

    selection_.entries.erase(&node);
    Leave(node);
    node.TakeFrom(item);
    node.look = std::move(look);
    AddHeld(node);
    if (isShared) ForEachOf(item, [&](QKListNode& at) { Share(at); });
    const QKEntryRects rects = HeldOf(node).seen.rects;
    if (!AreNear(rects)) MoveOriginBack();
    node.placed = QKIsPlaced(rects.cell);
    node.cell = FromOrigin(rects.cell);
    node.caption = FromOrigin(rects.caption);
    node.look->hit = FromOrigin(rects.hit);
    node.look->focus = FromOrigin(rects.focus);
    node.extent = QKListNode::Extent::kKnown;
    try {
        Join(node);
    } catch (const std::bad_alloc&) {
        stale_ = true;
    }
}

// The nodes change places, and take all that is known of their entries with them.
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
    unmeasured_ += node.extent == QKListNode::Extent::kCover;
    unplaced_ += !node.placed;
    ids_.Add(node.id);
    AddToSets(node);
    Occupy(node, node.cell);
    if (isIndexed_) {
        node.reach = FromOrigin(ReachOf(node));
        index_.Insert(node);
    }
    ++generation_;
    change.Complete();
}

void QKListEntries::Leave(QKListNode& node) {
    ids_.Remove(node.id);
    TakeFromSets(node);
    Vacate(node);
    if (isIndexed_) index_.Remove(node);
    unmeasured_ -= node.extent == QKListNode::Extent::kCover;
    unplaced_ -= !node.placed;
    if (node.record) StopHolding(node);
    captions_.Forget(node);
    ++generation_;
}

// ---- Rendered captions

bool QKListEntries::ShowsText(const QKListNode& node) const {
    if (node.record)
        return HeldOf(node).captionEpoch == captionEpoch_ &&
               QKIsSameText(node.record->szTextCath, node.record->szText);
    return node.look && node.look->showsText && node.look->captionEpoch == captionEpoch_;
}

void QKListEntries::TakeCaption(QKListNode& node, std::unique_ptr<Gdiplus::Image> caption) {
    node.ForgetPicture();
    if (QKListItem* const record = node.record) {
        delete std::exchange(record->pTextImage, caption.release());
        QKSetText(record->szTextCath, QKTextOf(record->szText));
        HeldOf(node).captionEpoch = captionEpoch_;
        return;
    }
    node.look->caption = std::move(caption);
    node.look->showsText = true;
    node.look->captionEpoch = captionEpoch_;
}

void QKListEntries::EmptyCaptions() {
    ++captionEpoch_;
    ++pictureEpoch_;
}

void QKListEntries::EmptyCaption(QKListNode& node) {
    node.ForgetPicture();
    if (node.record)
        node.record->szTextCath[0] = u'\0';
    else if (node.look)
        node.look->showsText = false;
}

void QKListEntries::ReleaseCaptions() {
    for (const auto& node : nodes_) {
        if (node->record)
            delete std::exchange(node->record->pTextImage, nullptr);
        else if (node->look)
            node->look->caption.reset();
    }
    captions_.Clear();
    ++pictureEpoch_;
}
