// Lists that scroll: what a list without clipping shows, clipped; and what keys, wheel, thumb and band do to
// it.
#include <random>

#include "list/list_kit.h"

namespace {

using kit::ListDialog;
using kit::TestList;

constexpr std::uint32_t kBack = 0xFF203040;
const CRect kNone(-1, -1, -1, -1);

struct Dialog : ListDialog {
    using CQKDialogBase::DrawListCtrl;
    void Start(const CRect& window) {
        ASSERT_TRUE(Create(kit::kDialogTemplate));
        SetWindowPos(HWND(), window.left, window.top, window.Width(), window.Height(), SWP_NOZORDER);
        SetNoMove(1);
        SetBackColor(Gdiplus::Color(kBack), 1);
    }
    // By parts of a notch: WHEEL_DELTA is a whole one.
    void Wheel(int x, int y, int turned) {
        const CPoint at = Screen(x, y);
        SendMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(static_cast<WORD>(turned)) << 16,
                    MAKELPARAM(at.x, at.y));
        Headless::RunPending();
    }
    void Key(UINT key, std::initializer_list<UINT> held = {}) {
        for (const UINT modifier : held)
            Headless::KeyDown(modifier);
        Headless::KeyDown(key);
        Headless::KeyUp(key);
        for (const UINT modifier : held)
            Headless::KeyUp(modifier);
        Headless::RunPending();
    }
};

// A list that scrolls beside one that does not, with the same entries.
class Beside {
  public:
    explicit Beside(unsigned seed) : random_(seed) {
        scrolled_.Start({50, 50, 350, 300});
        plain_.Start({0, 0, 300, 250});
        CStringArray frame;
        for (int i = 0; i < 9; ++i)
            frame.Add(kit::Solid("focus", 0x40400000, 4, 4));
        list_.SetFouceImage(frame);
        all_.SetFouceImage(frame);
        const CString strip = kit::Strip("bar", {kit::kNormal, kit::kOver, kit::kPressed}, 12, 10, true);
        bar_.SetBarImage(strip, strip, strip);
        list_.SetScrollBar(&bar_);
        all_.SetArrange(0);
        bar_.SetRect(270, 20, 12, 180);
        scrolled_.AddQKItem(&list_);
        scrolled_.AddQKItem(&bar_);
        plain_.AddQKItem(&all_);
        const QKListType type = Roll(2) ? QKLT_LIST : QKLT_ICON;
        list_.SetListType(type);
        all_.SetListType(type);
        Resize();
        for (int i = 0; i < 40; ++i)
            Add();
        scrolled_.Show();
    }

    void Step() {
        constexpr UINT kKeys[] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_PRIOR, VK_NEXT, VK_HOME, VK_END};
        const CPoint point(Roll(300), Roll(240));
        const int index = list_.GetCount() ? Roll(list_.GetCount()) : 0;
        QKListItem *const entry = list_.GetItem(index), *const same = all_.GetItem(index);
        const auto unplace = [](QKListItem* e) { e->rcItem = e->rcText = e->rcMState = e->rcFState = kNone; };
        const std::function<void()> acts[] = {[&] { Add(); },
                                              [&] { Place(); },
                                              [&] { Roll(12) == 0 ? Resize() : Add(); },
                                              [&] { list_.RemoveAt(entry, 1), all_.RemoveAt(same, 1); },
                                              [&] { unplace(entry), unplace(same); },
                                              [&] { list_.SetScrollPos(0, Roll(1500)); },
                                              [&] { list_.EnsureVisible(index); },
                                              [&] { DragThumb(); },
                                              [&] { scrolled_.Wheel(point.x, point.y, (Roll(9) - 4) * 60); },
                                              [&] { Press(point); },
                                              [&] { scrolled_.Key(kKeys[Roll(8)]); }};
        constexpr int kOften[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 8, 8, 9, 10, 10, 10, 10};
        acts[kOften[Roll(16)]]();
    }

    void Compare() {
        scrolled_.Refresh();
        const CPoint position = list_.GetScrollPos();
        const CSize most = list_.GetScrollMax();
        ASSERT_TRUE(position.x >= 0 && position.y >= 0 && position.x <= most.cx && position.y <= most.cy);
        for (int i = 0; i < list_.GetCount(); ++i) {
            const QKListItem& entry = list_.Look(i);
            QKListItem& wanted = *all_.GetItem(i);
            const CPoint by = wanted.rcItem.left == -1 ? CPoint() : CPoint(-position.x, -position.y);
            EXPECT_EQ(entry.rcItem, CRect(wanted.rcItem) + by) << "entry " << i;
            EXPECT_EQ(entry.rcMState, CRect(wanted.rcMState) + by) << "entry " << i;
            if (wanted.nFocusState != entry.nFocusState) wanted.szTextCath[0] = 0;
            wanted.nFocusState = entry.nFocusState;
            wanted.nMouseState = entry.nMouseState;
            wanted.nSelState = entry.nSelState;
        }
        ComparePictures(position);
        EXPECT_NEAR(bar_.GetPos(), position.y, 1 + most.cy / std::max(bar_.GetMax(), 1));
    }

  private:
    int Roll(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void Add() {
        const CString name(std::string(static_cast<std::size_t>(1 + Roll(14)), 'n').c_str());
        list_.Add(name);
        all_.Add(name);
    }
    void DragThumb() {
        bar_.SetBarPos(0);
        scrolled_.Press(bar_.GetMax() > 0 ? 275 : 295, 25);
        scrolled_.Release(275, 25 + Roll(150));
    }
    // By the host, anywhere in the content.
    void Place() {
        const CRect cell(CPoint(Roll(220), Roll(900)) + CPoint(kCorner), CSize(60, 50));
        const auto place = [](TestList& list, const CRect& at) {
            list.AddIn(at);
            QKListItem* entry = list.GetItem(list.GetCount() - 1);
            entry->rcText = CRect(at.left, at.top + 20, at.right, at.bottom);
            kit::SetText(entry->szText, u"placed by the host");
            list.ReCalcStateRect(entry);
        };
        place(all_, cell);
        place(list_, cell - list_.GetScrollPos());
    }
    void Resize() {
        CRect given(kCorner, CSize(150 + Roll(100), 100 + Roll(80)));
        list_.SetRect(&given);
        view_ = given;
        // Rows begin where all of their icons is to be seen.
        if (list_.GetListType() == QKLT_LIST) given.left += list_.GetImageWidth() / 2;
        all_.SetRect(&given);
        list_.RedrawList();  // captions that were seen are stretched otherwise
        all_.RedrawList();
    }
    void Press(CPoint point) {
        const CPoint position = list_.GetScrollPos();
        int wanted = -1;
        for (int i = 0; wanted < 0 && view_.PtInRect(point) && i < all_.GetCount(); ++i)
            if (all_.Look(i).rcMState.PtInRect(point + position)) wanted = i;
        scrolled_.Press(point.x, point.y);
        EXPECT_TRUE(wanted < 0 || list_.GetSelectedIndexes() == std::vector<int>{wanted});
        scrolled_.Release(point.x, point.y);
    }
    void ComparePictures(CPoint position) {
        Gdiplus::Bitmap all(300, 3000);
        Gdiplus::Graphics graphics(&all);
        graphics.Clear(Gdiplus::Color(kBack));
        const HDC dc = graphics.GetHDC();
        plain_.DrawListCtrl(dc, &all_);
        graphics.ReleaseHDC(dc);
        const Headless::Picture shown = Headless::Capture(scrolled_.m_hWnd);
        for (int y = 0; y < shown.height; ++y)
            for (int x = 0; x < 268; ++x) {
                Gdiplus::Color wanted(kBack);
                if (view_.PtInRect(POINT{x, y})) all.GetPixel(x + position.x, y + position.y, &wanted);
                ASSERT_EQ(shown.At(x, y), wanted.GetValue()) << x << ", " << y << " at " << position.y;
            }
    }

    static constexpr POINT kCorner = {12, 20};
    std::mt19937 random_;
    Dialog scrolled_, plain_;
    TestList list_, all_;
    QKVScrollBar bar_;
    CRect view_;
};

class RandomScroll : public kit::HeadlessTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(RandomScroll, ShowsAPartOfWhatAListWithoutClippingShows) {
    Beside both(GetParam());
    for (int step = 0; step < 250; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        both.Step();
        both.Compare();
        if (HasFatalFailure() || HasNonfatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomScroll, ::testing::Values(1U, 2U, 3U, 4U));

// Three columns of 75 and, from (0, 0) on, rows of 82, of which two are in view; ten entries, the last one
// alone.
class ScrolledList : public kit::HeadlessTest {
  public:
    void SetUp() override {
        HeadlessTest::SetUp();
        dialog = new Dialog;
        list = new TestList;
        dialog->Start({100, 100, 420, 340});
        list->SetListType(QKLT_ICON);
        list->SetListMode(QKLIST_DESKTOP);
        list->SetScrollBar(nullptr);
        CRect place(0, 0, 230, 164);
        dialog->AddQKItem(list);
        list->SetRect(&place);
        for (int i = 0; i < 10; ++i)
            list->Add("n");
        list->SetSelectionCallBack([this] {
            ++changes;
            if (const auto act = then) act();
        });
        dialog->Show();
    }
    void TearDown() override {
        delete dialog;
        delete list;
    }
    // The focus, the selected ones, the position.
    std::string State() const {
        std::string state = std::to_string(list->GetFocusItem()) + ":";
        for (const int index : list->GetSelectedIndexes())
            state += std::to_string(index);
        return state + "@" + std::to_string(list->GetScrollPos().y);
    }

    Dialog* dialog = nullptr;
    TestList* list = nullptr;
    int changes = 0;
    std::function<void()> then;
};

TEST_F(ScrolledList, KeysMoveTheFocusAndSelect) {
    const struct {
        UINT key;
        std::initializer_list<UINT> held;
        const char* state;
        int changes;
    } steps[] = {
        {VK_RIGHT, {}, "0:0@0", 1},  // the first one: there was no focus
        {VK_LEFT, {}, "0:0@0", 0},
        {VK_DOWN, {}, "3:3@0", 1},
        {VK_DOWN, {VK_CONTROL}, "6:3@82", 0},
        {VK_RIGHT, {VK_CONTROL}, "7:3@82", 0},
        {VK_SPACE, {}, "7:37@82", 1},
        {VK_SPACE, {VK_CONTROL}, "7:3@82", 1},
        {VK_DOWN, {}, "9:9@164", 1},  // the last row ends before this column
        {VK_UP, {VK_SHIFT}, "6:6789@164", 1},
        {VK_UP, {VK_SHIFT}, "3:3456789@82", 1},
        {VK_RIGHT, {VK_SHIFT}, "4:456789@82", 1},
        {VK_HOME, {VK_SHIFT}, "0:0123456789@0", 1},
        {VK_PRIOR, {}, "0:0123456789@0", 0},  // nowhere to go
        {VK_NEXT, {}, "3:3@0", 1},
        {VK_END, {VK_SHIFT}, "9:3456789@164", 1},
        {VK_HOME, {}, "0:0@0", 1},
        {'A', {VK_CONTROL}, "0:0123456789@0", 1},
    };
    for (const auto& step : steps) {
        const int before = changes;
        dialog->Key(step.key, step.held);
        EXPECT_EQ(State(), step.state) << step.key;
        EXPECT_EQ(changes - before, step.changes) << step.key;
    }
}

TEST_F(ScrolledList, BandGoesAlongWithTheContent) {
    dialog->SetSelRect(1);
    dialog->Press(228, 5);  // right of the cells
    dialog->Move(160, 100);
    EXPECT_EQ(State(), "-1:25@0");
    dialog->Wheel(160, 100, -WHEEL_DELTA / 3);
    EXPECT_EQ(State(), "-1:25@27");  // and a third of a pixel, which is not lost
    dialog->Wheel(160, 100, -WHEEL_DELTA * 2 / 3);
    EXPECT_EQ(State(), "-1:258@82");
    dialog->Move(160, 300);  // below the list: no farther than what it shows
    EXPECT_EQ(State(), "-1:258@82");
    EXPECT_EQ(dialog->Pixel(200, 200), kBack);  // and drawn no farther
    EXPECT_NE(dialog->Pixel(226, 160), kBack);
    EXPECT_EQ(changes, 2);
    dialog->Release(160, 300);
    dialog->Press(300, 10);  // beside the list, over what it does not show
    dialog->Move(1, 50);
    EXPECT_EQ(State(), "-1:345@82");
}

TEST_F(ScrolledList, CaptionsLookAsTheHostLikes) {
    const auto inkOf = [&](std::uint32_t colour) {
        dialog->Refresh();
        const Headless::Picture shown = Headless::Capture(dialog->m_hWnd);
        return std::count(shown.argb.begin(), shown.argb.end(), colour);
    };
    list->SetGlowColor(Gdiplus::Color(0));
    list->SetTextColor(Gdiplus::Color(0xFFFF0000));
    EXPECT_EQ(list->GetTextColor().GetValue(), 0xFEFF0000U);
    const CRect cell = list->Cell(4), hit = list->Look(4).rcMState;
    const auto small = inkOf(0xFFFE0000);
    list->SetFont(Gdiplus::Font(u"DejaVu Sans", 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel));
    EXPECT_GT(inkOf(0xFFFE0000), small + 20);
    EXPECT_EQ(list->Cell(4), cell);
    EXPECT_GT(list->Look(4).rcMState.bottom, hit.bottom);
}

// Whatever a change of the selection makes the host do, in whichever event.
TEST_F(ScrolledList, SelectionFunctionsMayEndEverything) {
    const auto band = [this](int y) { dialog->SetSelRect(1), dialog->Press(228, y); };
    const std::function<void()> ends[] = {
        [&] { list->RemoveAll(); },
        [&] { dialog->RemoveQKItem(list); },
        [&] { dialog->RemoveQKItem(list), delete std::exchange(list, nullptr); },
        [&] { delete std::exchange(dialog, nullptr); },
        [&] { dialog->DestroyWindow(); },
        [&] { list->SetSelectionCallBack(nullptr); }};
    const std::function<void()> events[] = {
        [&] { dialog->Press(30, 20); },
        [&] { dialog->Key(VK_END); },
        [&] { dialog->Key('A', {VK_CONTROL}); },
        [&] { list->SetSel(1, 1), band(160); },
        [&] { band(100), dialog->Move(1, 1); },
        [&] { band(160), dialog->Wheel(1, 161, -WHEEL_DELTA); },
        [&] { list->SetSel(1, 1), dialog->SetSelRect(1), dialog->OnRButtonDown(0, CPoint(228, 160)); }};
    for (const auto& end : ends)
        for (const auto& event : events) {
            TearDown();
            then = nullptr;
            SetUp();
            list->SetFocusItem(2);
            changes = 0;
            then = end;
            event();
            then = nullptr;
            EXPECT_EQ(changes, 1) << &end - ends << ", " << &event - events;
            Headless::ButtonUp();
            Headless::RunPending();
        }
}

}  // namespace
