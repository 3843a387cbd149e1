// What the command line asks for.
#pragma once

#include <optional>
#include <string>

namespace desktop {

struct Options {
    std::string folder;  // absolute
    std::string shot;    // the file for a picture; empty: a window
    bool help = false;
};

extern const char* const kUsage;

// Nothing, and one line on standard error, for arguments that cannot be understood.
std::optional<Options> ParseOptions(int count, const char* const* arguments);

}  // namespace desktop
