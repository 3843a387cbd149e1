// The client as a host uses it: several requests of one session, packed bodies, statuses, ends at odd
// moments.
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <platform/internet.h>

#include "tests/web/test_server.h"

namespace {

using kit::TestServer;
using kit::Wire;
using namespace std::string_literals;

struct Client {
    explicit Client(const TestServer& server)
        : connection(session.GetHttpConnection(u"127.0.0.1", server.Port())) {}
    std::unique_ptr<CHttpFile> Open(int verb, LPCWSTR object) {
        return std::unique_ptr<CHttpFile>(connection->OpenRequest(verb, object));
    }
    CInternetSession session;
    std::unique_ptr<CHttpConnection> connection;
};

std::string Body(CHttpFile& request) {
    std::string body;
    char bytes[7];
    while (const UINT count = request.Read(bytes, sizeof bytes))
        body.append(bytes, count);
    return body;
}

DWORD ErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const CInternetException& failure) {
        return failure.m_dwError;
    }
    return 0;
}

TEST(Session, VerbsAndHeaders) {
    TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nX-One:  a \r\nx-one: b\r\nContent-Length: 0\r\n\r\n");
    Client client(server);
    const std::pair<int, std::string> verbs[] = {{CHttpConnection::HTTP_VERB_GET, "GET /x HTTP/1.1"},
                                                 {CHttpConnection::HTTP_VERB_HEAD, "HEAD /x HTTP/1.1"},
                                                 {CHttpConnection::HTTP_VERB_PUT, "PUT /x HTTP/1.1"},
                                                 {CHttpConnection::HTTP_VERB_DELETE, "DELETE /x HTTP/1.1"}};
    for (const auto& [verb, line] : verbs) {
        const auto request = client.Open(verb, u"x");
        ASSERT_TRUE(request->SendRequest(u"X-A: 1\r\nno header\r\nX-B: 2"));
        EXPECT_TRUE(server.Request().starts_with(line)) << server.Request();
        EXPECT_NE(server.Request().find("\r\nX-A: 1\r\nX-B: 2\r\n"), std::string::npos);
        CString value;
        EXPECT_TRUE(request->QueryHeader(u"X-ONE", value));
        EXPECT_EQ(value, u"a");
        EXPECT_FALSE(request->QueryHeader(u"X", value));
    }
    EXPECT_EQ(client.Open(9, u"x"), nullptr);
}

TEST(Session, PackedBodiesAreUnpackedIfAskedFor) {
    // "hello" by gzip -n
    const std::string packed(
        "\x1f\x8b\x08\0\0\0\0\0\0\x03\xcb\x48\xcd\xc9\xc9\x07\0\x86\xa6\x10\x36\x05\0\0\0", 25);
    TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 25\r\n\r\n" + packed);
    Client client(server);
    for (const bool asked : {false, true}) {
        client.session.SetOption(INTERNET_OPTION_HTTP_DECODING, asked);
        const auto request = client.Open(CHttpConnection::HTTP_VERB_GET, u"/");
        request->SendRequest();
        EXPECT_EQ(Body(*request), asked ? "hello" : packed);
        EXPECT_EQ(server.Request().find("gzip") != std::string::npos, asked);
    }
}

TEST(Session, RequestsSideBySide) {
    TestServer server;
    server.Play("HTTP/1.1 200 OK\r\n\r\nabcdefghijkl");
    Client client(server);
    std::vector<std::unique_ptr<CHttpFile>> requests;
    for (int i = 0; i < 5; ++i) {
        requests.push_back(client.Open(CHttpConnection::HTTP_VERB_GET, u"/"));
        requests.back()->SendRequest();
    }
    requests.erase(requests.begin() + 1);
    for (const auto& request : requests)
        EXPECT_EQ(Body(*request), "abcdefghijkl");
}

TEST(Session, CallsOutOfOrderFail) {
    TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    Client client(server);
    const auto request = client.Open(CHttpConnection::HTTP_VERB_GET, u"/");
    char byte;
    DWORD status = 7;
    EXPECT_EQ(ErrorOf([&] { request->Read(&byte, 1); }), DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE});
    EXPECT_FALSE(request->QueryInfoStatusCode(status));
    request->SendRequest();
    EXPECT_TRUE(request->QueryInfoStatusCode(status));
    EXPECT_EQ(ErrorOf([&] { request->SendRequest(); }), DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE});
    client.session.Close();
    EXPECT_FALSE(request->QueryInfoStatusCode(status));
    EXPECT_EQ(ErrorOf([&] { client.Open(CHttpConnection::HTTP_VERB_GET, u"/"); }),
              DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE});
    EXPECT_FALSE(client.session.SetOption(INTERNET_OPTION_RECEIVE_TIMEOUT, 0));
    EXPECT_FALSE(client.session.SetOption(12345, 1));
    WCHAR cut[5];
    EXPECT_TRUE(CInternetException(ERROR_INTERNET_TIMEOUT).GetErrorMessage(cut, 5));
    EXPECT_EQ(CString(cut), u"The ");
}

struct Watched : CInternetSession {
    void OnStatusCallback(DWORD_PTR, DWORD status, LPVOID, DWORD) override {
        statuses.push_back(status);
        if (status == closeAt) then();
    }
    std::vector<DWORD> statuses;
    DWORD closeAt = 0;
    std::function<void()> then;
};

TEST(Session, StatusesMayEndIt) {
    TestServer server;
    server.Play("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    constexpr DWORD kEnds[] = {0, INTERNET_STATUS_HANDLE_CREATED, INTERNET_STATUS_CONNECTED_TO_SERVER,
                               INTERNET_STATUS_RESPONSE_RECEIVED};
    for (const DWORD end : kEnds) {
        for (const bool session : {false, true}) {
            auto watched = std::make_unique<Watched>();
            watched->EnableStatusCallback();
            const std::unique_ptr<CHttpConnection> connection(
                watched->GetHttpConnection(u"127.0.0.1", server.Port()));
            CHttpFile* request = connection->OpenRequest(CHttpConnection::HTTP_VERB_GET, u"/");
            watched->closeAt = end;
            watched->then = [&] {
                if (session) return watched.reset();
                delete request;
                request = nullptr;
            };
            const DWORD error = ErrorOf([&] { EXPECT_TRUE(request->SendRequest()); });
            EXPECT_EQ(error, end ? DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE} : 0);
            delete request;
            if (end) continue;
            watched->statuses.resize(5);  // the answer may be complete by now
            EXPECT_EQ(watched->statuses, (std::vector<DWORD>{60, 10, 21, 30, 41}));
        }
    }
}

// A server whose certificate nobody vouches for.
TEST(Session, CertificatesAreLookedAt) {
    const unsigned short port = kit::DeadPort();
    const std::string script =
        "cd \"" QKUI_TEST_OUTPUT
        "\" && openssl req -x509 -newkey rsa:2048 -nodes -keyout key.pem -out cert.pem"
        " -subj /CN=127.0.0.1 2>/dev/null && exec openssl s_server -quiet -www -key key.pem -cert cert.pem"
        " -accept 127.0.0.1:" +
        std::to_string(port) + " >/dev/null 2>&1";
    char shell[] = "sh", option[] = "-c";
    char* arguments[] = {shell, option, const_cast<char*>(script.c_str()), nullptr};
    pid_t child = 0;
    ASSERT_EQ(posix_spawnp(&child, "sh", nullptr, nullptr, arguments, environ), 0);
    DWORD error = ERROR_INTERNET_CANNOT_CONNECT;
    for (int tries = 0; tries < 200 && error == ERROR_INTERNET_CANNOT_CONNECT; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        CInternetSession session;
        const std::unique_ptr<CHttpConnection> connection(session.GetHttpConnection(u"127.0.0.1", port));
        const std::unique_ptr<CHttpFile> request(connection->OpenRequest(
            CHttpConnection::HTTP_VERB_GET, u"/", nullptr, 1, nullptr, nullptr, INTERNET_FLAG_SECURE));
        error = ErrorOf([&] { request->SendRequest(); });
    }
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(error, DWORD{ERROR_INTERNET_INVALID_CA});
}

}  // namespace
