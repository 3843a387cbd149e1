#include <cmath>

#include <platform/gdiplus.h>

#include "framework/dialog_fixture.h"

namespace {

int livingWindows = 0;
LPARAM initParameter = 0;
bool shownAtInit = false;

// A window class of a host that is written without the framework's objects.
LRESULT CountingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) ++livingWindows;
    if (message == WM_NCDESTROY) --livingWindows;
    if (message == WM_INITDIALOG) {
        initParameter = lParam;
        shownAtInit = IsWindowVisible(window) != FALSE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class DialogTemplate : public DialogTest {
  protected:
    static void SetUpTestSuite() {
        ASSERT_TRUE(Headless::Use());
        WNDCLASSW description;
        description.lpfnWndProc = CountingProcedure;
        description.lpszClassName = u"Counting";
        ASSERT_TRUE(RegisterClassW(&description));
    }
    void Use(const kit::Template& dialog) { UseTemplates({{PlainTemplate, kit::Pack(dialog)}}); }
    static HWND Make(UINT id = PlainTemplate, HWND parent = {}, LPVOID parameter = nullptr) {
        SetLastError(ERROR_SUCCESS);
        return CreateDialogFromTemplate({}, MAKEINTRESOURCE(id), parent, u"Counting", parameter);
    }
    static CRect PlaceOf(HWND window) {
        CRect rect(-1, -1, -1, -1);
        GetWindowRect(window, rect);
        return rect;
    }
};

kit::Template Sample(bool extended) {
    kit::Template dialog;
    dialog.extended = extended;
    dialog.title = u"皮肤对话框";
    dialog.x = 10;
    dialog.y = 20;
    dialog.width = 101;
    dialog.height = 51;
    dialog.controls = {{1001, 3, 4, 30, 12, 0x50000000, 0x82, u"", u"中文标签"},
                       {1002, 0, 0, 0, 0, 0x40000000, 0, u"static", u""},
                       {1003, -5, 40, 200, 100, 0x58000000, 0, u"STATIC", u"big"}};
    return dialog;
}

TEST_F(DialogTemplate, BuildsWindowAndControlsInUnitsOfNoFont) {
    for (const bool extended : {false, true}) {
        SCOPED_TRACE(extended);
        Use(Sample(extended));
        int parameter = 0;
        const HWND window = Make(PlainTemplate, {}, &parameter);
        ASSERT_TRUE(window);
        EXPECT_EQ(initParameter, reinterpret_cast<LPARAM>(&parameter));
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_TRUE(GetWindowTextW(window) == u"皮肤对话框");
        EXPECT_TRUE(PlaceOf(window) == CRect(CPoint(20, 40), CSize(202, 102)));
        const struct {
            int id;
            CRect place;  // in the dialog
            LPCWSTR text;
            bool shown, enabled;
        } controls[] = {{1001, CRect(6, 8, 66, 32), u"中文标签", true, true},
                        {1002, CRect(0, 0, 0, 0), u"", false, true},
                        {1003, CRect(-10, 80, 390, 280), u"big", true, false}};
        for (const auto& one : controls) {
            SCOPED_TRACE(one.id);
            const HWND control = GetDlgItem(window, one.id);
            ASSERT_TRUE(control);
            CRect place = PlaceOf(control);
            place.OffsetRect(-20, -40);
            EXPECT_TRUE(place == one.place);
            EXPECT_TRUE(GetWindowTextW(control) == one.text);
            EXPECT_EQ((GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0, one.shown);
            EXPECT_EQ(IsWindowEnabled(control) != FALSE, one.enabled);
        }
        EXPECT_FALSE(GetDlgItem(window, 1004));
        DestroyWindow(window);
        EXPECT_EQ(livingWindows, 0);
    }
}

TEST_F(DialogTemplate, ShowsTheWindowAfterItsInitialisation) {
    kit::Template dialog = Sample(true);
    dialog.style |= WS_VISIBLE;
    Use(dialog);
    shownAtInit = true;
    const HWND window = Make();
    EXPECT_FALSE(shownAtInit);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_TRUE(DestroyWindow(window));
}

// A font's units by the classic rule, measured here with the public drawing interface.
TEST_F(DialogTemplate, UnitsGrowWithTheFont) {
    const struct {
        const char16_t* face;
        unsigned points, weight;
        bool extended;
    } cases[] = {{u"DejaVu Sans", 8, 400, true},
                 {u"DejaVu Sans", 9, 700, true},
                 {u"DejaVu Sans", 31, 400, false},
                 {u"宋体", 9, 400, true}};
    for (const auto& one : cases) {
        SCOPED_TRACE(testing::Message() << one.points << " points");
        kit::Template dialog = Sample(one.extended);
        dialog.face = one.face;
        dialog.pointSize = one.points;
        dialog.weight = one.weight;
        Use(dialog);
        const HWND window = Make();
        ASSERT_TRUE(window);

        const Gdiplus::Font font(
            one.face, static_cast<float>(one.points),
            one.extended && one.weight == 700 ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular);
        const CString letters(u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        Gdiplus::Bitmap canvas(1, 1);
        const Gdiplus::Graphics graphics(&canvas);
        Gdiplus::RectF box;
        ASSERT_EQ(graphics.MeasureString(letters, -1, &font, Gdiplus::RectF(0, 0, 0, 0), nullptr, &box),
                  Gdiplus::Ok);
        const CRect place = PlaceOf(window);
        // The measured box may hold up to half a letter of room at either end.
        EXPECT_NEAR(place.Width(), 101 * std::round(box.Width / 52) / 4, 101 / 4.0 + 1);
        EXPECT_EQ(place.Height(), std::lround(51 * std::round(font.GetHeight()) / 8));
        const CRect control = PlaceOf(GetDlgItem(window, 1003));
        EXPECT_EQ(control.Width(), std::lround(200 * std::round(place.Width() * 4 / 101.0) / 4));
        EXPECT_LT(control.left, place.left);
        EXPECT_TRUE(DestroyWindow(window));
    }
}

TEST_F(DialogTemplate, BoldLettersAreWider) {
    int widths[2];
    for (const bool bold : {false, true}) {
        kit::Template dialog;
        dialog.face = u"DejaVu Sans";
        dialog.pointSize = 24;
        dialog.weight = bold ? 700 : 400;
        Use(dialog);
        const HWND window = Make();
        widths[bold ? 1 : 0] = PlaceOf(window).Width();
        EXPECT_TRUE(DestroyWindow(window));
    }
    EXPECT_GT(widths[1], widths[0]);
}

TEST_F(DialogTemplate, PlacesTheWindow) {
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, u"owner", WS_POPUP, CRect(300, 200, 700, 500), nullptr, 0));
    const struct {
        const char* name;
        DWORD style;
        int x, y;
        bool owned, ownerShown;
        CPoint place;  // of a window of 200 by 100
    } cases[] = {
        {"on the screen", WS_POPUP, 7, 9, false, false, CPoint(14, 18)},
        {"at its owner", WS_POPUP, -7, 9, true, true, CPoint(300 - 14, 218)},
        {"centred on the screen", WS_POPUP | DS_CENTER, 7, 9, false, false, CPoint(540, 350)},
        {"centred on its owner", WS_POPUP | DS_CENTER, 7, 9, true, true, CPoint(400, 300)},
        {"centred, owner hidden", WS_POPUP | DS_CENTER, 7, 9, true, false, CPoint(540, 350)},
        {"anywhere", WS_POPUP, -32768, 0, false, false, CPoint(540, 350)},
        {"as a child", WS_CHILD, 7, 9, true, true, CPoint(314, 218)},
        {"as a centred child", WS_CHILD | DS_CENTER, 7, 9, true, true, CPoint(400, 300)},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        owner.ShowWindow(one.ownerShown ? SW_SHOW : SW_HIDE);
        kit::Template dialog;
        dialog.style = one.style;
        dialog.x = one.x;
        dialog.y = one.y;
        Use(dialog);
        const HWND window = Make(PlainTemplate, one.owned ? owner.m_hWnd : HWND());
        ASSERT_TRUE(window);
        EXPECT_EQ(GetParent(window), one.owned ? owner.m_hWnd : HWND());
        const CRect place = PlaceOf(window);
        EXPECT_TRUE(place == CRect(one.place, CSize(200, 100))) << place.left << "," << place.top;
        EXPECT_TRUE(DestroyWindow(window));
    }
}

// Refused templates say why, and leave no window.
TEST_F(DialogTemplate, RefusesWhatItCannotBuild) {
    const struct {
        const char* name;
        std::function<void(kit::Template&)> spoil;
        DWORD error;
    } cases[] = {
        {"an unknown number", [](kit::Template& d) { d.controls[1].atom = 0x99; }, ERROR_INVALID_DATA},
        {"an unknown class", [](kit::Template& d) { d.controls[1].className = u"STATICS"; },
         ERROR_INVALID_DATA},
        {"negative width", [](kit::Template& d) { d.width = -1; }, ERROR_INVALID_DATA},
        {"negative control", [](kit::Template& d) { d.controls[2].height = -3; }, ERROR_INVALID_DATA},
        {"too wide", [](kit::Template& d) { d.width = 16384; }, ERROR_INVALID_DATA},
        {"too high a control", [](kit::Template& d) { d.controls[0].height = 32000; }, ERROR_INVALID_DATA},
        {"a child without a parent", [](kit::Template& d) { d.style = WS_CHILD; }, ERROR_SUCCESS},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        kit::Template dialog = Sample(true);
        one.spoil(dialog);
        Use(dialog);
        EXPECT_FALSE(Make());
        if (one.error != ERROR_SUCCESS) {
            EXPECT_EQ(GetLastError(), one.error);
        }
        EXPECT_NE(GetLastError(), DWORD{ERROR_SUCCESS});
        EXPECT_EQ(livingWindows, 0);
    }
    kit::Template wide = Sample(true);
    wide.width = 16383;
    Use(wide);
    const HWND widest = Make();
    EXPECT_TRUE(widest);
    DestroyWindow(widest);
}

TEST_F(DialogTemplate, RefusesEveryTruncation) {
    for (const bool extended : {false, true}) {
        kit::Template dialog = Sample(extended);
        dialog.face = u"DejaVu Sans";
        dialog.pointSize = 9;
        const kit::Bytes whole = kit::Pack(dialog);
        std::vector<std::pair<unsigned, kit::Bytes>> templates;
        for (std::size_t length = 0; length <= whole.size(); ++length)
            templates.push_back({static_cast<unsigned>(length) + 1,
                                 kit::Bytes(whole.begin(), whole.begin() + static_cast<long>(length))});
        UseTemplates(templates);
        ASSERT_TRUE(module_->Handle());
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            SCOPED_TRACE(testing::Message() << length << " bytes of " << whole.size());
            const HWND window = Make(static_cast<UINT>(length) + 1);
            // The last two bytes only say that no creation data follow.
            if (length + 2 <= whole.size()) {
                EXPECT_FALSE(window);
                EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_DATA});
            }
            if (length == whole.size()) {
                EXPECT_TRUE(window);
            }
            if (window) DestroyWindow(window);
            EXPECT_EQ(livingWindows, 0);
        }
    }
}

TEST_F(DialogTemplate, MissingTemplatesAndWindows) {
    Use(Sample(true));
    EXPECT_FALSE(Make(77));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
    EXPECT_FALSE(CreateDialogFromTemplate({}, MAKEINTRESOURCE(PlainTemplate), {}, u"No such class", nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_CANNOT_FIND_WND_CLASS});
    CWnd gone;
    ASSERT_TRUE(gone.CreateEx(0, u"gone", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    const HWND stale = gone.m_hWnd;
    gone.DestroyWindow();
    EXPECT_FALSE(Make(PlainTemplate, stale));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
    const kit::ResourceModule pictures({{1, {1, 2, 3, 4}}}, 10);
    EXPECT_FALSE(Make());
    EXPECT_EQ(GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

}  // namespace
