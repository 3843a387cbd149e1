// A list that scrolls: which part of its content it shows.
#include <qkui/list/list_scroll.h>

#include <algorithm>

#include <qkui/items/scroll_bar.h>
#include <qkui/list/list_ctrl.h>
#include "items/arithmetic.h"
#include "list/list_entries.h"
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
    m_scroll.bar = bar;
}

void QKListCtrl::SetScrolling(int enable) {
    if (m_scroll.on == (enable != 0)) return;
    if (enable) {
        m_scroll.on = true;
        m_scroll.content = CPoint(m_nX, m_nY);
        SetArrange(0);
    } else {
        ScrollTo(CPoint());
        m_scroll = ListScroll();
    }
}

CRect QKListCtrl::Clipped(const CRect& rect) const {
    if (!m_scroll.on) return rect;
    CRect common;
    common.IntersectRect(rect, View());
    return common;
}

// A gap ends what is longer than the view: the last entry's frames may reach beyond its cell.
CSize QKListCtrl::Content() {
    const std::optional<CPoint> end = m_lstItems->ContentEnd();
    if (!end) return {0, 0};
    CSize size(Difference(end->x, m_scroll.content.x), Difference(end->y, m_scroll.content.y));
    if (size.cy > m_nHeight) size.cy = Sum(size.cy, std::max(m_nHIner, 0));
    return size;
}

CSize QKListCtrl::GetScrollMax() {
    return WithinMemory(CSize(), [this] {
        if (!m_scroll.on) return CSize();
        const CSize content = Content();
        return CSize(std::max(Difference(content.cx, m_nWidth), 0),
                     std::max(Difference(content.cy, m_nHeight), 0));
    });
}

CPoint QKListCtrl::GetScrollPos() {
    if (!m_scroll.on) return {};
    KeepInRange();
    return GetScrollPosNow();
}

int QKListCtrl::SetScrollPos(int x, int y) {
    return ScrollTo(CPoint(x, y));
}

// True when the content moved.
bool QKListCtrl::ScrollTo(CPoint position) {
    if (!m_scroll.on) return false;
    return WithinMemory(false, [&] {
        const Uninterrupted uninterrupted;
        const CSize most = GetScrollMax();
        const CPoint now = GetScrollPosNow();
        const CPoint by(Difference(now.x, std::clamp<int>(position.x, 0, most.cx)),
                        Difference(now.y, std::clamp<int>(position.y, 0, most.cy)));
        if (by == CPoint()) return false;
        m_lstItems->Scroll(by);
        m_scroll.content.Offset(by);
        m_scroll.carried.Offset(by);
        return true;
    });
}

// The position stays, as far as the new rectangle lets it.
void QKListCtrl::MoveView(const CRect& rect) {
    const CPoint position = GetScrollPosNow();
    QKItemBase::SetRect(&rect);
    m_scroll.content = CPoint(Difference(m_nX, position.x), Difference(m_nY, position.y));
}

int QKListCtrl::EnsureVisible(int index) {
    if (!m_scroll.on) return 0;
    return WithinMemory(0, [&] {
        if (index < 0 || index >= GetCount()) return 0;
        KeepInRange();
        const Entry& node = m_lstItems->EntryAt(index);
        if (!node.placed) return 0;
        const CRect cell = m_lstItems->CellOf(node);
        const CRect view = View();
        const CPoint now = GetScrollPosNow();
        return ScrollTo(CPoint(Difference(now.x, Uncover(cell.left, cell.right, view.left, view.right)),
                               Difference(now.y, Uncover(cell.top, Sum(cell.bottom, std::max(m_nHIner, 0)),
                                                         view.top, view.bottom))))
                   ? 1
                   : 0;
    });
}

// From an entry to the next one, across and down.
CSize QKListCtrl::LineSize() const {
    return {std::max(Sum(m_nItemWidth, m_nWIner), 1), std::max(Sum(m_nItemHeight, m_nHIner), 1)};
}

// Turns the wheel: up and down, or sideways where nothing lies below.
bool QKListCtrl::Turn(int delta) {
    const CSize most = GetScrollMax();
    const bool down = most.cy > 0;
    const int line = down ? LineSize().cy : LineSize().cx;
    const int page = std::max(down ? m_nHeight : m_nWidth, 1);
    const int notch =
        std::min(Saturate(std::int64_t{line} * (m_nListType == QKLT_LIST ? kWheelRows : 1)), page);
    if ((m_scroll.wheel < 0) != (delta > 0)) m_scroll.wheel = 0;  // turned back
    const std::int64_t turned = m_scroll.wheel - std::int64_t{delta} * notch;
    m_scroll.wheel = static_cast<int>(turned % WHEEL_DELTA);
    const int by = Saturate(turned / WHEEL_DELTA);
    const CPoint now = GetScrollPos();
    return ScrollTo(down ? CPoint(now.x, Sum(now.y, by)) : CPoint(Sum(now.x, by), now.y));
}

// ---- The bar

void QKListCtrl::FollowBar() {
    ScrollTo(CPoint(GetScrollPos().x, m_scroll.bar->GetScrollPos()));
}

// A thumb that stands for the position already stays: another pixel may do so, too.
void QKListCtrl::ShowOnBar() {
    QKVScrollBar& bar = *m_scroll.bar;
    const int most = GetScrollMax().cy;
    const int position = GetScrollPosNow().y;
    bar.SetBarLength(std::max(m_nHeight, 1), std::max(Sum(m_nHeight, most), 1));
    if (bar.GetScrollPos() != position || bar.GetBarPos() > bar.GetMax()) bar.SetScrollPos(position);
}

// ---- What is hit

std::vector<Entry*> QKListCtrl::HitBy(CPoint point) {
    if (m_scroll.on && !View().PtInRect(point)) return {};
    return m_lstItems->HitBy(point);
}

// A band that began in the view reaches as far as that part of the content has been moved since; any other
// one ends at the view.
CRect QKListCtrl::BandArea(const CRect& band) const {
    if (!m_scroll.on) return band;
    CRect reach = View();
    if (m_scroll.hasBand) {
        CRect began = reach;
        began.OffsetRect(m_scroll.carried);
        reach.UnionRect(CRect(reach), began);
    }
    CRect area;
    area.IntersectRect(band, reach);
    return area;
}
