// What lies on a per-pixel surface before anything is drawn on it: the cached background, or nothing.
#pragma once

#include <cstdint>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

namespace qkui {

class Underlay {
  public:
    // The memory of a surface: premultiplied words, top-down, without gaps.
    struct Pixels {
        std::uint32_t* first;
        int width, height;
    };

    // Keeps what the cache (null: nothing) shows now, whatever becomes of it. Cheap: the two share their
    // pixels until the cache is drawn on.
    void Take(const Gdiplus::Bitmap* cache) { cache_.reset(cache ? cache->Clone() : nullptr); }
    // Unique for what it shows; 0 for nothing.
    std::uint64_t Revision() const { return cache_ ? cache_->GetRevision() : 0; }
    // Gives the pixels of a rectangle inside the surface the look from before any drawing.
    void Restore(const Pixels& surface, const CRect& rect) const;

  private:
    void CopyRows(const Pixels& surface, const CRect& rect) const;
    void CopySheared(const Pixels& surface, const CRect& rect) const;
    void Copy(const Gdiplus::Rect& from, std::uint32_t* to, int stride) const;

    // Of the cache, in pixels.
    int Width() const { return static_cast<int>(cache_->GetWidth()) * cache_->GetScale(); }
    int Height() const { return static_cast<int>(cache_->GetHeight()) * cache_->GetScale(); }

    std::unique_ptr<Gdiplus::Bitmap> cache_;
};

}  // namespace qkui
