#include "platform/resources/resource_file.h"

#include <utility>

#include "platform/base/byte_reader.h"

namespace platform {
namespace {

// The header must be as long as it says and the data must lie inside the file.
std::optional<ResourceEntry> ReadEntry(ByteReader& reader) {
    const std::size_t start = reader.Position();
    const DWORD dataSize = reader.Dword();
    const DWORD headerSize = reader.Dword();
    ResourceEntry entry;
    entry.type = ReadName(reader);
    entry.name = ReadName(reader);
    reader.AlignToDword();
    reader.Skip(16);  // versions, flags without meaning here, language
    if (reader.Failed() || reader.Position() - start != headerSize) return std::nullopt;
    entry.data = std::as_bytes(reader.Bytes(dataSize));
    if (reader.Failed()) return std::nullopt;
    reader.SkipPadding();
    return entry;
}

// The empty entry, which opens every file and, in joined files, every part.
bool IsOpening(const ResourceEntry& entry) {
    return entry.type == ResourceName() && entry.name == ResourceName() && entry.data.empty();
}

}  // namespace

std::optional<std::vector<ResourceEntry>> ParseResourceFile(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const std::optional<ResourceEntry> opening = ReadEntry(reader);
    if (!opening || !IsOpening(*opening)) return std::nullopt;
    std::vector<ResourceEntry> entries;
    while (!reader.AtEnd()) {
        std::optional<ResourceEntry> entry = ReadEntry(reader);
        if (!entry) return std::nullopt;
        if (!IsOpening(*entry)) entries.push_back(std::move(*entry));
    }
    return entries;
}

}  // namespace platform
