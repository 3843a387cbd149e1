// The proxy that the user's desktop is set to.
#pragma once

#include <string>

namespace platform {

// The proxy for an address, as "http://host:port" or "socks5://host:port". Empty for none, for one that the
// environment names, which libcurl reads by itself, and where the desktop cannot be asked. May wait: for a
// script that the user's settings name.
[[nodiscard]] std::string SystemProxyFor(const std::string& url);

}  // namespace platform
