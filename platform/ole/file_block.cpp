#include "platform/ole/file_block.h"

#include <cstring>
#include <string>

namespace platform {

namespace {

// The next path of the list, and past its terminator; false at the end of the list or of the block.
template <class Unit>
bool ReadPath(std::span<const std::byte> block, std::size_t& at, std::basic_string<Unit>& path) {
    path.clear();
    while (block.size() - at >= sizeof(Unit)) {
        Unit unit;
        std::memcpy(&unit, block.data() + at, sizeof unit);
        at += sizeof unit;
        if (unit == 0) return !path.empty();
        path += unit;
    }
    return false;
}

CString ToPath(const std::u16string& path) {
    return CString(path.c_str());
}
CString ToPath(const std::string& path) {
    return FromUtf8(path);
}

template <class Unit>
std::vector<CString> ReadPaths(std::span<const std::byte> block, std::size_t at) {
    std::vector<CString> paths;
    std::basic_string<Unit> path;
    while (ReadPath(block, at, path))
        paths.push_back(ToPath(path));
    return paths;
}

}  // namespace

std::vector<CString> FilesOf(std::span<const std::byte> block) {
    DROPFILES header{};
    if (block.size() < sizeof header) return {};
    std::memcpy(&header, block.data(), sizeof header);
    if (header.pFiles < sizeof header || header.pFiles > block.size()) return {};
    return header.fWide ? ReadPaths<char16_t>(block, header.pFiles) : ReadPaths<char>(block, header.pFiles);
}

}  // namespace platform
