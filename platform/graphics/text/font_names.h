// From the name that a host asks for to the name of a face that is there.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The family to shape with, as UTF-8. An installed family keeps its name, whichever of its names it is. A
// face for Chinese, Japanese or Korean that is not installed becomes an installed face for that language, so
// that Latin letters beside ideographs come from the same face; any other name is left to the font
// configuration, which knows the usual replacements. An empty name gives the common face for screens.
std::string ResolveFamily(std::string_view name);

}  // namespace platform
