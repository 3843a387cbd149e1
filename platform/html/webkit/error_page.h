// What is shown in place of a page that cannot be.
#pragma once

#include <cstdint>
#include <string>

namespace platform::html {

[[nodiscard]] std::string ErrorPage(const std::string& url, std::uint32_t code);

}  // namespace platform::html
