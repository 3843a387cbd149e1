// What the picture of an item is made of: parts of images and laid-out texts, in drawing order. An item says
// its operations once; they are painted, counted as the pixels that it touches, or recorded, and none of
// these can disagree.
#pragma once

#include <platform/gdiplus.h>
#include <platform/geometry.h>

class QKItemBase;
class QKItemText;

namespace qkui {

// A part of an image and where it is stretched to; the two may be of one size. There is always an
// image; an empty destination draws nothing.
struct ImageOperation {
    Gdiplus::Image* image;
    Gdiplus::RectF destination;
    Gdiplus::RectF source;
    // What a stretched edge is mixed with beyond the source; by default nothing is.
    Gdiplus::WrapMode wrap = Gdiplus::WrapModeClamp;
};

struct TextOperation {
    LPCWSTR text;  // null draws nothing
    int length;
    const Gdiplus::Font* font;
    Gdiplus::RectF layout;
    const Gdiplus::StringFormat* format;
    Gdiplus::Color color;
};

class OperationSink {
  public:
    virtual void Add(const ImageOperation& operation) = 0;
    virtual void Add(const TextOperation& operation) = 0;

  protected:
    ~OperationSink() = default;
};

// The whole of an image.
PLATFORM_API Gdiplus::RectF WholeImage(const Gdiplus::Image* image);
// Whole numbers as floats.
PLATFORM_API Gdiplus::RectF ToRectF(const CRect& rect);
// An item's text, all of it, in the item's colour.
TextOperation TextOf(const QKItemText& item, const Gdiplus::RectF& layout);

// The operations of any item but a list, by its kind; none while it is hidden.
PLATFORM_API void RecordItem(const QKItemBase& item, OperationSink& sink);

class OperationPainter final : public OperationSink {
  public:
    explicit OperationPainter(Gdiplus::Graphics& graphics) : graphics_(graphics) {}
    void Add(const ImageOperation& operation) override;
    void Add(const TextOperation& operation) override;

  private:
    Gdiplus::Graphics& graphics_;
};

// Finds the pixels that operations may touch.
class OperationBounds : public OperationSink {
  public:
    void Add(const ImageOperation& operation) override;
    void Add(const TextOperation& operation) override;
    void Include(const CRect& rect) { touched_.UnionRect(CRect(touched_), rect); }
    const CRect& Touched() const { return touched_; }

  private:
    CRect touched_;
};

}  // namespace qkui
