// The selected entries of all shown lists, dragged out as files.
#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include <platform/gdi.h>
#include <platform/ole.h>

#include "dialog/alive.h"
#include "dialog/shown_lists.h"
#include "list/list_access.h"
#include "list/memory.h"

using namespace qkui;

namespace {

constexpr int kLargestIcon = 256;  // pixels a side

// A block of zeros, freed unless somebody takes it over.
class FileBlock {
  public:
    explicit FileBlock(std::size_t bytes)
        : block_(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_SHARE, bytes)) {}
    ~FileBlock() {
        if (block_) GlobalFree(block_);
    }
    FileBlock(const FileBlock&) = delete;
    FileBlock& operator=(const FileBlock&) = delete;

    // `list` with all its terminators but the last. False without memory.
    bool Fill(const std::u16string& list) {
        void* memory = GlobalLock(block_);
        if (!memory) return false;
        DROPFILES header{};
        header.pFiles = sizeof header;
        header.fWide = TRUE;
        std::memcpy(memory, &header, sizeof header);
        std::memcpy(static_cast<std::byte*>(memory) + sizeof header, list.data(),
                    list.size() * sizeof(WCHAR));
        GlobalUnlock(block_);
        return true;
    }
    HGLOBAL Release() { return std::exchange(block_, HGLOBAL()); }

  private:
    HGLOBAL block_;
};

// The icon that the pointer carries, of the size that the list shows it in.
void CarryIcon(COleDataSource& source, Gdiplus::Image* image, CSize size) {
    Gdiplus::Bitmap picture(std::clamp<int>(size.cx, 1, kLargestIcon),
                            std::clamp<int>(size.cy, 1, kLargestIcon));
    const auto width = static_cast<INT>(picture.GetWidth());
    const auto height = static_cast<INT>(picture.GetHeight());
    Gdiplus::Graphics(&picture).DrawImage(image, 0, 0, width, height);
    HICON icon;
    if (picture.GetHICON(&icon) != Gdiplus::Ok) return;
    source.SetDragImage(icon, POINT{width / 2, height / 2});
    DestroyIcon(icon);
}

}  // namespace

std::u16string CQKDialogBase::SelectedPaths() {
    std::u16string paths;
    ForEachList([&](QKListCtrl& list) {
        ListAccess::Entries(list).SyncAll();
        for (const Entry* entry : ListAccess::Entries(list).Selected())
            if (entry->unselected == 0) paths.append(entry->Path()) += u'\0';
    });
    return paths;
}

// That of the first file.
void CQKDialogBase::CarryFirstIcon(COleDataSource& source) {
    bool carries = false;
    ForEachList([&](QKListCtrl& list) {
        for (const Entry* entry : ListAccess::Entries(list).Selected()) {
            if (carries || entry->unselected != 0) continue;
            carries = true;
            if (entry->Icon())
                CarryIcon(source, entry->Icon(), CSize(list.GetImageWidth(), list.GetImageHeight()));
        }
    });
}

int CQKDialogBase::DoDropSource() {
    m_bDragOut = 0;  // first of all: a drag that comes to nothing is not tried again with the next move
    return WithinMemory(0, [this] {
        const std::u16string paths = SelectedPaths();
        if (paths.empty()) return 0;
        FileBlock block(sizeof(DROPFILES) + (paths.size() + 1) * sizeof(WCHAR));
        if (!block.Fill(paths)) return 0;
        COleDataSource source;
        source.CacheGlobalData(CF_HDROP, block.Release());
        CarryFirstIcon(source);
        const Alive alive(*this);
        const DROPEFFECT effect = source.DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE);
        return alive && effect == DROPEFFECT_MOVE ? DeleteSelectedFiles() : 0;
    });
}

int CQKDialogBase::DeleteSelectedFiles() {
    return WithinMemory(0, [this] {
        int removed = 0;
        ForEachList([&](QKListCtrl& list) { removed |= ListAccess::Entries(list).ReleaseSelected(); });
        return removed;
    });
}
