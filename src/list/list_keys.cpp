// The focus of a list, moved by keys: where a key leads, and what it selects on the way.
#include <qkui/list/list_keys.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include <platform/window.h>

#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "dialog/selection_watch.h"
#include "items/arithmetic.h"
#include "list/list_entries.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

constexpr int kNowhere = -1;

bool IsHeld(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

// ---- The focus

void QKListCtrl::Unfocus(const Entry* except) {
    const Uninterrupted uninterrupted;
    const EntrySet& focused = m_lstItems->Focused();
    for (auto at = focused.begin(); at != focused.end();) {
        Entry* const node = *at++;  // it leaves the set
        if (node != except) m_lstItems->SetFocus(*node, 1);
    }
}

void QKListCtrl::SetFocusItem(int index) {
    WithinMemory([&] {
        Entry* node = m_lstItems->At(index);
        Unfocus(node);
        if (!node) return;
        if (node->focus != 0) m_lstItems->SetFocus(*node, 0);
        Pressed(*node);
    });
}

int QKListCtrl::GetFocusItem() {
    return WithinMemory(kNowhere, [this] {
        for (const Entry* node : m_lstItems->Focused())
            if (node->focus == 0) return m_lstItems->PositionOf(*node);
        return kNowhere;
    });
}

EntryMark QKListCtrl::MarkAt(int index) {
    return {index, m_lstItems->EntryAt(index).id};
}

// Whatever gave an entry the focus: keys go on from there.
void QKListCtrl::Pressed(const Entry& node) {
    if (!m_keys.on) return;
    m_keys.caret = m_keys.anchor = {m_lstItems->PositionOf(node), node.id};
    m_keys.ranged = false;
}

// Entries may have been added, removed or sorted since.
int QKListCtrl::Locate(const EntryMark& mark) {
    const auto isAt = [&](int index) { return m_lstItems->EntryAt(index).id == mark.id; };
    if (mark.index < 0) return kNowhere;
    if (mark.index < GetCount() && isAt(mark.index)) return mark.index;
    for (int i = 0; i < GetCount(); ++i)
        if (isAt(i)) return i;
    return kNowhere;
}

// The focus, or where it was when it was lost.
int QKListCtrl::Caret() {
    if (const int focused = GetFocusItem(); focused >= 0) return focused;
    if (const int left = Locate(m_keys.caret); left >= 0) return left;
    return std::min(m_keys.caret.index, GetCount() - 1);
}

// ---- Where a key leads

// The first entry from an index on that has a place.
int QKListCtrl::Placed(int index, int step) {
    for (; index >= 0 && index < GetCount(); index += step)
        if (m_lstItems->EntryAt(index).placed) return index;
    return kNowhere;
}

int QKListCtrl::Target(int from, Way way) {
    return WithinMemory(kNowhere, [&] {
        if (way == Way::Home) return Placed(0, 1);
        if (way == Way::End) return Placed(GetCount() - 1, -1);
        if (from < 0 || !m_lstItems->EntryAt(from).placed) {  // anew, where the user looks
            const auto seen = m_scroll.on ? m_lstItems->HitBy(View()) : std::vector<Entry*>();
            return seen.empty() ? Placed(0, 1) : m_lstItems->PositionOf(*seen.front());
        }
        return way == Way::PageUp || way == Way::PageDown ? APageFrom(from, way) : Beside(from, way);
    });
}

// The nearest entry that begins farther up, down, left or right, in the cell's own line; where that ends, in
// the lines after it. Areas are searched that get larger as long as they are empty.
int QKListCtrl::Beside(int from, Way way) {
    const bool vertical = way == Way::Up || way == Way::Down;
    const int sign = way == Way::Down || way == Way::Right ? 1 : -1;
    const CRect cell = m_lstItems->CellOf(m_lstItems->EntryAt(from));
    const std::optional<CPoint> end = m_lstItems->ContentEnd();
    if (!end) return kNowhere;
    const CRect all(std::min<int>(Corner().x, cell.left), std::min<int>(Corner().y, cell.top), end->x,
                    end->y);
    const bool hasLines = m_nListType == QKLT_LIST ? vertical : vertical == (m_nArrange != 0);

    const auto ahead = [&](const CRect& other) {
        return sign * (vertical ? Difference(other.top, cell.top) : Difference(other.left, cell.left));
    };
    const auto aside = [&](const CRect& other) {
        return std::abs(vertical ? Difference(other.left, cell.left) : Difference(other.top, cell.top));
    };
    for (const bool ownLine : {true, false}) {
        if (!ownLine && !hasLines) break;
        for (std::int64_t depth = 2 * std::int64_t{vertical ? LineSize().cy : LineSize().cx};; depth *= 2) {
            CRect area = ownLine ? cell : all;
            const int begin = vertical ? cell.top : cell.left;
            const int reach = Saturate(begin + sign * depth);
            (vertical ? area.top : area.left) = sign > 0 ? begin : reach;
            (vertical ? area.bottom : area.right) = sign > 0 ? reach : begin;
            std::tuple<int, int> nearest;
            const Entry* best = nullptr;
            for (const Entry* node : m_lstItems->HitBy(area)) {
                const CRect other = m_lstItems->CellOf(*node);
                if (ahead(other) <= 0) continue;
                const std::tuple<int, int> distance(ahead(other), aside(other));
                if (best && nearest <= distance) continue;
                best = node;
                nearest = distance;
            }
            if (best) return m_lstItems->PositionOf(*best);
            const int last = vertical ? (sign > 0 ? all.bottom : all.top) : (sign > 0 ? all.right : all.left);
            if (sign > 0 ? reach >= last : reach <= last) break;
        }
    }
    return kNowhere;
}

// As far as what the user sees at once, less a cell.
int QKListCtrl::APageFrom(int from, Way way) {
    const CRect cell = m_lstItems->CellOf(m_lstItems->EntryAt(from));
    CRect client, seen;
    GetClientRect(m_hParent, client);
    seen.IntersectRect(View(), client);
    const int page = Difference(seen.Height(), cell.Height());
    CRect area = cell;
    if (way == Way::PageDown)
        area.bottom = Sum(cell.top, page, 1);
    else
        area.top = Difference(cell.top, page);
    int best = kNowhere;
    int farthest = 0;
    for (const Entry* node : m_lstItems->HitBy(area)) {
        const int top = m_lstItems->CellOf(*node).top;
        const int ahead = way == Way::PageDown ? Difference(top, cell.top) : Difference(cell.top, top);
        if (ahead <= farthest || ahead > page) continue;
        farthest = ahead;
        best = m_lstItems->PositionOf(*node);
    }
    return best >= 0 ? best : Beside(from, way == Way::PageDown ? Way::Down : Way::Up);
}

// ---- What it selects

void QKListCtrl::SelectNode(Entry& node, bool select) {
    m_lstItems->SetSelected(node, select);
}

void QKListCtrl::SelectRange(int from, int to, bool select) {
    const Uninterrupted uninterrupted;
    for (int i = from; i <= to; ++i)
        if (Entry& node = m_lstItems->EntryAt(i); node.placed) SelectNode(node, select);
}

// From the anchor up to an entry; where that was so before, only what is between the two ends changes.
void CQKDialogBase::SelectUpTo(QKListCtrl& list, int index) {
    ListKeys& keys = list.m_keys;
    const int found = list.Locate(keys.anchor);
    const int anchor = found >= 0 ? found : index;
    const auto [from, to] = std::minmax(anchor, index);
    const std::uint64_t generation = list.m_lstItems->Generation();
    if (keys.ranged && keys.generation == generation) {
        const auto [before, after] = std::minmax(anchor, keys.caret.index);
        list.SelectRange(before, from - 1, false);
        list.SelectRange(to + 1, after, false);
        list.SelectRange(from, before - 1, true);
        list.SelectRange(after + 1, to, true);
    } else {
        UnSelRcItem();
        list.SelectRange(from, to, true);
    }
    list.SetFocusItem(index);
    keys.anchor = list.MarkAt(anchor);
    keys.ranged = true;
    keys.generation = generation;
}

// The space bar: one more, or with Ctrl the one that is over.
bool CQKDialogBase::SelectFocused(QKListCtrl& list) {
    const int focused = list.GetFocusItem();
    if (focused < 0) return false;
    Entry& node = list.m_lstItems->EntryAt(focused);
    list.SelectNode(node, !IsHeld(VK_CONTROL) || node.unselected != 0);
    list.Pressed(node);
    return true;
}

bool CQKDialogBase::MoveFocus(QKListCtrl& list, UINT key) {
    using Way = QKListCtrl::Way;
    constexpr std::pair<UINT, Way> kWays[] = {
        {VK_UP, Way::Up},        {VK_DOWN, Way::Down},     {VK_LEFT, Way::Left}, {VK_RIGHT, Way::Right},
        {VK_PRIOR, Way::PageUp}, {VK_NEXT, Way::PageDown}, {VK_HOME, Way::Home}, {VK_END, Way::End}};
    const auto* const found =
        std::find_if(std::begin(kWays), std::end(kWays), [&](const auto& way) { return way.first == key; });
    if (found == std::end(kWays)) return false;
    const int to = list.Target(list.Caret(), found->second);
    if (to < 0) return false;
    if (IsHeld(VK_SHIFT)) {
        SelectUpTo(list, to);
    } else if (IsHeld(VK_CONTROL)) {
        const EntryMark anchor = list.m_keys.anchor;
        list.SetFocusItem(to);
        list.m_keys.anchor = anchor;
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
        if (!list->m_keys.on) continue;
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
    if (alive) watch.Tell();
    return true;
}

void CQKDialogBase::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (!HandleListKey(key)) CDialog::OnKeyDown(key, repeat, flags);
}
