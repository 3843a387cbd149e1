#include "platform/ole/file_block.h"

#include <cstring>
#include <string>

namespace platform {

namespace {

// Up to a terminator, which it passes. What the end of the block cuts off is no path.
template <class Unit>
std::basic_string<Unit> ReadPath(std::span<const std::byte> block, std::size_t& at) {
    std::basic_string<Unit> path;
    while (block.size() - at >= sizeof(Unit)) {
        Unit unit;
        std::memcpy(&unit, block.data() + at, sizeof unit);
        at += sizeof unit;
        if (unit == 0) return path;
        path += unit;
    }
    return {};
}

}  // namespace

FileListReader::FileListReader(std::span<const std::byte> block) : block_(block), position_(block.size()) {
    DROPFILES header{};
    if (block.size() < sizeof header) return;
    std::memcpy(&header, block.data(), sizeof header);
    if (header.pFiles < sizeof header || header.pFiles > block.size()) return;
    wide_ = header.fWide != 0;
    position_ = header.pFiles;
}

CString FileListReader::Next() {
    CString path = wide_ ? CString(ReadPath<char16_t>(block_, position_).c_str())
                         : FromUtf8(ReadPath<char>(block_, position_));
    if (path.IsEmpty()) position_ = block_.size();
    return path;
}

std::vector<CString> FilesOf(std::span<const std::byte> block) {
    FileListReader reader(block);
    std::vector<CString> paths;
    for (CString path = reader.Next(); !path.IsEmpty(); path = reader.Next())
        paths.push_back(std::move(path));
    return paths;
}

HGLOBAL MakeFileBlock(const std::vector<CString>& paths, POINT point) {
    std::size_t units = 1;
    for (const CString& path : paths)
        units += path.View().size() + 1;
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_SHARE, sizeof(DROPFILES) + units * sizeof(WCHAR));
    auto* at = static_cast<std::byte*>(GlobalLock(block));
    if (!at) return HGLOBAL();
    const DROPFILES header{sizeof header, point, FALSE, TRUE};
    std::memcpy(at, &header, sizeof header);
    at += sizeof header;
    for (const CString& path : paths) {
        std::memcpy(at, path.GetString(), path.View().size() * sizeof(WCHAR));
        at += (path.View().size() + 1) * sizeof(WCHAR);
    }
    GlobalUnlock(block);
    return block;
}

}  // namespace platform
