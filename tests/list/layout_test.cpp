// Where entries come to lie.
#include <limits>

#include "list/list_kit.h"

namespace {

using kit::TestList;

class ListLayout : public kit::HeadlessTest {};

// The random test holds every layout against a walk; these are its anchors.
TEST_F(ListLayout, FillsCellsInOrder) {
    const struct {
        const char* name;
        int type, columnsFirst;
        CRect list;
        const char* cells;  // and the list's rectangle afterwards
    } cases[] = {
        {"columns",
         0,
         1,
         {0, 0, 100, 200},
         "(0, 0, 75, 90)(0, 100, 75, 190)(77, 0, 152, 90)(0, 0, 152, 200)"},
        {"rows first",
         0,
         0,
         {0, 0, 200, 50},
         "(0, 0, 75, 90)(77, 0, 152, 90)(0, 100, 75, 190)(0, 0, 200, 190)"},
        {"corner",
         1,
         1,
         {9, 20, 300, 190},
         "(9, 20, 84, 94)(9, 102, 84, 176)(84, 20, 159, 94)(9, 20, 300, 190)"},
        {"exactly two",
         1,
         1,
         {0, 0, 75, 156},
         "(0, 0, 75, 74)(0, 82, 75, 156)(75, 0, 150, 74)(0, 0, 150, 156)"},
        {"rows", 2, 1, {5, 7, 205, 30}, "(5, 7, 205, 27)(5, 30, 205, 50)(5, 53, 205, 73)(5, 7, 205, 73)"},
        {"too low", 1, 1, {0, 0, 300, 81}, "(-1, -1, -1, -1)(-1, -1, -1, -1)(-1, -1, -1, -1)(0, 0, 300, 81)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestList list;
        list.SetListType(static_cast<QKListType>(c.type));
        list.SetArrange(c.columnsFirst);
        EXPECT_EQ(list.GetArrange(), !c.columnsFirst);
        for (int i = 0; i < 3; ++i)
            list.Add(u"x", 0);
        CRect rect(c.list);
        list.SetRect(&rect);
        std::ostringstream cells;
        for (int i = 0; i < 3; ++i)
            cells << list.Cell(i);
        cells << rect;
        EXPECT_EQ(cells.str(), c.cells);
        EXPECT_EQ(list.Place(), rect);
    }
}

TEST_F(ListLayout, PlacesAroundWhatTheHostPlaced) {
    TestList list(QKLT_ICON, CRect(0, 0, 300, 164));  // cells at y 0 and 82
    list.AddIn(CRect(-10, 60, 80, 100));              // covers the second cell's corner, and the third's not
    list.Add(u"a");
    list.Add(u"b");
    EXPECT_EQ(list.Cell(1), CRect(0, 0, 75, 74));
    EXPECT_EQ(list.Cell(2), CRect(75, 0, 150, 74));
    list.RemoveAt(list.GetItem(1), 1);  // leaves a gap, which is filled next
    EXPECT_EQ(list.Cell(1), CRect(75, 0, 150, 74));
    list.Add(u"c");
    EXPECT_EQ(list.Cell(2), CRect(0, 0, 75, 74));
    list.GetItem(0)->rcItem.OffsetRect(1000, 0);  // frees a cell
    list.Add(u"d");
    EXPECT_EQ(list.Cell(3), CRect(0, 82, 75, 156));
    list.ReSetPos(1);
    EXPECT_EQ(list.Cell(0), CRect(0, 0, 75, 74));
    EXPECT_EQ(list.GetListMaxWidth(), 150);
    EXPECT_EQ(list.GetListMaxHeight(), 156);
    // Where cells of a negative size may end at the line's end, but would start beyond it, no place is left.
    list.RemoveAll();
    list.SetListType(QKLT_ICON, -1, 20, 5, 5, 20, 3);
    list.SetArrange(0);
    list.QKItemBase::SetRect(0, 0, 37, 100);
    list.AddIn(CRect(0, 0, 30, 50));
    list.Add(u"x");
    EXPECT_EQ(list.Cell(1), CRect());
}

TEST_F(ListLayout, PlacesAtAPointOfADesktop) {
    struct Case {
        const char* name;
        int x, y;
        CPoint cell;
    };
    // Two cells to a column at y 10 and 92; the bottom band begins at 188 - 82 = 106.
    const Case cases[] = {
        {"the first", 12, 12, {10, 10}},
        {"taken: the next below", 40, 60, {10, 92}},
        {"taken: the next column", 40, 60, {85, 10}},
        {"far to the right", 400, 20, {385, 10}},
        {"second of its column", 400, 100, {385, 92}},
        {"the gap counts", 84, 90, {85, 92}},
        {"the bottom band", 400, 130, {160, 10}},
        {"left of the list", -50, 20, {160, 92}},
        {"above the list", 500, -9, {235, 10}},
    };
    TestList list(QKLT_ICON, CRect(10, 10, 300, 188));
    list.SetListMode(QKLIST_DESKTOP);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        list.AddAt(u"x", c.x, c.y);
        EXPECT_EQ(list.Cell(list.GetCount() - 1).TopLeft(), c.cell);
    }
    list.SetListMode(QKLIST_NORMAL);
    QKListItem record;
    record.rcItem = CRect(1, 2, 3, 4);
    list.AddItem(&record, 12, 12);
    EXPECT_EQ(list.Cell(list.GetCount() - 1), CRect(1, 2, 3, 4));
}

// Whatever the settings and whatever lies in the way, the search for a cell comes to an end.
TEST_F(ListLayout, EverySearchEnds) {
    constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();
    const int steps[] = {-100, -1, 0, 1, 20, kHigh};
    for (const int type : {0, 1, 2, 7})
        for (const int stepX : steps)
            for (const int stepY : steps)
                for (const int columns : {0, 1})
                    for (const CRect& obstacle : {CRect(kLow, kLow, kHigh, kHigh), CRect(0, kLow, 50, kHigh),
                                                  CRect(kLow, 0, kHigh, 60), CRect(0, 0, 90, 90)}) {
                        TestList list;
                        list.SetListType(static_cast<QKListType>(type), 10, 10, 5, 5,
                                         stepX - 10 < stepX ? stepX - 10 : kHigh,
                                         stepY - 10 < stepY ? stepY - 10 : kHigh);
                        list.SetArrange(columns);
                        list.SetListMode(QKLIST_DESKTOP);
                        list.QKItemBase::SetRect(0, 0, 100, 100);
                        list.AddIn(obstacle);
                        list.Add(u"x");
                        for (const CPoint point : {CPoint(5, 5), CPoint(-5, 5), CPoint(kHigh, kHigh)})
                            list.AddAt(u"x", point.x, point.y);
                        EXPECT_EQ(list.GetCount(), 5);
                    }
}

// As above: the random test measures every caption.
TEST_F(ListLayout, MeasuresTheStateRectangles) {
    kit::ListDialog dialog;
    dialog.Open();
    const LPCWSTR caption = u"a caption of very many words that no cell can hold at all";
    TestList grid(QKLT_BIGICON, CRect(20, 10, 300, 300)), rows(QKLT_LIST, CRect(20, 10, 300, 300));
    const auto measured = [&](float width, float height) {
        Gdiplus::StringFormat format;
        format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
        return Gdiplus::GetTextExtent(caption, -1, grid.m_pFont.get(), {0, 0, width, height}, &format).box;
    };
    grid.Add(caption);
    EXPECT_TRUE(grid.Look(0).rcMState.IsRectEmpty());  // no dialog yet
    dialog.AddQKItem(&grid);
    grid.ReSetPos(1);
    EXPECT_EQ(grid.Look(0).rcText, CRect(20, 66, 95, 100));
    EXPECT_EQ(grid.Look(0).rcMState, CRect(20, 10, 95, static_cast<int>(69 + measured(75, 34).Height)));
    EXPECT_EQ(grid.Look(0).rcFState, CRect(20, 10, 95, static_cast<int>(69 + measured(75, 400).Height)));
    EXPECT_GT(grid.Look(0).rcFState.bottom, grid.Look(0).rcMState.bottom);
    dialog.AddQKItem(&rows);
    rows.Add(caption);
    EXPECT_EQ(rows.Look(0).rcText, CRect(43, 14, 277, 30));
    const int width = static_cast<int>(measured(234, 16).Width);
    EXPECT_EQ(rows.Look(0).rcMState, CRect(20, 10, 48 + width, 33));
    EXPECT_EQ(rows.Look(0).rcFState, CRect(20, 10, 48 + width, 33));
    kit::SetText(rows.GetItem(0)->szText, u"");
    rows.ReCalcStateRect(rows.GetItem(0));
    EXPECT_EQ(rows.Look(0).rcMState.Width(), 80);
}

TEST_F(ListLayout, FrameSetsAreNineOrNothing) {
    TestList list;
    CStringArray paths;
    for (int i = 0; i < 8; ++i)
        paths.Add(u"nowhere.png");
    list.SetStatus(QKItemBase::QK_MOUSEON);
    list.SetMouseMoveImage(paths);
    paths.Add(u"nowhere.png");
    list.SetMouseDownImage(paths);
    EXPECT_EQ(list.GetStatus(), QKItemBase::QK_MOUSEON);
    EXPECT_EQ(list.m_format.GetAlignment(), Gdiplus::StringAlignmentCenter);
    list.SetListType(QKLT_LIST);
    EXPECT_EQ(list.m_format.GetAlignment(), Gdiplus::StringAlignmentNear);
}

}  // namespace
