// What the picture of an item is made of: parts of images and laid-out texts, in drawing order. An item tells
// its pieces once; they are painted, counted as the pixels that it touches, or noted as what its picture
// depends on, and none of the three can disagree.
#pragma once

#include <cstdint>
#include <utility>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

class QKItemBase;

// A part of an image and where it is stretched to; the two may be of one size. There is always an
// image; an empty destination draws nothing.
struct QKImagePiece {
    Gdiplus::Image* image;
    Gdiplus::RectF destination;
    Gdiplus::RectF source;
    // What a stretched edge is mixed with beyond the source; by default nothing is.
    Gdiplus::WrapMode wrap = Gdiplus::WrapModeClamp;
};

struct QKTextPiece {
    LPCWSTR text;  // null draws nothing
    int length;
    const Gdiplus::Font* font;
    Gdiplus::RectF layout;
    const Gdiplus::StringFormat* format;
    Gdiplus::Color color;
};

class QKPieces {
  public:
    virtual void Add(const QKImagePiece& piece) = 0;
    virtual void Add(const QKTextPiece& piece) = 0;

  protected:
    ~QKPieces() = default;
};

// The whole of an image.
PLATFORM_API Gdiplus::RectF QKWholeImage(const Gdiplus::Image* image);
// Whole numbers as floats.
PLATFORM_API Gdiplus::RectF QKRectF(const CRect& rect);

// The pieces of any item but a list, by its kind; none while it is hidden.
PLATFORM_API void QKComposeItem(const QKItemBase& item, QKPieces& pieces);

// Paints pieces.
class QKPiecePainter final : public QKPieces {
  public:
    explicit QKPiecePainter(Gdiplus::Graphics& graphics) : graphics_(graphics) {}
    void Add(const QKImagePiece& piece) override;
    void Add(const QKTextPiece& piece) override;

  private:
    Gdiplus::Graphics& graphics_;
};

// Finds the pixels that pieces may touch.
class QKPieceBounds : public QKPieces {
  public:
    void Add(const QKImagePiece& piece) override;
    void Add(const QKTextPiece& piece) override;
    void Include(const CRect& rect) { touched_.UnionRect(CRect(touched_), rect); }
    const CRect& Touched() const { return touched_; }

  private:
    CRect touched_;
};
