// The program or shared library that an address belongs to.
#pragma once

#include <optional>
#include <string>

namespace platform {

struct LoadedObject {
    const void* base = nullptr;  // where it is loaded; no two objects share it
    std::string path;            // absolute; empty when the file cannot be named
    bool isProgram = false;      // the program itself, not a library that it loaded
};

// Empty for an address that came from no file, such as memory on the heap.
[[nodiscard]] std::optional<LoadedObject> LoadedObjectOf(const void* address);
// Empty when it cannot be named.
[[nodiscard]] std::string ProgramPath();

}  // namespace platform
