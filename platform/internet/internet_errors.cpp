#include "platform/internet/internet_errors.h"

#include <curl/curl.h>

#include <algorithm>
#include <iterator>

#include <platform/internet.h>

namespace platform {
namespace {

struct ErrorLine {
    DWORD error;
    const char* text;
    int codes[4];  // of libcurl; CURLE_OK fills the line
};

constexpr ErrorLine kErrors[] = {
    {ERROR_MOD_NOT_FOUND, "The HTTP library (libcurl) is not installed.", {}},
    {ERROR_NOT_ENOUGH_MEMORY, "There is not enough memory.", {CURLE_OUT_OF_MEMORY}},
    {ERROR_INTERNET_TIMEOUT, "The request has timed out.", {CURLE_OPERATION_TIMEDOUT}},
    {ERROR_INTERNET_INTERNAL_ERROR, "An internal error occurred in the HTTP library.", {}},
    {ERROR_INTERNET_INVALID_URL, "The address is not valid.", {CURLE_URL_MALFORMAT}},
    {ERROR_INTERNET_NAME_NOT_RESOLVED,
     "The server's name or address could not be resolved.",
     {CURLE_COULDNT_RESOLVE_HOST, CURLE_COULDNT_RESOLVE_PROXY}},
    {ERROR_INTERNET_INCORRECT_HANDLE_STATE,
     "The request is not sent yet, was sent before, or is closed.",
     {}},
    {ERROR_INTERNET_CANNOT_CONNECT,
     "A connection with the server could not be established.",
     {CURLE_COULDNT_CONNECT, CURLE_INTERFACE_FAILED, CURLE_PROXY}},
    {ERROR_INTERNET_CONNECTION_ABORTED,
     "The connection with the server ended before the answer was complete.",
     {CURLE_GOT_NOTHING, CURLE_PARTIAL_FILE, CURLE_SEND_ERROR}},
    {ERROR_INTERNET_CONNECTION_RESET, "The connection with the server was reset.", {CURLE_RECV_ERROR}},
    {ERROR_INTERNET_SEC_CERT_DATE_INVALID, "The server's certificate is not valid today.", {}},
    {ERROR_INTERNET_SEC_CERT_CN_INVALID, "The server's certificate was made out for another name.", {}},
    {ERROR_INTERNET_INVALID_CA,
     "Nobody known vouches for the server's certificate.",
     {CURLE_PEER_FAILED_VERIFICATION, CURLE_SSL_ISSUER_ERROR}},
    {ERROR_HTTP_INVALID_SERVER_RESPONSE,
     "The server's answer could not be understood.",
     {CURLE_WEIRD_SERVER_REPLY, CURLE_UNSUPPORTED_PROTOCOL, CURLE_BAD_CONTENT_ENCODING, CURLE_WRITE_ERROR}},
    {ERROR_INTERNET_SECURITY_CHANNEL_ERROR,
     "No secure connection with the server could be agreed on.",
     {CURLE_SSL_CONNECT_ERROR, CURLE_SSL_CACERT_BADFILE, CURLE_SSL_CIPHER, CURLE_SSL_SHUTDOWN_FAILED}},
};

// How OpenSSL refuses a certificate.
constexpr long kVerified = 0;
constexpr long kNotYetValid = 9;
constexpr long kExpired = 10;
constexpr long kOtherName = 62;

}  // namespace

const char* InternetErrorText(DWORD error) {
    for (const ErrorLine& line : kErrors)
        if (line.error == error) return line.text;
    return ErrorText(error);
}

DWORD InternetErrorOf(int code, long verification) {
    if (code == CURLE_PEER_FAILED_VERIFICATION) {
        if (verification == kExpired || verification == kNotYetValid)
            return ERROR_INTERNET_SEC_CERT_DATE_INVALID;
        // The name is compared by libcurl itself, once all else is well.
        if (verification == kVerified || verification == kOtherName)
            return ERROR_INTERNET_SEC_CERT_CN_INVALID;
    }
    for (const ErrorLine& line : kErrors)
        if (std::find(std::begin(line.codes), std::end(line.codes), code) != std::end(line.codes))
            return line.error;
    return ERROR_INTERNET_INTERNAL_ERROR;
}

}  // namespace platform
