// A list that scrolls: which part of its content it shows.
#include <algorithm>

#include <qkui/items/scroll_bar.h>
#include <qkui/list/list_ctrl.h>
#include "items/arithmetic.h"
#include "list/list_access.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

constexpr int kWheelRows = 3;  // to a notch, where cells are rows

// How far a view must move to the left or up, at the least, to show a span; its beginning where it is longer.
int Uncover(int begin, int end, int viewBegin, int viewEnd) {
    const int by = std::min(0, Difference(viewEnd, end));
    return Sum(begin, by) < viewBegin ? Difference(viewBegin, begin) : by;
}

}  // namespace

void QKListCtrl::SetScrollBar(QKVScrollBar* bar) {
    SetScrolling(1);
    SetKeyboard(1);
    m_state->scroll.bar = bar;
}

void QKListCtrl::SetScrolling(int enable) {
    if (m_state->scroll.on == (enable != 0)) return;
    if (enable) {
        m_state->scroll.on = true;
        m_state->scroll.content = CPoint(m_nX, m_nY);
        SetArrange(0);
    } else {
        ListAccess::ScrollTo(*this, CPoint());
        m_state->scroll = ListScroll();
    }
}

int QKListCtrl::IsScrolling() const {
    return m_state->scroll.on;
}

CPoint ListAccess::Corner(const QKListCtrl& list) {
    return Scroll(list).on ? Scroll(list).content : CPoint(list.m_nX, list.m_nY);
}

CRect ListAccess::View(const QKListCtrl& list) {
    return {CPoint(list.m_nX, list.m_nY), CSize(list.m_nWidth, list.m_nHeight)};
}

CPoint ListAccess::GetScrollPosNow(const QKListCtrl& list) {
    return {list.m_nX - Scroll(list).content.x, list.m_nY - Scroll(list).content.y};
}

CRect ListAccess::Clipped(const QKListCtrl& list, const CRect& rect) {
    if (!list.m_state->scroll.on) return rect;
    CRect common;
    common.IntersectRect(rect, View(list));
    return common;
}

// A gap ends what is longer than the view: the last entry's frames may reach beyond its cell.
CSize ListAccess::Content(QKListCtrl& list) {
    const std::optional<CPoint> end = Entries(list).ContentEnd();
    if (!end) return {0, 0};
    CSize size(Difference(end->x, list.m_state->scroll.content.x),
               Difference(end->y, list.m_state->scroll.content.y));
    if (size.cy > list.m_nHeight) size.cy = Sum(size.cy, std::max(list.m_nHIner, 0));
    return size;
}

CSize QKListCtrl::GetScrollMax() {
    return WithinMemory(CSize(), [this] {
        if (!m_state->scroll.on) return CSize();
        const CSize content = ListAccess::Content(*this);
        return CSize(std::max(Difference(content.cx, m_nWidth), 0),
                     std::max(Difference(content.cy, m_nHeight), 0));
    });
}

CPoint QKListCtrl::GetScrollPos() {
    if (!m_state->scroll.on) return {};
    ListAccess::KeepInRange(*this);
    return ListAccess::GetScrollPosNow(*this);
}

int QKListCtrl::SetScrollPos(int x, int y) {
    return ListAccess::ScrollTo(*this, CPoint(x, y));
}

// True when the content moved.
bool ListAccess::ScrollTo(QKListCtrl& list, CPoint position) {
    if (!list.m_state->scroll.on) return false;
    return WithinMemory(false, [&] {
        const Uninterrupted uninterrupted;
        const CSize most = list.GetScrollMax();
        const CPoint now = GetScrollPosNow(list);
        const CPoint by(Difference(now.x, std::clamp<int>(position.x, 0, most.cx)),
                        Difference(now.y, std::clamp<int>(position.y, 0, most.cy)));
        if (by == CPoint()) return false;
        Entries(list).Scroll(by);
        list.m_state->scroll.content.Offset(by);
        list.m_state->scroll.carried.Offset(by);
        return true;
    });
}

// The position stays, as far as the new rectangle lets it.
void ListAccess::MoveView(QKListCtrl& list, const CRect& rect) {
    const CPoint position = GetScrollPosNow(list);
    list.QKItemBase::SetRect(&rect);
    list.m_state->scroll.content =
        CPoint(Difference(list.m_nX, position.x), Difference(list.m_nY, position.y));
}

int QKListCtrl::EnsureVisible(int index) {
    if (!m_state->scroll.on) return 0;
    return WithinMemory(0, [&] {
        if (index < 0 || index >= GetCount()) return 0;
        ListAccess::KeepInRange(*this);
        const Entry& entry = m_state->entries->EntryAt(index);
        if (!entry.placed) return 0;
        const CRect cell = m_state->entries->CellOf(entry);
        const CRect view = ListAccess::View(*this);
        const CPoint now = ListAccess::GetScrollPosNow(*this);
        return ListAccess::ScrollTo(
                   *this, CPoint(Difference(now.x, Uncover(cell.left, cell.right, view.left, view.right)),
                                 Difference(now.y, Uncover(cell.top, Sum(cell.bottom, std::max(m_nHIner, 0)),
                                                           view.top, view.bottom))))
                   ? 1
                   : 0;
    });
}

// From an entry to the next one, across and down.
CSize ListAccess::LineSize(const QKListCtrl& list) {
    return {std::max(Sum(list.m_nItemWidth, list.m_nWIner), 1),
            std::max(Sum(list.m_nItemHeight, list.m_nHIner), 1)};
}

// Turns the wheel: up and down, or sideways where nothing lies below.
bool ListAccess::Turn(QKListCtrl& list, int delta) {
    const CSize most = list.GetScrollMax();
    const bool down = most.cy > 0;
    const int line = down ? LineSize(list).cy : LineSize(list).cx;
    const int page = std::max(down ? list.m_nHeight : list.m_nWidth, 1);
    const int notch =
        std::min(Saturate(std::int64_t{line} * (list.m_nListType == QKLT_LIST ? kWheelRows : 1)), page);
    if ((list.m_state->scroll.wheel < 0) != (delta > 0)) list.m_state->scroll.wheel = 0;  // turned back
    const std::int64_t turned = list.m_state->scroll.wheel - std::int64_t{delta} * notch;
    list.m_state->scroll.wheel = static_cast<int>(turned % WHEEL_DELTA);
    const int by = Saturate(turned / WHEEL_DELTA);
    const CPoint now = list.GetScrollPos();
    return ScrollTo(list, down ? CPoint(now.x, Sum(now.y, by)) : CPoint(Sum(now.x, by), now.y));
}

// ---- The bar

void ListAccess::FollowBar(QKListCtrl& list) {
    ScrollTo(list, CPoint(list.GetScrollPos().x, list.m_state->scroll.bar->GetScrollPos()));
}

// A thumb that stands for the position already stays: another pixel may do so, too.
void ListAccess::ShowOnBar(QKListCtrl& list) {
    QKVScrollBar& bar = *list.m_state->scroll.bar;
    const int most = list.GetScrollMax().cy;
    const int position = GetScrollPosNow(list).y;
    bar.SetBarLength(std::max(list.m_nHeight, 1), std::max(Sum(list.m_nHeight, most), 1));
    if (bar.GetScrollPos() != position || bar.GetBarPos() > bar.GetMax()) bar.SetScrollPos(position);
}

// ---- What is hit

std::vector<Entry*> ListAccess::HitBy(QKListCtrl& list, CPoint point) {
    if (list.m_state->scroll.on && !View(list).PtInRect(point)) return {};
    return Entries(list).HitBy(point);
}

// A band that began in the view reaches as far as that part of the content has been moved since; any other
// one ends at the view.
CRect ListAccess::BandArea(const QKListCtrl& list, const CRect& band) {
    if (!list.m_state->scroll.on) return band;
    CRect reach = View(list);
    if (list.m_state->scroll.hasBand) {
        CRect began = reach;
        began.OffsetRect(list.m_state->scroll.carried);
        reach.UnionRect(CRect(reach), began);
    }
    CRect area;
    area.IntersectRect(band, reach);
    return area;
}
