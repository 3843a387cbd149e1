/// @file
/// An HTTP client whose calls block: a session, a connection of it, and a request that is read like a file.
///
///     CInternetSession session;
///     const std::unique_ptr<CHttpConnection> connection(session.GetHttpConnection(u"example.org"));
///     const std::unique_ptr<CHttpFile> request(
///         connection->OpenRequest(CHttpConnection::HTTP_VERB_GET, u"/index.html"));
///     request->SendRequest();
///     while (const UINT count = request->Read(bytes, sizeof bytes)) ...
///
/// A session and all that was opened through it belong to one thread at a time; different sessions know
/// nothing of each other. What goes wrong on the way raises a CInternetException. Nothing is loaded, started
/// or asked for before the first request is sent.
#pragma once

#include <memory>

#include <platform/collections.h>
#include <platform/framework.h>

namespace platform {
class HttpClient;
class HttpTransfer;
}  // namespace platform

/// What went wrong. Numbers below 12000 are those of GetLastError: ERROR_MOD_NOT_FOUND where the system has
/// no HTTP library.
enum : DWORD {
    ERROR_INTERNET_TIMEOUT = 12002,
    ERROR_INTERNET_INTERNAL_ERROR = 12004,
    ERROR_INTERNET_INVALID_URL = 12005,
    ERROR_INTERNET_NAME_NOT_RESOLVED = 12007,  ///< of the server or of a proxy
    ERROR_INTERNET_INCORRECT_HANDLE_STATE = 12019,
    ERROR_INTERNET_CANNOT_CONNECT = 12029,
    ERROR_INTERNET_CONNECTION_ABORTED = 12030,  ///< closed before the answer was complete
    ERROR_INTERNET_CONNECTION_RESET = 12031,
    ERROR_INTERNET_SEC_CERT_DATE_INVALID = 12037,
    ERROR_INTERNET_SEC_CERT_CN_INVALID = 12038,
    ERROR_INTERNET_INVALID_CA = 12045,
    ERROR_HTTP_INVALID_SERVER_RESPONSE = 12152,  ///< no HTTP, or headers without end
    ERROR_INTERNET_SECURITY_CHANNEL_ERROR = 12157,
};

class PLATFORM_API CInternetException : public CException {
  public:
    explicit CInternetException(DWORD error, DWORD_PTR context = 0)
        : m_dwError(error), m_dwContext(context) {}
    ~CInternetException() override;

    /// One English sentence for the number, cut to `size` units with the terminator. False for no room at
    /// all.
    BOOL GetErrorMessage(LPWSTR buffer, UINT size, UINT* helpContext = nullptr) const;
    const char* What() const noexcept override;

    DWORD m_dwError;
    DWORD_PTR m_dwContext;  ///< the number that the failing object was given when it was opened
};

/// A request and its answer. Owned by the caller, as is a connection; either may outlive what it was opened
/// through, but then does nothing any more.
class PLATFORM_API CHttpFile : public CObject {
  public:
    explicit CHttpFile(std::shared_ptr<platform::HttpTransfer> transfer);  ///< for OpenRequest
    ~CHttpFile() override;                                                 ///< closes
    CHttpFile(const CHttpFile&) = delete;
    CHttpFile& operator=(const CHttpFile&) = delete;

    /// Sends the request, once, and waits until the head of the answer is there. `headers` are lines "Name:
    /// value", parted by CRLF, the last without one; `body` is copied. False, without an exception, is left
    /// to derived classes.
    virtual BOOL SendRequest(const CString& headers = CString(), const void* body = nullptr,
                             DWORD bodyLength = 0);
    /// False before SendRequest has succeeded, and after Close.
    virtual BOOL QueryInfoStatusCode(DWORD& status) const;
    /// The value of the answer's first header of that name, in any case; false when there is none.
    virtual BOOL QueryHeader(LPCWSTR name, CString& value) const;
    /// The next bytes of the body, at least one, at most `count`; waits for them. 0 at the end of the body.
    /// At most some hundred kilobytes are taken from the network before they are asked for.
    virtual UINT Read(void* buffer, UINT count);
    /// Breaks off what is under way. Afterwards every call fails.
    virtual void Close();

  protected:
    CHttpFile();  ///< for a derived class that plays answers of its own

  private:
    std::shared_ptr<platform::HttpTransfer> m_transfer;
};

using INTERNET_PORT = WORD;
enum : INTERNET_PORT {
    INTERNET_INVALID_PORT_NUMBER = 0,  ///< the default of the scheme
    INTERNET_DEFAULT_HTTP_PORT = 80,
    INTERNET_DEFAULT_HTTPS_PORT = 443,
};
/// For OpenRequest. A connection of the same session is reused whenever the server keeps it open.
enum : DWORD { INTERNET_FLAG_SECURE = 0x00800000, INTERNET_FLAG_EXISTING_CONNECT = 0x20000000 };

class PLATFORM_API CHttpConnection : public CObject {
  public:
    enum Verb : int {
        HTTP_VERB_POST = 0,
        HTTP_VERB_GET = 1,
        HTTP_VERB_HEAD = 2,
        HTTP_VERB_PUT = 3,
        HTTP_VERB_DELETE = 5,
    };

    ///@{
    /// For GetHttpConnection.
    CHttpConnection(std::shared_ptr<platform::HttpClient> client, const CString& server, INTERNET_PORT port,
                    const CString& user, const CString& password);
    ~CHttpConnection() override;  ///< closes
    CHttpConnection(const CHttpConnection&) = delete;
    ///@}
    CHttpConnection& operator=(const CHttpConnection&) = delete;

    /// A request for `object`, a path with its query; the slash that it begins with may be missing, and what
    /// may not stand in a request is percent-encoded. Over TLS with INTERNET_FLAG_SECURE, and then only where
    /// the server's certificate is that of the server. No redirect is followed. `acceptTypes` ends with a
    /// null. `version` is ignored: it is HTTP/1.1. Null, with ERROR_INVALID_PARAMETER, for a verb that is
    /// none.
    virtual CHttpFile* OpenRequest(int verb, LPCWSTR object, LPCWSTR referer = nullptr, DWORD_PTR context = 1,
                                   const LPCWSTR* acceptTypes = nullptr, LPCWSTR version = nullptr,
                                   DWORD flags = INTERNET_FLAG_EXISTING_CONNECT);
    /// Requests that were opened before go on; no new one is opened.
    virtual void Close();

  protected:
    CHttpConnection();  ///< for a derived class that plays answers of its own

  private:
    std::shared_ptr<platform::HttpClient> m_client;
    CString m_server, m_user, m_password;
    INTERNET_PORT m_port = INTERNET_INVALID_PORT_NUMBER;
};

/// How a session finds its proxy: from the environment (http_proxy, https_proxy, all_proxy, no_proxy) or,
/// where that says nothing, from the desktop's settings; not at all; or as the session is told.
enum : DWORD {
    INTERNET_OPEN_TYPE_PRECONFIG = 0,
    INTERNET_OPEN_TYPE_DIRECT = 1,
    INTERNET_OPEN_TYPE_PROXY = 3
};

/// For SetOption; the first three in milliseconds.
enum : DWORD {
    /// Until the server's name is known, the connection stands and TLS is agreed on: 60 000 at first.
    INTERNET_OPTION_CONNECT_TIMEOUT = 2,
    /// While the server takes nothing of the request: 30 000 at first.
    INTERNET_OPTION_SEND_TIMEOUT = 5,
    /// From the end of the request to the end of the answer's head, and then between two pieces of the body:
    /// 30 000 at first.
    INTERNET_OPTION_RECEIVE_TIMEOUT = 6,
    /// Whether to ask for compressed bodies, and to unpack them: 0 at first.
    INTERNET_OPTION_HTTP_DECODING = 65,
};

/// What OnStatusCallback is told.
enum : DWORD {
    INTERNET_STATUS_RESOLVING_NAME = 10,
    INTERNET_STATUS_NAME_RESOLVED = 11,
    INTERNET_STATUS_CONNECTING_TO_SERVER = 20,
    INTERNET_STATUS_CONNECTED_TO_SERVER = 21,
    INTERNET_STATUS_SENDING_REQUEST = 30,
    INTERNET_STATUS_REQUEST_SENT = 31,
    INTERNET_STATUS_RECEIVING_RESPONSE = 40,
    INTERNET_STATUS_RESPONSE_RECEIVED = 41,
    INTERNET_STATUS_CLOSING_CONNECTION = 50,
    INTERNET_STATUS_CONNECTION_CLOSED = 51,
    INTERNET_STATUS_HANDLE_CREATED = 60,
    INTERNET_STATUS_HANDLE_CLOSING = 70,
    INTERNET_STATUS_REQUEST_COMPLETE = 100,
    INTERNET_STATUS_REDIRECT = 110,
};

class PLATFORM_API CInternetSession : public CObject {
  public:
    ///@{
    /// `agent` is the User-Agent header; null sends none. `proxyName` ("host:port") and `proxyBypass` (hosts,
    /// parted by spaces or semicolons) are for INTERNET_OPEN_TYPE_PROXY. `flags` must be 0.
    explicit CInternetSession(LPCWSTR agent = nullptr, DWORD_PTR context = 1,
                              DWORD accessType = INTERNET_OPEN_TYPE_PRECONFIG, LPCWSTR proxyName = nullptr,
                              LPCWSTR proxyBypass = nullptr, DWORD flags = 0);
    ~CInternetSession() override;  ///< closes
    CInternetSession(const CInternetSession&) = delete;
    ///@}
    CInternetSession& operator=(const CInternetSession&) = delete;

    /// Holds for requests that are opened afterwards. False with ERROR_INVALID_PARAMETER for an unknown
    /// option, or a time of 0 or beyond 2^31 - 1.
    BOOL SetOption(DWORD option, DWORD value);
    /// Nothing is connected yet. `server` is a host's name or address, without a port; an empty one raises
    /// ERROR_INTERNET_INVALID_URL, and a request to one that can be no host's name raises
    /// ERROR_INTERNET_NAME_NOT_RESOLVED. With a `user` each request carries name and password (Basic).
    virtual CHttpConnection* GetHttpConnection(LPCWSTR server,
                                               INTERNET_PORT port = INTERNET_INVALID_PORT_NUMBER,
                                               LPCWSTR user = nullptr, LPCWSTR password = nullptr);
    /// Closes all that was opened through the session.
    virtual void Close();

    /// Whether OnStatusCallback is called: not, at first.
    BOOL EnableStatusCallback(BOOL enable = TRUE);

    /// Called inside calls that send and read, with the number given to OpenRequest and one of
    /// INTERNET_STATUS_...; `information` is a terminated text or null. It may close and delete what it
    /// likes; the call that it comes from then raises ERROR_INTERNET_INCORRECT_HANDLE_STATE.
    virtual void OnStatusCallback(DWORD_PTR context, DWORD status, LPVOID information,
                                  DWORD informationLength);

  private:
    std::shared_ptr<platform::HttpClient> m_client;
    DWORD_PTR m_context;
};
