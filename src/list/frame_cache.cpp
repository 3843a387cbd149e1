#include "list/frame_cache.h"

#include <algorithm>

#include "items/draw_operations.h"
#include "items/nine_patch.h"
#include "list/memory.h"

namespace qkui {
namespace {

// From the third time on: a size that one entry alone has comes and goes.
constexpr int kWorthKeeping = 3;
// A larger one takes long to draw in any way.
constexpr LONG kMostPixels = 1 << 16;

bool Contains(const Gdiplus::RectF& whole, const Gdiplus::RectF& part) {
    return part.X >= whole.X && part.Y >= whole.Y && part.X + part.Width <= whole.X + whole.Width &&
           part.Y + part.Height <= whole.Y + whole.Height;
}

bool Meet(const Gdiplus::RectF& a, const Gdiplus::RectF& b) {
    return a.X < b.X + b.Width && b.X < a.X + a.Width && a.Y < b.Y + b.Height && b.Y < a.Y + a.Height;
}

class Parts final : public OperationSink {
  public:
    void Add(const ImageOperation& operation) override {
        if (operation.destination.Width > 0 && operation.destination.Height > 0)
            operations_.push_back(operation);
    }
    void Add(const TextOperation&) override {}

    // Whether they can be drawn on nothing first: what lies over another part would be mixed with that.
    bool AreApart(const Gdiplus::RectF& whole) const {
        for (auto part = operations_.begin(); part != operations_.end(); ++part) {
            if (!Contains(whole, part->destination)) return false;
            for (auto other = operations_.begin(); other != part; ++other)
                if (Meet(part->destination, other->destination)) return false;
        }
        return operations_.size() > 1;
    }
    void DrawOn(Gdiplus::Bitmap& picture) const {
        Gdiplus::Graphics graphics(&picture);
        OperationPainter painter(graphics);
        for (const ImageOperation& operation : operations_)
            painter.Add(operation);
    }

  private:
    std::vector<ImageOperation> operations_;
};

std::shared_ptr<Gdiplus::Bitmap> Render(const FrameImages& images, CSize size, int scale) {
    const Gdiplus::RectF place = ToRectF(CRect(CPoint(0, 0), size));
    Parts parts;
    RecordNinePatch(images.data(), place, parts);
    if (!parts.AreApart(place)) return nullptr;
    auto whole = std::make_shared<Gdiplus::Bitmap>(size.cx * scale, size.cy * scale);
    whole->SetScale(scale);
    if (whole->GetLastStatus() != Gdiplus::Ok) return nullptr;
    parts.DrawOn(*whole);
    return whole;
}

}  // namespace

FrameRevisions RevisionsOf(const FrameImages& images) {
    FrameRevisions revisions;
    std::transform(images.begin(), images.end(), revisions.begin(),
                   [](const Gdiplus::Image* image) { return image ? image->GetRevision() : 0; });
    return revisions;
}

Gdiplus::Image* FrameCache::Find(const FrameImages& images, CSize size, int scale) {
    return WithinMemory<Gdiplus::Image*>(nullptr, [&] { return FindOrRender(images, size, scale); });
}

Gdiplus::Image* FrameCache::FindOrRender(const FrameImages& images, CSize size, int scale) {
    if (size.cx < 1 || size.cy < 1 || size.cx > kMostPixels / size.cy) return nullptr;
    const FrameRevisions revisions = RevisionsOf(images);
    auto at = std::find_if(frames_.begin(), frames_.end(),
                           [&](const Frame& frame) { return frame.Is(revisions, size, scale); });
    if (at == frames_.end()) {
        if (frames_.size() < kMostFrames) frames_.emplace_back();
        at = frames_.end() - 1;
        *at = Frame{revisions, size, scale, 0, nullptr};
    }
    std::rotate(frames_.begin(), at, at + 1);
    Frame& frame = frames_.front();
    if (frame.asked < kWorthKeeping && ++frame.asked == kWorthKeeping)
        frame.whole = Render(images, size, scale);
    return frame.whole.get();
}

}  // namespace qkui
