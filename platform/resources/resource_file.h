// The .res file that the resource compiler writes: a row of entries, each a header and its data.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <platform/resources/resource_name.h>
#include <platform/types.h>

namespace platform {

struct ResourceEntry {
    ResourceName type;
    ResourceName name;
    std::span<const std::byte> data;  // inside the bytes that were parsed
};

// The entries in the order of the file. Empty for bytes that are no .res file, end early or contradict
// themselves; there is no partial answer. Reads nothing outside `bytes`; they need no alignment.
[[nodiscard]] std::optional<std::vector<ResourceEntry>> ParseResourceFile(std::span<const std::byte> bytes);

}  // namespace platform
