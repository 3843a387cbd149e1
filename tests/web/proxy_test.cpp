// Which proxy a request goes through: that of the environment, else the desktop's.
#include <gtest/gtest.h>

#include <QKUILib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "tests/web/test_server.h"

namespace {

// What GNOME's settings would hold.
void SetDesktopProxy(unsigned short port) {
    const std::filesystem::path folder =
        std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "glib-2.0/settings";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "keyfile") << "[system/proxy]\nmode='manual'\nignore-hosts=['localhost']\n"
                                      << "[system/proxy/http]\nhost='127.0.0.1'\nport=" << port << '\n';
}

TEST(Proxy, IsTheEnvironmentsOrElseTheDesktops) {
    kit::TestServer target, desktop, named;
    const std::pair<std::string, kit::TestServer*> servers[] = {
        {"target", &target}, {"desktop", &desktop}, {"named", &named}};
    for (const auto& [name, server] : servers)
        server->Play("HTTP/1.1 200 OK\r\nX-Server: " + name + "\r\nContent-Length: 0\r\n\r\n");
    SetDesktopProxy(desktop.Port());
    const std::string proxy = "http://127.0.0.1:" + std::to_string(named.Port());

    const struct {
        std::map<std::string, std::string> environment;
        LPCWSTR host, server;
        DWORD access = INTERNET_OPEN_TYPE_PRECONFIG;
    } cases[] = {
        {{}, u"127.0.0.1", u"desktop"},
        {{}, u"localhost", u"target"},
        {{{"no_proxy", "127.0.0.1"}}, u"127.0.0.1", u"target"},
        {{{"http_proxy", proxy}}, u"127.0.0.1", u"named"},
        {{{"http_proxy", proxy}}, u"localhost", u"named"},
        {{{"http_proxy", proxy}, {"no_proxy", "127.0.0.1,example.org"}}, u"127.0.0.1", u"target"},
        {{{"http_proxy", proxy}, {"NO_PROXY", "*"}}, u"127.0.0.1", u"target"},
        {{{"http_proxy", ""}}, u"127.0.0.1", u"target"},
        {{{"all_proxy", proxy}}, u"127.0.0.1", u"named"},
        {{{"https_proxy", proxy}}, u"127.0.0.1", u"desktop"},
        {{{"HTTP_PROXY", proxy}}, u"127.0.0.1", u"desktop"},
        {{{"http_proxy", proxy}}, u"127.0.0.1", u"target", INTERNET_OPEN_TYPE_DIRECT},
    };
    for (const auto& each : cases) {
        std::string setting = ToUtf8(each.host);
        for (const auto& [name, value] : each.environment) {
            setenv(name.c_str(), value.c_str(), 1);
            setting += " " + name + "=" + value;
        }
        SCOPED_TRACE(setting);
        CInternetSession session(nullptr, 1, each.access);
        const std::unique_ptr<CHttpConnection> connection(
            session.GetHttpConnection(each.host, target.Port()));
        const std::unique_ptr<CHttpFile> request(
            connection->OpenRequest(CHttpConnection::HTTP_VERB_GET, u"/x"));
        EXPECT_TRUE(request->SendRequest());
        CString server;
        EXPECT_TRUE(request->QueryHeader(u"X-Server", server));
        EXPECT_EQ(ToUtf8(server), ToUtf8(each.server));
        for (const auto& [name, value] : each.environment)
            unsetenv(name.c_str());
    }
    // A proxy is sent the whole address.
    const std::string port = std::to_string(target.Port());
    EXPECT_TRUE(desktop.Request().starts_with("GET http://127.0.0.1:" + port + "/x HTTP/1.1\r\n"));
    EXPECT_TRUE(target.Request().starts_with("GET /x HTTP/1.1\r\n"));
}

}  // namespace
