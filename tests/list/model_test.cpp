// The collection: adoption and ownership, identifiers, order, and the selection.
#include "list/list_kit.h"

namespace {

using kit::TestList;

class ListModel : public kit::HeadlessTest {};

std::u16string Order(const TestList& list) {
    std::u16string names;
    for (int i = 0; i < list.GetCount(); ++i)
        names += list.Look(i).szText[0];
    return names;
}

TEST_F(ListModel, AdoptsACopyAndLeavesTheStateBehind) {
    Gdiplus::Bitmap bitmap(4, 3);
    HICON icon;
    ASSERT_EQ(bitmap.GetHICON(&icon), Gdiplus::Ok);
    QKListItem record;
    record.pImage = bitmap.Clone();
    record.pImage2 = bitmap.Clone();
    record.hIcon = icon;
    record.nID = 77;
    record.nUser1 = 1;
    record.nUser5 = 5;
    record.rcItem = CRect(1, 2, 3, 4);
    record.rcMState = CRect(0, 0, 50, 50);
    record.nSelState = record.nFocusState = record.bShowText = record.nClickSel = 0;
    record.nMouseState = 2;
    record.nAlpha = 3;
    kit::SetText(record.szText, u"caption");
    kit::SetText(record.szPath, u"/a/path");
    kit::SetText(record.szTextCath, u"caption");
    TestList list;
    EXPECT_EQ(list.AddItem(&record, 0), 1);
    EXPECT_EQ(record.pImage, nullptr);
    EXPECT_EQ(record.pImage2, nullptr);
    EXPECT_EQ(record.hIcon, icon);
    EXPECT_FALSE(DestroyIcon(icon));  // gone already
    const QKListItem& entry = list.Look(0);
    ASSERT_NE(entry.pImage, nullptr);
    ASSERT_NE(entry.pImage2, nullptr);
    EXPECT_EQ(entry.pImage->GetWidth(), 4U);
    EXPECT_TRUE(entry.hIcon);
    EXPECT_EQ(entry.nID, 0);
    EXPECT_EQ(entry.nUser1 + entry.nUser5, 6);
    EXPECT_EQ(entry.rcItem, CRect(1, 2, 3, 4));
    EXPECT_TRUE(entry.rcMState.IsRectNull());
    EXPECT_EQ(entry.nSelState + entry.nFocusState + entry.bShowText + entry.nClickSel, 4);
    EXPECT_EQ(entry.nMouseState, 0);
    EXPECT_EQ(entry.nAlpha, 255);
    EXPECT_EQ(CString(entry.szText), u"caption");
    EXPECT_EQ(CString(entry.szPath), u"/a/path");
    EXPECT_EQ(entry.szTextCath[0], 0);
    const HICON own = entry.hIcon;
    list.RemoveAll();
    EXPECT_FALSE(DestroyIcon(own));
    // The record may be used again; a text without end is cut.
    for (WCHAR* text : {record.szText, record.szPath})
        std::fill_n(text, QKListItem::kTextUnits, u'x');
    record.hIcon = HICON();
    list.AddItem(&record, 0);
    EXPECT_EQ(CString(list.Look(0).szText).GetLength(), 259);
    EXPECT_EQ(CString(list.Look(0).szPath).GetLength(), 259);
}

TEST(ListRecord, TextsAreSetWithinTheirRoom) {
    QKListItem record;
    const std::u16string full(QKListItem::kTextUnits - 1, u'x');
    EXPECT_TRUE(record.SetText(full.c_str()));
    EXPECT_TRUE(record.SetPath(full.c_str()));
    EXPECT_EQ(CString(record.szText), full.c_str());
    // A character of two units at the end of the room goes as a whole; nothing reaches the field behind.
    record.nUser1 = 7;
    EXPECT_FALSE(record.SetText((full.substr(1) + u"\U0001F319" + full).c_str()));
    EXPECT_EQ(CString(record.szText), full.substr(1).c_str());
    EXPECT_FALSE(record.SetPath((full + u"x").c_str()));
    EXPECT_EQ(record.szPath[0] + record.nUser1, 7);
}

// The entries' own texts may lack their end, too.
TEST_F(ListModel, TextsEndWithTheirRecord) {
    kit::ListDialog dialog;
    dialog.Open();
    TestList list(QKLT_ICON, CRect(0, 0, 200, 160));
    dialog.AddQKItem(&list);
    list.Add(std::u16string(QKListItem::kTextUnits - 1, u'x').c_str());
    list.ReSetPos(1);
    QKListItem& entry = *list.GetItem(0);
    const CRect whole = entry.rcFState;
    for (WCHAR* text : {entry.szText, entry.szPath, entry.szTextCath})
        std::fill_n(text, QKListItem::kTextUnits, u'x');
    list.ReCalcStateRect(&entry);
    EXPECT_EQ(entry.rcFState, whole);
    dialog.Refresh();
    EXPECT_EQ(list.SetTextCath(&entry, std::u16string(QKListItem::kTextUnits - 1, u'x').c_str()), 0);
    const Gdiplus::Image* const caption = entry.pTextImage;
    ASSERT_NE(caption, nullptr);
    dialog.SetBackColor(Gdiplus::Color(0xFF123456), 1);
    dialog.Refresh();
    EXPECT_EQ(entry.pTextImage, caption);  // rendered once
    EXPECT_EQ(list.SetTextCath(&entry, u"x"), 1);
}

TEST_F(ListModel, CopiesShareTheirEntries) {
    auto list = std::make_unique<TestList>(QKLT_ICON, CRect(0, 0, 200, 160));
    list->Add(u"a");
    const std::weak_ptr<const void> life = qkui::ListAccess::Life(*list);
    TestList copy;
    copy.Add(u"gone");
    copy = *list;
    const TestList& itself = copy;
    copy = itself;
    EXPECT_EQ(copy.Place(), list->Place());
    copy.Add(u"b");
    EXPECT_EQ(Order(*list), u"ab");
    *list = copy;
    list->RemoveAt(list->GetItem(0), 1);
    list.reset();
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(Order(copy), u"b");
    EXPECT_EQ(copy.Cell(0), CRect(0, 82, 75, 156));
}

TEST_F(ListModel, KeepsOrderAndIdentifiers) {
    TestList list;
    EXPECT_EQ(list.ComputerID(), 0);
    EXPECT_EQ(list.GetItem(0), nullptr);
    for (const LPCWSTR name : {u"a", u"b", u"c"})
        list.Add(name);
    EXPECT_EQ(list.Look(2).nID, 2);
    EXPECT_EQ(list.ComputerID(), 3);
    EXPECT_EQ(list.RemoveAt(list.GetItem(2), 1), 1);
    list.Add(u"d");  // the freed identifier comes again
    EXPECT_EQ(list.Look(2).nID, 2);
    list.GetItem(0)->nID = 40;
    EXPECT_EQ(list.ComputerID(), 41);

    for (const auto& [index, order] : std::initializer_list<std::pair<int, std::u16string>>{
             {0, u"iabd"}, {2, u"iaibd"}, {5, u"iaibdi"}, {-1, u"iaibdii"}, {99, u"iaibdiii"}}) {
        QKListItem record;
        record.SetText(u"i");
        list.InsertItem(&record, index);
        EXPECT_EQ(Order(list), order);
    }
    QKListItem* first = list.GetItem(0);
    QKListItem* last = list.GetItem(4);
    EXPECT_EQ(list.ChangeItemPos(first, last), 0);
    EXPECT_EQ(Order(list), u"daibiiii");
    QKListItem stranger;
    EXPECT_EQ(list.ChangeItemPos(first, &stranger), 0);
    EXPECT_EQ(Order(list), u"daibiiii");
    list.SetSel(&stranger, 1);
    EXPECT_EQ(list.ItemInSelect(&stranger), 1);
    EXPECT_EQ(list.RemoveAt(&stranger, 1), 0);  // no entry, but out of the selection
    EXPECT_EQ(list.ItemInSelect(&stranger), 0);

    // Taken out alive, and put into another's place.
    QKListItem* taken = list.GetItem(1);
    EXPECT_EQ(list.RemoveAt(taken, 0), 1);
    EXPECT_EQ(Order(list), u"dibiiii");
    QKListItem* replaced = list.GetItem(0);
    list.SetItem(0, taken);
    list.SetItem(-1, taken);
    list.SetItem(99, taken);
    list.SetItem(1, nullptr);
    EXPECT_EQ(Order(list), u"aibiiii");
    delete replaced;
    list.SetItem(0, list.GetItem(2));  // twice in the list, and freed once
    delete taken;
    EXPECT_EQ(Order(list), u"bibiiii");
    EXPECT_EQ(list.RemoveAt(list.GetItem(0), 1), 1);
    EXPECT_EQ(Order(list), u"iiiii");
    QKListItem* out = &stranger;
    EXPECT_EQ(list.GetItem(5, &out), 0);
    EXPECT_EQ(out, &stranger);
    EXPECT_EQ(list.GetItem(4, &out), 1);
    EXPECT_EQ(out, list.GetItem(4));
}

// Of entries got long ago, changes are seen where it is asked for the entry, and in the end in any case.
TEST_F(ListModel, ChangesOfManyEntriesAreFoundByAndBy) {
    constexpr int kMany = 1500, kLately = 64, kOld = 7;
    kit::ListDialog dialog;
    dialog.Open();
    TestList list(QKLT_ICON, CRect(0, 0, 300, 200));
    dialog.AddQKItem(&list);
    std::vector<QKListItem*> got;
    for (int i = 0; i < kMany; ++i) {
        list.Add(u"x");
        got.push_back(list.GetItem(i));
    }
    const auto selected = [&] { return dialog.GetNumsSel(); };
    const auto frame = [&] { Headless::RunPending(), dialog.UpdateView(), Headless::RunPending(); };
    got[kMany - kLately]->nSelState = 0;
    EXPECT_EQ(selected(), 1);
    struct Case {
        const char* name;
        std::function<void()> asks;
    };
    const Case cases[] = {
        {"got", [&] { EXPECT_EQ(list.GetItem(kOld), got[kOld]); }},
        {"passed", [&] { list.ReCalcStateRect(got[kOld]); }},
        {"under the pointer", [&] { dialog.MoveOnList(&list, list.Place(), got[kOld]->rcItem.TopLeft()); }},
        {"laid out", [&] { list.ReSetPos(1); }},
        {"drawn", frame},
        {"selected",
         [&] { list.SelectAll(), list.UnSelRcItem(), got[kOld]->nSelState = 0, list.ReSetPos(0); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        list.UnSelRcItem();
        for (int i = 100; i < 100 + kLately; ++i)
            list.GetItem(i);
        got[kOld]->nSelState = 0;
        c.asks();
        EXPECT_EQ(selected(), 1);
    }
    list.UnSelRcItem();
    got[kMany / 2]->nSelState = 0;  // out of sight
    for (int i = 0; i < kMany; i += 64)
        frame();
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(got[kMany / 2]->nSelState, 0);
    list.UnSelRcItem();
    EXPECT_EQ(got[kMany / 2]->nSelState, 1);
    // Its place is that of when it was got.
    const CRect before = got[kOld]->rcItem, moved(0, -50, 300, 150);
    list.SetRect(&moved);
    EXPECT_EQ(got[kOld]->rcItem, before);
    EXPECT_EQ(list.GetItem(kOld)->rcItem.top, before.top - 50);
}

TEST_F(ListModel, SelectsInTwoPlaces) {
    TestList list;
    for (int i = 0; i < 4; ++i)
        list.Add(u"x");
    QKListItem* entry = list.GetItem(1);
    EXPECT_EQ(list.SetSel(entry, 1), 1);
    EXPECT_EQ(list.SetSel(entry, 1), 0);
    EXPECT_EQ(entry->nSelState, 0);
    EXPECT_EQ(list.ItemInSelect(entry), 1);
    entry->nSelState = 1;  // by the host
    EXPECT_EQ(list.SetSel(entry, 0), 0);
    EXPECT_EQ(list.ItemInSelect(entry), 0);
    EXPECT_EQ(list.UnSelRcItem(), 0);
    EXPECT_EQ(list.SetSel(nullptr, 1), 0);
    EXPECT_EQ(list.SetSel(9, 1), 0);
    list.SetSignalSel(2);
    EXPECT_EQ(list.Look(2).nSelState, 0);
    EXPECT_EQ(list.UnSelRcItem(), 1);

    list.GetItem(3)->nMouseState = 1;
    list.GetItem(0)->nMouseState = 2;
    EXPECT_EQ(list.RemoveMoveState(), 1);
    EXPECT_EQ(list.RemoveMoveState(), 0);
    EXPECT_EQ(list.ClearState(), 1);
    EXPECT_EQ(list.ClearState(), 0);

    list.GetItem(1)->pAlphaImage = Gdiplus::Bitmap(1, 1).Clone();
    list.GetItem(1)->nAlpha = 7;
    EXPECT_EQ(list.ClearAlphImage(), 1);
    EXPECT_EQ(list.Look(1).pAlphaImage, nullptr);
    EXPECT_EQ(list.Look(1).nAlpha, 255);
    EXPECT_EQ(list.ClearAlphImage(), 0);
    EXPECT_EQ(list.SetTextCath(entry, u"new"), 1);
    EXPECT_EQ(list.SetTextCath(entry, u"new"), 0);
}

}  // namespace
