#include "list/caption_store.h"

#include <utility>

QKEntryLook::Rendering QKCaptionStore::RenderingFor(const QKListNode& node, bool showsText,
                                                    const QKEntryLook::Rendering& asked) const {
    const QKEntryLook& look = *node.look;
    return look.droppedCaption && showsText && look.rendering.age == age_ ? look.rendering : asked;
}

void QKCaptionStore::Seen(QKListNode& node, const QKEntryLook::Rendering* rendered) {
    QKEntryLook& look = *node.look;
    if (rendered) {
        Forget(node);
        look.rendering = *rendered;
        look.rendering.age = age_;
        look.captionBytes =
            static_cast<std::size_t>(rendered->size.cx) * static_cast<std::size_t>(rendered->size.cy) * 4;
        look.captionSeen = captions_.insert(captions_.begin(), &node);
        bytes_ += look.captionBytes;
        look.hasCaption = true;
    } else if (look.hasCaption) {
        captions_.splice(captions_.begin(), captions_, look.captionSeen);
    }
    look.captionFrame = frame_;
}

void QKCaptionStore::Forget(QKListNode& node) {
    if (!node.look) return;
    QKEntryLook& look = *node.look;
    look.droppedCaption = false;
    if (!look.hasCaption) return;
    captions_.erase(look.captionSeen);
    bytes_ -= look.captionBytes;
    look.hasCaption = false;
}

void QKCaptionStore::Trim(std::size_t bytes) {
    while (bytes_ > bytes && captions_.back()->look->captionFrame != frame_) {
        QKListNode& node = *captions_.back();
        Forget(node);
        if (node.mayChange) continue;  // the host may be using it
        if (node.record)
            delete std::exchange(node.record->pTextImage, nullptr);
        else
            node.look->caption.reset();
        node.look->droppedCaption = true;
        node.ForgetPicture();
    }
}

void QKCaptionStore::Clear() {
    for (QKListNode* node : captions_)
        node->look->hasCaption = false;
    captions_.clear();
    bytes_ = 0;
    ++age_;
}
