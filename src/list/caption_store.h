// The rendered captions of a list's entries: which were seen last, and what they take up.
#pragma once

#include <cstdint>
#include <list>

#include "list/list_node.h"

class QKCaptionStore {
  public:
    // How a caption is to be rendered: as it is asked for, or as it was when it was dropped for lack of room.
    // `showsText`: of its text as it is.
    QKEntryLook::Rendering RenderingFor(const QKListNode& node, bool showsText,
                                        const QKEntryLook::Rendering& asked) const;
    // The node's caption is shown in this frame; `rendered`: and was rendered for it.
    void Seen(QKListNode& node, const QKEntryLook::Rendering* rendered);
    void BeginFrame() { ++frame_; }
    // Drops captions seen longest ago, but none of this frame, down to so many bytes.
    void Trim(std::size_t bytes);
    // The node goes, or its caption is another one.
    void Forget(QKListNode& node);
    // All captions were freed, or all nodes.
    void Clear();

  private:
    std::list<QKListNode*> captions_;  // the latest seen first
    std::size_t bytes_ = 0;
    std::uint64_t frame_ = 0;
    std::uint64_t age_ = 0;  // grows when all captions are released
};
