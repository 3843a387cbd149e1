// The rendered captions of a list's entries: which text each shows, which were seen last, what they take up.
#pragma once

#include <cstdint>
#include <list>
#include <memory>

#include "list/entry_store.h"

namespace qkui {

class CaptionCache {
  public:
    // Whether the rendered caption shows the entry's text.
    bool ShowsText(const Entry& entry) const;
    // How a caption is to be rendered: as it is asked for, or as it was when it was dropped for lack of room.
    EntryLook::Rendering RenderingFor(const Entry& entry, const EntryLook::Rendering& asked) const;
    // The rendered caption, null for none, is of the text as it is; it was made as `rendering` says, and is
    // shown in this frame.
    void Take(Entry& entry, std::unique_ptr<Gdiplus::Image> caption, const EntryLook::Rendering& rendering);
    // The entry's caption, as it is, is shown in this frame.
    void NoteShown(Entry& entry);

    // The caption of one entry, or of all, is to be rendered again when it is next shown.
    void Empty(Entry& entry);
    void EmptyAll() { ++epoch_; }
    // A record that was behind has its rendered caption emptied; one that was just made is not behind.
    void WriteTo(Entry& entry) const;
    void MarkWritten(Entry& entry) const { entry.Look().captionEpoch = epoch_; }
    std::uint64_t Epoch() const { return epoch_; }
    // Frees all captions.
    void ReleaseAll(const EntryStore& store);
    // Grows when all captions may look different.
    std::uint64_t Revision() const { return epoch_ + age_; }

    void BeginFrame() { ++frame_; }
    // Drops captions seen longest ago, but none of this frame, down to so many bytes.
    void Trim(std::size_t bytes);
    // The entry goes.
    void Forget(Entry& entry);
    // All entries go.
    void Clear();

  private:
    std::list<Entry*> captions_;  // the latest seen first
    std::size_t bytes_ = 0;
    std::uint64_t frame_ = 0;
    std::uint64_t age_ = 0;    // grows when all captions are released
    std::uint64_t epoch_ = 0;  // grows when all captions are emptied
};

}  // namespace qkui
