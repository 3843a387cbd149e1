#include "examples/gallery/scratch_folder.h"

#include <stdlib.h>

#include <system_error>

namespace gallery {

ScratchFolder::ScratchFolder() {
    std::error_code error;
    std::string name = (std::filesystem::temp_directory_path(error) / "qkui-gallery-XXXXXX").string();
    if (!error && mkdtemp(name.data())) path_ = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

std::filesystem::path ScratchFolder::Folder(const char* name) const {
    std::error_code error;
    if (path_.empty()) return {};
    std::filesystem::create_directory(path_ / name, error);
    return path_ / name;
}

}  // namespace gallery
