#include "platform/html/webkit/error_page.h"

#include <glib.h>

#include <platform/html.h>

#include "platform/html/webkit/owned.h"

namespace platform::html {

namespace {

const char* Reason(std::uint32_t code) {
    switch (code) {
        case INET_E_INVALID_URL:
            return "The address is not valid.";
        case INET_E_CANNOT_CONNECT:
            return "The server does not answer.";
        case INET_E_RESOURCE_NOT_FOUND:
            return "The server's name is not known.";
        case INET_E_OBJECT_NOT_FOUND:
            return "There is nothing at this address.";
        case INET_E_CONNECTION_TIMEOUT:
            return "The server took too long to answer.";
        case INET_E_UNKNOWN_PROTOCOL:
            return "Addresses of this kind cannot be opened.";
        case INET_E_SECURITY_PROBLEM:
            return "The connection to the server is not secure.";
        case INET_E_TERMINATED_BIND:
            return "The program that shows the page ended unexpectedly.";
        default:
            return "The connection to the server broke.";
    }
}

}  // namespace

std::string ErrorPage(const std::string& url, std::uint32_t code) {
    const OwnedText address(g_markup_escape_text(url.c_str(), -1));
    return std::string(
               "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Page not available</title>"
               "<style>body{font:15px/1.5 sans-serif;color:#333;background:#fff;margin:10% 8%}"
               "h1{font-size:20px;font-weight:600}p{overflow-wrap:anywhere}"
               "small{color:#777}</style></head><body><h1>This page is not available</h1><p>") +
           Reason(code) + "</p><p><small>" + address.get() + "</small></p></body></html>";
}

}  // namespace platform::html
