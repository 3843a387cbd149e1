#include "platform/graphics/text/text_cache.h"

#include <bit>
#include <functional>
#include <new>

#include "platform/graphics/counters.h"
#include "platform/graphics/text/text_layout.h"

namespace platform {

std::size_t TextCache::Hash::operator()(const KeyView& key) const {
    std::size_t hash = std::hash<std::u16string_view>()(key.text);
    const auto mix = [&hash](std::uint64_t value) {
        hash = (std::rotl(hash, 23) ^ static_cast<std::size_t>(value)) * 0x9E3779B97F4A7C15ULL;
    };
    mix(key.font);
    mix((std::uint64_t{std::bit_cast<std::uint32_t>(key.format.width)} << 32) |
        std::bit_cast<std::uint32_t>(key.format.height));
    mix(static_cast<std::uint32_t>(key.format.flags) ^
        (static_cast<std::uint64_t>(key.format.alignment) << 40) ^
        (static_cast<std::uint64_t>(key.format.lineAlignment) << 48) ^
        (static_cast<std::uint64_t>(key.format.trimming) << 56));
    return hash;
}

std::shared_ptr<CachedText> TextCache::Get(std::u16string_view text, const std::shared_ptr<FontData>& font,
                                           const TextFormat& format) try {
    if (const auto found = byKey_.find(KeyView{text, font->revision, format}); found != byKey_.end()) {
        entries_.splice(entries_.begin(), entries_, found->second);
        std::shared_ptr<CachedText> value = found->second->value;
        Trim();
        return value;
    }
    auto value = std::make_shared<CachedText>();
    value->layout = TextLayout::LayOut(text, *font, format);
    ++Gdiplus::Counters().textLayouts;

    Entry& entry = entries_.emplace_front();
    entry.text = text;
    entry.key = KeyView{entry.text, font->revision, format};
    entry.font = font;
    entry.value = value;
    entry.bytes = sizeof(Entry) + text.size() * sizeof(char16_t) + value->layout->Bytes();
    byKey_.emplace(entry.key, entries_.begin());
    bytes_ += entry.bytes;
    HoldFaces(*value->layout);
    Trim();
    return value;
} catch (const std::bad_alloc&) {
    Clear();  // an entry may be half made, and memory is short
    throw;
}

void TextCache::HoldFaces(const TextLayout& layout) {
    for (const TextFace& face : layout.Faces())
        if (faces_[face.font.get()]++ == 0) bytes_ += kFaceBytes;
}

void TextCache::ReleaseFaces(const TextLayout& layout) {
    for (const TextFace& face : layout.Faces()) {
        const auto held = faces_.find(face.font.get());
        if (--held->second > 0) continue;
        faces_.erase(held);
        bytes_ -= kFaceBytes;
    }
}

void TextCache::CountCoverage(const CachedText& value) {
    // The entry that was asked for last stands first; it is gone when it alone exceeds the limit.
    if (entries_.empty() || entries_.front().value.get() != &value) return;
    entries_.front().bytes += value.coverage.Bytes();
    bytes_ += value.coverage.Bytes();
    Trim();
}

void TextCache::Trim() {
    const std::size_t limit = DrawingCacheLimit().load(std::memory_order_relaxed);
    while (bytes_ > limit && !entries_.empty()) {
        const Entry& oldest = entries_.back();
        bytes_ -= oldest.bytes;
        ReleaseFaces(*oldest.value->layout);
        byKey_.erase(oldest.key);
        entries_.pop_back();
    }
}

void TextCache::Clear() {
    byKey_.clear();
    entries_.clear();
    faces_.clear();
    bytes_ = 0;
}

}  // namespace platform
