// What the command line asks for.
#pragma once

#include <optional>
#include <string>

namespace gallery {

struct Options {
    enum class Task { Open, Shot, ShotAll, Specimens, List, Help };
    Task task = Task::Open;
    bool dense = false;  // pictures of a screen with twice the pixels
    std::string page;    // its name; empty for the first
    std::string target;  // the file of Shot, the folder of ShotAll and Specimens
};

extern const char* const kUsage;

// Nothing, and one line on standard error, for arguments that cannot be understood.
std::optional<Options> ParseOptions(int count, const char* const* arguments);

}  // namespace gallery
