#include "platform/base/log.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace platform {

bool IsLogging() {
    static const bool logging = [] {
        const char* const value = std::getenv("PLATFORM_LOG");
        return value != nullptr && *value != '\0' && std::string_view(value) != "0";
    }();
    return logging;
}

void LogMissing(std::string_view kind, std::string_view name, std::string_view why) try {
    if (!IsLogging()) return;
    const DWORD error = GetLastError();
    std::string line("Missing: ");
    line.append(kind).append(" ").append(name).append(": ").append(why).append("\n");
    std::fwrite(line.data(), 1, line.size(), stderr);  // whole, whatever other threads write
    SetLastError(error);
} catch (const std::bad_alloc&) {
    return;
}

}  // namespace platform
