// Paths of files as the list of URIs that X clients exchange.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <platform/text.h>

namespace platform::x11 {

// One URI a line, each line with its end. Everything is encoded but what no reader takes for anything else.
std::string ToUriList(const std::vector<CString>& paths);
// The paths of those URIs that name files of this machine, in UTF-8. Comments and others are passed over.
std::vector<CString> FromUriList(std::string_view list);

}  // namespace platform::x11
