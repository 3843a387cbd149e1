#include "list/caption_cache.h"

#include <utility>

#include "list/list_text.h"

namespace qkui {

bool CaptionCache::ShowsText(const Entry& entry) const {
    if (!entry.look || entry.look->captionEpoch != epoch_) return false;
    return entry.record ? IsSameText(entry.record->szTextCath, entry.record->szText) : entry.look->showsText;
}

EntryLook::Rendering CaptionCache::RenderingFor(const Entry& entry, const EntryLook::Rendering& asked) const {
    const EntryLook& look = *entry.look;
    return look.droppedCaption && ShowsText(entry) && look.rendering.age == age_ ? look.rendering : asked;
}

void CaptionCache::Take(Entry& entry, std::unique_ptr<Gdiplus::Image> caption,
                        const EntryLook::Rendering& rendering) {
    entry.ForgetPicture();
    EntryLook& look = *entry.look;
    const bool isRendered = caption != nullptr;
    look.captionEpoch = epoch_;
    if (QKListItem* const record = entry.record) {
        delete std::exchange(record->pTextImage, caption.release());
        CopyText(record->szTextCath, TextOf(record->szText));
    } else {
        look.caption = std::move(caption);
        look.showsText = true;
    }
    if (!isRendered) return;
    Forget(entry);
    look.rendering = rendering;
    look.rendering.age = age_;
    look.captionBytes =
        static_cast<std::size_t>(rendering.size.cx) * static_cast<std::size_t>(rendering.size.cy) * 4;
    look.captionSeen = captions_.insert(captions_.begin(), &entry);
    bytes_ += look.captionBytes;
    look.hasCaption = true;
    look.captionFrame = frame_;
}

void CaptionCache::NoteShown(Entry& entry) {
    EntryLook& look = *entry.look;
    if (look.hasCaption && look.captionFrame != frame_)
        captions_.splice(captions_.begin(), captions_, look.captionSeen);
    look.captionFrame = frame_;
}

void CaptionCache::Empty(Entry& entry) {
    entry.ForgetPicture();
    if (entry.record)
        entry.record->szTextCath[0] = u'\0';
    else if (entry.look)
        entry.look->showsText = false;
}

void CaptionCache::WriteTo(Entry& entry) const {
    if (std::exchange(entry.look->captionEpoch, epoch_) != epoch_) entry.record->szTextCath[0] = u'\0';
}

void CaptionCache::ReleaseAll(const EntryStore& store) {
    for (const auto& entry : store) {
        if (entry->record)
            delete std::exchange(entry->record->pTextImage, nullptr);
        else if (entry->look)
            entry->look->caption.reset();
    }
    Clear();
}

void CaptionCache::Forget(Entry& entry) {
    if (!entry.look) return;
    EntryLook& look = *entry.look;
    look.droppedCaption = false;
    if (!look.hasCaption) return;
    captions_.erase(look.captionSeen);
    bytes_ -= look.captionBytes;
    look.hasCaption = false;
}

void CaptionCache::Trim(std::size_t bytes) {
    while (bytes_ > bytes && captions_.back()->look->captionFrame != frame_) {
        Entry& entry = *captions_.back();
        Forget(entry);
        if (entry.mayChange) continue;  // the host may be using it
        if (entry.record)
            delete std::exchange(entry.record->pTextImage, nullptr);
        else
            entry.look->caption.reset();
        entry.look->droppedCaption = true;
        entry.ForgetPicture();
    }
}

void CaptionCache::Clear() {
    for (Entry* entry : captions_)
        entry->look->hasCaption = false;
    captions_.clear();
    bytes_ = 0;
    ++age_;
}

}  // namespace qkui
