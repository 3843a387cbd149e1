// What a host sees: a library that is not there before the first request, and the proxy of its environment.
#include <QKUILib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/web/test_server.h"

namespace {

bool IsMapped(const std::string& name) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
        if (line.find("/" + name) != std::string::npos) return true;
    return false;
}

std::ptrdiff_t Threads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

TEST(WebHost, NothingIsLoadedBeforeTheFirstRequest) {
    Headless::Use(200, 100);
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, u"", WS_POPUP | WS_VISIBLE, CRect(0, 0, 50, 50), nullptr, 0));
    Headless::RunPending();
    for (const char* name : {"libcurl", "libssl", "libnghttp2", "libwebkit", "libgtk", "libsoup"})
        EXPECT_FALSE(IsMapped(name)) << name;
    EXPECT_EQ(Threads(), 1);

    kit::TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    setenv("http_proxy", ("http://127.0.0.1:" + std::to_string(server.Port())).c_str(), 1);
    CString response;
    EXPECT_EQ(QKBaseFunctions().WebGet(u"http://host.invalid/a?b", response, 2), 1U);
    EXPECT_EQ(response, u"abc");
    EXPECT_TRUE(
        server.Request().starts_with("POST http://host.invalid/a?b HTTP/1.1\r\nHost: host.invalid\r\n"));
    EXPECT_EQ(QKBaseFunctions().WebPost(u"http://host.invalid/a?b", u"a=1", response), 1U);
    EXPECT_TRUE(server.Request().ends_with(std::string("\r\n\r\na\0=", 7)));
    unsetenv("http_proxy");
    EXPECT_TRUE(IsMapped("libcurl"));
    EXPECT_EQ(Threads(), 2);  // the server's
}

}  // namespace
