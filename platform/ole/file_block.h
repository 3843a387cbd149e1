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
    // Where it is, in bytes of the block, and back to such a place.
    std::size_t Place() const { return at_; }
    void GoTo(std::size_t place) { at_ = std::min(place, block_.size()); }

  private:
    std::span<const std::byte> block_;
    std::size_t at_;
    bool wide_ = false;
};

// All that a receiver reads out of a block.
std::vector<CString> FilesOf(std::span<const std::byte> block);
// A new block of those files, dropped at a point of a window. The caller's to free; empty without memory.
HGLOBAL MakeFileBlock(const std::vector<CString>& paths, POINT point);

}  // namespace platform
