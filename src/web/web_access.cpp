#include "web/web_access.h"

#include <array>
#include <limits>
#include <memory>
#include <optional>

#include "web/registry_key.h"
#include "web/url_split.h"

namespace qkui {

namespace {

constexpr DWORD kTaken = 1;
constexpr DWORD kNotSent = static_cast<DWORD>(-20);
constexpr DWORD kNoStatus = static_cast<DWORD>(-21);
constexpr DWORD kStatusGood = 200;
// Lengths are counted in an int: a body without end is not waited for.
constexpr std::size_t kMostBytes = std::numeric_limits<int>::max();

// A connection and the request on it. A GET closes and deletes the request, then the connection. A POST
// closes request, connection and session, and then deletes connection and request.
class Exchange {
  public:
    enum class End { RequestFirst, SessionToo };

    Exchange(CInternetSession& session, End end) : session_(session), end_(end) {}
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange() {
        if (request) request->Close();
        if (end_ == End::RequestFirst) request.reset();
        if (!connection) return;
        connection->Close();
        if (end_ == End::SessionToo) session_.Close();
        connection.reset();
    }

    // Nothing once the answer with the good status is there; else what the call returns. `response` is
    // changed by an internet exception only.
    std::optional<DWORD> Begin(CString url, const CString& headers, const void* body, DWORD bodyLength,
                               CString& response);

    std::unique_ptr<CHttpConnection> connection;
    std::unique_ptr<CHttpFile> request;

  private:
    BOOL Send(const CString& url, const CString& headers, const void* body, DWORD bodyLength);

    CInternetSession& session_;
    End end_;
};

BOOL Exchange::Send(const CString& url, const CString& headers, const void* body, DWORD bodyLength) {
    CString server = url, object;
    ParseUrl(server, object);
    connection.reset(session_.GetHttpConnection(server, INTERNET_INVALID_PORT_NUMBER, nullptr, nullptr));
    if (!connection) return FALSE;
    request.reset(connection->OpenRequest(CHttpConnection::HTTP_VERB_POST, object, nullptr, 1, nullptr,
                                          nullptr, INTERNET_FLAG_EXISTING_CONNECT));
    return request && request->SendRequest(headers, body, bodyLength);
}

std::optional<DWORD> Exchange::Begin(CString url, const CString& headers, const void* body, DWORD bodyLength,
                                     CString& response) {
    try {
        if (!Send(url, headers, body, bodyLength)) return kNotSent;
    } catch (const CInternetException& failure) {
        std::array<WCHAR, 1024> message{};
        failure.GetErrorMessage(message.data(), static_cast<UINT>(message.size()));
        response = message.data();
        return failure.m_dwError;
    }
    DWORD status = 0;
    if (!request->QueryInfoStatusCode(status)) return kNoStatus;
    if (status != kStatusGood) return status;
    return std::nullopt;
}

// What the server says that its body has; 0 where it does not.
std::size_t BodyLength(const CHttpFile& request) {
    CString text;
    if (!request.QueryHeader(u"Content-Length", text)) return 0;
    std::size_t length = 0;
    for (const WCHAR digit : text.View()) {
        if (digit < u'0' || digit > u'9' || length > kMostBytes) return 0;
        length = 10 * length + (digit - u'0');
    }
    return length <= kMostBytes ? length : 0;
}

}  // namespace

CWebAccess::CWebAccess(LPCWSTR, DWORD_PTR, DWORD, LPCWSTR, LPCWSTR, DWORD)
    : CInternetSession(nullptr, 1, INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0) {
    CRegistryKey key;
    key.SetKey(u"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings");
    m_bProxyEnable = key.ReadDword(u"ProxyEnable", 0) != 0;
    if (!m_bProxyEnable) return;
    // Read, and left where they are: hosts may set them there without any effect here.
    static_cast<void>(key.ReadString(u"ProxyOverride", m_strProxyOverride));
    static_cast<void>(key.ReadString(u"ProxyServer", m_strProxyServer));
}

CWebAccess::~CWebAccess() {
    Close();
}

DWORD CWebAccess::Get(CString url, CString& response, int nCharset) {
    Exchange exchange(*this, Exchange::End::RequestFirst);
    if (const auto result = exchange.Begin(std::move(url), CString(), nullptr, 0, response)) return *result;

    ResponseText text(nCharset);
    text.Expect(BodyLength(*exchange.request));
    std::array<char, 1024> buffer;
    while (const UINT count = exchange.request->Read(buffer.data(), buffer.size() - 1)) {
        text.Append({buffer.data(), count});
        if (text.Size() > kMostBytes) return kTaken;
    }
    if (text.Size() > 0) response = text.Take();
    return kTaken;
}

DWORD CWebAccess::Post(CString url, CString data, CString& response) {
    Exchange exchange(*this, Exchange::End::SessionToo);
    // As many bytes of the text's storage as it has characters.
    const auto length = static_cast<DWORD>(data.GetLength());
    const auto result = exchange.Begin(std::move(url), u"Content-Type: application/x-www-form-urlencoded",
                                       data.GetString(), length, response);
    if (result) return *result;

    response.Empty();
    for (BYTE byte; response.View().size() < kMostBytes && exchange.request->Read(&byte, 1) > 0;)
        response += WCHAR{byte};
    return kTaken;
}

void CWebAccess::OnStatusCallback(DWORD_PTR, DWORD status, LPVOID information, DWORD) {
    // There is no log that would take it.
    static_cast<void>(StatusText(status, static_cast<LPCWSTR>(information)));
}

CString StatusText(DWORD status, LPCWSTR information) {
    CString text;
    switch (status) {
        case INTERNET_STATUS_RESOLVING_NAME:
            text.Format(u"Resolving name %s", information);
            break;
        case INTERNET_STATUS_NAME_RESOLVED:
            text.Format(u"Name resolved %s", information);
            break;
        case INTERNET_STATUS_CONNECTING_TO_SERVER:
            return u"Connecting to socket address";
        case INTERNET_STATUS_CONNECTED_TO_SERVER:
            return u"Connected to socket address";
        case INTERNET_STATUS_SENDING_REQUEST:
            return u"Sending request";
        case INTERNET_STATUS_REQUEST_SENT:
            return u"Request sent";
        case INTERNET_STATUS_RECEIVING_RESPONSE:
        case INTERNET_STATUS_HANDLE_CLOSING:
            break;
        case INTERNET_STATUS_RESPONSE_RECEIVED:
            return u"Response received";
        case INTERNET_STATUS_CLOSING_CONNECTION:
            return u"Closing the connection to the server";
        case INTERNET_STATUS_CONNECTION_CLOSED:
            return u"Connection to the server closed";
        case INTERNET_STATUS_HANDLE_CREATED:
            return u"Handle created";
        case INTERNET_STATUS_REQUEST_COMPLETE:
            return u"Request complete";
        case INTERNET_STATUS_REDIRECT:
            return u"Being redirected";
        default:
            text.Format(u"Unknown status: %d", status);
    }
    return text;
}

}  // namespace qkui
