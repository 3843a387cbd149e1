// From the errors of the browser's libraries to those that hosts know.
#pragma once

#include <cstdint>
#include <optional>

#include <glib.h>

namespace platform::html {

// Empty when nothing went wrong: the load was stopped, or became something else than a page.
[[nodiscard]] std::optional<std::uint32_t> NavigationErrorOf(const GError* error);

}  // namespace platform::html
