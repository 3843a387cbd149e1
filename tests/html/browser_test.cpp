// The HTML view with its browser, in a real window on one display.
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "html/html_host.h"
#include "web/test_server.h"
#include "x11/x_session.h"

namespace html_test {
namespace {

constexpr std::uint32_t kBody = 0x20A040;
constexpr std::uint32_t kLink = 0xFFFF00;
constexpr std::uint32_t kFrame = 0xC00000;
constexpr std::uint32_t kPicture = 0x0000FF;

bool IsMapped(const char* library) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
        if (line.find(library) != std::string::npos) return true;
    return false;
}

bool Until(const std::function<bool()>& condition, int milliseconds = 60000) {
    return xtest::Eventually(
        [&] {
            Headless::RunPending();
            return condition();
        },
        milliseconds);
}

void Pass(int milliseconds) {
    Until([] { return false; }, milliseconds);
}

// The process that shows our pages; 0 without one.
pid_t PageProcess() {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream status(entry.path() / "status");
        std::string name, line;
        bool ours = false;
        while (std::getline(status, line)) {
            if (line.starts_with("Name:")) name = line.substr(6);
            if (line == "PPid:\t" + std::to_string(getpid())) ours = true;
        }
        if (ours && name.starts_with("WebKitWebProc")) return std::stoi(entry.path().filename());
    }
    return 0;
}

class Browser : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        xtest::SessionOptions options;
        options.windowManager = true;
        session = xtest::XSession::Start(options).release();
        ASSERT_TRUE(session);
        // A host without an HTML view has nothing of the browser.
        CDialog plain;
        ASSERT_TRUE(plain.Create(kDialog));
        plain.ShowWindow(SW_SHOW);
        Pass(200);
        for (const char* library : {"libwebkit", "libgtk-3", "libgdk-3", "libjavascript", "QKUILib-webkit"})
            EXPECT_FALSE(IsMapped(library)) << library;
    }
    static void TearDownTestSuite() { delete session; }

    void SetUp() override {
        host = std::make_unique<Host>();
        ASSERT_TRUE(host->Open()) << ErrorText(GetLastError());
        host->SetWindowPos(HWND(), 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ASSERT_TRUE(Shows(kPage));
        ASSERT_TRUE(Until([&] { return session->PixelAt(320 - 10, 250) == kBody; }));
    }
    Control& View() { return *host->control; }
    int Notified(const char* failed) { return View().Count(std::string("notified ") + failed); }
    bool Shows(UINT page) {
        const int before = Notified("0");
        View().LoadFromResource(page);
        return Until([&] { return Notified("0") == before + 1; });
    }
    // In pixels of the page.
    std::uint32_t Pixel(int x, int y) {
        const CPoint at = OnScreen(x, y);
        return session->PixelAt(at.x, at.y);
    }
    CPoint OnScreen(int x, int y) {
        POINT at{x, y};
        ::ClientToScreen(View().m_hWnd, &at);
        return at;
    }
    void Click(int x, int y) {
        const CPoint at = OnScreen(x, y);
        session->Click(at.x, at.y);
    }
    // One failure, reported once, and then no more.
    void ExpectOneFailure(DWORD code) {
        EXPECT_TRUE(Until([&] { return Notified("1") == 1; }));
        EXPECT_EQ(View().lastError, code);
        EXPECT_TRUE(Shows(kPage));
        Pass(300);
        EXPECT_EQ(Notified("1"), 1);
        EXPECT_EQ(Notified("0"), 2);
    }
    static xtest::XSession* session;
    std::unique_ptr<Host> host;
};
xtest::XSession* Browser::session = nullptr;

TEST_F(Browser, ShowsAPageWithItsPictureAndFrameAndNoScrollBars) {
    EXPECT_TRUE(IsMapped("QKUILib-webkit"));
    EXPECT_TRUE(Until([&] { return Pixel(5, 65) == kPicture && Pixel(50, 70) == kFrame; }));
    EXPECT_EQ(Pixel(5, 5), kLink);
    EXPECT_EQ(View().Count("notified 0"), 1);
    EXPECT_EQ(View().Count("frame complete"), 1);
    EXPECT_EQ(View().Count("title A page"), 1);
    const CPoint inside = OnScreen(150, 100);
    session->MovePointer(inside.x, inside.y);
    session->Xdotool({"click", "--repeat", "4", "5"});
    ASSERT_TRUE(Until([&] { return Pixel(5, 5) == kBody; }));  // scrolled
    for (int y = 0; y < 120; y += 7)
        for (int x = 180; x < 200; ++x)
            EXPECT_EQ(Pixel(x, y), kBody) << x << ", " << y;
}

TEST_F(Browser, HandsCommandsOnOnceAndExactly) {
    Click(50, 10);
    ASSERT_TRUE(Until([&] { return View().log.back().starts_with("app "); }));
    Pass(500);
    EXPECT_EQ(View().Count("app close?x=%20y z"), 1);
    EXPECT_TRUE(View().log.back().starts_with("app ")) << View().log.back();
    Click(50, 35);  // application.html, which is not there
    ExpectOneFailure(INET_E_OBJECT_NOT_FOUND);
}

TEST_F(Browser, TakesClicksAndKeysAndFollowsItsWindow) {
    Click(150, 8);
    ASSERT_TRUE(Until([&] { return View().Count("title focus") == 1; }));
    session->Xdotool({"type", "--delay", "40", "Hi you"});
    EXPECT_TRUE(Until([&] { return View().Count("title Hi you") == 1; }));
    EXPECT_EQ(::GetFocus(), View().m_wndBrowser);
    // Not for the page any more, though the pointer is over it.
    ::SetFocus(host->m_hWnd);
    Pass(100);
    session->Xdotool({"type", "x"});
    Pass(500);
    EXPECT_EQ(View().log.back(), "title Hi you");

    View().MoveWindow(0, 0, 290, 190);
    EXPECT_TRUE(Until([&] { return Pixel(288, 188) == kBody && Pixel(1, 100) == kBody; }));
    View().ShowWindow(SW_HIDE);
    EXPECT_TRUE(Until([&] { return Pixel(100, 100) != kBody; }));
    View().ShowWindow(SW_SHOW);
    EXPECT_TRUE(Until([&] { return Pixel(288, 188) == kBody; }));
}

TEST_F(Browser, ReportsAnUnreachableAddressOnce) {
    View().Navigate(CString(("http://127.0.0.1:" + std::to_string(kit::DeadPort()) + "/").c_str()));
    ExpectOneFailure(INET_E_CANNOT_CONNECT);
    host.reset();
    SetUp();
    View().Navigate(u"http://127.0.0.1:1/");  // a port that the browser refuses
    ExpectOneFailure(INET_E_CANNOT_CONNECT);
}

TEST_F(Browser, OutlivesItsProcess) {
    const pid_t process = PageProcess();
    ASSERT_GT(process, 0);
    ASSERT_EQ(kill(process, SIGKILL), 0);
    ExpectOneFailure(INET_E_TERMINATED_BIND);
    EXPECT_TRUE(Until([&] { return Pixel(180, 100) == kBody; }));
}

TEST_F(Browser, ADialogMayEndInTheNotification) {
    for (const char* last : {"notified 0", "app close?x=%20y z"}) {
        if (!host) SetUp();
        const HWND window = host->m_hWnd;
        View().act = [&](const std::string& what) {
            if (what == last) host.reset();
        };
        if (std::string(last).starts_with("app"))
            Click(50, 10);
        else
            View().LoadFromResource(kPage);
        EXPECT_TRUE(Until([&] { return !IsWindow(window); }));
        Pass(300);
    }
}

}  // namespace
}  // namespace html_test
