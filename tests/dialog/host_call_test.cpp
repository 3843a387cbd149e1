// Every call into the host, times everything that a host may do there.
//
// A scene brings a dialog to a number of calls: callbacks, overridden virtuals, handlers, timer functions. It
// is played once to note them, and then anew for each of them and each deed, which that call does. Whatever
// that was: nothing is touched that is gone, nothing stays captured or disabled, and what is left still
// works.
#include <gtest/gtest.h>

#include <map>

#include "dialog/host_dialog.h"

namespace {

using namespace host;

// ---- The scenes

void Point(int x, int y) {
    Headless::MovePointer(100 + x, 100 + y);
}
void Press(int x, int y) {
    Point(x, y);
    Headless::ButtonDown();
}
void Click(int x, int y) {
    Press(x, y);
    Headless::ButtonUp();
}
// The host acts on its dialog, as long as there is one.
template <class Act>
void With(Act act) {
    if (play->dialog) act(*play->dialog);
}

// A modal dialog over the host's, which ends by itself after `inside`.
void OpenModal(HostDialog& owner, void (*inside)()) {
    static void (*act)();
    act = inside;
    struct Nested : kit::TestDialog {
        using TestDialog::TestDialog;
        ~Nested() override { play->nested = nullptr; }
    } modal(&owner);
    play->nested = &modal;
    Headless::WhenIdle(
        [](void*) {
            if (play->nested && act) act();
            if (play->nested) play->nested->SetDoModalOK(1);
        },
        nullptr);
    modal.DoModal();
}

struct Scene {
    const char* name;
    void (*act)();
};
const Scene kScenes[] = {
    {"Opens", nullptr},
    {"Hovers",
     [] {
         for (const CPoint at : {CPoint(20, 20), CPoint(70, 15), CPoint(30, 100), CPoint(500, 300)})
             Point(at.x, at.y);
     }},
    {"ClicksAButton", [] { Click(20, 20); }},
    {"ClicksACheckBox", [] { Click(70, 15); }},
    {"ClicksARadioButton", [] { Click(110, 15); }},
    {"ReleasesElsewhere",
     [] {
         Press(20, 20);
         Point(70, 15);
         Headless::ButtonUp();
     }},
    {"DragsTheThumb",
     [] {
         Press(180, 15);
         Point(180, 30);
         Point(180, 60);
         Headless::ButtonUp();
     }},
    {"DoubleClicksEverything",
     [] {
         for (const CPoint at : {CPoint(20, 20), CPoint(30, 100), CPoint(150, 60)})
             Click(at.x, at.y), Click(at.x, at.y);
     }},
    {"ClicksRight",
     [] {
         Point(30, 100);
         Headless::ButtonDown(3);
         Headless::ButtonUp(3);
     }},
    {"DragsABand",
     [] {
         With([](HostDialog& d) { d.SetSelRect(1), d.SetNoMove(1); });
         Press(150, 60);
         Point(20, 140);
         Headless::ButtonUp();
     }},
    {"DragsTheWindow",
     [] {
         Press(150, 60);
         Point(160, 70);
         Headless::ButtonUp();
         Press(160, 70);
         Point(150, 60);
         With([](HostDialog& d) { d.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(20, 20)); });
         Headless::ButtonUp();
     }},
    {"StepsImages",
     [] {
         With([](HostDialog& d) { d.gif->StartRun(3, d.m_hWnd), d.otherGif->StartRun(3, d.m_hWnd); });
         Headless::Advance(50);
     }},
    {"RunsATimerFunction",
     [] {
         With([](HostDialog& d) {
             ::SetTimer(d.m_hWnd, 4, 10, [](HWND, UINT, UINT_PTR, DWORD) { Called("timer function"); });
         });
         Headless::Advance(25);
     }},
    {"ChangesActivation",
     [] {
         With([](HostDialog& d) { d.list->GetItem(0)->nFocusState = 0; });
         SetForegroundWindow(play->owner->m_hWnd);
         With([](HostDialog& d) { SetForegroundWindow(d.m_hWnd); });
     }},
    {"ChangesItsPlace",
     [] {
         With([](HostDialog& d) { d.SetWindowPos(HWND_TOP, 90, 90, 220, 170, 0); });
         Headless::RunPending();
         With([](HostDialog& d) { d.MinQKDlg(); });
         Headless::RunPending();
         for (const int command : {SW_RESTORE, SW_HIDE, SW_SHOW, SW_MINIMIZE, SW_RESTORE}) {
             With([=](HostDialog& d) { d.ShowWindow(command); });
             Headless::RunPending();
         }
     }},
    {"TakesKeys",
     [] {
         for (const UINT key : {UINT{'A'}, UINT{VK_RETURN}, UINT{VK_ESCAPE}})
             Headless::KeyDown(key), Headless::KeyUp(key);
         Headless::KeyDown(VK_MENU);
         Headless::KeyDown(VK_F4);
     }},
    {"WalksByTab",
     [] {
         With([](HostDialog& d) { d.SetTabKeys(1); });
         for (const UINT key : {UINT{VK_TAB}, UINT{VK_SPACE}, UINT{VK_TAB}, UINT{VK_RETURN}, UINT{VK_TAB},
                                UINT{VK_TAB}, UINT{VK_SPACE}})
             Headless::KeyDown(key), Headless::KeyUp(key);
         Click(20, 20);
     }},
    {"RestsOnAnItem",
     [] {
         Point(70, 15);
         Headless::Advance(600);
         With([](HostDialog& d) { d.SetWindowPos(HWND(), 90, 90, 0, 0, SWP_NOSIZE); });
         Point(71, 15);
         Headless::Advance(10000);
         Click(70, 15);
     }},
    {"IsRefreshed",
     [] {
         With([](HostDialog& d) { d.UpdateViewPt(CPoint(0, 0)); });
         With([](HostDialog& d) { d.UpdateViewRect(nullptr); });
         With([](HostDialog& d) { ::UpdateWindow(d.m_hWnd); });
         With([](HostDialog& d) { d.m_bSysInvalidate = 0, d.UpdateView(); });
         With([](HostDialog& d) { d.Invalidate(), ::GetUpdateRect(d.m_hWnd, nullptr, TRUE); });
         With([](HostDialog& d) {
             if (!d.list || d.list->GetCount() == 0) return;
             d.list->GetItem(0)->nMouseState = 1, d.MoveLeaveList(d.list.get(), CRect());
         });
         Headless::RunPending();
     }},
    {"ChangesItsLooks",
     [] {
         for (int style = LAY_NONE; style <= LAY_OPAQUE; ++style) {
             With([=](HostDialog& d) {
                 if (style == LAY_NONE) d.SetNoLayDlg();
                 if (style == LAY_COLORKEY) d.Set_COLORKEYDlg(0xFF00FF);
                 if (style == LAY_ALPHA) d.Set_ALPHADlg(200);
                 if (style == LAY_OPAQUE) d.Set_OPAQUEDlg(200);
             });
             With([](HostDialog& d) { d.UpdateView(); });
             Headless::RunPending();
         }
         With([](HostDialog& d) { d.SetRngDlg(5, 5), d.SetWindowText(u"text"); });
     }},
    {"HasAChildOfTheHostsOwnClass",
     [] {
         static const bool registered = [] {
             WNDCLASSW type;
             type.lpszClassName = u"HostCalls:Child";
             type.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
                 Called("child's message " + std::to_string(message));
                 return DefWindowProcW(window, message, wParam, lParam);
             };
             return RegisterClassW(&type) != FALSE;
         }();
         EXPECT_TRUE(registered);
         With([](HostDialog& d) {
             CreateWindowExW(0, u"HostCalls:Child", u"", WS_CHILD | WS_VISIBLE, 140, 100, 40, 40, d.m_hWnd, 1,
                             {}, nullptr);
         });
         Headless::RunPending();
         Click(150, 110);
         With([](HostDialog& d) { ::SetFocus(d.GetDlgItem(1)); });
         With([](HostDialog& d) { d.DestroyWindow(); });
     }},
    {"IsDisabledUnderAModalDialog", [] { With([](HostDialog& d) { OpenModal(d, nullptr); }); }},
    {"PumpsMessages", [] { With([](HostDialog& d) { d.PostMessage(WM_APP), d.messagePump(); }); }},
    {"IsAskedToClose", [] { With([](HostDialog& d) { Headless::RequestClose(d.m_hWnd); }); }},
    {"Closes", [] { With([](HostDialog& d) { d.CloseQKDlg(), Headless::RunPending(); }); }},
    {"EndsAsOK", [] { With([](HostDialog& d) { d.SendMessage(WM_COMMAND, IDOK); }); }},
    {"EndsAsCancel", [] { With([](HostDialog& d) { d.SetDoModalOK(0); }); }},
    {"GoesWithItsOwner", [] { play->owner->DestroyWindow(); }},
};

// ---- The deeds

struct Deed {
    const char* name;
    void (*act)(HostDialog& dialog);
};
const Deed kDeeds[] = {
    {"throws", [](HostDialog&) { throw Thrown(); }},
    {"throws from now on", [](HostDialog&) { play->throwsAlways = true; }},
    {"throws the framework's exception", [](HostDialog&) { AfxThrowInvalidArgException(); }},
    {"deletes the dialog", [](HostDialog& d) { delete &d; }},
    {"deletes the dialog and throws",
     [](HostDialog& d) {
         delete &d;
         throw Thrown();
     }},
    {"destroys the window", [](HostDialog& d) { d.DestroyWindow(); }},
    {"destroys the window and throws",
     [](HostDialog& d) {
         d.DestroyWindow();
         throw Thrown();
     }},
    {"closes at once", [](HostDialog& d) { d.SendMessage(WM_CLOSE); }},
    {"posts the close request", [](HostDialog& d) { d.CloseQKDlg(); }},
    {"ends as OK", [](HostDialog& d) { d.SetDoModalOK(1); }},
    {"destroys the owner", [](HostDialog&) { play->owner->DestroyWindow(); }},
    {"opens a modal dialog", [](HostDialog& d) { OpenModal(d, nullptr); }},
    {"opens a modal dialog that deletes this one",
     [](HostDialog& d) { OpenModal(d, [] { delete play->dialog; }); }},
    {"frees the button", [](HostDialog& d) { d.Free(d.button); }},
    {"frees the item below", [](HostDialog& d) { d.Free(d.below); }},
    {"frees the checks", [](HostDialog& d) { d.Free(d.check), d.Free(d.radio), d.Free(d.otherRadio); }},
    {"frees the bar", [](HostDialog& d) { d.Free(d.bar); }},
    {"frees the images", [](HostDialog& d) { d.Free(d.gif), d.Free(d.otherGif); }},
    {"frees the list", [](HostDialog& d) { d.Free(d.list); }},
    {"frees all items", [](HostDialog& d) { d.FreeAll(); }},
    {"frees all items and throws",
     [](HostDialog& d) {
         d.FreeAll();
         throw Thrown();
     }},
    {"adds items",
     [](HostDialog& d) {
         static std::vector<std::unique_ptr<QKButton>> added;
         for (int i = 0; i < 20; ++i)
             d.AddQKItem(added.emplace_back(std::make_unique<QKButton>()).get());
     }},
    {"empties the list", [](HostDialog& d) { d.list->RemoveAll(); }},
    {"removes the first entry", [](HostDialog& d) { d.list->RemoveAt(d.list->GetItem(0), 1); }},
    {"removes the last entry", [](HostDialog& d) { d.list->RemoveAt(d.list->GetItem(2), 1); }},
    {"fills the list and lays it out",
     [](HostDialog& d) {
         for (int i = 0; i < 30; ++i) {
             QKListItem entry;
             d.list->InsertItem(&entry, 0);
         }
     }},
    {"moves the entries away",
     [](HostDialog& d) {
         for (int i = 0; i < d.list->GetCount(); ++i)
             d.list->GetItem(i)->rcMState.OffsetRect(1000, 0);
     }},
    {"clears the list's states", [](HostDialog& d) { d.list->ClearState(); }},
    {"takes callbacks away",
     [](HostDialog& d) {
         d.button->SetCallBack(nullptr), d.bar->SetVBarCallBack(nullptr), d.list->SetListCallBack(nullptr);
     }},
    {"becomes an ordinary window", [](HostDialog& d) { d.SetNoLayDlg(); }},
    {"gets a colour key", [](HostDialog& d) { d.Set_COLORKEYDlg(0xFF00FF); }},
    {"gets an alpha", [](HostDialog& d) { d.Set_ALPHADlg(128); }},
    {"gets an alpha for each pixel", [](HostDialog& d) { d.Set_OPAQUEDlg(255); }},
    {"changes the background", [](HostDialog& d) { d.SetBack(CString(), 0, 1); }},
    {"changes the size", [](HostDialog& d) { d.MoveWindow(100, 100, 240, 200); }},
    {"minimises", [](HostDialog& d) { d.ShowWindow(SW_MINIMIZE); }},
    {"hides", [](HostDialog& d) { d.ShowWindow(SW_HIDE); }},
    {"disables the window", [](HostDialog& d) { d.EnableWindow(FALSE); }},
    {"refreshes",
     [](HostDialog& d) {
         d.UpdateView();
         d.UpdateViewRect(nullptr);
         ::UpdateWindow(d.m_hWnd);
     }},
    {"releases the button", [](HostDialog&) { Headless::ButtonUp(); }},
    {"clicks somewhere else", [](HostDialog&) { Click(70, 15); }},
    {"sends what the pointer would",
     [](HostDialog& d) {
         const LPARAM at = MAKELPARAM(20, 20);
         for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP,
                                    WM_LBUTTONDBLCLK, WM_LBUTTONUP, WM_RBUTTONUP, WM_MOUSELEAVE})
             d.SendMessage(message, 0, at);
     }},
    {"sends a timer and a paint", [](HostDialog& d) { d.SendMessage(WM_TIMER, 3), d.SendMessage(WM_PAINT); }},
    {"releases the pointer", [](HostDialog&) { ReleaseCapture(); }},
    {"pumps messages",
     [](HostDialog& d) {
         for (int i = 0; i < 5 && play->dialog; ++i)
             d.messagePump();
     }},
    {"lets time pass", [](HostDialog&) { Headless::Advance(100); }},
    {"quits", [](HostDialog&) { PostQuitMessage(0); }},
};

// ---- The stage

struct Way {
    const char* name;
    int style;
    bool modal;
};
constexpr Way kWays[] = {
    {"ordinary", LAY_NONE, false},
    {"per-pixel", LAY_OPAQUE, false},
    {"modal with alpha", LAY_ALPHA, true},
    {"per-pixel and modal", LAY_OPAQUE, true},
};

class HostCalls : public kit::HeadlessTest, public testing::WithParamInterface<Scene> {
  protected:
    void SetUp() override {
        kit::HeadlessTest::SetUp();
        bystander_.AddQKItem(&button_);
        bystander_.Open(400, 300);
    }

    // The dialog stands as the scene wants it, and the scene begins.
    static void Perform(const Way& way) {
        With([](HostDialog& d) { d.SetWindowPos(HWND(), 100, 100, 200, 160, SWP_NOZORDER); });
        With([](HostDialog& d) { d.SetBackColor(Gdiplus::Color(0xFF808080), 1); });
        if (way.style == LAY_ALPHA) With([](HostDialog& d) { d.Set_ALPHADlg(200); });
        if (way.style == LAY_OPAQUE)
            With([](HostDialog& d) { d.Set_OPAQUEDlg(255), d.SetBack(CString(), 0, 1); });
        With([](HostDialog& d) { d.ShowWindow(SW_SHOW); });
        With([](HostDialog& d) { d.UpdateView(); });
        Headless::RunPending();
        play->listening = true;
        if (GetParam().act) GetParam().act();
        Headless::RunPending();
    }

    static void Open(const Way& way) {
        play->listening = GetParam().act == nullptr;
        auto* const dialog = new HostDialog(play->owner.get());
        if (way.modal) {
            // In the loop. One that an earlier play left behind is not ours.
            static std::intptr_t serial = 0;
            static const Way* current;
            current = &way;
            const auto step = [](void* of) {
                if (reinterpret_cast<std::intptr_t>(of) != serial || !Called("idle step")) return;
                Perform(*current);
                play->listening = false;
                With([](HostDialog& d) { d.EndDialog(IDOK); });
            };
            Headless::WhenIdle(step, reinterpret_cast<void*>(++serial));
            dialog->DoModal();
        } else {
            dialog->Create(kit::kDialogTemplate, play->owner.get());
            Perform(way);
        }
    }

    // What is left of the dialog works.
    static void ExpectWorks(HostDialog& dialog) {
        dialog.SetNoLayDlg();
        dialog.SetNoMove(1);
        dialog.m_bSysInvalidate = 1;
        dialog.EnableWindow(TRUE);
        dialog.ShowWindow(SW_RESTORE);
        dialog.SetWindowPos(HWND_TOP, 100, 100, 200, 160, 0);
        dialog.UpdateView();
        Headless::RunPending();
        dialog.OnLButtonUp(0, CPoint(20, 20));  // the one that MinQKDlg may be waiting for
        Click(20, 20);
        EXPECT_FALSE(dialog.HoldsPress());
        if (!dialog.button) return;
        EXPECT_EQ(dialog.button->GetStatus(), QKItemBase::QK_MOUSEON);
        EXPECT_EQ(Headless::Capture(dialog.m_hWnd).At(20, 20), kit::kOver);
    }

    std::vector<std::string> PlayOnce(const Way& way, int deedAt, const Deed* deed) {
        Play now;
        play = &now;
        now.deedAt = deedAt;
        now.deed = deed ? deed->act : nullptr;
        now.owner = std::make_unique<kit::TestDialog>();
        now.owner->Open(420, 20);
        try {
            Open(way);
        } catch (const Thrown&) {
        } catch (const CException&) {
        }
        now.listening = false;
        EXPECT_EQ(now.deedDone, deed != nullptr);
        Headless::ButtonUp(1), Headless::ButtonUp(3), Headless::KeyUp(VK_F4), Headless::KeyUp(VK_MENU);
        MSG quit;
        PeekMessageW(&quit, HWND(), WM_QUIT, WM_QUIT, PM_REMOVE);
        Headless::RunPending();
        EXPECT_EQ(GetCapture(), HWND());
        if (IsWindow(now.owner->m_hWnd)) {
            EXPECT_TRUE(IsWindowEnabled(now.owner->m_hWnd));
        }
        if (now.dialog && IsWindow(now.dialog->m_hWnd)) ExpectWorks(*now.dialog);
        delete now.dialog;
        now.owner.reset();
        const int clicks = button_.clicks;
        bystander_.Click(20, 20);
        EXPECT_EQ(button_.clicks, clicks + 1);
        Headless::MovePointer(639, 479);
        return now.calls;
    }

    kit::TestDialog bystander_;
    kit::TestButton button_{10, 10};
};

// Of all plays, every n-th is played in an ordinary build, which would notice little of what goes wrong.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kEvery = 1;
#else
constexpr std::size_t kEvery = 8;
#endif

TEST_P(HostCalls, MayDoAnything) {
    std::size_t plays = 0;
    for (std::size_t w = 0; w < std::size(kWays); ++w) {
        const std::vector<std::string> calls = PlayOnce(kWays[w], -1, nullptr);
        std::map<std::string, int> seen;
        for (std::size_t call = 0; call < calls.size(); ++call) {
            // Refreshes come for different reasons; a message is as a rule like the one before.
            const bool isMessage = calls[call].find_last_of("0123456789") != std::string::npos;
            if (seen[calls[call]]++ >= (isMessage ? 1 : 2)) continue;
            // Each deed in each call, in one of the ways.
            for (std::size_t deed = (w + call) % std::size(kWays); deed < std::size(kDeeds);
                 deed += std::size(kWays)) {
                if (plays++ % kEvery != 0) continue;
                SCOPED_TRACE(std::string(kWays[w].name) + ": in " + calls[call] + ", " + kDeeds[deed].name);
                PlayOnce(kWays[w], static_cast<int>(call), &kDeeds[deed]);
                if (HasFailure()) return;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, HostCalls, testing::ValuesIn(kScenes),
                         [](const auto& scene) { return std::string(scene.param.name); });

}  // namespace
