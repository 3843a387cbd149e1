// The dialog as a window: registry, background settings, styles, commands, keys.
#include "support/test_dialog.h"

namespace {

using kit::TestButton;
using kit::TestDialog;

class DialogWindow : public kit::HeadlessTest {};

TEST_F(DialogWindow, KeepsItemsOnceAndInOrder) {
    TestDialog dialog;
    QKItemBase a(QKUI_IMAGE), b(QKUI_GIFIMAGE), c(QKUI_IMAGE), stranger(QKUI_IMAGE);
    EXPECT_EQ(dialog.AddQKItem(&a), 1);
    EXPECT_EQ(dialog.m_bHasGif, 0);
    EXPECT_EQ(dialog.AddQKItem(&b), 1);
    EXPECT_EQ(dialog.AddQKItem(&c), 1);
    EXPECT_EQ(dialog.AddQKItem(&b), 0);
    EXPECT_EQ(dialog.m_bHasGif, 1);
    EXPECT_EQ(dialog.GetQKItem(&c), &c);
    EXPECT_EQ(dialog.GetQKItem(&stranger), nullptr);
    EXPECT_EQ(dialog.GetQKItem(nullptr), nullptr);

    EXPECT_EQ(dialog.RemoveQKItem(&b), 1);
    EXPECT_EQ(dialog.RemoveQKItem(&b), 0);
    EXPECT_EQ(dialog.RemoveQKItem(nullptr), 0);
    EXPECT_EQ(dialog.m_bHasGif, 1);
    ASSERT_EQ(dialog.m_arItems.GetSize(), 2);
    EXPECT_EQ(dialog.m_arItems[0], &a);
    EXPECT_EQ(dialog.m_arItems[1], &c);
    EXPECT_THROW(dialog.m_arItems[2], CInvalidArgException);
    dialog.RemoveAllQKItem();
    EXPECT_TRUE(dialog.m_arItems.IsEmpty());
}

TEST_F(DialogWindow, BackgroundSettersTouchOnlyTheirOwnFields) {
    TestDialog dialog;
    const CString picture = kit::Solid("back", 0xFFFF0000, 30, 20);
    dialog.SetBack(picture, 1, 1);
    EXPECT_EQ(dialog.m_bBackKeepRatio, 1);
    EXPECT_EQ(dialog.m_bBackCache, 1);
    dialog.SetBack(u"", 0, 0);
    EXPECT_EQ(dialog.m_pBackImage, nullptr);
    EXPECT_EQ(dialog.m_bBackKeepRatio, 1);
    EXPECT_EQ(dialog.m_bBackCache, 0);

    dialog.SetBack(picture, 1, 1);
    CRect size(9, 9, 9, 9);
    EXPECT_EQ(dialog.SetBack(picture, size), 1);
    EXPECT_EQ(size, CRect(0, 0, 30, 20));
    EXPECT_EQ(dialog.SetBack(u"/no/such/file.png", size), 1);
    EXPECT_EQ(size, CRect(0, 0, 0, 0));
    EXPECT_NE(dialog.m_pBackImage, nullptr);
    EXPECT_EQ(dialog.m_bBackKeepRatio, 1);
    EXPECT_EQ(dialog.m_bBackCache, 1);
    EXPECT_EQ(dialog.SetBack(CString(), size), 0);
    EXPECT_EQ(dialog.m_pBackImage, nullptr);
}

TEST_F(DialogWindow, StylesReachTheWindow) {
    TestDialog dialog;
    dialog.SetRngDlg(10, 10);  // no window yet: nothing happens
    dialog.Open();
    EXPECT_EQ(dialog.Set_ALPHADlg(128), 1);
    EXPECT_TRUE(dialog.GetExStyle() & WS_EX_LAYERED);
    EXPECT_EQ(dialog.SetNoLayDlg(), 1);
    EXPECT_FALSE(dialog.GetExStyle() & WS_EX_LAYERED);
    EXPECT_EQ(dialog.Set_COLORKEYDlg(RGB(255, 0, 255)), 1);
    EXPECT_EQ(dialog.Set_OPAQUEDlg(255), 1);
    EXPECT_EQ(dialog.m_nLayStyle, LAY_OPAQUE);
    dialog.SetMinMaxStyle();
    EXPECT_TRUE(dialog.GetStyle() & WS_MINIMIZEBOX);
    EXPECT_TRUE(dialog.IsKindOf(RUNTIME_CLASS(CDialog)));
    EXPECT_STREQ(dialog.GetRuntimeClass()->m_lpszClassName, "CQKDialogBase");
}

TEST_F(DialogWindow, ARoundedWindowShowsAndCatchesNothingOutsideItsCorners) {
    TestDialog behind, rounded;
    behind.Open();
    rounded.SetBackColor(Gdiplus::Color(0xFF00FF00), 1);
    rounded.Open();
    rounded.SetRngDlg(40, 40);
    rounded.Refresh();
    const Headless::Picture screen = Headless::CaptureScreen();
    EXPECT_NE(screen.At(101, 101), 0xFF00FF00U);
    EXPECT_EQ(screen.At(120, 120), 0xFF00FF00U);
    EXPECT_EQ(WindowFromPoint({101, 101}), behind.m_hWnd);
    EXPECT_EQ(WindowFromPoint({120, 101}), rounded.m_hWnd);
    EXPECT_EQ(WindowFromPoint({299, 259}), behind.m_hWnd);
}

TEST_F(DialogWindow, NoKeyClosesIt) {
    struct Case {
        const char* name;
        std::vector<UINT> keys;
    };
    const Case cases[] = {{"Escape", {VK_ESCAPE}}, {"Enter", {VK_RETURN}}, {"Alt+F4", {VK_MENU, VK_F4}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        dialog.Open();
        // Through the framework's loop, which asks PreTranslateMessage.
        const auto press = [&](UINT key, bool down) {
            const bool alt = c.keys.size() > 1;
            PostMessageW(dialog.m_hWnd, down ? (alt ? WM_SYSKEYDOWN : WM_KEYDOWN) : WM_KEYUP, key, 0);
        };
        for (const UINT key : c.keys)
            Headless::KeyDown(key);
        for (const UINT key : c.keys)
            press(key, true);
        MSG message;
        while (PeekMessageW(&message, HWND(), 0, 0, PM_REMOVE))
            if (!CWnd::WalkPreTranslateTree(&message)) DispatchMessageW(&message);
        for (const UINT key : c.keys)
            Headless::KeyUp(key);
        EXPECT_TRUE(IsWindow(dialog.m_hWnd));
    }
    TestDialog dialog;
    MSG letter = {HWND(), WM_KEYDOWN, 'A', 0, 0, {0, 0}};
    EXPECT_FALSE(dialog.PreTranslateMessage(&letter));
    MSG enterUp = {HWND(), WM_KEYUP, VK_RETURN, 0, 0, {0, 0}};
    EXPECT_FALSE(dialog.PreTranslateMessage(&enterUp));
}

TEST_F(DialogWindow, TheCloseRequestDestroysTheWindowAndKeepsTheItems) {
    TestDialog dialog;
    dialog.Open();
    QKItemBase item(QKUI_IMAGE);
    dialog.AddQKItem(&item);
    const HWND window = dialog.m_hWnd;
    Headless::RequestClose(window);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(dialog.m_arItems.GetSize(), 1);
    dialog.UpdateView();
    dialog.UpdateViewRect(nullptr);
    dialog.UpdateViewPt(POINT{1, 1});
    EXPECT_EQ(dialog.Set_ALPHADlg(3), 0);
}

TEST_F(DialogWindow, ModalResultsAndThePumpOfABusyHost) {
    TestDialog owner;
    owner.Open();
    TestDialog modal(&owner);
    struct Step {
        TestDialog* owner;
        TestDialog* modal;
        int ok;
    };
    for (const int ok : {1, 0}) {
        Step step = {&owner, &modal, ok};
        Headless::WhenIdle(
            [](void* argument) {
                const auto* s = static_cast<Step*>(argument);
                EXPECT_FALSE(IsWindowEnabled(s->owner->m_hWnd));
                // Both paint while the modal loop runs, one message at a time.
                s->owner->Invalidate();
                s->modal->Invalidate();
                RECT waiting;
                for (int i = 0; i < 8; ++i)
                    s->modal->messagePump();
                EXPECT_FALSE(GetUpdateRect(s->owner->m_hWnd, &waiting, FALSE));
                EXPECT_FALSE(GetUpdateRect(s->modal->m_hWnd, &waiting, FALSE));
                s->modal->messagePump();  // nothing waits: returns at once
                s->modal->SetDoModalOK(s->ok);
            },
            &step);
        EXPECT_EQ(modal.DoModal(), ok ? IDOK : IDCANCEL);
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    }
}

}  // namespace
