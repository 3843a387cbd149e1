// Selected entries dragged out as files: what a receiver gets, and what its answer does to the lists.
#include <cstring>
#include <functional>

#include "list/list_kit.h"

namespace {

using kit::ListDialog;
using kit::TestList;

class Receiver : public Headless::DropTarget {
  public:
    Receiver() : DropTarget(CRect(500, 0, 640, 480)) {}
    DROPEFFECT Over(const Headless::DraggedFiles& files) override {
        over = files;
        if (const auto act = onOver) act();
        return accepts & files.allowed;
    }
    DROPEFFECT Drop(const Headless::DraggedFiles& files) override {
        dropped = files;
        ++drops;
        return answer;
    }
    void Leave() override { ++left; }

    DROPEFFECT accepts = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    DROPEFFECT answer = DROPEFFECT_MOVE;
    std::function<void()> onOver;
    Headless::DraggedFiles over, dropped;
    int drops = 0;
    int left = 0;
};

// Steps of the user while the drag blocks.
void Later(std::function<void()> act) {
    Headless::WhenIdle(
        [](void* argument) {
            const std::unique_ptr<std::function<void()>> step(static_cast<std::function<void()>*>(argument));
            (*step)();
        },
        new std::function<void()>(std::move(act)));
}
void MoveOnto() {
    Headless::MovePointer(560, 200);
}
void LetGo() {
    Headless::ButtonUp();
}

// Two lists of three and two files, four cells of 75 by 74 in a row.
class DragOut : public kit::HeadlessTest {
  public:
    void SetUp() override {
        HeadlessTest::SetUp();
        dialog = std::make_unique<ListDialog>();
        ASSERT_TRUE(dialog->Create(kit::kDialogTemplate));
        dialog->SetWindowPos(HWND(), 100, 100, 320, 240, SWP_NOZORDER);
        dialog->SetNoMove(1);
        int top = 0;
        for (TestList* list : {&first, &second}) {
            dialog->AddQKItem(list);  // with a window, so that captions are measured
            list->SetListType(QKLT_ICON);
            list->SetArrange(0);
            CRect place(0, top, 300, top + 74);
            list->SetRect(&place);
            top += 100;
        }
        Fill(first, {u"/a", u"/b/c", u"/d"});
        Fill(second, {u"/x", u"/y"});
        dialog->Show();
    }
    void TearDown() override {
        Headless::ButtonUp();
        dialog.reset();
    }
    static void Fill(TestList& list, std::initializer_list<LPCWSTR> paths) {
        for (const LPCWSTR path : paths) {
            QKListItem record;
            kit::SetText(record.szText, u"x");
            kit::SetText(record.szPath, path);
            list.AddItem(&record, 1);
        }
    }
    // The paths that are left, and which of them are selected.
    static std::string Of(const TestList& list) {
        std::string all;
        for (int i = 0; i < list.GetCount(); ++i)
            all += (i ? " " : "") + ToUtf8(list.Look(i).szPath) + (list.Look(i).nSelState == 0 ? "*" : "");
        return all;
    }
    // With the button held where nothing is.
    int Drag() {
        dialog->Press(310, 230);
        return dialog->DoDropSource();
    }
    // Twice on an entry of the list on top, the only one that a double click reaches; the second press is
    // held and drawn along.
    void DoubleClickAndDrag(int entry) {
        Headless::Advance(1000);
        const CPoint at(75 * entry + 37, 120);
        dialog->Click(at.x, at.y);
        dialog->Press(at.x, at.y);
        dialog->Move(at.x + 5, at.y);
    }

    Receiver receiver;
    TestList first, second;
    std::unique_ptr<ListDialog> dialog;
};

std::vector<BYTE> Bytes(std::u16string_view list) {
    std::vector<BYTE> bytes(20 + 2 * list.size());
    bytes[0] = 20;
    bytes[16] = 1;
    std::memcpy(bytes.data() + 20, list.data(), 2 * list.size());
    return bytes;
}

TEST_F(DragOut, TheBlockIsAHeaderAndThePathsOfTheListOnTopFirst) {
    using namespace std::string_view_literals;
    const auto select = [](TestList& list, std::initializer_list<int> indexes) {
        list.UnSelRcItem();
        for (const int index : indexes)
            list.SetSel(index, 1);
    };
    const auto dragged = [&](std::u16string_view list, const std::vector<CString>& seen) {
        Later(MoveOnto);
        Later(LetGo);
        EXPECT_EQ(Drag(), 0);
        EXPECT_EQ(receiver.dropped.block, Bytes(list));
        EXPECT_EQ(receiver.dropped.Paths(), seen);
    };
    receiver.answer = DROPEFFECT_COPY;
    kit::SetText(first.GetItem(0)->szPath, u"/12345.é");
    select(first, {0});
    dragged(u"/12345.é\0\0"sv, {u"/12345.é"});
    select(first, {2, 1});  // not in the order of selecting
    select(second, {1});
    dragged(u"/y\0/b/c\0/d\0\0"sv, {u"/y", u"/b/c", u"/d"});
    select(first, {0, 1, 2});
    select(second, {});
    first.GetItem(1)->szPath[0] = 0;  // ends what is seen of it
    dragged(u"/12345.é\0\0/d\0\0"sv, {u"/12345.é"});
    first.SetShow(0);  // a list that is hidden is none, one that is disabled is
    second.SetEnable(0);
    second.SelectAll();
    dragged(u"/x\0/y\0\0"sv, {u"/x", u"/y"});
    EXPECT_EQ(receiver.drops, 4);
}

TEST_F(DragOut, OneGestureDragsAnEntryAllTheWay) {
    Headless::Drag(dialog->m_hWnd, 37, 120, 460, 100, 2);
    EXPECT_EQ(receiver.drops, 1);
    EXPECT_EQ(Of(second), "/y");
}

TEST_F(DragOut, OnlyAMoveTakesTheEntriesAway) {
    const auto away = [] { Headless::MovePointer(450, 20); };
    const auto escape = [] { Headless::KeyDown(VK_ESCAPE); };
    const auto keys = [&] {  // Shift asks for a move, and Ctrl for a copy
        Headless::KeyDown(VK_CONTROL);
        EXPECT_EQ(receiver.over.allowed, DWORD{DROPEFFECT_COPY});
        EXPECT_EQ(receiver.over.keys, WPARAM{MK_CONTROL});
        Headless::KeyUp(VK_CONTROL);
        Headless::KeyDown(VK_SHIFT);
    };
    constexpr DROPEFFECT kCopy = DROPEFFECT_COPY, kMove = DROPEFFECT_MOVE, kBoth = kCopy | kMove;
    const struct {
        const char* what;
        DROPEFFECT accepts, answer;
        std::vector<std::function<void()>> steps;
        int drops, left;
        bool moved = false;
    } cases[] = {
        {"copy", kBoth, kCopy, {MoveOnto, LetGo}, 1, 0},
        {"none", kBoth, DROPEFFECT_NONE, {MoveOnto, LetGo}, 1, 0},
        {"both", kBoth, kBoth, {MoveOnto, LetGo}, 1, 0},
        {"a link, never allowed", kBoth, DROPEFFECT_LINK, {MoveOnto, LetGo}, 1, 0},
        {"not accepted", 0, kMove, {MoveOnto, LetGo}, 0, 1},
        {"nobody there", kBoth, kMove, {LetGo}, 0, 0},
        {"away again", kBoth, kMove, {MoveOnto, away, LetGo}, 0, 1},
        {"Escape", kBoth, kMove, {MoveOnto, escape}, 0, 1},
        {"keys", kCopy, kMove, {MoveOnto, keys, LetGo}, 0, 1},
        {"move", kBoth, kMove, {MoveOnto, LetGo}, 1, 0, true},
    };
    first.SetSel(0, 1);
    first.SetSel(2, 1);
    second.SetSel(1, 1);
    const CRect cell = first.Cell(1);
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        receiver.accepts = one.accepts;
        receiver.answer = one.answer;
        receiver.drops = receiver.left = 0;
        for (const auto& step : one.steps)
            Later(step);
        EXPECT_EQ(Drag(), one.moved);
        EXPECT_EQ(receiver.drops, one.drops);
        EXPECT_EQ(receiver.left, one.left);
        EXPECT_EQ(Of(first), one.moved ? "/b/c" : "/a* /b/c /d*");
        EXPECT_EQ(Of(second), one.moved ? "/x" : "/x /y*");
        EXPECT_EQ(GetCapture(), HWND());
        Headless::ButtonUp();
        for (const UINT key : {VK_ESCAPE, VK_SHIFT})
            Headless::KeyUp(key);
    }
    EXPECT_EQ(first.Cell(0), cell) << "the others stay where they are";
    EXPECT_EQ(dialog->DoDropSource(), 0) << "nothing is selected";
    EXPECT_EQ(dialog->DeleteSelectedFiles(), 0);
}

TEST_F(DragOut, ADoubleClickThatIsHeldBeginsIt) {
    Later([&] {
        EXPECT_EQ(dialog->m_bDragOut, 0);
        EXPECT_EQ(Headless::CursorShown(), 32648U) << "the dialog takes nothing";
        dialog->UpdateView();
        Headless::RunPending();
        EXPECT_EQ(dialog->DoDropSource(), 0) << "one at a time";
        MoveOnto();
        EXPECT_EQ(Headless::CursorShown(), 32512U);
    });
    int refreshes = 0;
    Later([&] { refreshes = dialog->refreshes, LetGo(); });
    DoubleClickAndDrag(1);
    EXPECT_EQ(Of(second), "/x");
    EXPECT_EQ(dialog->refreshes, refreshes + 1);
    // The next move begins none.
    dialog->Move(20, 20);
    EXPECT_EQ(receiver.drops, 1);

    // A button that was held down is not any more.
    kit::TestButton button(150, 190);
    dialog->AddQKItem(&button);
    first.SetSel(0, 1);
    Later(LetGo);
    Headless::Advance(1000);
    dialog->Click(160, 200);
    dialog->Press(160, 200);
    EXPECT_EQ(button.GetStatus(), QKItemBase::QK_MOUSEDOWN);
    dialog->Move(165, 200);
    EXPECT_EQ(button.GetStatus(), QKItemBase::QK_NORMAL);
    EXPECT_EQ(button.clicks, 1);
    dialog->Click(160, 200);
    EXPECT_EQ(button.clicks, 2);
    dialog->RemoveQKItem(&button);
}

TEST_F(DragOut, NothingIsTouchedOfADialogThatEnds) {
    second.SelectAll();
    receiver.onOver = [&] { dialog->DestroyWindow(); };
    Later(MoveOnto);
    Later(LetGo);
    DoubleClickAndDrag(0);
    EXPECT_EQ(Of(second), "/y") << "the window alone was gone";
    receiver.onOver = [&] { dialog.reset(); };
    Later(MoveOnto);
    Later(LetGo);
    ListDialog* const raw = dialog.get();
    ASSERT_TRUE(dialog->Create(kit::kDialogTemplate));
    dialog->Show();
    Headless::MovePointer(10, 10);
    Headless::ButtonDown();
    second.SetSel(0, 1);
    EXPECT_EQ(raw->DoDropSource(), 0);
    EXPECT_EQ(Of(second), "/y*");
}

// A dialog that takes files, and says what it heard.
class Taker : public ListDialog {
  public:
    Taker() {
        Create(kit::kDialogTemplate);
        SetWindowPos(HWND(), 450, 300, 100, 100, SWP_NOZORDER);
        DragAcceptFiles();
        Show();
    }
    void OnDropFiles(HDROP drop) {
        const UINT count = DragQueryFileW(drop, kAllFiles, nullptr, 0);
        for (UINT i = 0; i < count; ++i) {
            std::u16string path(DragQueryFileW(drop, i, nullptr, 0), u'\0');
            EXPECT_EQ(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1), path.size());
            paths.push_back(path.c_str());
        }
        WCHAR small[4] = u"xyz";
        EXPECT_EQ(DragQueryFileW(drop, 0, small, 3), 2U);
        EXPECT_EQ(CString(small), paths[0].Left(2));
        EXPECT_EQ(DragQueryFileW(drop, 0, small, 0), 0U);
        EXPECT_EQ(DragQueryFileW(drop, count, small, 4), 0U);
        EXPECT_TRUE(DragQueryPoint(drop, &point));
        DragFinish(drop);
        EXPECT_EQ(DragQueryFileW(drop, kAllFiles, nullptr, 0), 0U);
        EXPECT_FALSE(DragQueryPoint(drop, &point));
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DROPFILES) effects = static_cast<DROPEFFECT>(lParam);
        const LRESULT result = ListDialog::WindowProc(message, wParam, lParam);
        return message == WM_DROPFILES ? answer : result;
    }
    DECLARE_MESSAGE_MAP()
  public:
    std::vector<CString> paths;
    CPoint point;
    DROPEFFECT effects = DROPEFFECT_NONE;
    LRESULT answer = 0;
};
BEGIN_MESSAGE_MAP(Taker, ListDialog)
ON_WM_DROPFILES()
END_MESSAGE_MAP()

TEST_F(DragOut, ADialogOfTheProgramMayTakeThem) {
    constexpr DROPEFFECT kBoth = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    Taker taker;
    const auto ontoTaker = [] { Headless::MovePointer(460, 320); };
    const struct {
        const char* what;
        bool moves, shift;
        LRESULT answer;
        DROPEFFECT effects;
        bool moved;
    } cases[] = {
        {"reads them", false, false, 0, DROPEFFECT_COPY, false},
        {"reads them, whatever is asked for and said", false, true, DROPEFFECT_MOVE, DROPEFFECT_COPY, false},
        {"could move them", true, false, 0, kBoth, false},
        {"moves them", true, true, DROPEFFECT_MOVE, DROPEFFECT_MOVE, true},
    };
    first.SelectAll();
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        DragAcceptMoves(taker.m_hWnd, one.moves);
        taker.paths.clear();
        taker.answer = one.answer;
        Later(ontoTaker);
        if (one.shift) Later([] { Headless::KeyDown(VK_SHIFT); });
        Later(LetGo);
        EXPECT_EQ(Drag(), one.moved);
        Headless::KeyUp(VK_SHIFT);
        EXPECT_EQ(taker.effects, one.effects);
        EXPECT_EQ(taker.paths, (std::vector<CString>{u"/a", u"/b/c", u"/d"}));
        EXPECT_EQ(taker.point, CPoint(10, 20));
        EXPECT_EQ(first.GetCount(), one.moved ? 0 : 3);
    }

    // From elsewhere.
    Headless::MovePointer(470, 310);
    taker.paths.clear();
    EXPECT_EQ(Headless::DropFiles({u"/x y", u"/z"}), DWORD{DROPEFFECT_MOVE});
    EXPECT_EQ(taker.paths, (std::vector<CString>{u"/x y", u"/z"}));
    taker.EnableWindow(FALSE);
    EXPECT_EQ(Headless::DropFiles({u"/x"}), DWORD{DROPEFFECT_NONE}) << "disabled";
    taker.EnableWindow(TRUE);
    taker.DragAcceptFiles(FALSE);
    EXPECT_EQ(Headless::DropFiles({u"/x"}), DWORD{DROPEFFECT_NONE}) << "not any more";
    EXPECT_EQ(taker.paths.size(), 2U);
    // Nobody handles them.
    ::DragAcceptFiles(dialog->m_hWnd, TRUE);
    Headless::MovePointer(110, 110);
    EXPECT_EQ(Headless::DropFiles({u"/x"}), DWORD{DROPEFFECT_COPY});
}

}  // namespace
