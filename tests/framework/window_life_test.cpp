#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>

#include <platform/framework.h>
#include <platform/headless.h>

namespace {

// Does something to itself inside one message.
class Fragile : public CWnd {
  public:
    enum class Act { Nothing, Destroy, DestroyRaw, Delete, Refuse, Throw };
    UINT when = WM_NULL;
    Act act = Act::Nothing;
    bool deletesItself = false;  // once the window is gone
    int* gone = nullptr;         // counts PostNcDestroy
    int* deleted = nullptr;

    ~Fragile() override {
        if (deleted) ++*deleted;
    }

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != when || act == Act::Nothing) return CWnd::WindowProc(message, wParam, lParam);
        const Act now = act;
        act = Act::Nothing;
        switch (now) {
            case Act::Destroy:
                if (deletesItself) return DestroyWindow();
                DestroyWindow();
                // Without a window there is nothing to default for.
                if (!m_hWnd) {
                    EXPECT_EQ(Default(), 0);
                }
                return 0;
            case Act::DestroyRaw:
                return ::DestroyWindow(m_hWnd);
            case Act::Delete:
                delete this;
                return 0;
            case Act::Refuse:
                return message == WM_CREATE ? -1 : 0;
            case Act::Throw:
                AfxThrowInvalidArgException();
            default:
                return 0;
        }
    }
    void PostNcDestroy() override {
        EXPECT_FALSE(m_hWnd);
        if (gone) ++*gone;
        if (deletesItself) delete this;
    }
};

class WindowLife : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(Headless::Use()); }
};

// Brings one message to a shown window the way it comes in life.
struct Bringer {
    const char* name;
    UINT message;
    std::function<void(HWND)> bring;
};

const Bringer bringers[] = {
    {"sent", WM_APP, [](HWND window) { SendMessageW(window, WM_APP, 0, 0); }},
    {"posted", WM_APP + 1,
     [](HWND window) { PostMessageW(window, WM_APP + 1, 0, 0), Headless::RunPending(); }},
    {"timer", WM_TIMER, [](HWND window) { SetTimer(window, 1, 20, nullptr), Headless::Advance(50); }},
    {"paint", WM_PAINT, [](HWND window) { InvalidateRect(window, nullptr, TRUE), Headless::RunPending(); }},
    {"erase", WM_ERASEBKGND,
     [](HWND window) { InvalidateRect(window, nullptr, TRUE), UpdateWindow(window); }},
    {"size", WM_SIZE, [](HWND window) { MoveWindow(window, 5, 5, 70, 70, TRUE); }},
    {"press", WM_LBUTTONDOWN,
     [](HWND) {
         Headless::MovePointer(20, 20);
         Headless::ButtonDown();
         Headless::ButtonUp();
     }},
    {"deactivation", WM_ACTIVATE, [](HWND window) { ShowWindow(window, SW_HIDE); }},
    {"close", WM_CLOSE, [](HWND window) { Headless::RequestClose(window), Headless::RunPending(); }},
    {"destroy", WM_DESTROY, [](HWND window) { DestroyWindow(window); }},
    {"last", WM_NCDESTROY, [](HWND window) { DestroyWindow(window); }},
};

TEST_F(WindowLife, AWindowMayGoInsideAnyOfItsHandlers) {
    const struct {
        const char* name;
        Fragile::Act act;
        bool deletesItself;
    } ways[] = {
        {"DestroyWindow", Fragile::Act::Destroy, false},
        {"DestroyWindow, then delete", Fragile::Act::Destroy, true},
        {"::DestroyWindow", Fragile::Act::DestroyRaw, false},
        {"::DestroyWindow, then delete", Fragile::Act::DestroyRaw, true},
        {"delete", Fragile::Act::Delete, false},
    };
    for (const Bringer& bringer : bringers) {
        for (const auto& way : ways) {
            SCOPED_TRACE(testing::Message() << way.name << " in " << bringer.name);
            int gone = 0;
            int deleted = 0;
            auto window = std::make_unique<Fragile>();
            window->gone = &gone;
            window->deleted = &deleted;
            window->deletesItself = way.deletesItself;
            ASSERT_TRUE(window->CreateEx(0, u"fragile", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
            window->ShowWindow(SW_SHOW);
            Headless::RunPending();
            const HWND handle = window->m_hWnd;
            ASSERT_EQ(CWnd::FromHandlePermanent(handle), window.get());
            window->when = bringer.message;
            window->act = way.act;
            const bool ownLife = way.deletesItself || way.act == Fragile::Act::Delete;
            Fragile* const object = ownLife ? window.release() : window.get();
            bringer.bring(handle);
            EXPECT_FALSE(IsWindow(handle));
            EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
            if (ownLife) {
                EXPECT_EQ(deleted, 1);
            } else {
                EXPECT_FALSE(object->m_hWnd);
                EXPECT_EQ(gone, 1);
            }
            Headless::RunPending();
        }
    }
}

// The window goes on as if the handler had returned 0; after its last message it is gone all the same.
TEST_F(WindowLife, AnExceptionEndsItsMessageOnly) {
    for (const UINT message : {UINT{WM_APP}, UINT{WM_SIZE}, UINT{WM_DESTROY}, UINT{WM_NCDESTROY}}) {
        SCOPED_TRACE(message);
        int gone = 0;
        Fragile window;
        window.gone = &gone;
        ASSERT_TRUE(window.CreateEx(0, u"throws", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
        window.when = message;
        window.act = Fragile::Act::Throw;
        window.MoveWindow(0, 0, 30, 30);
        EXPECT_EQ(window.SendMessage(WM_APP), 0);
        EXPECT_TRUE(window.DestroyWindow());
        EXPECT_EQ(window.act, Fragile::Act::Nothing);
        EXPECT_FALSE(window.m_hWnd);
        EXPECT_EQ(gone, 1);
    }
}

TEST_F(WindowLife, AnObjectTakesItsWindowAlong) {
    HWND handle, child;
    {
        CWnd window, inside;
        ASSERT_TRUE(window.CreateEx(0, u"short", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
        ASSERT_TRUE(inside.CreateEx(0, u"child", WS_CHILD, CRect(0, 0, 6, 6), &window, 3));
        handle = window.m_hWnd;
        child = inside.m_hWnd;
        EXPECT_EQ(window.GetDlgItem(3), child);
        EXPECT_FALSE(window.CreateEx(0, u"again", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
        // The parent's window takes the child's along; its object stays, without a window.
        window.DestroyWindow();
        EXPECT_FALSE(inside.m_hWnd);
        EXPECT_FALSE(window.DestroyWindow());
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
        ASSERT_TRUE(window.CreateEx(0, u"second life", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
        EXPECT_FALSE(window.m_hWnd == handle);
        handle = window.m_hWnd;
    }
    EXPECT_FALSE(IsWindow(handle));
}

// Nothing stays behind of a window that never came to be.
TEST_F(WindowLife, CreationMayFail) {
    CWnd none;
    EXPECT_FALSE(none.CreateEx(0, u"x", WS_POPUP, CRect(50, 50, 40, 40), nullptr, 0));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_FALSE(none.m_hWnd);
    CWnd dead;
    EXPECT_FALSE(none.CreateEx(0, u"x", WS_CHILD, CRect(0, 0, 4, 4), &dead, 0));
    EXPECT_FALSE(none.m_hWnd);
    for (const UINT message : {UINT{WM_NCCREATE}, UINT{WM_CREATE}}) {
        for (const bool deletesItself : {false, true}) {
            SCOPED_TRACE(testing::Message() << message << (deletesItself ? " deletes itself" : ""));
            int gone = 0;
            int deleted = 0;
            auto window = std::make_unique<Fragile>();
            window->gone = &gone;
            window->deleted = &deleted;
            window->deletesItself = deletesItself;
            window->when = message;
            window->act = Fragile::Act::Refuse;
            Fragile* const object = deletesItself ? window.release() : window.get();
            EXPECT_FALSE(object->CreateEx(0, u"refused", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
            EXPECT_EQ(gone, 1);
            EXPECT_EQ(deleted, deletesItself ? 1 : 0);
        }
    }
    // A window made while a creation fails elsewhere belongs to its own object.
    CWnd after;
    ASSERT_TRUE(after.CreateEx(0, u"after", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
    EXPECT_EQ(CWnd::FromHandlePermanent(after.m_hWnd), &after);
}

// A window that creates another object's window while it is being created itself.
class Parental : public CWnd {
  public:
    CWnd inside;

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CREATE) inside.CreateEx(0, u"", WS_CHILD, CRect(1, 2, 5, 5), this, 1);
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

TEST_F(WindowLife, CreationsNest) {
    Parental window;
    ASSERT_TRUE(window.CreateEx(0, u"outer", WS_POPUP, CRect(0, 0, 60, 60), nullptr, 0));
    ASSERT_TRUE(window.inside.m_hWnd);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.m_hWnd), &window);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.inside.m_hWnd), &window.inside);
    EXPECT_EQ(GetParent(window.inside.m_hWnd), window.m_hWnd);
}

// A new window in the middle of a message of the old one: that message is over.
class Phoenix : public CWnd {
  public:
    int defaults = 0;

  protected:
    LRESULT OnRise(WPARAM, LPARAM) {
        DestroyWindow();
        EXPECT_TRUE(CreateEx(0, u"again", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
        return Default();
    }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_APP) ++defaults;
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Phoenix, CWnd)
ON_MESSAGE(WM_APP, OnRise)
END_MESSAGE_MAP()

TEST_F(WindowLife, DefaultIsNotForALaterWindow) {
    Phoenix window;
    ASSERT_TRUE(window.CreateEx(0, u"first", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    window.SendMessage(WM_APP);
    EXPECT_TRUE(window.m_hWnd);
    EXPECT_EQ(window.defaults, 0);
}

// Objects with static storage outlive the thread's own: their windows are out of reach by then.
TEST_F(WindowLife, AStaticObjectSurvivesTheEndOfTheProgram) {
    // In a process of its own, started anew.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static CWnd window;
            window.CreateEx(0, u"static", WS_POPUP | WS_VISIBLE, CRect(0, 0, 5, 5), nullptr, 0);
            std::exit(window.m_hWnd ? 5 : 1);
        },
        testing::ExitedWithCode(5), "");
}

TEST_F(WindowLife, StylesRectanglesAndCentring) {
    CWnd owner, window, child;
    EXPECT_FALSE(window.ModifyStyle(0, WS_MINIMIZEBOX));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
    ASSERT_TRUE(owner.CreateEx(0, u"owner", WS_POPUP, CRect(100, 200, 500, 400), nullptr, 0));
    ASSERT_TRUE(window.CreateEx(0, u"标题", WS_POPUP, CRect(3, 4, 103, 54), &owner, 0));
    ASSERT_TRUE(child.CreateEx(0, u"", WS_CHILD, CRect(0, 0, 10, 10), &window, 1));
    EXPECT_TRUE(window.GetWindowText() == u"标题");
    EXPECT_TRUE(window.ModifyStyle(0, WS_MINIMIZEBOX));
    EXPECT_FALSE(window.ModifyStyle(0, WS_MINIMIZEBOX));
    EXPECT_EQ(window.GetStyle() & WS_MINIMIZEBOX, DWORD{WS_MINIMIZEBOX});
    EXPECT_TRUE(window.ModifyStyle(WS_MINIMIZEBOX, 0, SWP_FRAMECHANGED));
    EXPECT_EQ(window.GetStyle() & WS_MINIMIZEBOX, 0u);
    EXPECT_TRUE(window.ModifyStyleEx(0, WS_EX_LAYERED));
    EXPECT_EQ(window.GetExStyle() & WS_EX_LAYERED, DWORD{WS_EX_LAYERED});

    CRect rect(0, 0, 10, 20);
    window.ClientToScreen(rect);
    EXPECT_TRUE(rect == CRect(3, 4, 13, 24));
    window.ScreenToClient(rect);
    EXPECT_TRUE(rect == CRect(0, 0, 10, 20));

    child.CenterWindow();
    child.GetWindowRect(rect);
    EXPECT_TRUE(rect == CRect(3 + 45, 4 + 20, 3 + 55, 4 + 30));
    const struct {
        const char* name;
        CRect owner;
        int show;
        CPoint place;
    } cases[] = {
        {"owner hidden: the screen", CRect(100, 200, 500, 400), SW_HIDE, CPoint(590, 375)},
        {"over the owner", CRect(100, 200, 500, 400), SW_SHOW, CPoint(250, 275)},
        {"kept on the screen", CRect(1200, -40, 1400, 60), SW_SHOW, CPoint(1180, 0)},
        {"owner minimised: the screen", CRect(100, 200, 500, 400), SW_MINIMIZE, CPoint(590, 375)},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        owner.MoveWindow(one.owner.left, one.owner.top, one.owner.Width(), one.owner.Height());
        owner.ShowWindow(one.show);
        window.CenterWindow();
        window.GetWindowRect(rect);
        EXPECT_TRUE(rect == CRect(one.place, CSize(100, 50))) << rect.left << "," << rect.top;
    }
    Headless::SetMonitors({{{640, 0, 1280, 800}, {640, 0, 1280, 800}}, {{0, 0, 640, 800}, {0, 0, 640, 770}}});
    window.CenterWindow();
    EXPECT_EQ((window.GetWindowRect(rect), rect), CRect(CPoint(910, 375), CSize(100, 50))) << "the primary";
    owner.ShowWindow(SW_RESTORE);
    owner.MoveWindow(560, 760, 140, 40);
    window.CenterWindow();
    EXPECT_EQ((window.GetWindowRect(rect), rect), CRect(CPoint(540, 720), CSize(100, 50))) << "its work area";
    Headless::SetMonitors({});
}

// AfxPumpMessage and AfxRunMessageLoop are the same loop in steps and as a whole.
TEST_F(WindowLife, LoopsRunUntilQuit) {
    Headless::RunPending();
    PostQuitMessage(41);
    EXPECT_EQ(AfxRunMessageLoop(), 41);
    PostMessageW({}, WM_APP, 0, 0);
    PostQuitMessage(42);
    EXPECT_TRUE(AfxPumpMessage());
    EXPECT_FALSE(AfxPumpMessage());
}

}  // namespace
