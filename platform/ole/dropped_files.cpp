// What a receiver asks of a block of files.
#include <platform/ole.h>

#include <algorithm>
#include <cstring>

#include "platform/base/global_memory.h"
#include "platform/ole/file_block.h"

namespace platform {
namespace {

std::span<const std::byte> BytesOf(const GlobalBlock& block) {
    return {block.Bytes(), block.Size()};
}

// Receivers ask for one path after the other, each of them twice: the list is not walked anew for that.
struct LastQuery {
    HDROP drop;
    UINT index = 0;
    std::size_t position = 0;
};

// The path at an index; empty behind the last.
CString PathAt(HDROP drop, const GlobalBlock& block, UINT index) {
    static thread_local LastQuery last;
    FileListReader reader(BytesOf(block));
    UINT at = 0;
    if (last.drop == drop && last.index <= index) {
        at = last.index;
        reader.Seek(last.position);
    }
    for (;; ++at) {
        const std::size_t position = reader.Position();
        CString path = reader.Next();
        if (at == index) last = {drop, index, position};
        if (at == index || path.IsEmpty()) return path;
    }
}

}  // namespace
}  // namespace platform

using namespace platform;

UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT size) {
    const std::shared_ptr<GlobalBlock> block = ShareGlobal(drop);
    if (!block) return 0;
    if (index == kAllFiles) return static_cast<UINT>(FilesOf(BytesOf(*block)).size());
    const CString path = PathAt(drop, *block, index);
    const auto length = static_cast<UINT>(path.GetLength());
    if (!buffer) return length;
    if (size == 0) return 0;
    const UINT count = std::min(length, size - 1);
    *std::copy_n(path.GetString(), count, buffer) = u'\0';
    return count;
}

BOOL DragQueryPoint(HDROP drop, POINT* point) {
    const std::shared_ptr<GlobalBlock> block = ShareGlobal(drop);
    DROPFILES header{};
    if (!block || !point || block->Size() < sizeof header) return FALSE;
    std::memcpy(&header, block->Bytes(), sizeof header);
    *point = header.pt;
    return header.fNC == 0;
}

void DragFinish(HDROP drop) {
    GlobalFree(drop);
}
