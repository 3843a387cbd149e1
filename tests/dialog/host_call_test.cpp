// Every call into the host, times everything that a host may do there.
//
// A scene brings a dialog to a number of calls: callbacks, overridden virtuals, handlers, timer functions. It
// is played once to note them, and then anew for each of them and each deed, which that call does. Whatever
// that was: nothing is touched that is gone, nothing stays captured or disabled, and what is left still
// works.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <sstream>

#include "dialog/host_dialog.h"

namespace {

using namespace host;

// ---- The scenes

// What the user does. Each letter acts at once: m moves the pointer to a place of the dialog's client, d
// presses there, c clicks, r clicks with the right button; u releases, k is a key's press and release, w
// waits for milliseconds, p lets everything pending run.
void Act(const char* input) {
    std::istringstream in(input);
    for (char act; in >> act;) {
        int x = 0, y = 0;
        if (act == 'k' || act == 'w') in >> x;
        if (std::strchr("mdcr", act)) in >> x >> y;
        if (std::strchr("mdcr", act)) Headless::MovePointer(100 + x, 100 + y);
        if (act == 'd' || act == 'c') Headless::ButtonDown();
        if (act == 'u' || act == 'c') Headless::ButtonUp();
        if (act == 'r') Headless::ButtonDown(3), Headless::ButtonUp(3);
        if (act == 'k') Headless::KeyDown(static_cast<UINT>(x)), Headless::KeyUp(static_cast<UINT>(x));
        if (act == 'w') Headless::Advance(static_cast<unsigned>(x));
        if (act == 'p') Headless::RunPending();
    }
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

// The user does something, or the host acts on its dialog as long as there is one.
struct Step {
    Step(const char* does) : input(does) {}
    template <class Function>
    Step(Function does) : act(does) {}
    void Take() const {
        if (input) Act(input);
        if (act && play->dialog) act(*play->dialog);
    }
    const char* input = nullptr;
    std::function<void(HostDialog&)> act;
};
using D = HostDialog&;

void BecomeStyle(HostDialog& dialog, int style) {
    if (style == LAY_NONE) dialog.SetNoLayDlg();
    if (style == LAY_COLORKEY) dialog.Set_COLORKEYDlg(0xFF00FF);
    if (style == LAY_ALPHA) dialog.Set_ALPHADlg(200);
    if (style == LAY_OPAQUE) dialog.Set_OPAQUEDlg(200);
}

void AddChildOfTheHostsOwnClass(HostDialog& dialog) {
    WNDCLASSW type;
    type.lpszClassName = u"HostCalls:Child";
    type.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        Called("child's message " + std::to_string(message));
        return DefWindowProcW(window, message, wParam, lParam);
    };
    static const BOOL registered = RegisterClassW(&type) != 0;
    EXPECT_TRUE(registered);
    CreateWindowExW(0, type.lpszClassName, u"", WS_CHILD | WS_VISIBLE, 140, 100, 40, 40, dialog.m_hWnd, 1, {},
                    nullptr);
}

struct Scene {
    const char* name;
    std::vector<Step> steps;  // none: it is about opening
};
const Scene kScenes[] = {
    {"Opens", {}},
    {"Hovers", {"m 20 20 m 70 15 m 30 100 m 500 300"}},
    {"ClicksAButton", {"c 20 20"}},
    {"ClicksACheckBox", {"c 70 15"}},
    {"ClicksARadioButton", {"c 110 15"}},
    {"ReleasesElsewhere", {"d 20 20 m 70 15 u"}},
    {"DragsTheThumb", {"d 180 15 m 180 30 m 180 60 u"}},
    {"DoubleClicksEverything", {"c 20 20 c 20 20 c 30 100 c 30 100 c 150 60 c 150 60"}},
    {"ClicksRight", {"r 30 100"}},
    {"DragsABand", {[](D d) { d.SetSelRect(1), d.SetNoMove(1); }, "d 150 60 m 20 140 u"}},
    {"DragsTheWindow",
     {"d 150 60 m 160 70 u d 160 70 m 150 60",
      [](D d) { d.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(20, 20)); }, "u"}},
    {"StepsImages", {[](D d) { d.gif->StartRun(3, d.m_hWnd), d.otherGif->StartRun(3, d.m_hWnd); }, "w 50"}},
    {"RunsATimerFunction",
     {[](D d) { ::SetTimer(d.m_hWnd, 4, 10, [](HWND, UINT, UINT_PTR, DWORD) { Called("timer function"); }); },
      "w 25"}},
    {"ChangesActivation",
     {[](D d) { d.list->GetItem(0)->nFocusState = 0; }, [](D) { SetForegroundWindow(play->owner->m_hWnd); },
      [](D d) { SetForegroundWindow(d.m_hWnd); }}},
    {"ChangesItsPlace",
     {[](D d) { d.SetWindowPos(HWND_TOP, 90, 90, 220, 170, 0); }, "p", [](D d) { d.MinQKDlg(); }, "p",
      [](D d) { d.ShowWindow(SW_RESTORE); }, "p", [](D d) { d.ShowWindow(SW_HIDE); }, "p",
      [](D d) { d.ShowWindow(SW_SHOW); }, "p", [](D d) { d.ShowWindow(SW_MINIMIZE); }, "p",
      [](D d) { d.ShowWindow(SW_RESTORE); }, "p"}},
    {"TakesKeys",
     {"k 65 k 13 k 27", [](D) { Headless::KeyDown(VK_MENU); }, [](D) { Headless::KeyDown(VK_F4); }}},
    {"WalksByTab", {[](D d) { d.SetTabKeys(1); }, "k 9 k 32 k 9 k 13 k 9 k 9 k 32 c 20 20"}},
    {"RestsOnAnItem",
     {"m 70 15 w 600", [](D d) { d.SetWindowPos(HWND(), 90, 90, 0, 0, SWP_NOSIZE); },
      "m 71 15 w 10000 c 70 15"}},
    {"IsRefreshed",
     {[](D d) { d.UpdateViewPt(CPoint(0, 0)); }, [](D d) { d.UpdateViewRect(nullptr); },
      [](D d) { ::UpdateWindow(d.m_hWnd); }, [](D d) { d.m_bSysInvalidate = 0, d.UpdateView(); },
      [](D d) { d.Invalidate(), ::GetUpdateRect(d.m_hWnd, nullptr, TRUE); },
      [](D d) {
          if (!d.list || d.list->GetCount() == 0) return;
          d.list->GetItem(0)->nMouseState = 1, d.MoveLeaveList(d.list.get(), CRect());
      }}},
    {"ChangesItsLooks",
     {[](D d) { BecomeStyle(d, LAY_NONE); }, [](D d) { d.UpdateView(); }, "p",
      [](D d) { BecomeStyle(d, LAY_COLORKEY); }, [](D d) { d.UpdateView(); }, "p",
      [](D d) { BecomeStyle(d, LAY_ALPHA); }, [](D d) { d.UpdateView(); }, "p",
      [](D d) { BecomeStyle(d, LAY_OPAQUE); }, [](D d) { d.UpdateView(); }, "p",
      [](D d) { d.SetRngDlg(5, 5), d.SetWindowText(u"text"); }}},
    {"HasAChildOfTheHostsOwnClass",
     {AddChildOfTheHostsOwnClass, "p c 150 110", [](D d) { ::SetFocus(d.GetDlgItem(1)); },
      [](D d) { d.DestroyWindow(); }}},
    {"IsDisabledUnderAModalDialog", {[](D d) { OpenModal(d, nullptr); }}},
    {"PumpsMessages", {[](D d) { d.PostMessage(WM_APP), d.messagePump(); }}},
    {"IsAskedToClose", {[](D d) { Headless::RequestClose(d.m_hWnd); }}},
    {"Closes", {[](D d) { d.CloseQKDlg(), Headless::RunPending(); }}},
    {"EndsAsOK", {[](D d) { d.SendMessage(WM_COMMAND, IDOK); }}},
    {"EndsAsCancel", {[](D d) { d.SetDoModalOK(0); }}},
    {"GoesWithItsOwner", {[](D) { play->owner->DestroyWindow(); }}},
};

// ---- The deeds

struct Deed {
    const char* name;
    void (*act)(HostDialog& dialog);
};
const Deed kDeeds[] = {
    {"throws", [](D) { throw Thrown(); }},
    {"throws from now on", [](D) { play->throwsAlways = true; }},
    {"throws the framework's exception", [](D) { AfxThrowInvalidArgException(); }},
    {"deletes the dialog", [](D d) { delete &d; }},
    {"deletes the dialog and throws", [](D d) { delete &d, throw Thrown(); }},
    {"destroys the window", [](D d) { d.DestroyWindow(); }},
    {"destroys the window and throws", [](D d) { d.DestroyWindow(), throw Thrown(); }},
    {"closes at once", [](D d) { d.SendMessage(WM_CLOSE); }},
    {"posts the close request", [](D d) { d.CloseQKDlg(); }},
    {"ends as OK", [](D d) { d.SetDoModalOK(1); }},
    {"destroys the owner", [](D) { play->owner->DestroyWindow(); }},
    {"opens a modal dialog", [](D d) { OpenModal(d, nullptr); }},
    {"opens a modal dialog that deletes this one", [](D d) { OpenModal(d, [] { delete play->dialog; }); }},
    {"frees the button", [](D d) { d.Free(d.button); }},
    {"frees the item below", [](D d) { d.Free(d.below); }},
    {"frees the checks", [](D d) { d.Free(d.check), d.Free(d.radio), d.Free(d.otherRadio); }},
    {"frees the bar", [](D d) { d.Free(d.bar); }},
    {"frees the images", [](D d) { d.Free(d.gif), d.Free(d.otherGif); }},
    {"frees the list", [](D d) { d.Free(d.list); }},
    {"frees all items", [](D d) { d.FreeAll(); }},
    {"frees all items and throws", [](D d) { d.FreeAll(), throw Thrown(); }},
    {"adds items",
     [](D d) {
         static std::vector<std::unique_ptr<QKButton>> added;
         for (int i = 0; i < 20; ++i)
             d.AddQKItem(added.emplace_back(std::make_unique<QKButton>()).get());
     }},
    {"empties the list", [](D d) { d.list->RemoveAll(); }},
    {"removes the first entry", [](D d) { d.list->RemoveAt(d.list->GetItem(0), 1); }},
    {"removes the last entry", [](D d) { d.list->RemoveAt(d.list->GetItem(2), 1); }},
    {"fills the list and lays it out",
     [](D d) {
         for (QKListItem entry; d.list->GetCount() < 33;)
             d.list->InsertItem(&entry, 0);
     }},
    {"moves the entries away",
     [](D d) {
         for (int i = 0; i < d.list->GetCount(); ++i)
             d.list->GetItem(i)->rcMState.OffsetRect(1000, 0);
     }},
    {"clears the list's states", [](D d) { d.list->ClearState(); }},
    {"takes callbacks away",
     [](D d) {
         d.button->SetCallBack(nullptr), d.bar->SetVBarCallBack(nullptr), d.list->SetListCallBack(nullptr);
     }},
    {"becomes an ordinary window", [](D d) { BecomeStyle(d, LAY_NONE); }},
    {"gets a colour key", [](D d) { BecomeStyle(d, LAY_COLORKEY); }},
    {"gets an alpha", [](D d) { BecomeStyle(d, LAY_ALPHA); }},
    {"gets an alpha for each pixel", [](D d) { BecomeStyle(d, LAY_OPAQUE); }},
    {"changes the background", [](D d) { d.SetBack(CString(), 0, 1); }},
    {"changes the size", [](D d) { d.MoveWindow(100, 100, 240, 200); }},
    {"minimises", [](D d) { d.ShowWindow(SW_MINIMIZE); }},
    {"hides", [](D d) { d.ShowWindow(SW_HIDE); }},
    {"disables the window", [](D d) { d.EnableWindow(FALSE); }},
    {"refreshes", [](D d) { d.UpdateView(), d.UpdateViewRect(nullptr), ::UpdateWindow(d.m_hWnd); }},
    {"releases the button", [](D) { Headless::ButtonUp(); }},
    {"clicks somewhere else", [](D) { Act("c 70 15"); }},
    {"sends what the pointer would",
     [](D d) {
         for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP,
                                    WM_LBUTTONDBLCLK, WM_LBUTTONUP, WM_RBUTTONUP, WM_MOUSELEAVE})
             d.SendMessage(message, 0, MAKELPARAM(20, 20));
     }},
    {"sends a timer and a paint", [](D d) { d.SendMessage(WM_TIMER, 3), d.SendMessage(WM_PAINT); }},
    {"releases the pointer", [](D) { ReleaseCapture(); }},
    {"pumps messages",
     [](D d) {
         for (int i = 0; i < 5 && play->dialog; ++i)
             d.messagePump();
     }},
    {"lets time pass", [](D) { Headless::Advance(100); }},
    {"quits", [](D) { PostQuitMessage(0); }},
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
        const int style = way.style;
        const Step setting[] = {
            [](D d) { d.SetWindowPos(HWND(), 100, 100, 200, 160, SWP_NOZORDER); },
            [](D d) { d.SetBackColor(Gdiplus::Color(0xFF808080), 1); },
            [style](D d) { BecomeStyle(d, style); },
            [style](D d) { d.SetBack(CString(), 0, style == LAY_OPAQUE); },
            [](D d) { d.ShowWindow(SW_SHOW); },
            [](D d) { d.UpdateView(); },
        };
        for (const Step& step : setting)
            step.Take();
        Headless::RunPending();
        play->listening = true;
        for (const Step& step : GetParam().steps)
            step.Take();
        Headless::RunPending();
    }

    static void Open(const Way& way) {
        play->listening = GetParam().steps.empty();
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
                if (play->dialog) play->dialog->EndDialog(IDOK);
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
        Act("c 20 20");
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
        EXPECT_TRUE(!IsWindow(now.owner->m_hWnd) || IsWindowEnabled(now.owner->m_hWnd));
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
