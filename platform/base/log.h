// What was asked for and is not there, for a host's author who wonders where a picture stays: one line each
// on the standard error stream, when the program was started with PLATFORM_LOG in its environment.
#pragma once

#include <string>
#include <string_view>

#include <platform/types.h>

namespace platform {

[[nodiscard]] bool IsLogging();

// Of what kind it is, how it was named, and what became of it. Does nothing while nobody asked for it; a
// caller that has to work for its words asks IsLogging first. Keeps the last error.
void LogMissing(std::string_view kind, std::string_view name, std::string_view why);

}  // namespace platform
