// Icons of the resources: a directory, and each picture a resource of its own.
#include <algorithm>
#include <span>
#include <vector>

#include <platform/gdiplus.h>
#include <platform/resources.h>
#include <platform/window.h>

#include "platform/base/byte_reader.h"

namespace {

std::span<const std::uint8_t> BytesOf(HMODULE module, LPCWSTR name, LPCWSTR type) {
    const HRSRC found = FindResourceW(module, name, type);
    const auto* const first = static_cast<const std::uint8_t*>(LockResource(LoadResource(module, found)));
    return first ? std::span(first, SizeofResource(module, found)) : std::span<const std::uint8_t>();
}

void Append(std::vector<std::uint8_t>& bytes, std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> i * 8));
}

// The file that the directory was compiled from: its entries name resources where the file names places.
std::vector<std::uint8_t> IconFile(HMODULE module, std::span<const std::uint8_t> directory) {
    platform::ByteReader reader(directory);
    reader.Skip(4);
    const WORD count = reader.Word();
    std::vector<std::uint8_t> file;
    Append(file, 0, 2);
    Append(file, 1, 2);
    Append(file, count, 2);
    std::vector<std::uint8_t> pictures;
    const std::size_t pixels = 6 + std::size_t{count} * 16;
    for (WORD i = 0; i < count; ++i) {
        const auto looks = reader.Bytes(8);
        reader.Skip(4);
        const auto picture = BytesOf(module, MAKEINTRESOURCE(reader.Word()), RT_ICON);
        if (reader.Failed()) return {};
        file.insert(file.end(), looks.begin(), looks.end());
        Append(file, picture.size(), 4);
        Append(file, pixels + pictures.size(), 4);
        pictures.insert(pictures.end(), picture.begin(), picture.end());
    }
    file.insert(file.end(), pictures.begin(), pictures.end());
    return file;
}

}  // namespace

HICON LoadIconW(HINSTANCE module, LPCWSTR name) {
    const auto directory = BytesOf(module, name, RT_GROUP_ICON);
    if (directory.empty()) return {};
    const std::vector<std::uint8_t> file = IconFile(module, directory);
    HICON icon;
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, file.size());
    IStream* stream = nullptr;
    if (void* const bytes = GlobalLock(block))
        std::copy(file.begin(), file.end(), static_cast<std::uint8_t*>(bytes));
    if (SUCCEEDED(CreateStreamOnHGlobal(block, TRUE, &stream))) {
        const Gdiplus::Bitmap picture(stream);
        stream->Release();
        picture.GetHICON(&icon);
    }
    if (!icon) SetLastError(ERROR_INVALID_DATA);
    return icon;
}
