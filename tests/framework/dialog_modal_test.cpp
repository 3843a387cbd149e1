#include <string>

#include "framework/dialog_fixture.h"

namespace {

class ModalDialog : public DialogTest {
  protected:
    void SetUp() override {
        DialogTest::SetUp();
        UsePlainTemplate();
        ASSERT_TRUE(owner.CreateEx(0, u"owner", WS_POPUP, CRect(100, 100, 700, 500), nullptr, 0));
        owner.ShowWindow(SW_SHOW);
        Headless::RunPending();
        ASSERT_EQ(GetActiveWindow(), owner.m_hWnd);
    }
    void ExpectOwnerIsBack() {
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
        EXPECT_EQ(GetActiveWindow(), owner.m_hWnd);
    }
    CWnd owner;
};

// Every way out of a modal dialog: what DoModal returns, and whether the window was gone before that.
TEST_F(ModalDialog, EndsWithTheResultOfWhatEndedIt) {
    const struct {
        const char* name;
        std::function<void(ScriptedDialog&)> act;
        INT_PTR result;
        bool inInit = false;
    } cases[] = {
        {"EndDialog", [](ScriptedDialog& d) { d.EndDialog(7); }, 7},
        {"EndDialog, negative", [](ScriptedDialog& d) { d.EndDialog(-1); }, -1},
        {"EndDialog twice", [](ScriptedDialog& d) { d.EndDialog(7), d.EndDialog(8); }, 8},
        {"EndDialog in OnInitDialog", [](ScriptedDialog& d) { d.EndDialog(9); }, 9, true},
        {"DestroyWindow in OnInitDialog", [](ScriptedDialog& d) { d.DestroyWindow(); }, IDCANCEL, true},
        {"Escape", [](ScriptedDialog&) { Press(VK_ESCAPE); }, IDCANCEL},
        {"Enter", [](ScriptedDialog&) { Press(VK_RETURN); }, IDOK},
        {"command IDOK", [](ScriptedDialog& d) { d.PostMessage(WM_COMMAND, IDOK); }, IDOK},
        {"command IDCANCEL", [](ScriptedDialog& d) { d.SendMessage(WM_COMMAND, IDCANCEL); }, IDCANCEL},
        {"WM_CLOSE", [](ScriptedDialog& d) { d.PostMessage(WM_CLOSE); }, IDCANCEL},
        {"close button", [](ScriptedDialog& d) { Headless::RequestClose(d.m_hWnd); }, IDCANCEL},
        {"DestroyWindow", [](ScriptedDialog& d) { d.DestroyWindow(); }, IDCANCEL},
        {"DestroyWindow in a handler", [](ScriptedDialog& d) { d.PostMessage(DestroyYourself); }, IDCANCEL},
        {"::DestroyWindow", [](ScriptedDialog& d) { ::DestroyWindow(d.m_hWnd); }, IDCANCEL},
        {"EndDialog, then DestroyWindow", [](ScriptedDialog& d) { d.EndDialog(5), d.DestroyWindow(); }, 5},
        {"nothing, with a timer set", [](ScriptedDialog& d) { d.SetTimer(1, 10); }, IDCANCEL},
        {"timer", [](ScriptedDialog& d) { d.SetTimer(1, 10), Headless::Advance(10); }, 900},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        ScriptedDialog dialog(PlainTemplate, &owner);
        HWND window;
        const auto check = [&] {
            window = dialog.m_hWnd;
            EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
            EXPECT_EQ(IsWindowVisible(window) != FALSE, !one.inInit);
            if (!one.inInit) {
                EXPECT_EQ(GetActiveWindow(), window);
            }
            one.act(dialog);
        };
        if (one.inInit)
            dialog.onInit = check;
        else
            WhenIdle(check);
        EXPECT_EQ(dialog.DoModal(), one.result);
        EXPECT_EQ(dialog.inits, 1);
        EXPECT_FALSE(dialog.m_hWnd);
        EXPECT_FALSE(IsWindow(window));
        ExpectOwnerIsBack();
        // The object may be used again.
        WhenIdle([&] { dialog.EndDialog(33); });
        dialog.onInit = nullptr;
        EXPECT_EQ(dialog.DoModal(), 33);
        ExpectOwnerIsBack();
    }
}

TEST_F(ModalDialog, EndDialogHidesAtOnceAndBringsTheOwnerBack) {
    ScriptedDialog dialog(PlainTemplate, &owner);
    WhenIdle([&] {
        const HWND window = dialog.m_hWnd;
        dialog.EndDialog(1);
        EXPECT_TRUE(IsWindow(window));
        EXPECT_FALSE(IsWindowVisible(window));
        ExpectOwnerIsBack();
    });
    EXPECT_EQ(dialog.DoModal(), 1);
}

// A loop that sleeps when its dialog ends returns at once: what comes later does not run in it.
TEST_F(ModalDialog, ALoopThatSleepsNoticesItsEnd) {
    const std::function<void(ScriptedDialog&)> ends[] = {[](ScriptedDialog& d) { d.EndDialog(3); },
                                                         [](ScriptedDialog& d) { d.DestroyWindow(); }};
    for (const auto& end : ends) {
        for (const bool underAnother : {false, true}) {
            SCOPED_TRACE(underAnother ? "another dialog ran inside that sleep" : "alone");
            bool ranLater = false;
            ScriptedDialog outer(PlainTemplate, &owner);
            WhenIdle([&] {
                if (!underAnother) return end(outer);
                ScriptedDialog inner(PlainTemplate, &owner);
                WhenIdle([&] { end(outer); });
                WhenIdle([&] { inner.EndDialog(4); });
                WhenIdle([&] { ranLater = true; });
                EXPECT_EQ(inner.DoModal(), 4);
            });
            if (!underAnother) WhenIdle([&] { ranLater = true; });
            outer.DoModal();
            EXPECT_FALSE(ranLater);
            // The step that is left over runs in the next loop.
            WhenIdle([&] { outer.EndDialog(5); });
            EXPECT_EQ(outer.DoModal(), 5);
            EXPECT_TRUE(ranLater);
        }
    }
}

TEST_F(ModalDialog, CommandsOtherThanClicksEndNothing) {
    ScriptedDialog dialog(PlainTemplate, &owner);
    int orders = 0;
    dialog.onOK = [&] {
        if (++orders == 2) dialog.EndDialog(70);
    };
    WhenIdle([&] {
        dialog.SendMessage(WM_COMMAND, IDOK | (5u << 16));
        dialog.SendMessage(WM_COMMAND, 3);
        EXPECT_EQ(orders, 0);
        dialog.SendMessage(WM_COMMAND, IDOK);
        Press(VK_RETURN);
    });
    EXPECT_EQ(dialog.DoModal(), 70);
    EXPECT_EQ(orders, 2);
}

// Objects on the heap that go in the middle of DoModal, each in its way.
TEST_F(ModalDialog, TheObjectMayGoWhileItRuns) {
    for (const UINT message : {DestroyYourself, DeleteYourself}) {
        SCOPED_TRACE(message - WM_APP);
        auto* const dialog = new ScriptedDialog(PlainTemplate, &owner);
        dialog->deletesItself = message == DestroyYourself;
        WhenIdle([=] { dialog->PostMessage(message); });
        EXPECT_EQ(dialog->DoModal(), IDCANCEL);
        ExpectOwnerIsBack();
    }
    auto* const ended = new ScriptedDialog(PlainTemplate, &owner);
    ended->deletesItself = true;
    WhenIdle([=] { ended->EndDialog(12); });
    EXPECT_EQ(ended->DoModal(), 12);
    auto* const early = new ScriptedDialog(PlainTemplate, &owner);
    early->onInit = [=] { delete early; };
    EXPECT_EQ(early->DoModal(), IDCANCEL);
    ExpectOwnerIsBack();
}

TEST_F(ModalDialog, TheTopLevelOfItsParentIsDisabledMeanwhile) {
    CWnd child;
    ASSERT_TRUE(child.CreateEx(0, u"", WS_CHILD | WS_VISIBLE, CRect(5, 5, 50, 50), &owner, 1));
    const struct {
        CWnd* parent;
        BOOL before, during;
    } cases[] = {{&owner, TRUE, FALSE}, {&child, TRUE, FALSE}, {nullptr, TRUE, TRUE}, {&owner, FALSE, FALSE}};
    for (const auto& one : cases) {
        SCOPED_TRACE(&one - cases);
        owner.EnableWindow(one.before);
        ScriptedDialog dialog(PlainTemplate, one.parent);
        WhenIdle([&] {
            EXPECT_EQ(IsWindowEnabled(owner.m_hWnd), one.during);
            dialog.EndDialog(4);
        });
        EXPECT_EQ(dialog.DoModal(), 4);
        EXPECT_EQ(IsWindowEnabled(owner.m_hWnd), one.before);
        if (one.parent && one.before) ExpectOwnerIsBack();
    }
}

TEST_F(ModalDialog, GoesWithItsOwner) {
    ScriptedDialog dialog(PlainTemplate, &owner);
    WhenIdle([&] { owner.DestroyWindow(); });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_FALSE(dialog.m_hWnd);
}

// Two dialogs, one over the other; what the inner one's step does, and what both return.
TEST_F(ModalDialog, Nests) {
    const struct {
        const char* name;
        std::function<void(ScriptedDialog& outer, ScriptedDialog& inner)> act;
        INT_PTR inner, outer;  // outer: what it returns when nothing more happens to it
        bool outerGoesOn;      // it is still running once the inner one ended
    } cases[] = {
        {"inner ends", [](auto&, auto& inner) { inner.EndDialog(21); }, 21, 50, true},
        {"inner is closed", [](auto&, auto& inner) { inner.PostMessage(WM_CLOSE); }, IDCANCEL, 50, true},
        {"inner's window goes", [](auto&, auto& inner) { inner.DestroyWindow(); }, IDCANCEL, 50, true},
        {"outer's window goes", [](auto& outer, auto&) { outer.DestroyWindow(); }, IDCANCEL, IDCANCEL, false},
        {"both end", [](auto& outer, auto& inner) { outer.EndDialog(22), inner.EndDialog(23); }, 23, 22,
         false},
        {"outer ends, and waits for inner",
         [](auto& outer, auto& inner) {
             outer.EndDialog(31);
             WhenIdle([&] {
                 EXPECT_TRUE(IsWindowVisible(inner.m_hWnd));
                 inner.EndDialog(32);
             });
         },
         32, 31, false},
        {"quit", [](auto&, auto&) { PostQuitMessage(17); }, IDCANCEL, IDCANCEL, false},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        ScriptedDialog outer(PlainTemplate, &owner);
        bool wentOn = false;
        WhenIdle([&] {
            ScriptedDialog inner(PlainTemplate, &outer);
            WhenIdle([&] {
                EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
                EXPECT_FALSE(IsWindowEnabled(outer.m_hWnd));
                EXPECT_EQ(GetActiveWindow(), inner.m_hWnd);
                one.act(outer, inner);
            });
            EXPECT_EQ(inner.DoModal(), one.inner);
            EXPECT_FALSE(inner.m_hWnd);
            if (!one.outerGoesOn) return;
            EXPECT_TRUE(IsWindowEnabled(outer.m_hWnd));
            EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
            EXPECT_EQ(GetActiveWindow(), outer.m_hWnd);
            WhenIdle([&] {
                wentOn = true;
                outer.EndDialog(50);
            });
        });
        EXPECT_EQ(outer.DoModal(), one.outer);
        EXPECT_FALSE(outer.m_hWnd);
        EXPECT_EQ(wentOn, one.outerGoesOn);
        ExpectOwnerIsBack();
        EXPECT_EQ(TakeQuit().value_or(0), one.name == std::string("quit") ? 17 : 0);
    }
}

TEST_F(ModalDialog, FailuresLeaveNothingBehind) {
    for (const UINT id : {999U, 0U, 0x10000 + PlainTemplate}) {
        SCOPED_TRACE(id);
        ScriptedDialog dialog(id, &owner);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(dialog.DoModal(), -1);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
        EXPECT_FALSE(dialog.m_hWnd);
        EXPECT_EQ(dialog.inits, 0);
        ExpectOwnerIsBack();
    }
    ScriptedDialog running(PlainTemplate, &owner);
    WhenIdle([&] {
        EXPECT_EQ(running.DoModal(), -1);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
        EXPECT_FALSE(running.Create(PlainTemplate, &owner));
        running.EndDialog(2);
    });
    EXPECT_EQ(running.DoModal(), 2);
    ExpectOwnerIsBack();
}

}  // namespace
