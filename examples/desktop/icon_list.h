// The list of a desktop: its looks, and its grid of cells seen as columns and rows.
#pragma once

#include <QKUILib.h>

#include "examples/desktop/places.h"

namespace desktop {

class IconList : public QKListCtrl {
  public:
    IconList();

    // Into an area of the dialog. The grid starts at its top left, with the distances of now.
    void PlaceIn(const CRect& area);
    // How many cells the area shows. At least one each way.
    int Columns() const;
    int Rows() const;
    int Capacity() const { return Columns() * Rows(); }

    // Where an entry goes that belongs into a cell, for AddItem, and the cell that one lies in.
    CPoint CornerOf(Cell cell) const;
    Cell CellOf(const QKListItem& entry) const;
    // The cell nearest to a point of the dialog, within what the area shows.
    Cell NearestTo(CPoint corner) const;

    // Moves an entry with all that belongs to it, by pixels. Nothing is laid out.
    static void Shift(QKListItem& entry, CSize by);

    CSize Pitch() const { return {m_nItemWidth + m_nWIner, m_nItemHeight + m_nHIner}; }

  private:
    NineImages LoadFrame(UINT firstPicture);

    CRect area_;
};

}  // namespace desktop
