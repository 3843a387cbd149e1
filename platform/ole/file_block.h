// The block of memory that carries a list of files: a DROPFILES, and the paths behind it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include <platform/ole.h>
#include <platform/text.h>

namespace platform {

// Reads the paths of a block one by one. What is malformed ends the list.
class FileListReader {
  public:
    explicit FileListReader(std::span<const std::byte> block);
    // Empty at the end, where it stays.
    CString Next();
    // In bytes of the block.
    std::size_t Position() const { return position_; }
    void Seek(std::size_t position) { position_ = std::min(position, block_.size()); }

  private:
    std::span<const std::byte> block_;
    std::size_t position_;
    bool wide_ = false;
};

// All paths of a block.
std::vector<CString> FilesOf(std::span<const std::byte> block);
// A new block of those files, dropped at a point of a window. The caller frees it; empty without memory.
HGLOBAL MakeFileBlock(const std::vector<CString>& paths, POINT point);

}  // namespace platform
