// What a list shows.
#include <algorithm>
#include <array>
#include <functional>
#include <random>

#include "items/draw_operations.h"
#include "list/list_kit.h"

namespace {

using kit::TestList;

class ListDraw : public kit::HeadlessTest {};

constexpr std::uint32_t kGround = 0xFF000000, kHover = 0xFF000040, kDown = 0xFF004000, kFocus = 0x80400000,
                        kIcon = 0xFFFFFF00;

struct Shown : kit::ListDialog {
    Shown() {
        SetBackColor(Gdiplus::Color(kGround), 1);
        list.SetListType(QKLT_ICON);
        list.SetArrange(0);
        Open(0, 0);
        AddQKItem(&list);
        CRect place(0, 0, 200, 160);
        list.SetRect(&place);
        list.SetMouseMoveImage(Frames("hover", kHover));
        list.SetMouseDownImage(Frames("down", kDown));
        list.SetFouceImage(Frames("focus", kFocus));
    }
    static CStringArray Frames(const std::string& name, std::uint32_t colour) {
        CStringArray paths;
        for (int i = 0; i < 9; ++i)
            paths.Add(kit::Solid(name, colour, 4, 4));
        return paths;
    }
    void AddIcon(const CString& caption) {
        QKListItem record;
        kit::SetText(record.szText, caption);
        record.pImage = new Gdiplus::Image(kit::Solid("icon", kIcon, 64, 64));
        list.AddItem(&record, 1);
    }
    std::uint32_t At(int x, int y) {
        Refresh();
        return Pixel(x, y);
    }
    int Ink(const CRect& in, std::uint32_t ground = kGround) {
        Refresh();
        const Headless::Picture picture = Headless::Capture(m_hWnd);
        int count = 0;
        for (int y = in.top; y < in.bottom; ++y)
            for (int x = in.left; x < in.right; ++x)
                count += picture.At(x, y) != ground;
        return count;
    }
    TestList list;
};

TEST_F(ListDraw, FramesFollowTheStates) {
    Shown shown;
    shown.AddIcon(u"");
    QKListItem* entry = shown.list.GetItem(0);
    struct Case {
        const char* name;
        int mouse, focus, selected;
        std::uint32_t frame;
    };
    const Case cases[] = {
        {"none", 0, 1, 1, kGround},
        {"hover", 1, 1, 1, kHover},
        {"pressed", 2, 1, 1, kDown},
        {"selected", 0, 1, 0, 0xFF400000},
        {"hover over selection", 1, 1, 0, kHover},
        {"focus", 0, 0, 1, 0xFF400000},
        {"focus and selection: twice", 0, 0, 0, 0xFF600000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        entry->nMouseState = c.mouse;
        entry->nFocusState = c.focus;
        entry->nSelState = c.selected;
        for (const CPoint at : {CPoint(0, 0), CPoint(74, 50), CPoint(20, 20), CPoint(53, 20)})
            EXPECT_EQ(shown.At(at.x, at.y), c.frame);
        EXPECT_EQ(shown.At(75, 10), kGround);
        EXPECT_EQ(shown.At(21, 3), kIcon);  // 32 pixels in the middle of 75
        EXPECT_EQ(shown.At(52, 34), kIcon);
    }
    // Without caption there is no focus frame.
    entry->bShowText = 0;
    EXPECT_EQ(shown.At(0, 0), 0xFF400000U);
    // In rows the icon starts nine pixels left of the row.
    shown.list.ClearState();
    shown.list.SetListType(QKLT_LIST);
    CRect place(50, 10, 200, 60);
    shown.list.SetRect(&place);
    EXPECT_EQ(shown.At(41, 13), kIcon);
    EXPECT_EQ(shown.At(58, 30), kIcon);
    EXPECT_EQ(shown.At(59, 20), kGround);
    EXPECT_EQ(shown.At(40, 20), kGround);
    // Outside its list an entry is drawn all the same; unplaced, or of a hidden list, it is not.
    shown.list.GetItem(0)->rcItem = CRect(150, 120, 160, 140);
    EXPECT_EQ(shown.At(145, 125), kIcon);
    shown.list.SetShow(0);
    EXPECT_EQ(shown.At(145, 125), kGround);
    shown.list.SetShow(1);
    shown.list.SetListType(QKLT_BIGICON);
    place = CRect(0, 0, 50, 50);
    shown.list.SetArrange(1);
    shown.list.SetRect(&place);
    EXPECT_EQ(shown.Ink(CRect(0, 0, 200, 160)), 0);
}

TEST_F(ListDraw, CaptionsAreRenderedWhenSeenAndOnceForEach) {
    Shown shown;
    for (int i = 0; i < 400; ++i)
        shown.AddIcon(CString("caption ") + CString(std::to_string(i).c_str()));
    shown.Refresh();
    const auto rendered = [&] {
        int count = 0;
        for (int i = 0; i < 400; ++i)
            count += shown.list.Look(i).pTextImage != nullptr;
        return count;
    };
    EXPECT_GE(rendered(), 4);
    EXPECT_LE(rendered(), 12);
    EXPECT_EQ(shown.list.Look(399).pTextImage, nullptr);
    const std::uint64_t layouts = Gdiplus::GetDrawingCounters().textLayouts;
    for (int i = 0; i < 5; ++i) {
        shown.SetBackColor(Gdiplus::Color(0xFF000000U + static_cast<unsigned>(i)), 1);
        shown.Refresh();
    }
    EXPECT_EQ(Gdiplus::GetDrawingCounters().textLayouts, layouts);
    EXPECT_GT(shown.Ink(shown.list.Look(0).rcText, 0xFF000004), 30);
    shown.list.GetItem(0)->bShowText = 0;
    EXPECT_EQ(shown.Ink(shown.list.Look(0).rcText, 0xFF000004), 0);
}

TEST_F(ListDraw, CaptionsDroppedOutOfSightComeBackEqual) {
    Shown shown;
    for (int i = 0; i < 100; ++i)
        shown.AddIcon(CString("a long caption ") + CString(std::to_string(i).c_str()));
    shown.Refresh();
    const auto moveTo = [&](int y) {
        CRect place(0, y, 200, y + 160);
        shown.list.SetRect(&place);
        shown.Refresh();
        shown.SetBackColor(Gdiplus::Color(kGround), y == 0);
        shown.Refresh();
    };
    shown.list.SetListType(QKLT_ICON, 75, 84, 32, 32, 0, 8);  // captions are stretched from now on
    moveTo(0);
    const Headless::Picture before = Headless::Capture(shown.m_hWnd);
    ASSERT_NE(shown.list.Look(0).pTextImage, nullptr);
    EXPECT_NE(static_cast<int>(shown.list.Look(0).pTextImage->GetHeight()),
              shown.list.Look(0).rcText.Height());
    shown.list.SetCaptionLimit(0);
    moveTo(-5000);
    EXPECT_EQ(shown.list.Look(0).pTextImage, nullptr);
    moveTo(0);
    EXPECT_NE(shown.list.Look(0).pTextImage, nullptr);
    EXPECT_EQ(Headless::Capture(shown.m_hWnd).argb, before.argb);
}

TEST_F(ListDraw, TheFocusedCaptionLiesAboveItsNeighbours) {
    for (const int focused : {0, 1}) {
        SCOPED_TRACE(focused);
        Shown shown;
        shown.list.SetFouceImage(Shown::Frames("opaque", 0xFF0000FF));
        for (int i = 0; i < 2; ++i) {
            shown.AddIcon(u"");
            QKListItem* entry = shown.list.GetItem(i);
            entry->rcItem = CRect(0, 0, 75, 74);
            entry->rcMState = entry->rcFState = CRect(0, 0, 75, 74);
        }
        QKListItem* other = shown.list.GetItem(1 - focused);
        other->nMouseState = 1;
        shown.list.GetItem(focused)->nFocusState = 0;
        EXPECT_EQ(shown.At(2, 2), 0xFF0000FFU);
    }
}

TEST_F(ListDraw, WhatTheHostMovesIntoSightIsDrawn) {
    Shown shown;
    shown.AddIcon(u"caption");
    QKListItem& entry = *shown.list.GetItem(0);
    const CRect away(1000, 1000, 1060, 1040), here(40, 40, 100, 80);
    const auto hide = [&] { entry.rcItem = entry.rcText = entry.rcMState = entry.rcFState = away; };
    const std::function<void()> shows[] = {
        [&] { entry.rcText = here; },
        [&] { entry.rcMState = here; },
        [&] { entry.rcItem = CRect(40, 40, 1060, 1040); },
        [&] { entry.rcFState = here; },
        [&] { entry.bShowText = 1; },
        [&] { kit::SetText(entry.szText, u"another"); },
    };
    entry.nMouseState = 1;
    for (std::size_t i = 0; i < std::size(shows); ++i) {
        SCOPED_TRACE(i);
        hide();
        entry.nFocusState = i == 3 ? 0 : 1;
        shown.Refresh();
        if (i >= 4) entry.rcText = here;
        if (i == 4) entry.bShowText = 0;
        if (i == 5) entry.szText[0] = 0;
        EXPECT_EQ(shown.Ink(CRect(0, 0, 200, 160)), 0);
        shows[i]();
        EXPECT_GT(shown.Ink(CRect(0, 0, 200, 160)), 0);
    }
}

// A host that draws the frames of a list itself, part by part.
struct PartsDrawn : kit::TestDialog {
    explicit PartsDrawn(TestList& drawn) : list(drawn) {}
    void DrawSurface(HDC dc, int, int, int) override {
        Gdiplus::Graphics graphics(dc);
        graphics.Clear(Gdiplus::Color(kGround));
        for (int i = 0; i < list.GetCount(); ++i) {
            const QKListItem& entry = list.Look(i);
            if (entry.nSelState == 0) Draw(graphics, list.m_pFouceImage, entry.rcMState);
            if (entry.nMouseState == 1) Draw(graphics, list.m_pMoveImage, entry.rcMState);
        }
    }
    void Draw(Gdiplus::Graphics& graphics, const std::array<std::shared_ptr<Gdiplus::Image>, 9>& frame,
              const CRect& r) {
        std::array<Gdiplus::Image*, 9> parts;
        std::transform(frame.begin(), frame.end(), parts.begin(),
                       [](const auto& part) { return part.get(); });
        DrawStateImage(&graphics, parts.data(), qkui::ToRectF(r));
    }
    TestList& list;
};

TEST_F(ListDraw, FramesEqualTheirParts) {
    std::mt19937 random(5);
    const auto roll = [&](int sides) { return static_cast<int>(random() % static_cast<unsigned>(sides)); };
    Shown shown;
    PartsDrawn parts(shown.list);
    parts.Open(0, 0);
    for (int i = 0; i < 8; ++i) {
        shown.list.AddIn(CRect(0, 0, 20, 20));
        shown.list.GetItem(i)->bShowText = 0;
    }
    for (int step = 0; step < 1500; ++step) {
        QKListItem& entry = *shown.list.GetItem(roll(8));
        auto& part =
            (roll(2) ? shown.list.m_pFouceImage : shown.list.m_pMoveImage)[static_cast<std::size_t>(roll(9))];
        const Gdiplus::SolidBrush brush{Gdiplus::Color(static_cast<Gdiplus::ARGB>(random()))};
        const int what = roll(12);
        if (what < 3)
            entry.nSelState = roll(2);
        else if (what < 6)
            entry.nMouseState = roll(2);
        else if (what < 9)
            entry.rcMState = CRect(CPoint(roll(190), roll(150)), CSize(6 + 20 * roll(3), 8 + 25 * roll(2)));
        else if (what == 9)
            part = roll(4) ? std::make_shared<Gdiplus::Bitmap>(1 + roll(8), 1 + roll(8)) : nullptr;
        if (what >= 9 && part)
            Gdiplus::Graphics(part.get()).FillRectangle(&brush, roll(3), roll(3), 1 + roll(8), 1 + roll(8));
        shown.Refresh();
        parts.Refresh();
        ASSERT_EQ(Headless::Capture(shown.m_hWnd).argb, Headless::Capture(parts.m_hWnd).argb)
            << "step " << step;
    }
}

// A long random life: the window shows what a frame composed from nothing shows. The host holds few entries,
// or many.
class RandomListDraw : public ListDraw, public ::testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(ManyHeld, RandomListDraw, ::testing::Bool());

TEST_P(RandomListDraw, APartialRepaintEqualsANewOne) {
    std::mt19937 random(11);
    const auto roll = [&](int sides) { return static_cast<int>(random() % static_cast<unsigned>(sides)); };
    Shown shown;
    shown.SetNoMove(1);
    if (GetParam()) shown.list.SetPace({8, 4, 30});
    for (int i = 0; i < 30; ++i)
        shown.AddIcon(CString(u"江 long caption w", roll(17)));
    std::vector<QKListItem*> held;
    for (int i = 0; i < shown.list.GetCount(); ++i)
        held.push_back(shown.list.GetItem(i));
    for (int step = 0; step < 600; ++step) {
        QKListItem* entry = held[static_cast<std::size_t>(roll(30))];
        const CPoint point(roll(200), roll(160));
        const std::function<void()> acts[] = {
            [&] { entry->nSelState = roll(2); },
            [&] {
                for (CRect* rect : {&entry->rcMState, &entry->rcText, &entry->rcFState, &entry->rcItem})
                    if (roll(2)) rect->OffsetRect(roll(60) - 30, roll(60) - 30);
            },
            [&] { entry->SetText(CString(u"another", roll(8))); },
            [&] { entry->bShowText = roll(2); },
            [&] { shown.OnLButtonDown(0, point); },
            [&] { shown.OnLButtonUp(0, point); },
            [&] {
                CRect place(CPoint(roll(60) - 30, roll(60) - 30), CSize(200, 160));
                shown.list.SetRect(&place);
            },
            [&] { shown.list.SetListType(static_cast<QKListType>(roll(3))); },
            [&] { shown.list.SetCaptionLimit(static_cast<std::size_t>(roll(40000))); },
            [&] {  // a derived list: frames far larger than the entries
                shown.list.m_pFouceImage[static_cast<std::size_t>(roll(9))] =
                    std::make_shared<Gdiplus::Image>(kit::Solid("large", kFocus, 4 + roll(90), 4 + roll(90)));
            },
            [&] {
                const auto size = 6.0F + static_cast<float>(roll(9));
                shown.list.m_pFont.reset(roll(3) ? new Gdiplus::Font(u"DejaVu Sans", size) : nullptr);
                shown.list.RedrawList();
            },
            [&] {  // a band, most often one that grows
                shown.m_bSelRect = 1;
                shown.m_bSelecting = roll(5) > 0;
                if (roll(2)) shown.m_rcSel = CRect(point, CSize(roll(90), roll(90)));
                shown.m_rcSel.right += roll(30);
                shown.m_rcSel.bottom += roll(30);
            },
            [&] { shown.OnMouseMove(0, point); },
            [&] { shown.OnMouseMove(0, point); }};
        acts[roll(static_cast<int>(std::size(acts)))]();
        shown.Refresh();
        const Headless::Picture mended = Headless::Capture(shown.m_hWnd);
        shown.SetBackColor(Gdiplus::Color(kGround), 0);
        shown.Refresh();
        shown.SetBackColor(Gdiplus::Color(kGround), 1);
        shown.Refresh();
        ASSERT_EQ(Headless::Capture(shown.m_hWnd).argb, mended.argb) << "step " << step;
    }
}

}  // namespace
