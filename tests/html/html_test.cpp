// The HTML view over pages that are scripts: every order of events, and hosts that end in the middle of one.
#include <gtest/gtest.h>

#include <platform/headless_pages.h>

#include "html/html_host.h"
#include "support/test_dialog.h"

namespace html_test {
namespace {

constexpr LPCWSTR kUrl = u"http://host/page";

class Html : public kit::HeadlessTest {
  protected:
    void SetUp() override {
        Headless::ForgetPages();
        Headless::AnswerPage(kUrl, {u"Title", {u"http://host/frame"}, 0, false});
        Headless::AnswerPage(u"http://host/frame", {});
        host = std::make_unique<Host>();
        ASSERT_TRUE(host->Open());
    }
    Control& View() { return *host->control; }
    void Go(LPCWSTR url) {
        View().Navigate(url);
        Headless::RunPending();
    }
    std::unique_ptr<Host> host;
};

using kit::Line;
using Log = std::vector<std::string>;

TEST_F(Html, StandsInThePlaceOfTheControl) {
    const auto place = [](HWND window, CWnd& in) {
        CRect rect;
        ::GetWindowRect(window, rect);
        in.ScreenToClient(rect);
        return Line(rect);
    };
    EXPECT_EQ(place(View().m_hWnd, *host), "20 40 220 160");
    EXPECT_EQ(host->GetDlgItem(kPlaceholder), View().m_hWnd);
    EXPECT_TRUE(View().IsKindOf(RUNTIME_CLASS(CScrollView)));
    EXPECT_EQ(View().GetRuntimeClass()->CreateObject(), nullptr);
    // The browser's edge lies outside, whatever the size.
    View().MoveWindow(0, 0, 150, 90);
    EXPECT_EQ(place(::GetDlgItem(View().m_hWnd, 0xE900), View()), "-2 -2 152 92");
    EXPECT_EQ(View().OnGetHostInfo(nullptr), S_OK);

    Host other;
    ASSERT_TRUE(other.Open(4711));
    EXPECT_EQ(place(other.control->m_hWnd, other), "0 0 0 0");
}

TEST_F(Html, LoadsInTheOrderOfABrowser) {
    Go(kUrl);
    EXPECT_EQ(View().log,
              (Log{"before http://host/page", "navigated", "title Title", "before http://host/frame",
                   "frame navigated", "frame complete", "notified 0", "complete"}));
    EXPECT_EQ(View().m_bDocComplete, TRUE);
    EXPECT_EQ(View().m_pTopDisp, nullptr);
    EXPECT_EQ(View().GetLocationName(), u"Title");
    EXPECT_EQ(View().GetLocationURL(), kUrl);
    EXPECT_EQ(View().GetType(), u"HTML Document");
    EXPECT_TRUE(Headless::PageHidesScrollBars(View().m_hWnd));
}

TEST_F(Html, CommandsAreCancelledAndHandedOnAsTheyAre) {
    Go(kUrl);
    for (const auto& [url, noted, goes] : {std::tuple(u"APP:close", "app close", false),
                                           {u"app:", "app ", false},
                                           {u"aPp: a%20b ", "app  a%20b ", false},
                                           {u"application.html", "before application.html", true},
                                           {u"app", "before app", true}}) {
        View().log.clear();
        EXPECT_EQ(Headless::FollowLink(View().m_hWnd, url), goes);
        ASSERT_FALSE(View().log.empty());
        EXPECT_EQ(View().log.front(), noted);
        EXPECT_EQ(View().log.size() == 1, !goes);
    }
    // From a frame, by a window and by the host itself.
    View().log.clear();
    Headless::FollowLink(View().m_hWnd, u"app:frame", u"0");
    Headless::AskForWindow(View().m_hWnd, u"app:window");
    Go(u"app:host");
    EXPECT_EQ(View().log, (Log{"app frame", "window", "app window", "app host"}));
}

// Steps: n page navigates, c page completes, f and g a frame does, x the page fails, y a frame does.
TEST_F(Html, NotifiesOncePerPageAndOfErrorsOnce) {
    const struct {
        const char* steps;
        const char* noted;  // 1 where it failed
        BOOL navError, hasNavError;
    } cases[] = {{"nc", "0", 0, 0},   {"nfgc", "0", 0, 0}, {"nfcg", "0", 0, 0},   {"x", "1", 0, 1},
                 {"xnc", "10", 0, 1}, {"nyc", "1", 0, 1},  {"nycnc", "10", 0, 1}, {"nncc", "0", 0, 0},
                 {"c", "", 0, 0},     {"g", "", 0, 0},     {"ncy", "0", 1, 1},    {"ncfnc", "000", 0, 0}};
    for (const auto& [steps, wanted, navError, hasNavError] : cases) {
        Host fresh;
        ASSERT_TRUE(fresh.Open());
        const HWND window = fresh.control->m_hWnd;
        for (const char step : std::string(steps)) {
            const CString frame = step == 'f' || step == 'g' || step == 'y' ? u"0" : u"";
            if (step == 'n' || step == 'f') Headless::CommitPage(window, kUrl, frame);
            if (step == 'c' || step == 'g') Headless::CompletePage(window, kUrl, frame);
            if (step == 'x' || step == 'y') Headless::FailPage(window, kUrl, INET_E_CANNOT_CONNECT, frame);
        }
        std::string noted;
        for (const std::string& line : fresh.control->log)
            if (line.starts_with("notified")) noted += line.back();
        EXPECT_EQ(noted, wanted) << steps;
        EXPECT_EQ(Line(fresh.control->m_bNavError, fresh.control->m_bHasNavError),
                  Line(navError, hasNavError))
            << steps;
    }
}

TEST_F(Html, KeepsItsFlagsWithoutANotification) {
    View().m_pfnDocComplete = nullptr;
    Go(u"http://nowhere/");
    EXPECT_EQ(View().lastError, INET_E_CANNOT_CONNECT);
    EXPECT_EQ(View().m_bDocComplete, TRUE);
    EXPECT_EQ(View().m_bNavError, FALSE);
    EXPECT_EQ(View().m_bHasNavError, TRUE);
    VARIANT text, status;
    status.vt = VT_I4;
    status.lVal = 404;
    View().NavigateError(nullptr, &text, &text, &status, nullptr);
    EXPECT_EQ(View().lastError, 404U);
    EXPECT_EQ(View().m_bNavError, TRUE);
}

TEST_F(Html, PostsWhatItIsGiven) {
    char bytes[] = "a=1";
    Headless::AnswerPage(kUrl, {});
    View().Navigate(kUrl, 0, u"_self", u"X-A: b\r\n", bytes, 3);
    char16_t text[] = u"abcd";
    View().Navigate(kUrl, 0, nullptr, nullptr, text);
    Headless::RunPending();
    const auto requests = Headless::PageRequests(View().m_hWnd);
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].headers, u"X-A: b\r\n");
    EXPECT_EQ(requests[0].targetFrame, u"_self");
    EXPECT_EQ(requests[0].postedData, (std::vector<BYTE>{'a', '=', '1'}));
    EXPECT_EQ(requests[1].postedData, (std::vector<BYTE>{'a', 0, 'b', 0}));  // half of it
}

TEST_F(Html, FindsPagesAmongTheResources) {
    WCHAR file[260];
    ASSERT_NE(GetModuleFileNameW(AfxGetResourceHandle(), file, 260), 0U);
    const CString base = CString(u"res://") + file + u"/";
    EXPECT_TRUE(View().LoadFromResource(kPage));
    EXPECT_TRUE(View().LoadFromResource(u"Frame.html"));
    Headless::RunPending();
    EXPECT_EQ(View().Count("notified 0"), 2);
    const auto requests = Headless::PageRequests(View().m_hWnd);
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].url, base + u"201");
    EXPECT_EQ(requests[1].url, base + u"Frame.html");
    for (const char16_t* good : {u"blue.png", u"PNG/202", u"PNG/%23202", u"%46rame.html?q#f"}) {
        Go(base + good);
        EXPECT_EQ(View().GetLocationURL(), base + good);
    }
    EXPECT_EQ(View().m_bHasNavError, FALSE);
    for (const char16_t* bad : {u"blue.gif", u"PNG/203", u"", u"99999999999", u"%", u"%zz/%0"}) {
        Go(base + bad);
        EXPECT_EQ(View().lastError, INET_E_OBJECT_NOT_FOUND);
        View().lastError = 0;
    }
}

TEST_F(Html, NewWindowsMayGoToAnotherView) {
    Host other;
    ASSERT_TRUE(other.Open());
    EXPECT_FALSE(Headless::AskForWindow(View().m_hWnd, kUrl));  // left to the user's own browser
    struct Giver : Control {
        Control* to = nullptr;
        void OnNewWindow2(LPDISPATCH* browser, BOOL* cancel) override {
            if (to)
                *browser = to->GetWebBrow().Detach();
            else
                *cancel = TRUE;
        }
    };
    auto giver = std::make_unique<Giver>();
    Giver& view = *giver;
    host->control = std::move(giver);
    ASSERT_TRUE(view.CreateFromStatic(1, host.get()));
    EXPECT_TRUE(Headless::AskForWindow(view.m_hWnd, kUrl));
    view.to = other.control.get();
    EXPECT_TRUE(Headless::AskForWindow(view.m_hWnd, kUrl));
    EXPECT_EQ(Headless::PageRequests(other.control->m_hWnd).size(), 1U);
}

// Each event is the last thing that the host lives to see.
TEST_F(Html, AHostMayEndInEveryEvent) {
    Headless::AnswerPage(u"http://host/bad", {u"", {}, INET_E_DOWNLOAD_FAILURE, false});
    const char* events[] = {"before http://host/page",
                            "navigated",
                            "title Title",
                            "before http://host/frame",
                            "frame navigated",
                            "frame complete",
                            "notified 0",
                            "complete",
                            "error",
                            "notified 1",
                            "window",
                            "app x"};
    enum class End { DestroyControl, DestroyDialog, DeleteControl, DeleteHost, Navigate };
    for (const char* event : events)
        for (const End end :
             {End::DestroyControl, End::DestroyDialog, End::DeleteControl, End::DeleteHost, End::Navigate}) {
            auto ending = std::make_unique<Host>();
            ASSERT_TRUE(ending->Open());
            const HWND window = ending->control->m_hWnd;
            const CComPtr<IWebBrowser2> browser = ending->control->GetWebBrow();
            bool happened = false;
            ending->control->act = [&, event, end](const std::string& what) {
                if (what != event || std::exchange(happened, true)) return;
                if (end == End::DestroyControl) ending->control->DestroyWindow();
                if (end == End::DestroyDialog) ending->DestroyWindow();
                if (end == End::DeleteControl) ending->control.reset();
                if (end == End::DeleteHost) ending.reset();
                if (end == End::Navigate) ending->control->Navigate(u"about:blank");
            };
            const bool fails = std::string(event) == "error" || std::string(event) == "notified 1";
            ending->control->Navigate(fails ? u"http://host/bad" : kUrl);
            Headless::RunPending();
            Headless::AskForWindow(window, u"app:x");
            EXPECT_TRUE(happened) << event;
            EXPECT_EQ(IsWindow(window), end == End::Navigate) << event;
            BSTR url = nullptr;
            EXPECT_EQ(browser->get_LocationURL(&url) == S_OK, end == End::Navigate);
            SysFreeString(url);
        }
}

TEST_F(Html, WhatAHandlerThrowsReachesTheLoop) {
    View().act = [](const std::string& what) {
        if (what == "navigated") throw std::string("thrown");
    };
    View().Navigate(kUrl);
    EXPECT_THROW(Headless::RunPending(), std::string);
    Headless::RunPending();
    EXPECT_EQ(View().Count("notified 0"), 1);
}

TEST_F(Html, HasTheFocusThatItsWindowHas) {
    ::SetFocus(View().m_hWnd);
    EXPECT_TRUE(Headless::PageHasFocus(View().m_hWnd));
    ::SetFocus(host->m_hWnd);
    EXPECT_FALSE(Headless::PageHasFocus(View().m_hWnd));
}

}  // namespace
}  // namespace html_test
