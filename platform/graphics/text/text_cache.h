// The text layouts of one thread, the latest ones, with their coverage once they were drawn.
#pragma once

#include <pango/pango.h>

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/graphics/text/coverage.h"
#include "platform/graphics/text/font_data.h"
#include "platform/graphics/text/text_format.h"

namespace platform {

class TextLayout;

// Lives on in the hands of its holder when the cache has dropped it.
struct CachedText {
    std::shared_ptr<const TextLayout> layout;
    Coverage coverage;  // of the whole ink; empty until the text is drawn unscaled
};

// Least recently used texts go first when the bytes, those of their faces among them, exceed the common
// limit.
class TextCache {
  public:
    // What the shaping library keeps for a face at a size, roughly: the face as it is loaded, glyphs
    // included.
    static constexpr std::size_t kFaceBytes = std::size_t{32} << 10;

    // Throws std::bad_alloc, and has then dropped everything.
    std::shared_ptr<CachedText> Get(std::u16string_view text, const std::shared_ptr<FontData>& font,
                                    const TextFormat& format);
    // Makes room for the coverage that an entry has just got.
    void CountCoverage(const CachedText& entry);
    std::size_t Bytes() const { return bytes_; }
    std::size_t Count() const { return entries_.size(); }
    void Clear();

  private:
    struct KeyView {
        std::u16string_view text;
        std::uint64_t font;
        TextFormat format;
        friend bool operator==(const KeyView&, const KeyView&) = default;
    };
    struct Hash {
        std::size_t operator()(const KeyView& key) const;
    };
    struct Entry {
        std::u16string text;  // what the key refers to
        KeyView key;
        std::shared_ptr<FontData> font;  // so that asking for the same font again finds the same one
        std::shared_ptr<CachedText> value;
        std::size_t bytes = 0;
    };
    using Entries = std::list<Entry>;

    void HoldFaces(const TextLayout& layout);
    void ReleaseFaces(const TextLayout& layout);
    void Trim();

    Entries entries_;  // the latest first
    std::unordered_map<KeyView, Entries::iterator, Hash> byKey_;
    std::unordered_map<const PangoFont*, std::size_t> faces_;  // and how many entries they are in
    std::size_t bytes_ = 0;
};

}  // namespace platform
