// A folder of the gallery's own below the user's temporary files. It goes with the object, and all in it.
#pragma once

#include <filesystem>
#include <string>

namespace gallery {

class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Empty where it could not be made.
    const std::filesystem::path& Path() const { return path_; }
    // A folder in it, made if need be.
    std::filesystem::path Folder(const char* name) const;

  private:
    std::filesystem::path path_;
};

}  // namespace gallery
