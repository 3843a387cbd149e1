// The texts that a request is made of, as they go over the wire.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A host's name (other scripts than Latin as IDNA has it) or address as it stands in a URL; nothing for a
// text that can be neither.
[[nodiscard]] std::optional<std::string> HostOf(std::u16string_view server);

// "/path?query": a leading slash is added, a fragment left out, and each byte that may not stand in a request
// percent-encoded. What is percent-encoded already stays as it is.
[[nodiscard]] std::string TargetOf(std::u16string_view object);

// The lines of a header text, without their ends. Lines that are no "Name: value" are left out.
[[nodiscard]] std::vector<std::string> HeaderLines(std::u16string_view headers);

// Whether a header line has that name, in any case.
[[nodiscard]] bool HasName(std::string_view line, std::string_view name);

// The value of a header line, without the space around it.
[[nodiscard]] std::string_view ValueOf(std::string_view line);

}  // namespace platform
