#include "list/caption_store.h"

#include <utility>

#include "list/list_text.h"

QKListNode::Rendering QKCaptionStore::RenderingFor(const QKListNode& node,
                                                   const QKListNode::Rendering& asked) const {
    const QKListItem& entry = *node.item;
    const bool sameText = QKTextOf(entry.szText) == QKTextOf(entry.szTextCath);
    return node.droppedCaption && sameText && node.rendering.age == age_ ? node.rendering : asked;
}

void QKCaptionStore::Seen(QKListNode& node, const QKListNode::Rendering* rendered) {
    if (rendered) {
        Forget(node);
        node.rendering = *rendered;
        node.rendering.age = age_;
        node.captionBytes =
            static_cast<std::size_t>(rendered->size.cx) * static_cast<std::size_t>(rendered->size.cy) * 4;
        node.captionSeen = captions_.insert(captions_.begin(), &node);
        bytes_ += node.captionBytes;
        node.hasCaption = true;
    } else if (node.hasCaption) {
        captions_.splice(captions_.begin(), captions_, node.captionSeen);
    }
    node.captionFrame = frame_;
}

void QKCaptionStore::Forget(QKListNode& node) {
    node.droppedCaption = false;
    if (!node.hasCaption) return;
    captions_.erase(node.captionSeen);
    bytes_ -= node.captionBytes;
    node.hasCaption = false;
}

void QKCaptionStore::Trim(std::size_t bytes) {
    while (bytes_ > bytes && captions_.back()->captionFrame != frame_) {
        QKListNode& node = *captions_.back();
        Forget(node);
        if (node.handedOut) continue;  // the host may be using it
        delete std::exchange(node.item->pTextImage, nullptr);
        node.droppedCaption = true;
    }
}

void QKCaptionStore::Clear() {
    for (QKListNode* node : captions_)
        node->hasCaption = false;
    captions_.clear();
    bytes_ = 0;
    ++age_;
}
