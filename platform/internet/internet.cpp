// The classes of <platform/internet.h>.
#include <platform/internet.h>

#include <algorithm>
#include <limits>

#include "platform/internet/http_client.h"
#include "platform/internet/http_transfer.h"
#include "platform/internet/internet_errors.h"
#include "platform/internet/request_text.h"

using platform::HttpClient;
using platform::HttpRequest;
using platform::HttpTransfer;

// ---- CInternetException -------------------------------------------------------------------------------

CInternetException::~CInternetException() = default;

const char* CInternetException::What() const noexcept {
    return platform::InternetErrorText(m_dwError);
}

BOOL CInternetException::GetErrorMessage(LPWSTR buffer, UINT size, UINT* helpContext) const {
    if (helpContext) *helpContext = 0;
    if (!buffer || size == 0) return FALSE;
    const CString text(What());
    const std::size_t length = text.View().copy(buffer, size - 1);
    buffer[length] = u'\0';
    return TRUE;
}

// ---- CHttpFile ----------------------------------------------------------------------------------------

CHttpFile::CHttpFile() = default;
CHttpFile::CHttpFile(std::shared_ptr<HttpTransfer> transfer) : m_transfer(std::move(transfer)) {}

CHttpFile::~CHttpFile() {
    if (m_transfer) m_transfer->Close();
}

BOOL CHttpFile::SendRequest(const CString& headers, const void* body, DWORD bodyLength) {
    const std::shared_ptr<HttpTransfer> transfer = m_transfer;  // a status callback may delete this object
    if (!transfer) throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE);
    transfer->Send(platform::HeaderLines(headers.View()),
                   std::string_view(static_cast<const char*>(body), body ? bodyLength : 0));
    return TRUE;
}

BOOL CHttpFile::QueryInfoStatusCode(DWORD& status) const {
    const std::optional<DWORD> code = m_transfer ? m_transfer->Status() : std::nullopt;
    if (code) status = *code;
    return code.has_value();
}

BOOL CHttpFile::QueryHeader(LPCWSTR name, CString& value) const {
    const std::optional<std::string> found = m_transfer ? m_transfer->Header(ToUtf8(name)) : std::nullopt;
    if (found) value = FromUtf8(*found);
    return found.has_value();
}

UINT CHttpFile::Read(void* buffer, UINT count) {
    if (!buffer || count == 0) return 0;
    char* const to = static_cast<char*>(buffer);
    if (m_transfer && m_transfer->HasReceived()) return static_cast<UINT>(m_transfer->Read(to, count));
    const std::shared_ptr<HttpTransfer> transfer = m_transfer;
    if (!transfer) throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE);
    return static_cast<UINT>(transfer->Read(to, count));
}

void CHttpFile::Close() {
    if (m_transfer) m_transfer->Close();
}

// ---- CHttpConnection ----------------------------------------------------------------------------------

namespace {

const char* NameOf(int verb) {
    switch (verb) {
        case CHttpConnection::HTTP_VERB_POST:
            return "POST";
        case CHttpConnection::HTTP_VERB_GET:
            return "GET";
        case CHttpConnection::HTTP_VERB_HEAD:
            return "HEAD";
        case CHttpConnection::HTTP_VERB_PUT:
            return "PUT";
        case CHttpConnection::HTTP_VERB_DELETE:
            return "DELETE";
        default:
            return nullptr;
    }
}

// A value that comes from a host may not begin a header of its own.
void AddHeader(std::vector<std::string>& headers, const char* name, const CString& value) {
    for (std::string& line : platform::HeaderLines((CString(name) + CString(u": ") + value).View())) {
        headers.push_back(std::move(line));
        return;
    }
}

}  // namespace

CHttpConnection::CHttpConnection() = default;
CHttpConnection::CHttpConnection(std::shared_ptr<HttpClient> client, const CString& server,
                                 INTERNET_PORT port, const CString& user, const CString& password)
    : m_client(std::move(client)), m_server(server), m_user(user), m_password(password), m_port(port) {}

CHttpConnection::~CHttpConnection() = default;

CHttpFile* CHttpConnection::OpenRequest(int verb, LPCWSTR object, LPCWSTR referer, DWORD_PTR context,
                                        const LPCWSTR* acceptTypes, LPCWSTR, DWORD flags) {
    if (!m_client || m_client->IsClosed())
        throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE, context);
    if (!NameOf(verb)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HttpRequest request;
    request.verb = NameOf(verb);
    request.context = context;
    request.user = ToUtf8(m_user);
    request.password = ToUtf8(m_password);
    request.host = platform::HostOf(m_server.View()).value_or(std::string());
    const bool secure = (flags & INTERNET_FLAG_SECURE) != 0;
    const INTERNET_PORT usual = secure ? INTERNET_DEFAULT_HTTPS_PORT : INTERNET_DEFAULT_HTTP_PORT;
    request.url = (secure ? "https://" : "http://") + request.host + ":" +
                  std::to_string(m_port == INTERNET_INVALID_PORT_NUMBER ? usual : m_port) +
                  platform::TargetOf(CString(object).View());
    if (referer) AddHeader(request.headers, "Referer", referer);
    CString types;
    for (; acceptTypes && *acceptTypes; ++acceptTypes)
        types += types.IsEmpty() ? CString(*acceptTypes) : CString(u", ") + *acceptTypes;
    if (!types.IsEmpty()) AddHeader(request.headers, "Accept", types);
    return new CHttpFile(std::make_shared<HttpTransfer>(m_client, std::move(request)));
}

void CHttpConnection::Close() {
    m_client.reset();
}

// ---- CInternetSession ---------------------------------------------------------------------------------

namespace {

// Parted by spaces or semicolons in, by commas out.
std::string BypassList(LPCWSTR hosts) {
    std::string list = ToUtf8(hosts);
    std::replace_if(
        list.begin(), list.end(), [](char each) { return each == ' ' || each == ';'; }, ',');
    return list;
}

}  // namespace

CInternetSession::CInternetSession(LPCWSTR agent, DWORD_PTR context, DWORD accessType, LPCWSTR proxyName,
                                   LPCWSTR proxyBypass, DWORD)
    : m_context(context) {
    platform::HttpSettings settings;
    settings.access = accessType;
    settings.agent = ToUtf8(agent);
    settings.proxy = ToUtf8(proxyName);
    settings.proxyBypass = BypassList(proxyBypass);
    m_client = std::make_shared<HttpClient>(std::move(settings));
}

CInternetSession::~CInternetSession() {
    m_client->Close();
}

BOOL CInternetSession::SetOption(DWORD option, DWORD value) {
    platform::HttpSettings& settings = m_client->Settings();
    if (option == INTERNET_OPTION_HTTP_DECODING) {
        settings.decodes = value != 0;
        return TRUE;
    }
    const bool inRange = value > 0 && value <= static_cast<DWORD>(std::numeric_limits<std::int32_t>::max());
    std::chrono::milliseconds* time = option == INTERNET_OPTION_CONNECT_TIMEOUT   ? &settings.connectTime
                                      : option == INTERNET_OPTION_SEND_TIMEOUT    ? &settings.sendTime
                                      : option == INTERNET_OPTION_RECEIVE_TIMEOUT ? &settings.receiveTime
                                                                                  : nullptr;
    if (!time || !inRange) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *time = std::chrono::milliseconds(value);
    return TRUE;
}

CHttpConnection* CInternetSession::GetHttpConnection(LPCWSTR server, INTERNET_PORT port, LPCWSTR user,
                                                     LPCWSTR password) {
    if (m_client->IsClosed()) throw CInternetException(ERROR_INTERNET_INCORRECT_HANDLE_STATE, m_context);
    if (!server || !*server) throw CInternetException(ERROR_INTERNET_INVALID_URL, m_context);
    return new CHttpConnection(m_client, server, port, user, password);
}

void CInternetSession::Close() {
    m_client->Close();
}

BOOL CInternetSession::EnableStatusCallback(BOOL enable) {
    if (m_client->IsClosed()) return FALSE;
    if (!enable) {
        m_client->SetStatusSink(nullptr);
        return TRUE;
    }
    m_client->SetStatusSink([this](DWORD_PTR context, DWORD status, const std::string* information) {
        CString text = information ? FromUtf8(*information) : CString();
        const auto length = static_cast<DWORD>(text.GetLength());
        OnStatusCallback(context, status, information ? text.GetBuffer(0) : nullptr, length);
    });
    return TRUE;
}

void CInternetSession::OnStatusCallback(DWORD_PTR, DWORD, LPVOID, DWORD) {}
