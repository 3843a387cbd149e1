// Names and values of the store as they stand in its file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platform/registry.h>

namespace platform {

struct RegistryValue {
    DWORD type;
    std::vector<BYTE> bytes;
};

// "dword:42", "sz:text" and "expand:text" for texts that end with their terminator, and "hex(type):0aff" for
// all that these cannot hold.
[[nodiscard]] std::string ValueText(const RegistryValue& value);
// Nothing for a text that is none of these.
[[nodiscard]] std::optional<RegistryValue> ValueOfText(std::string_view text);

// A name in ASCII, lower case, of characters that mean nothing to the file; "@" for the empty one.
[[nodiscard]] std::string NameText(std::u16string_view name);

// A path without empty names, its parts as above and parted by backslashes. The empty path is "@".
[[nodiscard]] std::string PathText(std::u16string_view path);

}  // namespace platform
