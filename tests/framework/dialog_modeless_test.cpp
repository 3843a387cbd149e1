#include "framework/dialog_fixture.h"

namespace {

using ModelessDialog = DialogTest;

TEST_F(ModelessDialog, IsShownWhenItsTemplateSaysSo) {
    for (const bool visible : {false, true}) {
        SCOPED_TRACE(visible);
        UsePlainTemplate(visible ? DWORD{WS_VISIBLE} : 0);
        ScriptedDialog dialog;
        dialog.onInit = [&] {
            EXPECT_TRUE(dialog.m_hWnd);
            EXPECT_FALSE(dialog.IsWindowVisible());
        };
        ASSERT_TRUE(dialog.Create(PlainTemplate));
        EXPECT_EQ(dialog.inits, 1);
        EXPECT_EQ(CWnd::FromHandlePermanent(dialog.m_hWnd), &dialog);
        EXPECT_EQ(dialog.IsWindowVisible() != FALSE, visible);
        EXPECT_FALSE(dialog.Create(PlainTemplate));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    }
}

// What ends a modal dialog destroys a modeless one.
TEST_F(ModelessDialog, OrdersDestroyIt) {
    UsePlainTemplate(WS_VISIBLE);
    const struct {
        const char* name;
        std::function<void(ScriptedDialog&)> act;
    } cases[] = {
        {"IDOK", [](ScriptedDialog& d) { d.SendMessage(WM_COMMAND, IDOK); }},
        {"IDCANCEL", [](ScriptedDialog& d) { d.SendMessage(WM_COMMAND, IDCANCEL); }},
        {"WM_CLOSE", [](ScriptedDialog& d) { d.SendMessage(WM_CLOSE); }},
        {"EndDialog", [](ScriptedDialog& d) { d.EndDialog(3); }},
        {"close button", [](ScriptedDialog& d) { Headless::RequestClose(d.m_hWnd), Headless::RunPending(); }},
        {"SC_CLOSE",
         [](ScriptedDialog& d) { d.SendMessage(WM_SYSCOMMAND, SC_CLOSE), Headless::RunPending(); }},
    };
    for (const auto& one : cases) {
        for (const bool deletesItself : {false, true}) {
            SCOPED_TRACE(one.name);
            auto dialog = std::make_unique<ScriptedDialog>();
            dialog->deletesItself = deletesItself;
            ASSERT_TRUE(dialog->Create(PlainTemplate));
            const HWND window = dialog->m_hWnd;
            one.act(deletesItself ? *dialog.release() : *dialog);
            EXPECT_FALSE(IsWindow(window));
        }
    }
}

TEST_F(ModelessDialog, MayGoInItsFirstHandler) {
    UsePlainTemplate(WS_VISIBLE);
    for (const bool deletesItself : {false, true}) {
        auto dialog = std::make_unique<ScriptedDialog>();
        dialog->deletesItself = deletesItself;
        ScriptedDialog* const object = deletesItself ? dialog.release() : dialog.get();
        object->onInit = [=] { object->EndDialog(0); };
        EXPECT_FALSE(object->Create(PlainTemplate));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
    }
}

// The host's loop gives a modeless dialog its Enter and Escape, and leaves its owner's alone.
TEST_F(ModelessDialog, KeysReachItThroughTheLoop) {
    UsePlainTemplate(WS_VISIBLE);
    ScriptedDialog main, tool;
    ASSERT_TRUE(main.Create(PlainTemplate));
    ASSERT_TRUE(tool.Create(PlainTemplate, &main));
    int orders = 0;
    tool.onOK = [&] { ++orders; };
    const auto press = [](HWND window, WPARAM key) {
        PostMessageW(window, WM_KEYDOWN, key, 0);
        EXPECT_TRUE(AfxPumpMessage());
    };
    while (TakeQuit()) {
    }
    press(tool.m_hWnd, VK_RETURN);
    EXPECT_EQ(orders, 1);
    press(tool.m_hWnd, VK_SPACE);
    EXPECT_TRUE(tool.m_hWnd);
    press(tool.m_hWnd, VK_ESCAPE);
    EXPECT_FALSE(tool.m_hWnd);
    EXPECT_TRUE(main.m_hWnd);
}

}  // namespace
