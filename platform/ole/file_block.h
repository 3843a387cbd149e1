// The block of memory that carries a list of files: a DROPFILES, and the paths behind it.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <platform/ole.h>
#include <platform/text.h>

namespace platform {

// The paths that a receiver reads out of a block. What is malformed or truncated ends the list.
std::vector<CString> FilesOf(std::span<const std::byte> block);

}  // namespace platform
