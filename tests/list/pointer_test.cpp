// The pointer over lists: hover, press, focus, selection, the rubber band.
#include "list/list_kit.h"

namespace {

using kit::ListDialog;
using kit::TestList;

// Four cells of 75 by 74 in a row, from (0, 0) on; captions of one line end at 62 or so.
class ListPointer : public kit::HeadlessTest {
  public:
    void SetUp() override {
        HeadlessTest::SetUp();
        dialog = std::make_unique<ListDialog>();
        list = std::make_unique<TestList>();
        ASSERT_TRUE(dialog->Create(kit::kDialogTemplate));
        dialog->SetWindowPos(HWND(), 100, 100, 320, 240, SWP_NOZORDER);
        dialog->SetNoMove(1);
        dialog->AddQKItem(list.get());
        list->SetListType(QKLT_ICON);
        list->SetArrange(0);
        CRect place(0, 0, 300, 160);
        list->SetRect(&place);
        for (const LPCWSTR name : {u"a", u"b", u"c", u"d"})
            list->Add(name);
        list->SetRClickCallBack([this](QKListItem* entry, CPoint) { Called("R", entry); });
        list->SetClickCallBack([this](QKListItem* entry, CPoint) { Called("C", entry); });
        list->SetDblClickCallBack([this](QKListItem* entry) { Called("D", entry); });
        dialog->Show();
    }
    void Called(const char* what, QKListItem* entry) {
        calls += what;
        calls += entry ? static_cast<char>(entry->szText[0]) : '-';
    }
    // A letter for each entry: mouse state, focus, selection.
    std::string States(const TestList& of) const {
        std::string states;
        for (int i = 0; i < of.GetCount(); ++i) {
            const QKListItem& entry = of.Look(i);
            if (i > 0) states += ' ';
            states += static_cast<char>('0' + entry.nMouseState);
            states += entry.nFocusState == 0 ? "f" : "";
            states += entry.nSelState == 0 ? "s" : "";
        }
        return states;
    }
    std::string States() const { return States(*list); }
    static CPoint At(int entry) { return {75 * entry + 37, 20}; }

    std::unique_ptr<ListDialog> dialog;
    std::unique_ptr<TestList> list;
    std::string calls;
};

TEST_F(ListPointer, GoesThroughItsStates) {
    using Dialog = ListDialog;
    constexpr int kNone = 9;
    struct Step {
        const char* name;
        void (Dialog::*event)(UINT, CPoint);
        int entry;
        const char *states, *calls;
    };
    const std::vector<Step> clicks = {
        {"hover", &Dialog::OnMouseMove, 0, "1 0 0 0", ""},
        {"hover moves on", &Dialog::OnMouseMove, 1, "0 1 0 0", ""},
        {"off all", &Dialog::OnMouseMove, kNone, "0 0 0 0", ""},
        {"press", &Dialog::OnLButtonDown, 1, "0 2fs 0 0", ""},
        {"a move makes it hover", &Dialog::OnMouseMove, 1, "0 1fs 0 0", ""},
        {"release", &Dialog::OnLButtonUp, 1, "0 1fs 0 0", "Cb"},
        {"press another: the hover stays", &Dialog::OnLButtonDown, 2, "0 1 2fs 0", ""},
        {"released elsewhere", &Dialog::OnLButtonUp, 3, "0 0 2f 1s", "Cd"},
        {"press empty space", &Dialog::OnLButtonDown, kNone, "0 0 2 1s", ""},
        {"release there", &Dialog::OnLButtonUp, kNone, "0 0 0 1s", ""},
        {"double click: no focus left", &Dialog::OnLButtonDblClk, 0, "2s 0 0 1", "Da"},
        {"release of it", &Dialog::OnLButtonUp, 0, "1s 0 0 0", "Ca"},
        {"right press: no selection", &Dialog::OnRButtonDown, 1, "1s 2f 0 0", ""},
        {"right release", &Dialog::OnRButtonUp, 1, "1s 2f 0 0", "Rb"},
        {"right release on nothing", &Dialog::OnRButtonUp, kNone, "1s 2f 0 0", "R-"},
    };
    const std::vector<Step> bands = {
        {"press", &Dialog::OnLButtonDown, 1, "0 2fs 0 0", ""},
        {"release unselects all", &Dialog::OnLButtonUp, 1, "0 1f 0 0", "Cb"},
        {"right press on nothing", &Dialog::OnRButtonDown, kNone, "0 1 0 0", ""},
    };
    for (const bool band : {false, true}) {
        list->ClearState();
        dialog->SetSelRect(band);
        for (const Step& step : band ? bands : clicks) {
            SCOPED_TRACE(step.name);
            calls.clear();
            (dialog.get()->*step.event)(0, step.entry == kNone ? CPoint(150, 140) : At(step.entry));
            EXPECT_EQ(States(), step.states);
            EXPECT_EQ(calls, step.calls);
        }
    }
}

TEST_F(ListPointer, SelectsAsDesktopsDo) {
    for (const int index : {0, 1})
        list->SetSel(index, 1);
    dialog->Press(37, 20);  // of several selected: they stay, for a drag
    EXPECT_EQ(States(), "2fs 0s 0 0");
    dialog->Release(37, 20);  // the click itself selects one
    EXPECT_EQ(States(), "1fs 0 0 0");
    list->GetItem(2)->nClickSel = 0;
    dialog->OnLButtonUp(0, At(2));
    EXPECT_EQ(States(), "0fs 0 1 0");
    // A selection reaches over all lists of the dialog.
    TestList other(QKLT_ICON, CRect(0, 170, 300, 240));
    dialog->AddQKItem(&other);
    other.AddIn(CRect(0, 170, 75, 230));
    other.GetItem(0)->rcMState = CRect(0, 170, 75, 230);
    dialog->Click(10, 180);
    EXPECT_EQ(States(other), "1fs");
    EXPECT_EQ(States(), "0f 0 0 0");
    EXPECT_EQ(dialog->GetNumsSel(), 1);
    other.SetShow(0);
    EXPECT_EQ(dialog->GetNumsSel(), 0);
    other.SetShow(1);
    // Right clicks ask the topmost list alone.
    calls.clear();
    dialog->OnRButtonUp(0, At(1));
    EXPECT_EQ(calls, "");
    other.SetEnable(0);
    dialog->OnRButtonUp(0, At(1));
    EXPECT_EQ(calls, "Rb");
    dialog->RemoveQKItem(&other);

    // A double press arms the drag of what is selected, until the release.
    list->GetItem(2)->nClickSel = 1;
    dialog->OnLButtonDblClk(0, At(1));
    EXPECT_EQ(dialog->m_bDragOut, 1);
    dialog->OnLButtonUp(0, At(1));
    EXPECT_EQ(dialog->m_bDragOut, 0);
    dialog->OnLButtonDblClk(0, CPoint(150, 150));
    EXPECT_EQ(dialog->m_bDragOut, 0);
    dialog->OnLButtonUp(0, CPoint(150, 150));
    // Leaving takes hover and press, asked for by a host.
    list->GetItem(0)->nMouseState = 2;
    EXPECT_EQ(dialog->MoveLeaveList(list.get(), list->Place()), 1);
    EXPECT_EQ(dialog->MoveLeaveList(list.get(), list->Place()), 0);
    // A dialog that is left behind shows no focus, and refreshes once for it.
    dialog->Press(37, 20);
    dialog->Release(37, 20);
    const int before = dialog->refreshes;
    dialog->OnActivate(WA_INACTIVE, HWND(), FALSE);
    EXPECT_EQ(States(), "1s 0 0 0");
    EXPECT_EQ(dialog->refreshes, before + 1);
    dialog->OnActivate(WA_INACTIVE, HWND(), FALSE);
    EXPECT_EQ(dialog->refreshes, before + 1);
}

TEST_F(ListPointer, TheFirstOfOverlappingEntriesTakesThePointer) {
    for (int i = 1; i < 4; ++i)
        list->GetItem(i)->rcMState = CRect(10, 10, 60, 60);
    dialog->OnMouseMove(0, CPoint(30, 30));
    EXPECT_EQ(States(), "1 0 0 0");
    dialog->OnMouseMove(0, CPoint(30, 30));  // the next one is reached, and the first one left
    EXPECT_EQ(States(), "0 1 0 0");
    dialog->OnLButtonDown(0, CPoint(30, 30));
    EXPECT_EQ(States(), "2fs 1 0 0");
    dialog->OnLButtonDown(0, CPoint(30, 30));
    EXPECT_EQ(States(), "2 2fs 0 0");
    // A release that changes nothing more goes through all of them.
    for (int i = 0; i < 4; ++i) {
        list->GetItem(i)->nMouseState = 1;
        list->GetItem(i)->nClickSel = 0;
    }
    calls.clear();
    dialog->OnLButtonUp(0, CPoint(30, 30));
    EXPECT_EQ(calls, "CaCbCcCd");
}

TEST_F(ListPointer, ABandSelectsWhatItTouchesNowInEveryList) {
    TestList other(QKLT_ICON, CRect(0, 170, 300, 240));
    dialog->AddQKItem(&other);
    other.SetParent(dialog->m_hWnd);
    other.AddIn(CRect(0, 170, 75, 230));
    other.GetItem(0)->rcMState = CRect(0, 170, 75, 230);
    dialog->SetSelRect(1);
    list->SetListMode(QKLIST_DESKTOP);
    list->SetSel(3, 1);
    struct Step {
        const char* name;
        int x, y;
        std::string here, there;
        int count;
    };
    const Step steps[] = {
        {"no height yet", 290, 150, "0 0 0 0", "0", 0}, {"over two", 100, 20, "0 1s 0s 0s", "0", 3},
        {"over all", 5, 5, "1s 0s 0s 0s", "0", 4},      {"smaller again", 160, 30, "0 0 1s 0s", "0", 2},
        {"the other way", 20, 180, "0 0 0 0", "1s", 1}, {"no width", 290, 235, "0 0 0 0", "0", 0},
    };
    dialog->Press(290, 150);
    EXPECT_EQ(dialog->m_bSelecting, 1);
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        dialog->Move(step.x, step.y);
        EXPECT_EQ(States(), step.here);
        EXPECT_EQ(States(other), step.there);
        EXPECT_EQ(dialog->GetNumsSel(), step.count);
    }
    dialog->Move(100, 20);
    dialog->Release(100, 20);  // a band's selection outlives it, and no click selects
    EXPECT_EQ(States(), "0 1s 0s 0s");
    EXPECT_TRUE(dialog->m_rcSel.IsRectNull());
    // Over a list of the other mode no single press starts one, but a double press does.
    dialog->RemoveQKItem(&other);
    list->SetListMode(QKLIST_NORMAL);
    dialog->OnLButtonDown(0, CPoint(290, 150));
    EXPECT_EQ(dialog->m_bSelecting, 0);
    dialog->OnLButtonUp(0, CPoint(290, 150));
    dialog->OnLButtonDblClk(0, CPoint(290, 150));
    EXPECT_EQ(dialog->m_bSelecting, 1);
    dialog->OnLButtonUp(0, CPoint(290, 150));
}

}  // namespace
