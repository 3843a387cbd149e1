#include "platform/resources/loaded_object.h"

#include <dlfcn.h>
#include <sys/auxv.h>

#include <filesystem>
#include <system_error>

namespace platform {
namespace {

const void* BaseOf(const void* address, std::string* name) {
    Dl_info info;
    if (!address || !dladdr(address, &info)) return nullptr;
    if (name && info.dli_fname) *name = info.dli_fname;
    return info.dli_fbase;
}

}  // namespace

std::string ProgramPath() {
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/exe", failure).string();
}

std::optional<LoadedObject> LoadedObjectOf(const void* address) {
    LoadedObject object;
    std::string name;
    object.base = BaseOf(address, &name);
    if (!object.base) return std::nullopt;
    // The kernel says where it put the program's headers.
    const auto headers = reinterpret_cast<const void*>(getauxval(AT_PHDR));
    object.isProgram = object.base == BaseOf(headers, nullptr);
    if (object.isProgram) {
        object.path = ProgramPath();  // the loader knows it only as it was called
    } else {
        std::error_code failure;
        object.path = std::filesystem::absolute(name, failure).string();
    }
    return object;
}

}  // namespace platform
