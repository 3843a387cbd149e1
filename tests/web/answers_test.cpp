// Every kind of answer that a server may give, and none, through the library's own client.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include "tests/web/local_access.h"
#include "tests/web/test_server.h"

namespace {

using kit::LocalAccess;
using kit::TestServer;
using kit::Wire;
using namespace std::string_literals;

std::string Good(const std::string& body, const std::string& headers = {}) {
    return "HTTP/1.1 200 OK\r\n" + headers + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
           body;
}

struct Case {
    const char* name;
    TestServer::Answer answer;
    DWORD result;              // of the call, or of the exception that leaves it
    LPCWSTR text = u"before";  // of the response afterwards; null for the message of the result
    int charset = 2;
    bool throws = false;
};

TestServer::Answer Says(std::string bytes) {
    return [bytes = std::move(bytes)](const Wire& wire) { wire.Send(bytes); };
}

TestServer::Answer Status(int status, const std::string& headers = {}) {
    return Says("HTTP/1.1 " + std::to_string(status) + " Text\r\n" + headers +
                "Content-Length: 4\r\n\r\nbody");
}

void FloodOfHeaders(const Wire& wire) {
    wire.Send("HTTP/1.1 200 OK\r\n");
    while (wire.Send("X-Filler: " + std::string(1000, 'x') + "\r\n")) {
    }
}

void HeaderWithoutEnd(const Wire& wire) {
    wire.Send("HTTP/1.1 200 OK\r\nX-Filler: ");
    wire.SendBody(std::size_t{1} << 30);
}

// Half a body, and then nothing, an end, or a reset.
TestServer::Answer Half(void (*then)(const Wire&)) {
    return [then](const Wire& wire) {
        wire.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        then(wire);
    };
}

std::vector<Case> GetCases() {
    const auto hold = [](const Wire& wire) { wire.Hold(); };
    const auto reset = [](const Wire& wire) { wire.Reset(); };
    return {
        {"plain", Says(Good("grün 中 𝄞")), 1, u"grün 中 𝄞"},
        {"empty", Says(Good("")), 1},
        {"chunked",
         Says("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"), 1,
         u"abcde"},
        {"without a length", Says("HTTP/1.0 200 OK\r\n\r\nabc"), 1, u"abc"},
        {"first a hundred", Says("HTTP/1.1 100 Continue\r\n\r\n" + Good("abc")), 1, u"abc"},
        {"NUL in UTF-8", Says(Good("ab\0cd"s)), 1, u"ab"},
        {"NUL at once", Says(Good("\0cd"s)), 1, u""},
        {"another character set", Says(Good("\xD6\xD0<", "Content-Type: text/html; charset=gbk\r\n")), 1,
         u"\uFFFD\uFFFD<"},
        {"packed, unasked", Says(Good("zip", "Content-Encoding: gzip\r\n")), 1, u"zip"},
        {"a percent sign", Says(Good("100%%")), 1, u"100%", 0},
        {"percent signs", Says(Good("%%%%d %")), 1, u"%%d %", 0},
        {"percent signs in UTF-8", Says(Good("100%%")), 1, u"100%%"},
        {"UTF-16", Says(Good("A\0B\0"s)), 1, u"AB", 1},
        {"UTF-16, odd", Says(Good("A\0B"s)), 1, u"AB", 7},
        {"UTF-16 with NUL", Says(Good("A\0\0\0B\0"s)), 1, u"A", -1},
        {"201", Status(201), 201},
        {"204", Says("HTTP/1.1 204 None\r\n\r\n"), 204},
        {"302", Status(302, "Location: /elsewhere\r\n"), 302},
        {"304", Says("HTTP/1.1 304 Same\r\n\r\n"), 304},
        {"401", Status(401, "WWW-Authenticate: Basic realm=x\r\n"), 401},
        {"404", Status(404), 404},
        {"503", Status(503), 503},
        {"999", Status(999), 999},
        {"headers without end", FloodOfHeaders, ERROR_HTTP_INVALID_SERVER_RESPONSE, nullptr},
        {"a header without end", HeaderWithoutEnd, ERROR_HTTP_INVALID_SERVER_RESPONSE, nullptr},
        {"no HTTP", Says("nothing of the kind\r\n\r\n"), ERROR_HTTP_INVALID_SERVER_RESPONSE, nullptr},
        {"no answer", [](const Wire&) {}, ERROR_INTERNET_CONNECTION_ABORTED, nullptr},
        {"reset", reset, ERROR_INTERNET_CONNECTION_RESET, nullptr},
        {"silence", hold, ERROR_INTERNET_TIMEOUT, nullptr},
        {"silence in the body", Half(hold), ERROR_INTERNET_TIMEOUT, u"before", 2, true},
        {"an end in the body", Half([](const Wire&) {}), ERROR_INTERNET_CONNECTION_ABORTED, u"before", 2,
         true},
        {"reset in the body", Half(reset), ERROR_INTERNET_CONNECTION_RESET, u"before", 2, true},
    };
}

CString MessageOf(DWORD error) {
    WCHAR text[1024];
    EXPECT_TRUE(CInternetException(error).GetErrorMessage(text, 1024));
    return text;
}

TEST(Answers, EachEndsAsItShould) {
    TestServer server;
    for (const Case& each : GetCases()) {
        SCOPED_TRACE(each.name);
        server.Play(each.answer);
        CString response = u"before";
        const auto start = std::chrono::steady_clock::now();
        try {
            EXPECT_EQ(LocalAccess(server.Port()).Get(u"http://127.0.0.1/", response, each.charset),
                      each.result);
            EXPECT_FALSE(each.throws);
        } catch (const CInternetException& failure) {
            EXPECT_TRUE(each.throws);
            EXPECT_EQ(failure.m_dwError, each.result);
        }
        EXPECT_EQ(ToUtf8(response), ToUtf8(each.text ? CString(each.text) : MessageOf(each.result)));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

TEST(Answers, OfAPostAreBytes) {
    TestServer server;
    const std::pair<std::string, std::u16string> cases[] = {
        {Good("a\0\x80\xFF"s), u"a\0\u0080\u00FF"s}, {Good(""), u""}, {Good("100%%"), u"100%%"}};
    for (const auto& [answer, text] : cases) {
        server.Play(answer);
        CString response = u"before";
        EXPECT_EQ(LocalAccess(server.Port()).Post(u"http://127.0.0.1/", u"a=1", response), 1U);
        EXPECT_EQ(response.View(), text);
    }
}

TEST(Answers, ServersThatAreNotThere) {
    const std::tuple<LPCWSTR, DWORD> cases[] = {
        {u"http://127.0.0.1/", ERROR_INTERNET_CANNOT_CONNECT},
        {u"http://127.0.0.1:80/", ERROR_INTERNET_NAME_NOT_RESOLVED},  // a port is part of the name
        {u"http://somebody@127.0.0.1/", ERROR_INTERNET_NAME_NOT_RESOLVED},
        {u"https://127.0.0.1/", ERROR_INTERNET_INVALID_URL},
        {u"", ERROR_INTERNET_INVALID_URL},
    };
    const unsigned short dead = kit::DeadPort();
    for (const auto& [url, error] : cases) {
        CString response;
        EXPECT_EQ(LocalAccess(dead).Get(url, response, 2), error) << ToUtf8(url);
        EXPECT_EQ(response, MessageOf(error));
        EXPECT_EQ(LocalAccess(dead).Post(url, u"a=1", response), error) << ToUtf8(url);
    }
}

// Kilobytes, the most that were in use since the last call; nothing under a sanitizer, which has memory of
// its own.
long PeakMemory() {
#ifdef __SANITIZE_ADDRESS__
    return 0;
#else
    std::ifstream status("/proc/self/status");
    long peak = 0;
    for (std::string word; status >> word;)
        if (word == "VmHWM:") status >> peak;
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
#endif
}

void PlayBody(TestServer& server, std::size_t size) {
    server.Play([size](const Wire& wire) {
        wire.Send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(size) + "\r\n\r\n");
        wire.SendBody(size);
    });
}

constexpr std::size_t kLong = 100'000'000;

TEST(LongBody, IsHeldOnceAsText) {
    TestServer server;
    PlayBody(server, kLong);
    PeakMemory();
    const long before = PeakMemory();
    CString response;
    ASSERT_EQ(LocalAccess(server.Port()).Get(u"http://127.0.0.1/", response, 2), 1U);
    EXPECT_EQ(static_cast<std::size_t>(response.GetLength()), kLong);
    EXPECT_LT(PeakMemory() - before, static_cast<long>(kLong / 1024 * 22 / 10));
}

// Wherever its pieces end: within a character, a pair of percent signs, or what is no character at all.
TEST(LongBody, IsTheSameTextInPieces) {
    for (std::size_t phase = 0; phase < 13; ++phase) {
        std::string bytes(phase, 'x');
        while (bytes.size() < 40'000)
            bytes += "%%%ü中𝄞\xE4\xB8%\x80\xF0\x9F";
        const CString plain = FromUtf8(bytes);
        CString format = plain;
        format.Replace(u"%%", u"%");
        CString wide(reinterpret_cast<LPCWSTR>(bytes.data()), static_cast<int>(bytes.size() / 2));
        if (bytes.size() % 2 != 0) wide += static_cast<unsigned char>(bytes.back());
        for (const auto& [charset, text] : {std::pair(0, format), {1, wide}, {2, plain}}) {
            qkui::ResponseText response(charset);
            for (std::size_t at = 0; at < bytes.size(); at += 1023)
                response.Append(std::string_view(bytes).substr(at, 1023));
            EXPECT_EQ(response.Size(), bytes.size());
            EXPECT_TRUE(response.Take() == text) << phase << ", " << charset;
        }
    }
}

TEST(LongBody, TakesTimeInProportion) {
    TestServer server;
    const auto seconds = [&server](std::size_t size) {
        PlayBody(server, size);
        CString response;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(LocalAccess(server.Port()).Post(u"http://127.0.0.1/", u"", response), 1U);
        EXPECT_EQ(static_cast<std::size_t>(response.GetLength()), size);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    seconds(kLong / 20);
    EXPECT_LT(seconds(kLong), 60 * (seconds(kLong / 20) + 0.01));
}

TEST(LongBody, IsReadPieceByPiece) {
    TestServer server;
    PlayBody(server, kLong);
    PeakMemory();
    const long before = PeakMemory();
    CInternetSession session;
    const std::unique_ptr<CHttpConnection> connection(session.GetHttpConnection(u"127.0.0.1", server.Port()));
    const std::unique_ptr<CHttpFile> request(connection->OpenRequest(CHttpConnection::HTTP_VERB_GET, u"/"));
    ASSERT_TRUE(request->SendRequest());
    char bytes[4096];
    std::size_t size = 0;
    while (const UINT count = request->Read(bytes, sizeof bytes)) {
        if (size == 0) std::this_thread::sleep_for(std::chrono::milliseconds(200));
        size += count;
    }
    EXPECT_EQ(size, kLong);
    EXPECT_LT(PeakMemory() - before, 8 * 1024);
}

}  // namespace
