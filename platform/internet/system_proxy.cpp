#include "platform/internet/system_proxy.h"

#include <gio/gio.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>

namespace platform {
namespace {

bool EnvironmentNamesOne(bool secure) {
    // HTTP_PROXY is none: a server hands a program any header of a request under such a name.
    for (const char* name : {"all_proxy", "ALL_PROXY", secure ? "https_proxy" : "http_proxy",
                             secure ? "HTTPS_PROXY" : "http_proxy"})
        if (std::getenv(name)) return true;
    return false;
}

}  // namespace

std::string SystemProxyFor(const std::string& url) {
    if (EnvironmentNamesOne(url.starts_with("https:"))) return {};
    // Resolvers that the desktop brings do not all promise to be called by several threads.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    const std::unique_ptr<char*, decltype(&g_strfreev)> proxies(
        g_proxy_resolver_lookup(g_proxy_resolver_get_default(), url.c_str(), nullptr, nullptr), &g_strfreev);
    for (char** each = proxies.get(); each && *each; ++each) {
        const std::string_view proxy(*each);
        if (proxy.starts_with("direct:")) return {};
        if (proxy.starts_with("http:") || proxy.starts_with("https:") || proxy.starts_with("socks4:") ||
            proxy.starts_with("socks5:"))
            return std::string(proxy);
        if (proxy.starts_with("socks:")) return "socks5" + std::string(proxy.substr(5));
    }
    return {};
}

}  // namespace platform
