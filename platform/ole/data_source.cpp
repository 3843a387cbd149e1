// Data offered for dragging, and the drag.
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include <platform/gdi.h>
#include <platform/ole.h>

#include "platform/base/global_memory.h"
#include "platform/graphics/gdi_objects.h"
#include "platform/ole/file_block.h"
#include "platform/window/core/control.h"

namespace platform {
namespace {

constexpr int kLongestPictureSide = 256;  // pixels

// What other programs can find a file by.
CString Absolute(const CString& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(ToUtf8(path), error);
    return error ? path : FromUtf8(absolute.string());
}

FileOffer OfferOf(HGLOBAL block) {
    FileOffer offer;
    const std::shared_ptr<GlobalBlock> bytes = ShareGlobal(block);
    if (!bytes) return offer;
    offer.block.assign(bytes->Bytes(), bytes->Bytes() + bytes->Size());
    for (const CString& path : FilesOf(offer.block))
        offer.paths.push_back(Absolute(path));
    return offer;
}

}  // namespace
}  // namespace platform

COleDataSource::~COleDataSource() {
    for (const auto& [format, block] : m_blocks)
        GlobalFree(block);
    if (m_picture) DestroyIcon(m_picture);
}

void COleDataSource::CacheGlobalData(CLIPFORMAT format, HGLOBAL block) {
    const HGLOBAL before = std::exchange(m_blocks[format], block);
    if (before && !(before == block)) GlobalFree(before);
}

void COleDataSource::SetDragImage(HICON picture, POINT pointer) {
    if (m_picture) DestroyIcon(m_picture);
    m_picture = picture ? CopyIcon(picture) : HICON();
    m_pointer = pointer;
}

DROPEFFECT COleDataSource::DoDragDrop(DROPEFFECT effects) try {
    const auto files = m_blocks.find(CF_HDROP);
    if (files == m_blocks.end()) return DROPEFFECT_NONE;
    platform::FileOffer offer = platform::OfferOf(files->second);
    offer.allowed = effects & (DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
    if (m_picture) offer.picture = platform::IconPicture(m_picture, platform::kLongestPictureSide);
    offer.hot = m_pointer;
    return platform::DragFiles(offer);
} catch (const std::bad_alloc&) {
    return DROPEFFECT_NONE;
}
