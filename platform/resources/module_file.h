// The module whose file a path leads into.
#pragma once

#include <optional>
#include <string>

#include <platform/resources.h>

namespace platform {

struct FileInModule {
    HMODULE module;
    std::string rest;  // of the path, behind the file and a slash
};
// Of modules that share a file the current one answers, else the first. A path may also begin with the name
// of a file alone. Empty when the path leads into none.
[[nodiscard]] std::optional<FileInModule> FindModuleOfPath(const std::string& path);

}  // namespace platform
