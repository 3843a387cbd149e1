#include "examples/desktop/icon_list.h"

#include <algorithm>

#include "examples/desktop/picture.h"
#include "examples/desktop/resource.h"

namespace desktop {
namespace {

constexpr int kCellWidth = 96;
constexpr int kCellHeight = 112;  // the icon, and two lines below it
constexpr int kGap = 10;

}  // namespace

IconList::IconList() {
    SetListMode(QKLIST_DESKTOP);
    SetListType(QKLT_BIGICON);  // captions below, centred
    SetListType(QKLT_BIGICON, kCellWidth, kCellHeight, kIconSide, kIconSide, kGap, kGap);
    m_pMoveImage = LoadFrame(IDP_HOVER);
    m_pDownImage = LoadFrame(IDP_PRESS);
    m_pFouceImage = LoadFrame(IDP_FOCUS);
}

QKListCtrl::NineImages IconList::LoadFrame(UINT firstPicture) {
    NineImages images;
    for (UINT part = 0; part < images.size(); ++part)
        images[part] = LoadShared(firstPicture + part, u"PNG");
    return images;
}

void IconList::PlaceIn(const CRect& area) {
    area_ = area;
    // One pixel higher than its rows: a list that ends with its last row takes a point in that row for one
    // below all rows, and puts the entry into the first free cell.
    CRect place(area.left, area.top, area.right, area.top + Rows() * Pitch().cy + 1);
    SetRect(&place);
}

int IconList::Columns() const {
    return std::max(1, (area_.Width() + m_nWIner) / static_cast<int>(Pitch().cx));
}

int IconList::Rows() const {
    return std::max(1, (area_.Height() + m_nHIner) / static_cast<int>(Pitch().cy));
}

CPoint IconList::CornerOf(Cell cell) const {
    return {m_nX + cell.column * Pitch().cx, m_nY + cell.row * Pitch().cy};
}

Cell IconList::CellOf(const QKListItem& entry) const {
    return {(entry.rcItem.left - m_nX) / Pitch().cx, (entry.rcItem.top - m_nY) / Pitch().cy};
}

Cell IconList::NearestTo(CPoint corner) const {
    const auto nearest = [](int distance, int pitch, int count) {
        return std::clamp((distance + pitch / 2) / pitch, 0, count - 1);
    };
    return {nearest(corner.x - m_nX, Pitch().cx, Columns()), nearest(corner.y - m_nY, Pitch().cy, Rows())};
}

void IconList::Shift(QKListItem& entry, CSize by) {
    for (CRect* rect : {&entry.rcItem, &entry.rcText, &entry.rcMState, &entry.rcFState})
        rect->OffsetRect(by.cx, by.cy);
}

}  // namespace desktop
