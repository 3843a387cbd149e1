// The dialog as a window: registry, background settings, styles, commands, keys.
#include "support/test_dialog.h"

namespace {

using kit::Line;
using kit::TestButton;
using kit::TestDialog;

class DialogWindow : public kit::HeadlessTest {};

TEST_F(DialogWindow, KeepsItemsOnceAndInOrder) {
    TestDialog dialog;
    QKItemBase a(QKUI_IMAGE), b(QKUI_GIFIMAGE), c(QKUI_IMAGE), stranger(QKUI_IMAGE);
    std::string added, removed;
    for (QKItemBase* item : {&a, &b, &c, &b})
        added += Line(dialog.AddQKItem(item), dialog.m_bHasGif) + ", ";
    EXPECT_EQ(added, "1 0, 1 1, 1 1, 0 1, ");
    EXPECT_EQ(dialog.GetQKItem(&c), &c);
    EXPECT_EQ(dialog.GetQKItem(&stranger), nullptr);
    EXPECT_EQ(dialog.GetQKItem(nullptr), nullptr);

    for (QKItemBase* item : {&b, &b, static_cast<QKItemBase*>(nullptr)})
        removed += Line(dialog.RemoveQKItem(item), dialog.m_bHasGif) + ", ";
    EXPECT_EQ(removed, "1 1, 0 1, 0 1, ");
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
    const auto fields = [&] {
        return Line(dialog.m_pBackImage != nullptr, dialog.m_bBackKeepRatio, dialog.m_bBackCache);
    };
    dialog.SetBack(picture, 1, 1);
    EXPECT_EQ(fields(), "1 1 1");
    dialog.SetBack(u"", 0, 0);
    EXPECT_EQ(fields(), "0 1 0");
    dialog.SetBack(picture, 1, 1);
    CRect size(9, 9, 9, 9);
    EXPECT_EQ(dialog.SetBack(picture, size), 1);
    EXPECT_EQ(Line(size), "0 0 30 20");
    EXPECT_EQ(dialog.SetBack(u"/no/such/file.png", size), 1);
    EXPECT_EQ(Line(size), "0 0 0 0");
    EXPECT_EQ(fields(), "1 1 1");
    EXPECT_EQ(dialog.SetBack(CString(), size), 0);
    EXPECT_EQ(fields(), "0 1 1");
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
    constexpr std::uint32_t kGreen = 0xFF00FF00;
    TestDialog behind, rounded;
    behind.Open();
    rounded.SetBackColor(Gdiplus::Color(kGreen), 1);
    rounded.Open();
    rounded.SetRngDlg(40, 40);
    rounded.Refresh();
    const Headless::Picture screen = Headless::CaptureScreen();
    EXPECT_NE(screen.At(101, 101), kGreen);
    EXPECT_EQ(screen.At(120, 120), kGreen);
    EXPECT_EQ(WindowFromPoint({101, 101}), behind.m_hWnd);
    EXPECT_EQ(WindowFromPoint({120, 101}), rounded.m_hWnd);
    EXPECT_EQ(WindowFromPoint({299, 259}), behind.m_hWnd);
}

TEST_F(DialogWindow, NoKeyClosesIt) {
    for (const std::vector<UINT>& keys : {std::vector<UINT>{VK_ESCAPE}, {VK_RETURN}, {VK_MENU, VK_F4}}) {
        SCOPED_TRACE(keys[0]);
        TestDialog dialog;
        dialog.Open();
        for (const UINT key : keys)
            Headless::KeyDown(key);
        // Through the framework's loop, which asks PreTranslateMessage.
        for (const UINT key : keys)
            PostMessageW(dialog.m_hWnd, keys.size() > 1 ? WM_SYSKEYDOWN : WM_KEYDOWN, key, 0);
        MSG message;
        while (PeekMessageW(&message, HWND(), 0, 0, PM_REMOVE))
            if (!CWnd::WalkPreTranslateTree(&message)) DispatchMessageW(&message);
        for (const UINT key : keys)
            Headless::KeyUp(key);
        EXPECT_TRUE(IsWindow(dialog.m_hWnd));
    }
    TestDialog dialog;
    for (const auto& [kind, key] : {std::pair(WM_KEYDOWN, UINT{'A'}), {WM_KEYUP, VK_RETURN}}) {
        MSG message = {HWND(), kind, key, 0, 0, {0, 0}};
        EXPECT_FALSE(dialog.PreTranslateMessage(&message));
    }
}

TEST_F(DialogWindow, TheCloseRequestDestroysTheWindowAndKeepsTheItems) {
    QKImage item;
    TestDialog dialog({&item});
    dialog.Open();
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
    static TestDialog* modal;
    static int ok;
    TestDialog parent, dialog(&parent);
    parent.Open();
    modal = &dialog;
    const auto act = [](void* argument) {
        auto& owner = *static_cast<TestDialog*>(argument);
        EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
        // Both paint while the modal loop runs, one message at a time.
        owner.Invalidate();
        modal->Invalidate();
        for (int i = 0; i < 8; ++i)
            modal->messagePump();
        EXPECT_FALSE(GetUpdateRect(owner.m_hWnd, nullptr, FALSE));
        EXPECT_FALSE(GetUpdateRect(modal->m_hWnd, nullptr, FALSE));
        modal->messagePump();  // nothing waits: returns at once
        modal->SetDoModalOK(ok);
    };
    for (ok = 1; ok >= 0; --ok) {
        Headless::WhenIdle(act, &parent);
        EXPECT_EQ(dialog.DoModal(), ok ? IDOK : IDCANCEL);
        EXPECT_TRUE(IsWindowEnabled(parent.m_hWnd));
    }
}

}  // namespace
