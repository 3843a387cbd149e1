#include "platform/html/webkit/navigation_error.h"

#include <gio/gio.h>
#include <webkit2/webkit2.h>

#include <platform/html.h>

namespace platform::html {

std::optional<std::uint32_t> NavigationErrorOf(const GError* error) {
    if (g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
        error->domain == WEBKIT_POLICY_ERROR || error->domain == WEBKIT_PLUGIN_ERROR) {
        if (g_error_matches(error, WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_CANNOT_SHOW_URI))
            return INET_E_UNKNOWN_PROTOCOL;
        return std::nullopt;
    }
    if (g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL))
        return INET_E_UNKNOWN_PROTOCOL;
    if (g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST))
        return INET_E_OBJECT_NOT_FOUND;
    if (error->domain == G_RESOLVER_ERROR) return INET_E_RESOURCE_NOT_FOUND;
    if (error->domain == G_TLS_ERROR) return INET_E_SECURITY_PROBLEM;
    if (error->domain == G_FILE_ERROR) return INET_E_OBJECT_NOT_FOUND;
    if (error->domain == G_IO_ERROR) {
        switch (error->code) {
            case G_IO_ERROR_NOT_FOUND:
                return INET_E_OBJECT_NOT_FOUND;
            case G_IO_ERROR_TIMED_OUT:
                return INET_E_CONNECTION_TIMEOUT;
            case G_IO_ERROR_CONNECTION_REFUSED:
            case G_IO_ERROR_HOST_UNREACHABLE:
            case G_IO_ERROR_NETWORK_UNREACHABLE:
                return INET_E_CANNOT_CONNECT;
            case G_IO_ERROR_INVALID_ARGUMENT:
                return INET_E_INVALID_URL;
            default:
                break;
        }
    }
    return INET_E_DOWNLOAD_FAILURE;
}

}  // namespace platform::html
