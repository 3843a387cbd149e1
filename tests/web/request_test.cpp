// What is asked: the bytes on the wire, the calls on the client and their order, and the settings looked at.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "src/web/registry_key.h"
#include "src/web/url_split.h"
#include "tests/web/local_access.h"
#include "tests/web/test_server.h"

namespace {

using namespace qkui;
using namespace std::string_literals;

TEST(Request, BytesOnTheWire) {
    kit::TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
    const std::string host = "Host: 127.0.0.1:" + std::to_string(server.Port()) + "\r\n";
    CString response;
    const auto get = [&](LPCWSTR url) {
        EXPECT_EQ(kit::LocalAccess(server.Port()).Get(url, response, 2), 1U);
        return server.Request();
    };
    const std::string empty = " HTTP/1.1\r\n" + host + "Content-Length: 0\r\n\r\n";
    EXPECT_EQ(get(u"http://127.0.0.1/a/b?x=1"), "POST /a/b?x=1" + empty);
    EXPECT_EQ(get(u"127.0.0.1"), "POST /" + empty);
    EXPECT_EQ(get(u"http://127.0.0.1/a b/../\r\nX: ü%20{#part"),
              "POST /a%20b/../%0D%0AX:%20%C3%BC%20%7B" + empty);

    EXPECT_EQ(kit::LocalAccess(server.Port()).Post(u"http://127.0.0.1/form", u"a=1", response), 1U);
    EXPECT_EQ(server.Request(),
              "POST /form HTTP/1.1\r\n" + host +
                  "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: 3\r\n\r\n" + "a\0="s);
    const std::u16string form(3'000'000, u'é');
    EXPECT_EQ(kit::LocalAccess(server.Port()).Post(u"http://127.0.0.1/form", CString(form), response), 1U);
    const std::string request = server.Request();
    EXPECT_EQ(request.size() - request.find("\r\n\r\n") - 4, form.size());
    EXPECT_TRUE(request.ends_with("\xE9\0\xE9\0"s));
}

TEST(Request, UrlsFallIntoServerAndObject) {
    const LPCWSTR cases[][3] = {
        {u"http://host/a/b?x=1", u"host", u"a/b?x=1"},
        {u"http://host", u"host", u""},
        {u"host/page", u"host", u"page"},
        {u"servername/get_http_data", u"ame", u"get_http_data"},
        {u"https://host/x", u"", u"host/x"},
        {u"http://host:8080/x", u"host:8080", u"x"},
        {u"HTTP://host/x", u"HTTP:", u"/host/x"},
        {u"http", u"", u""},
        {u"", u"", u""},
    };
    for (const auto& [url, server, object] : cases) {
        CString left = url, right = u"before";
        ParseUrl(left, right);
        EXPECT_EQ(left, server) << ToUtf8(url);
        EXPECT_EQ(right, object) << ToUtf8(url);
    }
}

// ---- A client that is played, and notes each call -----------------------------------------------------

using Log = std::vector<std::string>;

struct Script {
    enum class At { Nowhere, Connect, Open, Send, Status, Read };
    At fails = At::Nowhere;
    bool throws = false;
    DWORD status = 200;
    Log* log = nullptr;

    // Notes the call. False, or an exception, where the script fails.
    bool Note(const std::string& call, At at) const {
        log->push_back(call);
        if (fails == at && throws) throw CInternetException(ERROR_INTERNET_CONNECTION_RESET);
        return fails != at;
    }
};

struct PlayedFile : CHttpFile {
    explicit PlayedFile(const Script& played) : script(played) {}
    ~PlayedFile() override { script.log->push_back("~request"); }
    BOOL SendRequest(const CString& headers, const void* body, DWORD length) override {
        const std::string bytes = body ? std::string(static_cast<const char*>(body), length) : "none";
        return script.Note("send " + ToUtf8(headers) + " " + bytes, Script::At::Send);
    }
    BOOL QueryInfoStatusCode(DWORD& status) const override {
        status = script.status;
        return script.Note("status", Script::At::Status);
    }
    UINT Read(void* buffer, UINT count) override {
        if (!script.Note("read " + std::to_string(count), Script::At::Read) || left == 0) return 0;
        --left;
        *static_cast<char*>(buffer) = 'x';
        return 1;
    }
    void Close() override { script.log->push_back("close request"); }
    Script script;
    int left = 2;
};

struct PlayedConnection : CHttpConnection {
    explicit PlayedConnection(const Script& played) : script(played) {}
    ~PlayedConnection() override { script.log->push_back("~connection"); }
    CHttpFile* OpenRequest(int verb, LPCWSTR object, LPCWSTR referer, DWORD_PTR context, const LPCWSTR* types,
                           LPCWSTR version, DWORD flags) override {
        EXPECT_TRUE(verb == 0 && !referer && context == 1 && !types && !version && flags == 0x20000000);
        return script.Note("open " + ToUtf8(object), Script::At::Open) ? new PlayedFile(script) : nullptr;
    }
    void Close() override { script.log->push_back("close connection"); }
    Script script;
};

struct PlayedAccess : CWebAccess {
    explicit PlayedAccess(const Script& played) : script(played) {}
    CHttpConnection* GetHttpConnection(LPCWSTR server, INTERNET_PORT port, LPCWSTR user, LPCWSTR) override {
        EXPECT_TRUE(port == 0 && !user);
        return script.Note("connect " + ToUtf8(server), Script::At::Connect) ? new PlayedConnection(script)
                                                                             : nullptr;
    }
    void Close() override { script.log->push_back("close session"); }
    Script script;
};

TEST(Request, CallsAndTheirOrder) {
    using At = Script::At;
    constexpr DWORD kReset = ERROR_INTERNET_CONNECTION_RESET;
    const struct {
        At fails;
        bool throws;
        DWORD status, result;
        std::size_t calls;  // before all is closed
    } cases[] = {
        {At::Connect, false, 200, 0xFFFFFFEC, 1},
        {At::Connect, true, 200, kReset, 1},
        {At::Open, false, 200, 0xFFFFFFEC, 2},
        {At::Open, true, 200, kReset, 2},
        {At::Send, false, 200, 0xFFFFFFEC, 3},
        {At::Send, true, 200, kReset, 3},
        {At::Status, false, 200, 0xFFFFFFEB, 4},
        {At::Status, true, 200, kReset, 4},
        {At::Nowhere, false, 404, 404, 4},
        {At::Nowhere, false, 200, 1, 7},
        {At::Read, false, 200, 1, 5},
        {At::Read, true, 200, kReset, 5},
    };
    const Log begin[] = {
        {"connect host", "open x", "send  none", "status", "read 1023", "read 1023", "read 1023"},
        {"connect host", "open x", "send Content-Type: application/x-www-form-urlencoded a\0="s, "status",
         "read 1", "read 1", "read 1"}};
    const Log ends[] = {{"close request", "~request", "close connection", "~connection"},
                        {"close request", "close connection", "close session", "~connection", "~request"}};
    for (const auto& each : cases) {
        for (const bool posts : {false, true}) {
            SCOPED_TRACE(std::to_string(static_cast<int>(each.fails)) + (posts ? " posts" : " gets"));
            Log log;
            PlayedAccess access({each.fails, each.throws, each.status, &log});
            CString response = u"before";
            DWORD result = 0;
            try {
                result = posts ? access.Post(u"http://host/x", u"a=1", response)
                               : access.Get(u"http://host/x", response, 2);
                EXPECT_FALSE(each.throws && each.fails >= At::Status);
            } catch (const CInternetException& failure) {
                EXPECT_TRUE(each.throws && each.fails >= At::Status);
                result = failure.m_dwError;
            }
            EXPECT_EQ(result, each.result);
            Log expected(begin[posts].begin(),
                         begin[posts].begin() + static_cast<std::ptrdiff_t>(each.calls));
            if (each.calls > 1)
                std::copy_if(ends[posts].begin(), ends[posts].end(), std::back_inserter(expected),
                             [&](const std::string& call) {
                                 return each.calls > 2 || call.find("request") == std::string::npos;
                             });
            EXPECT_EQ(log, expected);
            const bool reads = each.calls == 7;
            const bool empties = posts && each.calls >= 5;
            const bool explains = each.result == kReset && each.fails < At::Status;
            EXPECT_EQ(response == CString(u"before"), !reads && !empties && !explains);
            EXPECT_EQ(response == CString(u"xx"), reads);
        }
    }
}

TEST(Request, StatusTexts) {
    const std::pair<DWORD, LPCWSTR> cases[] = {
        {10, u"Resolving name host"},
        {11, u"Name resolved host"},
        {20, u"Connecting to socket address"},
        {21, u"Connected to socket address"},
        {30, u"Sending request"},
        {31, u"Request sent"},
        {40, u""},
        {41, u"Response received"},
        {50, u"Closing the connection to the server"},
        {51, u"Connection to the server closed"},
        {60, u"Handle created"},
        {70, u""},
        {100, u"Request complete"},
        {110, u"Being redirected"},
        {9, u"Unknown status: 9"},
        {200, u"Unknown status: 200"},
    };
    for (const auto& [status, text] : cases)
        EXPECT_EQ(StatusText(status, u"host"), text);
    CWebAccess().OnStatusCallback(1, 10, nullptr, 0);
}

TEST(Request, ASessionKnowsWhetherTheUserHasAProxy) {
    EXPECT_EQ(CWebAccess().m_bProxyEnable, 0);
    CRegistryKey key;
    ASSERT_TRUE(key.SetKey(u"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings"));
    HKEY settings;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, key.strSubKey, 0, KEY_WRITE, &settings), 0);
    const DWORD enabled = 7;
    RegSetValueExW(settings, u"ProxyEnable", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&enabled),
                   sizeof enabled);
    RegSetValueExW(settings, u"ProxyServer", 0, REG_SZ, reinterpret_cast<const BYTE*>(u"proxy:1"), 16);
    const CWebAccess access;
    EXPECT_EQ(access.m_bProxyEnable, 1);
    EXPECT_TRUE(access.m_strProxyServer.IsEmpty());
    EXPECT_EQ(key.ReadString(u"ProxyServer", u"none"), u"proxy:1");
    EXPECT_EQ(RegDeleteValueW(settings, u"ProxyEnable"), 0);
    RegCloseKey(settings);
}

}  // namespace
