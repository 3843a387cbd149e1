// Where entries come to lie.
#include <limits>

#include "list/list_kit.h"

namespace {

using kit::TestList;

class ListLayout : public kit::HeadlessTest {};

TEST_F(ListLayout, FillsCellsInOrder) {
    struct Case {
        const char* name;
        QKListType type;
        int columnsFirst;
        CRect list;
        std::vector<CRect> cells;
        CSize grown;
    };
    const Case cases[] = {
        {"columns",
         QKLT_BIGICON,
         1,
         CRect(0, 0, 100, 200),
         {CRect(0, 0, 75, 90), CRect(0, 100, 75, 190), CRect(77, 0, 152, 90)},
         CSize(152, 200)},
        {"rows first",
         QKLT_BIGICON,
         0,
         CRect(0, 0, 200, 50),
         {CRect(0, 0, 75, 90), CRect(77, 0, 152, 90), CRect(0, 100, 75, 190)},
         CSize(200, 190)},
        {"a corner elsewhere",
         QKLT_ICON,
         1,
         CRect(10, 20, 300, 190),
         {CRect(10, 20, 85, 94), CRect(10, 102, 85, 176), CRect(85, 20, 160, 94)},
         CSize(290, 170)},
        {"exactly two",
         QKLT_ICON,
         1,
         CRect(0, 0, 75, 156),
         {CRect(0, 0, 75, 74), CRect(0, 82, 75, 156), CRect(75, 0, 150, 74)},
         CSize(150, 156)},
        {"rows",
         QKLT_LIST,
         1,
         CRect(5, 7, 205, 30),
         {CRect(5, 7, 205, 27), CRect(5, 30, 205, 50), CRect(5, 53, 205, 73)},
         CSize(200, 66)},
        {"too low for a cell",
         QKLT_ICON,
         1,
         CRect(0, 0, 300, 81),
         {CRect(-1, -1, -1, -1), CRect(-1, -1, -1, -1)},
         CSize(300, 81)},
        {"too narrow for a cell",
         QKLT_BIGICON,
         0,
         CRect(0, 0, 76, 300),
         {CRect(-1, -1, -1, -1)},
         CSize(76, 300)},
        {"an unknown type is a grid of rows' cells",
         static_cast<QKListType>(9),
         1,
         CRect(0, 0, 100, 50),
         {CRect(0, 0, -1, 20)},
         CSize(100, 50)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestList list;
        list.SetListType(c.type);
        list.SetArrange(c.columnsFirst);
        EXPECT_EQ(list.GetArrange(), !c.columnsFirst);
        list.QKItemBase::SetRect(c.list.left, c.list.top, c.list.Width(), c.list.Height());
        for (std::size_t i = 0; i < c.cells.size(); ++i)
            list.Add(u"x");
        CRect rect(c.list);
        list.SetRect(&rect);  // the same again, from nothing
        for (std::size_t i = 0; i < c.cells.size(); ++i)
            EXPECT_EQ(list.Cell(static_cast<int>(i)), c.cells[i]) << i;
        EXPECT_EQ(rect, CRect(c.list.TopLeft(), c.grown));
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
    for (const QKListType preset : {QKLT_BIGICON, QKLT_LIST}) {
        TestList list(preset, CRect(0, 0, 200, 200));
        list.SetListMode(QKLIST_DESKTOP);
        for (int i = 0; i < 20; ++i)
            list.AddAt(u"x", 150, 150);
        EXPECT_EQ(list.GetCount(), 20);
    }
}

float Measured(const TestList& list, LPCWSTR text, int width, int height, bool ofWidth) {
    Gdiplus::StringFormat format;
    format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    const Gdiplus::RectF box =
        Gdiplus::GetTextExtent(text, -1, list.m_pFont.get(),
                               {0, 0, static_cast<float>(width), static_cast<float>(height)}, &format)
            .box;
    return ofWidth ? box.Width : box.Height;
}

TEST_F(ListLayout, MeasuresTheStateRectangles) {
    kit::ListDialog dialog;
    dialog.Open();
    for (const LPCWSTR caption :
         {u"", u"short", u"a caption of very many words that no cell can hold at all"}) {
        SCOPED_TRACE(ToUtf8(caption));
        const LPCWSTR text = caption[0] ? caption : u"0";
        TestList grid(QKLT_BIGICON, CRect(20, 10, 300, 300));
        grid.Add(caption);
        EXPECT_TRUE(grid.Look(0).rcMState.IsRectEmpty());  // no dialog yet
        dialog.AddQKItem(&grid);
        grid.ReSetPos(1);
        const CRect caption0(20, 66, 95, 100);
        EXPECT_EQ(grid.Look(0).rcText, caption0);
        const int least = static_cast<int>(66 + Measured(grid, text, 75, 34, false) + 3);
        const int most = static_cast<int>(66 + Measured(grid, text, 75, 400, false) + 3);
        EXPECT_EQ(grid.Look(0).rcMState, CRect(20, 10, 95, least));
        EXPECT_EQ(grid.Look(0).rcFState, CRect(20, 10, 95, most));
        EXPECT_EQ(most > least, text[1] == u' ');

        TestList rows(QKLT_LIST, CRect(20, 10, 300, 300));
        dialog.AddQKItem(&rows);
        rows.Add(caption);
        EXPECT_EQ(rows.Look(0).rcText, CRect(43, 14, 277, 30));
        const int width = static_cast<int>(Measured(rows, text, 234, 16, true));
        EXPECT_EQ(rows.Look(0).rcMState, CRect(20, 10, 20 + std::max(80, 18 + 5 + width + 5), 33));
        EXPECT_EQ(rows.Look(0).rcFState, CRect(20, 10, 20 + std::max(80, 18 + 10 + width), 33));

        // The host's caption, told.
        kit::SetText(rows.GetItem(0)->szText, u"another one that is a good deal longer");
        rows.ReCalcStateRect(rows.GetItem(0));
        EXPECT_GT(rows.Look(0).rcMState.Width(), 150);
        // Heights alone, after new settings.
        grid.SetListType(QKLT_BIGICON, 75, 120, 60, 60, 2, 10);
        EXPECT_EQ(grid.Cell(0), CRect(20, 10, 95, 100));
        grid.ReSetPos(0);
        EXPECT_EQ(grid.Cell(0), CRect(20, 10, 95, 130));
        EXPECT_EQ(grid.Look(0).rcText, CRect(20, 78, 95, 130));
        EXPECT_EQ(grid.Look(0).rcMState.bottom,
                  static_cast<int>(78 + Measured(grid, text, 75, 52, false) + 3));
        dialog.RemoveAllQKItem();
    }
}

// A list that only moves moves its entries as a new layout of them would place them.
TEST_F(ListLayout, AMovedListIsOneLaidOutThere) {
    kit::ListDialog dialog;
    dialog.Open();
    for (const QKListType type : {QKLT_BIGICON, QKLT_LIST}) {
        SCOPED_TRACE(type);
        TestList moved, fresh;
        for (TestList* list : {&moved, &fresh}) {
            list->SetListType(type);
            dialog.AddQKItem(list);
            for (int i = 0; i < 40; ++i)
                list->Add(CString(u'w', i), 0);
        }
        CRect from(0, 0, 200, 200);
        moved.SetRect(&from);
        moved.GetItem(7)->rcText.SetRectEmpty();  // whatever the host did to it
        kit::SetText(moved.GetItem(8)->szText, u"new");
        kit::SetText(fresh.GetItem(8)->szText, u"new");
        for (const CPoint by : {CPoint(0, -333), CPoint(17, 5), CPoint(-400, 90)}) {
            CRect a(by, CSize(200, 200)), b(a);
            moved.SetRect(&a);
            fresh.RedrawList();
            fresh.QKItemBase::SetRect(0, 0, 1, 1);
            fresh.SetRect(&b);
            EXPECT_EQ(a, b);
            for (int i = 0; i < 40; ++i) {
                EXPECT_EQ(moved.Look(i).rcItem, fresh.Look(i).rcItem) << i;
                EXPECT_EQ(moved.Look(i).rcText, fresh.Look(i).rcText) << i;
                EXPECT_EQ(moved.Look(i).rcMState, fresh.Look(i).rcMState) << i;
                EXPECT_EQ(moved.Look(i).rcFState, fresh.Look(i).rcFState) << i;
            }
        }
        moved.RemoveAll();
        EXPECT_EQ(moved.GetListMaxHeight(), -90);
        moved.AddIn(CRect(-400, 90, -400, 90));  // an empty cell in the corner
        EXPECT_EQ(moved.GetListMaxHeight(), 0);
        dialog.RemoveAllQKItem();
    }
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
