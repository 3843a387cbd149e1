// Pages and pictures among the resources of a module, by res: addresses:
//
//     res://FILE/NAME         a resource of the type RT_HTML, or else RT_RCDATA
//     res://FILE/TYPE/NAME    of the given type
//
// FILE is the path of the module's file, or its name alone. TYPE and NAME are texts or numbers, a number also
// with a '#' before it (written %23 in an address).
#pragma once

#include <optional>
#include <string>

#include "platform/html/page_host.h"

namespace platform::html {

// Empty when there is no such resource. A RT_BITMAP resource becomes a BMP file.
[[nodiscard]] std::optional<ResourceAnswer> FindResourcePage(const std::string& url);

// An address as a host builds it, with the path of its module as it stands, in the form of an address: what
// would end or change the path is escaped. Other addresses come back as they are.
[[nodiscard]] std::string AddressOfResource(const std::string& url);

}  // namespace platform::html
