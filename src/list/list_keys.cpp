// The focus of a list, moved by keys: where a key leads, and what it selects on the way.
#include <algorithm>
#include <cstdlib>
#include <tuple>

#include <platform/window.h>

#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "dialog/selection_watch.h"
#include "items/arithmetic.h"
#include "list/list_access.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

constexpr int kNowhere = -1;

bool IsHeld(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

void QKListCtrl::SetKeyboard(int enable) {
    m_state->keys.on = enable != 0;
}

// ---- The focus

void ListAccess::Unfocus(QKListCtrl& list, const Entry* except) {
    const Uninterrupted uninterrupted;
    const EntrySet& focused = Entries(list).Focused();
    for (auto at = focused.begin(); at != focused.end();) {
        Entry* const entry = *at++;  // it leaves the set
        if (entry != except) Entries(list).SetFocus(*entry, 1);
    }
}

void QKListCtrl::SetFocusItem(int index) {
    WithinMemory([&] {
        Entry* entry = m_state->entries->At(index);
        ListAccess::Unfocus(*this, entry);
        if (!entry) return;
        if (entry->focus != 0) m_state->entries->SetFocus(*entry, 0);
        ListAccess::Pressed(*this, *entry);
    });
}

int QKListCtrl::GetFocusItem() {
    return WithinMemory(kNowhere, [this] {
        for (const Entry* entry : m_state->entries->Focused())
            if (entry->focus == 0) return m_state->entries->PositionOf(*entry);
        return kNowhere;
    });
}

EntryMark ListAccess::MarkAt(QKListCtrl& list, int index) {
    return {index, Entries(list).EntryAt(index).id};
}

// Whatever gave an entry the focus: keys go on from there.
void ListAccess::Pressed(QKListCtrl& list, const Entry& entry) {
    if (!list.m_state->keys.on) return;
    list.m_state->keys.caret = list.m_state->keys.anchor = {Entries(list).PositionOf(entry), entry.id};
    list.m_state->keys.ranged = false;
}

// Entries may have been added, removed or sorted since.
int ListAccess::Locate(QKListCtrl& list, const EntryMark& mark) {
    const auto isAt = [&](int index) { return Entries(list).EntryAt(index).id == mark.id; };
    if (mark.index < 0) return kNowhere;
    if (mark.index < list.GetCount() && isAt(mark.index)) return mark.index;
    for (int i = 0; i < list.GetCount(); ++i)
        if (isAt(i)) return i;
    return kNowhere;
}

// The focus, or where it was when it was lost.
int ListAccess::Caret(QKListCtrl& list) {
    if (const int focused = list.GetFocusItem(); focused >= 0) return focused;
    if (const int left = Locate(list, list.m_state->keys.caret); left >= 0) return left;
    return std::min(list.m_state->keys.caret.index, list.GetCount() - 1);
}

// ---- Where a key leads

// The first entry from an index on that has a place.
int ListAccess::Placed(QKListCtrl& list, int index, int step) {
    for (; index >= 0 && index < list.GetCount(); index += step)
        if (Entries(list).EntryAt(index).placed) return index;
    return kNowhere;
}

int ListAccess::Target(QKListCtrl& list, int from, Way way) {
    return WithinMemory(kNowhere, [&] {
        if (way == Way::Home) return Placed(list, 0, 1);
        if (way == Way::End) return Placed(list, list.GetCount() - 1, -1);
        if (from < 0 || !Entries(list).EntryAt(from).placed) {  // anew, where the user looks
            const auto seen =
                list.m_state->scroll.on ? Entries(list).HitBy(View(list)) : std::vector<Entry*>();
            return seen.empty() ? Placed(list, 0, 1) : Entries(list).PositionOf(*seen.front());
        }
        return way == Way::PageUp || way == Way::PageDown ? APageFrom(list, from, way)
                                                          : Beside(list, from, way);
    });
}

// The nearest entry that begins farther up, down, left or right, in the cell's own line; where that ends, in
// the lines after it. Areas are searched that get larger as long as they are empty.
int ListAccess::Beside(QKListCtrl& list, int from, Way way) {
    const bool vertical = way == Way::Up || way == Way::Down;
    const int sign = way == Way::Down || way == Way::Right ? 1 : -1;
    const CRect cell = Entries(list).CellOf(Entries(list).EntryAt(from));
    const std::optional<CPoint> end = Entries(list).ContentEnd();
    if (!end) return kNowhere;
    const CRect all(std::min<int>(Corner(list).x, cell.left), std::min<int>(Corner(list).y, cell.top), end->x,
                    end->y);
    const bool hasLines = list.m_nListType == QKLT_LIST ? vertical : vertical == (list.m_nArrange != 0);

    const auto ahead = [&](const CRect& other) {
        return sign * (vertical ? Difference(other.top, cell.top) : Difference(other.left, cell.left));
    };
    const auto aside = [&](const CRect& other) {
        return std::abs(vertical ? Difference(other.left, cell.left) : Difference(other.top, cell.top));
    };
    for (const bool ownLine : {true, false}) {
        if (!ownLine && !hasLines) break;
        for (std::int64_t depth = 2 * std::int64_t{vertical ? LineSize(list).cy : LineSize(list).cx};;
             depth *= 2) {
            CRect area = ownLine ? cell : all;
            const int begin = vertical ? cell.top : cell.left;
            const int reach = Saturate(begin + sign * depth);
            (vertical ? area.top : area.left) = sign > 0 ? begin : reach;
            (vertical ? area.bottom : area.right) = sign > 0 ? reach : begin;
            std::tuple<int, int> nearest;
            const Entry* best = nullptr;
            for (const Entry* entry : Entries(list).HitBy(area)) {
                const CRect other = Entries(list).CellOf(*entry);
                if (ahead(other) <= 0) continue;
                const std::tuple<int, int> distance(ahead(other), aside(other));
                if (best && nearest <= distance) continue;
                best = entry;
                nearest = distance;
            }
            if (best) return Entries(list).PositionOf(*best);
            const int last = vertical ? (sign > 0 ? all.bottom : all.top) : (sign > 0 ? all.right : all.left);
            if (sign > 0 ? reach >= last : reach <= last) break;
        }
    }
    return kNowhere;
}

// As far as what the user sees at once, less a cell.
int ListAccess::APageFrom(QKListCtrl& list, int from, Way way) {
    const CRect cell = Entries(list).CellOf(Entries(list).EntryAt(from));
    CRect client, seen;
    GetClientRect(list.m_hParent, client);
    seen.IntersectRect(View(list), client);
    const int page = Difference(seen.Height(), cell.Height());
    CRect area = cell;
    if (way == Way::PageDown)
        area.bottom = Sum(cell.top, page, 1);
    else
        area.top = Difference(cell.top, page);
    int best = kNowhere;
    int farthest = 0;
    for (const Entry* entry : Entries(list).HitBy(area)) {
        const int top = Entries(list).CellOf(*entry).top;
        const int ahead = way == Way::PageDown ? Difference(top, cell.top) : Difference(cell.top, top);
        if (ahead <= farthest || ahead > page) continue;
        farthest = ahead;
        best = Entries(list).PositionOf(*entry);
    }
    return best >= 0 ? best : Beside(list, from, way == Way::PageDown ? Way::Down : Way::Up);
}

// ---- What it selects

void ListAccess::SelectRange(QKListCtrl& list, int from, int to, bool select) {
    const Uninterrupted uninterrupted;
    for (int i = from; i <= to; ++i)
        if (Entry& entry = Entries(list).EntryAt(i); entry.placed) Entries(list).SetSelected(entry, select);
}

// From the anchor up to an entry; where that was so before, only what is between the two ends changes.
void CQKDialogBase::SelectUpTo(QKListCtrl& list, int index) {
    ListKeys& keys = ListAccess::Keys(list);
    const int found = ListAccess::Locate(list, keys.anchor);
    const int anchor = found >= 0 ? found : index;
    const auto [from, to] = std::minmax(anchor, index);
    const std::uint64_t generation = ListAccess::Entries(list).Generation();
    if (keys.ranged && keys.generation == generation) {
        const auto [before, after] = std::minmax(anchor, keys.caret.index);
        ListAccess::SelectRange(list, before, from - 1, false);
        ListAccess::SelectRange(list, to + 1, after, false);
        ListAccess::SelectRange(list, from, before - 1, true);
        ListAccess::SelectRange(list, after + 1, to, true);
    } else {
        UnSelRcItem();
        ListAccess::SelectRange(list, from, to, true);
    }
    list.SetFocusItem(index);
    keys.anchor = ListAccess::MarkAt(list, anchor);
    keys.ranged = true;
    keys.generation = generation;
}

// The space bar: one more, or with Ctrl the one that is over.
bool CQKDialogBase::SelectFocused(QKListCtrl& list) {
    const int focused = list.GetFocusItem();
    if (focused < 0) return false;
    Entry& entry = ListAccess::Entries(list).EntryAt(focused);
    ListAccess::Entries(list).SetSelected(entry, !IsHeld(VK_CONTROL) || entry.unselected != 0);
    ListAccess::Pressed(list, entry);
    return true;
}

bool CQKDialogBase::MoveFocus(QKListCtrl& list, UINT key) {
    using Way = ListAccess::Way;
    constexpr std::pair<UINT, Way> kWays[] = {
        {VK_UP, Way::Up},        {VK_DOWN, Way::Down},     {VK_LEFT, Way::Left}, {VK_RIGHT, Way::Right},
        {VK_PRIOR, Way::PageUp}, {VK_NEXT, Way::PageDown}, {VK_HOME, Way::Home}, {VK_END, Way::End}};
    const auto* const found =
        std::find_if(std::begin(kWays), std::end(kWays), [&](const auto& way) { return way.first == key; });
    if (found == std::end(kWays)) return false;
    const int to = ListAccess::Target(list, ListAccess::Caret(list), found->second);
    if (to < 0) return false;
    if (IsHeld(VK_SHIFT)) {
        SelectUpTo(list, to);
    } else if (IsHeld(VK_CONTROL)) {
        const EntryMark anchor = ListAccess::Keys(list).anchor;
        list.SetFocusItem(to);
        ListAccess::Keys(list).anchor = anchor;
    } else {
        UnSelRcItem();
        list.SetSel(to, 1);
        list.SetFocusItem(to);
    }
    list.EnsureVisible(to);
    return true;
}

// ---- Keys of the dialog

QKListCtrl* CQKDialogBase::KeyList() {
    QKListCtrl* topmost = nullptr;
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        if (m_arItems[i]->GetType() != QKUI_LISTCTRL || !TakesPointer(m_arItems[i])) continue;
        auto* list = static_cast<QKListCtrl*>(m_arItems[i]);
        if (!ListAccess::Keys(*list).on) continue;
        if (list == m_pKeyList) return list;
        if (!topmost) topmost = list;
    }
    return topmost;
}

bool CQKDialogBase::HandleListKey(UINT key) {
    QKListCtrl* list = KeyList();
    if (!list || list->GetCount() == 0) return false;
    const Alive alive(*this);
    SelectionWatch watch(*this, m_arItems);
    if (key == 'A' && IsHeld(VK_CONTROL))
        list->SelectAll();
    else if (key == VK_SPACE ? !SelectFocused(*list) : !MoveFocus(*list, key))
        return false;
    ShowScrolled(*list);
    if (alive) watch.Notify();
    return true;
}

void CQKDialogBase::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (!HandleListKey(key)) CDialog::OnKeyDown(key, repeat, flags);
}
