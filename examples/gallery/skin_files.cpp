#include "examples/gallery/skin_files.h"

#include <filesystem>
#include <system_error>

namespace gallery {
namespace {

std::string FindSkinFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    for (const char* place : {"skin/files", "../share/QKUILib/gallery"}) {
        const std::filesystem::path folder = program.parent_path() / place;
        if (std::filesystem::exists(folder / "shell.png", error)) return folder.lexically_normal().string();
    }
    return {};
}

}  // namespace

const std::string& SkinFolder() {
    static const std::string folder = FindSkinFolder();
    return folder;
}

CString SkinFile(const char* name) {
    return FromUtf8(SkinFolder() + "/" + name);
}

}  // namespace gallery
