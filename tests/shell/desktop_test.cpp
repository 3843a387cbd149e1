// Where a dialog finds the desktop, and what becomes of it there.
#include <map>
#include <string>

#include "support/test_dialog.h"

namespace {

constexpr std::uint32_t kGreen = 0xFF00C800;

class DeskDialog : public CQKDialogDeskList {
  public:
    explicit DeskDialog(CWnd* parent = nullptr) : CQKDialogDeskList(kit::kDialogTemplate, parent) {}
    ~DeskDialog() override { DestroyWindow(); }
    void Open(int x, int y) {
        Create(kit::kDialogTemplate);
        SetBackColor(Gdiplus::Color(kGreen), 1);
        SetWindowPos(HWND(), x, y, 100, 50, SWP_NOZORDER);
        ShowWindow(SW_SHOW);
        UpdateView();
        Headless::RunPending();
    }
    using CQKDialogDeskList::FindDeskListView;
    using CQKDialogDeskList::FindDeskParent;
};

class Desktop : public kit::HeadlessTest {
  protected:
    void TearDown() override {
        for (const auto& [name, window] : windows)
            Headless::CloseForeignWindow(window);
    }
    // Children are written behind their parents: "Progman/Program Manager", then "Progman>SHELLDLL_DefView".
    HWND Add(const std::string& name, const std::string& parent, LPCWSTR className, LPCWSTR title,
             std::uint32_t colour = 0) {
        return windows[name] = Headless::AddForeignWindow(className, title, windows[parent], nullptr, colour);
    }
    HWND AddDesktop(std::uint32_t colour = 0) {
        const HWND desktop = Add("d", "", u"Progman", u"Program Manager", colour);
        Add("v", "d", u"SHELLDLL_DefView", u"");
        return desktop;
    }
    std::string NameOf(HWND window) const {
        for (const auto& [name, known] : windows)
            if (window && known == window) return name;
        return window ? "?" : "";
    }
    std::map<std::string, HWND> windows{{"", HWND()}};
};

// d desktop, t the same under another title, v view in what was added last on the screen, l its icons, m
// icons under another title, w a worker, x a worker with a title.
TEST_F(Desktop, IsSearchedInOrder) {
    const struct {
        const char* parts;
        const char* parent;  // the window that SetDesk chooses
        const char* list;    // what FindDeskListView stores; ?: nothing
    } shells[] = {
        {"", "", "?"},         {"dvl", "l2", "?"},   {"dvm", "d0", "?"},    {"dv", "d0", "?"},
        {"tvl", "", "?"},      {"d", "", "?"},       {"dwvl", "l3", "l3"},  {"dwvm", "m3", ""},
        {"dwxvm", "m4", "?"},  {"dwvwvl", "l5", ""}, {"dwwvl", "l4", "l4"}, {"wvl", "", "l2"},
        {"dvwvl", "d0", "l4"}, {"dxv", "", "?"},     {"tdvl", "l3", "?"},
    };
    const std::map<char, std::pair<LPCWSTR, LPCWSTR>> kinds = {{'d', {u"Progman", u"Program Manager"}},
                                                               {'t', {u"progman", u"Desktop"}},
                                                               {'w', {u"WorkerW", u""}},
                                                               {'x', {u"WorkerW", u"busy"}},
                                                               {'v', {u"SHELLDLL_DefView", u"any"}},
                                                               {'l', {u"SysListView32", u"FolderView"}},
                                                               {'m', {u"SysListView32", u"Icons"}}};
    for (const auto& shell : shells) {
        SCOPED_TRACE(shell.parts);
        std::string top, view;
        for (int i = 0; shell.parts[i]; ++i) {
            const char part = shell.parts[i];
            const std::string name = part + std::to_string(i);
            const bool isView = part == 'v', isIcons = part == 'l' || part == 'm';
            Add(name, isView ? top : isIcons ? view : "", kinds.at(part).first, kinds.at(part).second);
            if (!isIcons) (isView ? view : top) = name;
        }
        DeskDialog dialog;
        EXPECT_EQ(NameOf(dialog.FindDeskParent()), shell.parent);
        const HWND untouched = GetDesktopWindow();
        HWND list = untouched;
        const int found = dialog.FindDeskListView(list);
        EXPECT_EQ(found, shell.list[0] != '\0' && shell.list[0] != '?');
        EXPECT_EQ(list == untouched ? "?" : NameOf(list), shell.list);
        EXPECT_EQ(dialog.SetDesk(), 0);  // it has no window
        dialog.Open(10, 10);
        EXPECT_EQ(dialog.SetDesk(), shell.parent[0] ? 1 : 0);
        const HWND in = GetAncestor(dialog.m_hWnd, GA_PARENT);
        EXPECT_EQ(in == GetDesktopWindow() ? "" : NameOf(in), shell.parent);
        EXPECT_EQ(GetParent(dialog.m_hWnd), HWND());
        // Hiding: the desktop's whole window whatever its title, else the icons.
        const bool isDesktop = shell.parts[0] == 'd' || shell.parts[0] == 't';
        const std::string hides = isDesktop ? std::string(shell.parts, 1) + "0" : NameOf(list);
        dialog.ShowDeskList(0);
        for (const auto& [name, window] : windows)
            EXPECT_FALSE(name == hides && IsWindowVisible(window)) << name;
        dialog.ShowDeskList(2);
        for (const auto& [name, window] : windows)
            EXPECT_TRUE(!window || IsWindowVisible(window)) << name;
        TearDown();
        windows = {{"", HWND()}};
    }
}

TEST_F(Desktop, HoldsTheDialogBelowTheOthers) {
    AddDesktop(0x202020);
    const RECT left = {0, 0, 150, 480};
    windows["l"] = Headless::AddForeignWindow(u"SysListView32", u"FolderView", windows["v"], &left, 0x404040);
    kit::TestDialog other;
    other.Open(0, 0);
    DeskDialog dialog;
    dialog.Open(100, 180);
    EXPECT_EQ(Headless::CaptureScreen().At(180, 200), kGreen);
    const DWORD style = dialog.GetStyle();
    ASSERT_EQ(dialog.SetDesk(), 1);
    EXPECT_EQ(dialog.SetDesk(), 1);
    EXPECT_EQ(dialog.GetStyle(), style);
    EXPECT_EQ(Headless::CaptureScreen().At(120, 200), kGreen);      // above the icons
    EXPECT_EQ(Headless::CaptureScreen().At(180, 200), 0xFF202020);  // cut off where they end
    EXPECT_EQ(Headless::CaptureScreen().At(20, 200), 0xFF404040);
    CRect rect;
    dialog.GetWindowRect(rect);
    EXPECT_EQ(kit::Line(rect), "100 180 200 230");
    EXPECT_TRUE(WindowFromPoint({120, 200}) == dialog.m_hWnd);
    EXPECT_FALSE(WindowFromPoint({180, 200}));
    // Brought up as far as it goes: not above a window of the ordinary kind.
    dialog.SetWindowPos(HWND_TOPMOST, 100, 140, 0, 0, SWP_NOSIZE);
    EXPECT_TRUE(WindowFromPoint({120, 150}) == other.m_hWnd);
    other.DestroyWindow();
    // It goes with the desktop, and comes with it.
    Headless::MovePointer(120, 150);
    EXPECT_TRUE(SetCapture(dialog.m_hWnd) == HWND());
    dialog.ShowDeskList(0);
    Headless::RunPending();
    EXPECT_FALSE(GetCapture());
    EXPECT_EQ(Headless::CaptureScreen().At(120, 150), 0xFF3A6EA5U);
    EXPECT_TRUE(dialog.IsWindowVisible());
    dialog.ShowDeskList(1);
    EXPECT_EQ(Headless::CaptureScreen().At(120, 150), kGreen);
    // By its own wish it is an ordinary window again.
    EXPECT_TRUE(SetParent(dialog.m_hWnd, HWND()) == windows["l"]);
    EXPECT_EQ(Headless::CaptureScreen().At(180, 150), kGreen);
    EXPECT_TRUE(SetParent(dialog.m_hWnd, windows["d"]) == GetDesktopWindow());
}

struct PutOutDialog : DeskDialog {
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_WINDOWPOSCHANGED && ++moved && closes) return DestroyWindow();
        return DeskDialog::WindowProc(message, wParam, lParam);
    }
    int moved = 0;  // notifications of a change of place
    bool closes = false;
};

TEST_F(Desktop, GoesAndLeavesTheDialogWhereItWas) {
    for (const bool closes : {false, true}) {
        const HWND desktop = AddDesktop();
        kit::TestDialog other;
        other.Open(150, 150);
        PutOutDialog dialog;
        dialog.Open(100, 140);
        ASSERT_EQ(dialog.SetDesk(), 1);
        dialog.moved = 0;
        dialog.closes = closes;
        Headless::CloseForeignWindow(desktop);
        EXPECT_EQ(dialog.moved, 1);
        EXPECT_EQ(IsWindow(dialog.m_hWnd), !closes);
        EXPECT_FALSE(IsWindow(desktop));
        EXPECT_FALSE(FindWindowW(u"Progman", nullptr));
        EXPECT_FALSE(ShowWindow(desktop, SW_HIDE));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
        other.DestroyWindow();
        if (closes) continue;
        EXPECT_TRUE(GetAncestor(dialog.m_hWnd, GA_PARENT) == GetDesktopWindow());
        EXPECT_EQ(Headless::CaptureScreen().At(120, 160), kGreen);
        // Another desktop comes: the handle of the first does not name it.
        const HWND next = AddDesktop();
        EXPECT_FALSE(next == desktop);
        EXPECT_FALSE(IsWindow(desktop));
        EXPECT_FALSE(SetParent(dialog.m_hWnd, desktop));
        EXPECT_EQ(dialog.SetDesk(), 1);
        Headless::CloseForeignWindow(next);
    }
}

TEST_F(Desktop, SearchesAndRefusals) {
    const HWND desktop = Add("d", "", u"Progman", u"Program Manager");
    kit::TestDialog dialog;
    dialog.Open(10, 10);
    const HWND own = dialog.m_hWnd;
    const HWND child = CreateWindowExW(0, u"STATIC", u"note", WS_CHILD, 0, 0, 5, 5, own, 1, {}, nullptr);
    SetWindowTextW(own, u"Mine");
    EXPECT_TRUE(FindWindowW(nullptr, u"Mine") == own);
    EXPECT_TRUE(FindWindowExW({}, own, nullptr, nullptr) == desktop);  // others' come behind
    EXPECT_TRUE(FindWindowExW(own, {}, u"static", u"note") == child);
    EXPECT_FALSE(FindWindowExW(own, {}, u"static", u"Note"));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_FALSE(FindWindowExW({}, child, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
    for (const auto& [window, parent, error] : {std::tuple(HWND(), desktop, ERROR_INVALID_WINDOW_HANDLE),
                                                {desktop, HWND(), ERROR_INVALID_WINDOW_HANDLE},
                                                {child, desktop, ERROR_INVALID_PARAMETER},
                                                {own, child, ERROR_INVALID_PARAMETER},
                                                {own, HWND_TOP, ERROR_INVALID_WINDOW_HANDLE}}) {
        EXPECT_FALSE(SetParent(window, parent));
        EXPECT_EQ(GetLastError(), DWORD{error});
    }
    RECT rect;
    EXPECT_FALSE(::GetWindowRect(desktop, &rect));
    EXPECT_FALSE(::DestroyWindow(desktop));
    EXPECT_TRUE(IsWindow(desktop));
    EXPECT_STREQ(RUNTIME_CLASS(CQKDialogDeskList)->m_lpszClassName, "CQKDialogDeskList");
    EXPECT_TRUE(DeskDialog().IsKindOf(RUNTIME_CLASS(CQKDialogBase)));
    dialog.DestroyWindow();
}

}  // namespace
