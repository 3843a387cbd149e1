// String tables: blocks of sixteen texts, each with its length before it.
#include <algorithm>
#include <span>

#include <platform/resources.h>

#include "platform/base/byte_reader.h"

namespace {

constexpr UINT kBlock = 16;

// Nothing with the last error set when there is no such text. An empty one is none.
std::u16string FindText(HINSTANCE module, UINT id) {
    const HRSRC found =
        id <= 0xFFFF ? FindResourceW(module, MAKEINTRESOURCE(id / kBlock + 1), RT_STRING) : HRSRC();
    const auto* const first = static_cast<const std::uint8_t*>(LockResource(LoadResource(module, found)));
    if (!first) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return {};
    }
    platform::ByteReader reader(std::span(first, SizeofResource(module, found)));
    for (UINT i = 0; i < id % kBlock; ++i)
        reader.Skip(std::size_t{reader.Word()} * sizeof(WCHAR));
    std::u16string text(reader.Word(), u'\0');
    for (WCHAR& unit : text)
        unit = reader.Word();
    if (reader.Failed()) text.clear();
    if (text.empty()) SetLastError(reader.Failed() ? ERROR_INVALID_DATA : ERROR_RESOURCE_NAME_NOT_FOUND);
    return text;
}

}  // namespace

int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int size) {
    if (!buffer || size < 1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::u16string text = FindText(module, id);
    const std::size_t kept = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    *std::copy_n(text.begin(), kept, buffer) = u'\0';
    return static_cast<int>(kept);
}

BOOL CString::LoadString(UINT id) {
    text_ = FindText({}, id);
    return !text_.empty();
}
