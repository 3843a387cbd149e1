// Records that the host holds, and may read or change between any two questions.
#include <algorithm>
#include <new>
#include <utility>

#include "list/list_change.h"
#include "list/uninterrupted.h"

QKListItem* QKListEntries::HandOut(QKListNode& node, bool toChange) {
    if (node.record) {
        BringUpToDate(node);
    } else {
        Resolve(node);
        QKOwnedRecord record = node.MakeRecord();
        MakeRoomToHold();
        byItem_.emplace(record.get(), &node);
        node.GiveTo(*record.release(), captionEpoch_);
        AddHeld(node);
        Push(node);
        Change change(*this);
        SetReach(node);
        change.Complete();
    }
    NoteLately(node);
    node.mayChange = node.mayChange || toChange;
    return node.record;
}

void QKListEntries::MakeRoomToHold() {
    constexpr std::size_t kLeast = 16;
    if (held_.size() == held_.capacity()) held_.reserve(std::max(kLeast, 2 * held_.size()));
}

// The room is there, and so is the place among those found by their records.
void QKListEntries::AddHeld(QKListNode& node) {
    node.heldAt = static_cast<std::uint32_t>(held_.size());
    held_.push_back({&node, node.record, QKRecordState(*node.record), captionEpoch_, layout_, nullptr});
    isMany_ = isMany_ || held_.size() > pace_.all;
}

void QKListEntries::Share(QKListNode& node) {
    shared_ += !std::exchange(HeldOf(node).isShared, true);
}

void QKListEntries::StopHolding(QKListNode& node) {
    const auto [begin, end] = byItem_.equal_range(node.record);
    byItem_.erase(std::find_if(begin, end, [&](const auto& at) { return at.second == &node; }));
    HeldRecord& held = HeldOf(node);
    if (held.lately) std::erase(lately_, &node);
    shared_ -= held.isShared;
    held_.back().node->heldAt = node.heldAt;
    if (&held != &held_.back()) held = std::move(held_.back());
    held_.pop_back();
    if (held_.empty()) isMany_ = false;
}

// One that gives way to others is looked at for the last time before its turn comes.
void QKListEntries::NoteLately(QKListNode& node) {
    lately_.reserve(pace_.lately + 1);
    if (!HeldOf(node).lately) {
        if (lately_.size() >= pace_.lately) {
            QKListNode& first = *lately_.front();
            Pull(first);
            HeldOf(first).lately = false;
            lately_.erase(lately_.begin());
        }
        HeldOf(node).lately = true;
        lately_.push_back(&node);
    } else if (lately_.back() != &node) {
        const auto at = std::find(lately_.begin(), lately_.end(), &node);
        std::rotate(at, at + 1, lately_.end());
    }
}

// The records that a host may be looking at.
void QKListEntries::PushKept() {
    if (isMany_ && shared_ == 0) {
        for (std::size_t i = 0; i < lately_.size(); ++i)
            Push(*lately_[i]);
        return;
    }
    for (std::size_t i = 0; i < held_.size(); ++i)
        if (!isMany_ || held_[i].lately || held_[i].isShared) Push(*held_[i].node);
}

void QKListEntries::Sync() {
    Repair();
    const std::uint64_t stretch = QKUninterrupted::Current();
    if (stretch != 0 && stretch == lookedIn_) return;
    if (!isMany_) {
        LookAt(0, held_.size());
    } else {
        for (std::size_t i = 0; i < lately_.size(); ++i)
            Pull(*lately_[i]);
    }
    lookedIn_ = stretch;
}

// Each record lies somewhere else in memory: it is on its way while those before it are looked at.
void QKListEntries::LookAt(std::size_t first, std::size_t end) {
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = first; i < end; ++i) {
        if (i + kAhead < held_.size()) QKRecordState::Prefetch(*held_[i + kAhead].item);
        if (held_[i].seen != QKRecordState(*held_[i].item)) Pull(*held_[i].node);
    }
}

void QKListEntries::LookInTurn() {
    if (!isMany_) return;
    Repair();
    if (turn_ >= held_.size()) turn_ = 0;
    const std::size_t end = std::min(turn_ + pace_.inTurn, held_.size());
    LookAt(turn_, end);
    turn_ = end;
}

void QKListEntries::LookAtAll() {
    Repair();
    LookAt(0, held_.size());
}

void QKListEntries::Pull(QKListNode& node) {
    if (!node.record) return;
    PullOne(node);
    if (HeldOf(node).isShared) ForEachOf(node.record, [this](QKListNode& at) { PullOne(at); });
}

void QKListEntries::PullOne(QKListNode& node) {
    const QKRecordState now(*node.record);
    if (now == HeldOf(node).seen) return;
    const QKRecordState seen = HeldOf(node).seen;
    Change change(*this);
    if (now.id != seen.id) {
        ids_.Remove(node.id);
        node.id = now.id;
        ids_.Add(node.id);
    }
    const auto state = [](int is, int was, std::int8_t known) {
        return is != was ? QKListNode::State(is) : known;
    };
    if (now.mouse != seen.mouse || now.focus != seen.focus || now.unselected != seen.unselected)
        Restate(node, state(now.mouse, seen.mouse, node.mouse), state(now.focus, seen.focus, node.focus),
                state(now.unselected, seen.unselected, node.unselected));
    if (node.focus != 1 || now.rects != seen.rects) Resolve(node);
    QKEntryRects rects = RectsOf(node);
    QKListNode::Extent extent = node.extent;
    for (CRect QKEntryRects::*rect :
         {&QKEntryRects::cell, &QKEntryRects::caption, &QKEntryRects::hit, &QKEntryRects::focus}) {
        if (now.rects.*rect == seen.rects.*rect) continue;
        rects.*rect = now.rects.*rect;
        if (rect == &QKEntryRects::cell || rect == &QKEntryRects::caption)
            ++generation_;
        else
            extent = QKListNode::Extent::kKnown;
    }
    SetRects(node, rects, extent);
    HeldOf(node).seen = now;
    change.Complete();
}

// Others that have the same record find out by it.
void QKListEntries::Push(QKListNode& node) {
    Resolve(node);
    const QKEntryRects rects = RectsOf(node);
    HeldRecord& held = HeldOf(node);
    QKListItem& record = *held.item;
    record.rcItem = rects.cell;
    record.rcText = rects.caption;
    record.rcMState = rects.hit;
    record.rcFState = rects.focus;
    held.seen.rects = rects;
    if (std::exchange(held.captionEpoch, captionEpoch_) != captionEpoch_) record.szTextCath[0] = u'\0';
    if (held.isShared)
        ForEachOf(&record, [&](QKListNode& at) {
            if (&at != &node) PullOne(at);
        });
}

void QKListEntries::BringUpToDate(QKListNode& node) {
    Pull(node);
    Push(node);
}
