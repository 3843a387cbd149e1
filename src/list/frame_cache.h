// Frames of nine images as whole pictures, at the sizes in use: many entries have the same frame.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

namespace qkui {

using FrameImages = std::array<Gdiplus::Image*, 9>;
using FrameRevisions = std::array<std::uint64_t, 9>;
FrameRevisions RevisionsOf(const FrameImages& images);

class FrameCache {
  public:
    // What RecordNinePatch draws at this size where a unit is `scale` pixels. Null where it has to be drawn
    // in its parts: it has not been asked for often enough, or the parts lie over each other. Valid until
    // the next call.
    Gdiplus::Image* Find(const FrameImages& images, CSize size, int scale);

  private:
    Gdiplus::Image* FindOrRender(const FrameImages& images, CSize size, int scale);

    struct Frame {
        FrameRevisions revisions;
        SIZE size;
        int scale;
        int asked = 0;
        std::shared_ptr<Gdiplus::Bitmap> whole;  // null where there cannot be one

        bool Is(const FrameRevisions& ofRevisions, const SIZE& ofSize, int ofScale) const {
            return size == ofSize && scale == ofScale && revisions == ofRevisions;
        }
    };
    static constexpr std::size_t kMostFrames = 8;
    std::vector<Frame> frames_;  // the latest asked for first
};

}  // namespace qkui
