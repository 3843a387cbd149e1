// From the name that a host asks for to the name of a face that is there.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The family to shape with, as UTF-8: always one that is installed, if any is. An installed family keeps its
// name, whichever of its names it is. A face for Chinese, Japanese or Korean that is not installed becomes an
// installed face for that language, so that Latin letters beside ideographs come from the same face; any
// other name becomes what the font configuration replaces it by. An empty name gives the common face for
// screens.
std::string ResolveFamily(std::string_view name);

}  // namespace platform
