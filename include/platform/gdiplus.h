/// @file
/// Images, text and shapes, drawn source-over with anti-aliasing where a shape asks for it.
///
/// Every object keeps the status of its last operation and never throws. Colours are straight (not
/// premultiplied) ARGB. An object in an error status draws nothing.
///
/// Without memory a call on text says OutOfMemory, or gives what it gives for bad input where it has no
/// status (an empty family or extent, height 0, a null clone). One case is beyond that: GLib, on which text
/// is shaped, ends the process when it gets no memory. For pieces of text above a kilobyte it is tried before
/// whether there is any; for the little that short texts and the loading of a face take it is not.
#pragma once

#include <memory>
#include <vector>

#include <platform/gdi.h>
#include <platform/gdiplus_types.h>
#include <platform/ole.h>
#include <platform/text.h>
#include <platform/types.h>

/// See gdiplus_types.h.
#pragma push_macro("Status")
#undef Status

namespace platform {
class Surface;
class ImageData;
struct PathData;
struct FontData;
struct GraphicsData;
struct StringFormatData;
}  // namespace platform

namespace Gdiplus {

class PLATFORM_API Matrix {
  public:
    Matrix() = default;
    Matrix(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) : m_{m11, m12, m21, m22, dx, dy} {}
    void GetElements(REAL* six) const;

  private:
    REAL m_[6] = {1, 0, 0, 1, 0, 0};
};

class PLATFORM_API Brush {
  public:
    virtual ~Brush();
    Brush(const Brush&) = delete;
    Brush& operator=(const Brush&) = delete;

  protected:
    Brush() = default;
};

class PLATFORM_API SolidBrush final : public Brush {
  public:
    explicit SolidBrush(const Color& color) : color_(color) {}
    ~SolidBrush() override;
    Status GetColor(Color* color) const;
    Status SetColor(const Color& color);

  private:
    Color color_;
};

/// Colours that change along a line, and stay the same across it; before and behind it the line goes on as
/// the wrap mode says, tiled or mirrored along itself. What is filled with one lies in the same units as the
/// line.
class PLATFORM_API LinearGradientBrush final : public Brush {
  public:
    LinearGradientBrush(const PointF& from, const PointF& to, const Color& first, const Color& last);
    LinearGradientBrush(const Point& from, const Point& to, const Color& first, const Color& last)
        : LinearGradientBrush(PointF(ToReal(from)), PointF(ToReal(to)), first, last) {}
    ///@{
    /// Along a side or from corner to corner of a rectangle. One without an area draws nothing.
    LinearGradientBrush(const RectF& rect, const Color& first, const Color& last, LinearGradientMode mode);
    LinearGradientBrush(const Rect& rect, const Color& first, const Color& last, LinearGradientMode mode)
        : LinearGradientBrush(ToReal(rect), first, last, mode) {}
    ///@}
    ///@{
    /// At so many degrees clockwise from the x axis, through the middle, reaching from corner to corner.
    LinearGradientBrush(const RectF& rect, const Color& first, const Color& last, REAL angle);
    LinearGradientBrush(const Rect& rect, const Color& first, const Color& last, REAL angle)
        : LinearGradientBrush(ToReal(rect), first, last, angle) {}
    ~LinearGradientBrush() override;
    Status SetLinearColors(const Color& first, const Color& last);
    ///@}
    /// Colours at places from 0 to 1, ascending, the first and the last place among them.
    Status SetInterpolationColors(const Color* colors, const REAL* places, INT count);
    ///@{
    /// Not WrapModeClamp. The default is to tile.
    Status SetWrapMode(WrapMode mode);
    WrapMode GetWrapMode() const { return mode_; }
    ///@}

    struct Stop {
        REAL place;
        Color color;
    };
    const std::vector<Stop>& Stops() const { return stops_; }
    const PointF& From() const { return from_; }
    const PointF& To() const { return to_; }

  private:
    PointF from_, to_;
    std::vector<Stop> stops_;
    WrapMode mode_ = WrapModeTile;
};

class PLATFORM_API Pen {
  public:
    /// Width in world units. Zero or less draws a line of one pixel.
    explicit Pen(const Color& color, REAL width = 1.0F) : color_(color), width_(width) {}
    Color GetColor() const { return color_; }
    REAL GetWidth() const { return width_; }
    Status SetColor(const Color& color) {
        color_ = color;
        return Ok;
    }
    Status SetWidth(REAL width) {
        width_ = width;
        return Ok;
    }

  private:
    Color color_;
    REAL width_;
};

/// What is drawn where a source rectangle reaches beyond the picture: in the tiling modes the picture again
/// and again, turned over as the mode says; in WrapModeClamp nothing but a colour. The same modes say what a
/// scaled picture's edges are mixed with: the opposite edge of the source rectangle where tiles repeat, else
/// nothing.
class PLATFORM_API ImageAttributes {
  public:
    ///@{
    /// `color` fills what lies beyond the picture in WrapModeClamp; `clamp` is accepted and has no effect.
    Status SetWrapMode(WrapMode mode, const Color& color = Color(), BOOL clamp = FALSE);
    WrapMode GetWrapMode() const { return mode_; }
    ///@}
    Color GetWrapColor() const { return color_; }

  private:
    WrapMode mode_ = WrapModeClamp;
    Color color_ = Color(0, 0, 0, 0);
};

struct BitmapData {
    UINT Width;
    UINT Height;
    INT Stride;  ///< bytes from one row to the next
    Gdiplus::PixelFormat PixelFormat;
    void* Scan0;
    UINT_PTR Reserved;
};

/// One property of a picture file. `value` points behind the record, into the caller's buffer.
struct PropertyItem {
    UINT id;
    ULONG length;  ///< bytes
    WORD type;     ///< 1 bytes, 3 16-bit, 4 32-bit
    void* value;
};
constexpr UINT PropertyTagFrameDelay = 0x5100;  ///< 32-bit hundredths of a second, one per frame
constexpr UINT PropertyTagLoopCount = 0x5101;
constexpr WORD PropertyTagTypeShort = 3;
constexpr WORD PropertyTagTypeLong = 4;

struct FrameDimension {
    std::uint32_t id[4];
    friend bool operator==(const FrameDimension& a, const FrameDimension& b) {
        return a.id[0] == b.id[0] && a.id[1] == b.id[1] && a.id[2] == b.id[2] && a.id[3] == b.id[3];
    }
};
PLATFORM_API extern const FrameDimension FrameDimensionTime;
PLATFORM_API extern const FrameDimension FrameDimensionPage;

class Graphics;

/// A picture: PNG, JPEG, GIF with all frames, BMP, ICO (its largest entry). Bad data gives an object with an
/// error status whose width and height are 0. Files above 32767 pixels a side, or of more than 2^26 pixels,
/// are refused the same way before memory is taken for them. What was decoded of a picture before its data
/// turned bad is shown.
class PLATFORM_API Image {
  public:
    explicit Image(LPCWSTR path, BOOL useEmbeddedColorManagement = FALSE);
    explicit Image(const platform::Utf8& path) : Image(path.Utf16()) {}
    /// Keeps the stream for as long as the image lives (frames are decoded when they are selected).
    explicit Image(IStream* stream, BOOL useEmbeddedColorManagement = FALSE);
    /// As the constructors; owned by the caller.
    static Image* FromFile(LPCWSTR path, BOOL useEmbeddedColorManagement = FALSE) {
        return new Image(path, useEmbeddedColorManagement);
    }
    static Image* FromStream(IStream* stream, BOOL useEmbeddedColorManagement = FALSE) {
        return new Image(stream, useEmbeddedColorManagement);
    }
    virtual ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// An independent copy, owned by the caller; null when this image is in an error status.
    virtual Image* Clone() const;
    /// Whether the two show, frame by frame, pixels that they share: one is a clone of the other, or of a
    /// clone, and nothing was changed since.
    bool IsCloneOf(const Image& other) const;

    /// In units; what is drawn of an image is named in units as well.
    UINT GetWidth() const;
    UINT GetHeight() const;
    ///@{
    /// Pixels to a unit: 1, but for pictures that were found in the size of a dense screen (see
    /// SetScreenScale), and for bitmaps made for such a target. GetPixel, SetPixel and LockBits count in
    /// pixels. A scale that does not divide both sides is refused.
    INT GetScale() const;
    Status SetScale(INT scale);
    ///@}
    /// The status of the last operation; reading it resets it, except for a picture that failed to load.
    Status GetLastStatus() const;
    PixelFormat GetPixelFormat() const;

    UINT GetFrameDimensionsCount() const;
    Status GetFrameDimensionsList(FrameDimension* list, UINT count) const;
    UINT GetFrameCount(const FrameDimension* dimension) const;
    Status SelectActiveFrame(const FrameDimension* dimension, UINT index);

    ///@{
    /// The bytes that GetPropertyItem needs for a property, 0 when there is none.
    UINT GetPropertyItemSize(UINT id) const;
    Status GetPropertyItem(UINT id, UINT size, PropertyItem* buffer) const;
    ///@}

    /// Turns (clockwise), then mirrors the pixels in place; an animated image keeps only its active frame.
    Status RotateFlip(RotateFlipType type);

    /// Counts the changes of what this image shows, unique in the process: two equal numbers mean equal
    /// pixels.
    std::uint64_t GetRevision() const;

    /// For the platform's own modules.
    const std::shared_ptr<platform::ImageData>& Data() const { return data_; }

  protected:
    explicit Image(std::shared_ptr<platform::ImageData> data);
    std::shared_ptr<platform::ImageData> data_;
    mutable Status last_ = Ok;
};

class PLATFORM_API Bitmap : public Image {
  public:
    explicit Bitmap(LPCWSTR path, BOOL useEmbeddedColorManagement = FALSE);
    explicit Bitmap(const platform::Utf8& path) : Bitmap(path.Utf16()) {}
    explicit Bitmap(IStream* stream, BOOL useEmbeddedColorManagement = FALSE);
    /// Transparent pixels (32bppRGB: opaque black). Sizes as in CreateCompatibleBitmap; a bad size gives an
    /// error status.
    Bitmap(INT width, INT height, PixelFormat format = PixelFormat32bppARGB);
    /// Compatible with a target: as 32bppARGB, and with as many pixels to a unit.
    Bitmap(INT width, INT height, Graphics* target);
    /// A copy of a context's bitmap.
    explicit Bitmap(HBITMAP bitmap);
    /// As the constructors; owned by the caller.
    static Bitmap* FromFile(LPCWSTR path, BOOL useEmbeddedColorManagement = FALSE) {
        return new Bitmap(path, useEmbeddedColorManagement);
    }
    static Bitmap* FromStream(IStream* stream, BOOL useEmbeddedColorManagement = FALSE) {
        return new Bitmap(stream, useEmbeddedColorManagement);
    }

    Bitmap* Clone() const override;

    /// An icon that shows this picture, owned by the caller.
    Status GetHICON(HICON* icon) const;
    /// The picture of an icon, owned by the caller; in an error status for a stale handle.
    static Bitmap* FromHICON(HICON icon);

    Status GetPixel(INT x, INT y, Color* color) const;
    Status SetPixel(INT x, INT y, const Color& color);
    /// Gives access to the pixels of a rectangle (null: all) in the asked format: straight, premultiplied or
    /// without alpha. With ImageLockModeUserInputBuf the caller's Scan0 and Stride are read or filled, else
    /// memory is supplied until UnlockBits. A lock open already, or a rectangle outside, fails.
    /// ImageLockModeWrite takes effect at UnlockBits. The caller's memory is aligned to pixels, its stride a
    /// multiple of 4, negative when the rows run upwards. A straight colour is the nearest one; written back,
    /// it gives the very pixel that it was read from. A premultiplied channel above its alpha is cut to it.
    Status LockBits(const Rect* rect, UINT flags, PixelFormat format, BitmapData* data);
    Status UnlockBits(BitmapData* data);

  private:
    struct Lock;
    explicit Bitmap(std::shared_ptr<platform::ImageData> data);
    std::shared_ptr<Lock> lock_;
};

class PLATFORM_API FontFamily {
  public:
    FontFamily() = default;
    ///@{
    /// A face by any of its names, Chinese ones included; what is not installed resolves to the closest
    /// installed face, so that text always shows. Of a longer name 512 bytes of UTF-8 count.
    explicit FontFamily(LPCWSTR name);
    explicit FontFamily(const platform::Utf8& name) : FontFamily(name.Utf16()) {}
    ///@}
    CString GetFamilyName() const { return name_; }
    BOOL IsAvailable() const { return !name_.IsEmpty(); }

  private:
    friend class Font;
    CString name_;
};

/// Points are 4/3 pixels (96 DPI). A size that is not above zero gives an error status.
class PLATFORM_API Font {
  public:
    Font(LPCWSTR family, REAL emSize, INT style = FontStyleRegular, Unit unit = UnitPoint);
    Font(const platform::Utf8& family, REAL emSize, INT style = FontStyleRegular, Unit unit = UnitPoint)
        : Font(family.Utf16(), emSize, style, unit) {}
    Font(const FontFamily* family, REAL emSize, INT style = FontStyleRegular, Unit unit = UnitPoint);
    ///@{
    /// The context has to be live.
    Font(HDC context, const LOGFONTW* font);
    ~Font();
    Font(const Font&) = delete;
    ///@}
    Font& operator=(const Font&) = delete;
    Font* Clone() const;  ///< owned by the caller
    Status GetFamily(FontFamily* family) const;
    REAL GetSize() const { return size_; }
    INT GetStyle() const { return style_; }
    Unit GetUnit() const { return unit_; }
    /// The line height in pixels.
    REAL GetHeight() const;
    Status GetLastStatus() const { return status_; }
    /// Unique for what the font looks like: clones share it.
    std::uint64_t GetRevision() const { return revision_; }
    const std::shared_ptr<platform::FontData>& Data() const { return data_; }

  private:
    Font() = default;
    void Load(std::u16string_view family, REAL pixels);
    CString family_;
    REAL size_ = 0;
    INT style_ = 0;
    Unit unit_ = UnitPoint;
    Status status_ = Ok;
    std::uint64_t revision_ = 0;
    std::shared_ptr<platform::FontData> data_;
};

/// How text is laid into its rectangle. Defaults: near, near, wrapping, clipped, trimmed by character.
class PLATFORM_API StringFormat {
  public:
    explicit StringFormat(INT flags = 0, WORD language = 0);
    explicit StringFormat(const StringFormat* other);
    StringFormat* Clone() const;
    Status SetAlignment(StringAlignment alignment);
    StringAlignment GetAlignment() const { return alignment_; }
    Status SetLineAlignment(StringAlignment alignment);
    StringAlignment GetLineAlignment() const { return lineAlignment_; }
    Status SetFormatFlags(INT flags);
    INT GetFormatFlags() const { return flags_; }
    Status SetTrimming(StringTrimming trimming);
    StringTrimming GetTrimming() const { return trimming_; }

  private:
    INT flags_ = 0;
    StringAlignment alignment_ = StringAlignmentNear;
    StringAlignment lineAlignment_ = StringAlignmentNear;
    StringTrimming trimming_ = StringTrimmingCharacter;
};

class PLATFORM_API GraphicsPath {
  public:
    explicit GraphicsPath(FillMode mode = FillModeAlternate);
    ~GraphicsPath();
    GraphicsPath(const GraphicsPath&) = delete;
    GraphicsPath& operator=(const GraphicsPath&) = delete;
    ///@{
    /// Glyph outlines, laid out as DrawString does; emSize in world units. Length -1: up to the terminator.
    /// A layout rectangle of no width does not wrap, of no height does not clip.
    Status AddString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                     const RectF& layout, const StringFormat* format);
    Status AddString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                     const Rect& layout, const StringFormat* format);
    ///@}
    Status AddRectangle(const RectF& rect);
    Status AddRectangle(const Rect& rect) { return AddRectangle(ToReal(rect)); }
    Status AddEllipse(const RectF& rect);
    Status AddEllipse(const Rect& rect) { return AddEllipse(ToReal(rect)); }
    Status AddEllipse(REAL x, REAL y, REAL width, REAL height) {
        return AddEllipse(RectF(x, y, width, height));
    }
    ///@{
    /// These continue the figure that was begun, with a line to where they start. Angles are degrees
    /// clockwise from the x axis, on the ellipse in the rectangle; a sweep of 360 and more is the whole of
    /// it.
    Status AddLine(REAL x1, REAL y1, REAL x2, REAL y2);
    Status AddLine(const PointF& from, const PointF& to) { return AddLine(from.X, from.Y, to.X, to.Y); }
    Status AddLine(const Point& from, const Point& to) { return AddLine(ToReal(from), ToReal(to)); }
    Status AddLines(const PointF* points, INT count);
    ///@}
    Status AddArc(const RectF& rect, REAL start, REAL sweep);
    Status AddArc(const Rect& rect, REAL start, REAL sweep) { return AddArc(ToReal(rect), start, sweep); }
    Status AddArc(REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return AddArc(RectF(x, y, width, height), start, sweep);
    }
    Status AddBezier(REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4, REAL y4);
    /// Closed figures of their own.
    Status AddPie(const RectF& rect, REAL start, REAL sweep);
    Status AddPolygon(const PointF* points, INT count);
    Status AddPolygon(const Point* points, INT count);
    /// What follows begins a new figure; CloseFigure draws a line to where this one began.
    Status StartFigure();
    Status CloseFigure();
    Status Reset();
    /// The box around the ink; empty for an empty path.
    Status GetBounds(RectF* bounds) const;
    platform::PathData& Data() const { return *data_; }

  private:
    std::unique_ptr<platform::PathData> data_;
};

/// Draws onto a device context or an image. It holds on to what it draws on: a context deleted or an image
/// destroyed meanwhile makes further drawing fail with a status.
class PLATFORM_API Graphics {
  public:
    explicit Graphics(HDC context);
    explicit Graphics(Image* image);
    ~Graphics();
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    Status GetLastStatus() const;
    /// Pixels to a unit of what is drawn on; see GetDeviceScale. 1 where nothing can be drawn.
    INT GetScale() const;

    /// A context on the same surface, until ReleaseHDC. Releasing one that was not acquired is an error
    /// without effect.
    HDC GetHDC();
    Status ReleaseHDC(HDC context);

    Status SetSmoothingMode(SmoothingMode mode);
    Status SetInterpolationMode(InterpolationMode mode);
    /// Of DrawImage, unless the transform turns or mirrors; everything else is drawn over what was there.
    Status SetCompositingMode(CompositingMode mode);
    Status SetTransform(const Matrix* matrix);
    Status ResetTransform();
    /// Before the present transform, or (MatrixOrderAppend) behind it. Degrees are clockwise.
    Status TranslateTransform(REAL dx, REAL dy, MatrixOrder order = MatrixOrderPrepend);
    Status ScaleTransform(REAL sx, REAL sy, MatrixOrder order = MatrixOrderPrepend);
    Status RotateTransform(REAL degrees, MatrixOrder order = MatrixOrderPrepend);
    /// Besides the context's own clip.
    Status SetClip(const Rect& rect, CombineMode mode = CombineModeReplace);
    Status ResetClip();

    Status Clear(const Color& color);  ///< replaces, alpha included
    Status FillRectangle(const Brush* brush, INT x, INT y, INT width, INT height);
    Status FillRectangle(const Brush* brush, REAL x, REAL y, REAL width, REAL height);
    Status FillRectangle(const Brush* brush, const Rect& rect);
    Status FillRectangle(const Brush* brush, const RectF& rect);
    ///@{
    /// Shapes with and without an outline; angles as in GraphicsPath.
    Status FillEllipse(const Brush* brush, const RectF& rect);
    Status FillEllipse(const Brush* brush, const Rect& rect) { return FillEllipse(brush, ToReal(rect)); }
    Status FillEllipse(const Brush* brush, INT x, INT y, INT width, INT height) {
        return FillEllipse(brush, ToReal(Rect(x, y, width, height)));
    }
    Status FillEllipse(const Brush* brush, REAL x, REAL y, REAL width, REAL height) {
        return FillEllipse(brush, RectF(x, y, width, height));
    }
    ///@}
    Status FillPie(const Brush* brush, const RectF& rect, REAL start, REAL sweep);
    Status FillPie(const Brush* brush, const Rect& rect, REAL start, REAL sweep) {
        return FillPie(brush, ToReal(rect), start, sweep);
    }
    Status FillPie(const Brush* brush, INT x, INT y, INT width, INT height, REAL start, REAL sweep) {
        return FillPie(brush, Rect(x, y, width, height), start, sweep);
    }
    Status FillPolygon(const Brush* brush, const PointF* points, INT count,
                       FillMode mode = FillModeAlternate);
    Status FillPolygon(const Brush* brush, const Point* points, INT count, FillMode mode = FillModeAlternate);
    Status DrawEllipse(const Pen* pen, const RectF& rect);
    Status DrawEllipse(const Pen* pen, const Rect& rect) { return DrawEllipse(pen, ToReal(rect)); }
    Status DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height) {
        return DrawEllipse(pen, ToReal(Rect(x, y, width, height)));
    }
    Status DrawEllipse(const Pen* pen, REAL x, REAL y, REAL width, REAL height) {
        return DrawEllipse(pen, RectF(x, y, width, height));
    }
    Status DrawArc(const Pen* pen, const RectF& rect, REAL start, REAL sweep);
    Status DrawArc(const Pen* pen, const Rect& rect, REAL start, REAL sweep) {
        return DrawArc(pen, ToReal(rect), start, sweep);
    }
    Status DrawArc(const Pen* pen, INT x, INT y, INT width, INT height, REAL start, REAL sweep) {
        return DrawArc(pen, Rect(x, y, width, height), start, sweep);
    }
    Status DrawArc(const Pen* pen, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return DrawArc(pen, RectF(x, y, width, height), start, sweep);
    }
    Status DrawPie(const Pen* pen, const RectF& rect, REAL start, REAL sweep);
    Status DrawPie(const Pen* pen, const Rect& rect, REAL start, REAL sweep) {
        return DrawPie(pen, ToReal(rect), start, sweep);
    }
    Status DrawPolygon(const Pen* pen, const PointF* points, INT count);
    Status DrawPolygon(const Pen* pen, const Point* points, INT count);
    Status DrawLines(const Pen* pen, const PointF* points, INT count);
    Status DrawLines(const Pen* pen, const Point* points, INT count);
    Status DrawBezier(const Pen* pen, const PointF& p1, const PointF& p2, const PointF& p3, const PointF& p4);
    ///@{
    /// The line is centred on the edge: with width 1 on whole coordinates, without smoothing, it covers the
    /// pixels at left, top, right and bottom (a box one pixel wider and higher than its fill).
    Status DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height);
    Status DrawRectangle(const Pen* pen, REAL x, REAL y, REAL width, REAL height);
    Status DrawRectangle(const Pen* pen, const RectF& rect);
    Status DrawRectangle(const Pen* pen, const Rect& rect) { return DrawRectangle(pen, ToReal(rect)); }
    ///@}
    Status DrawLine(const Pen* pen, REAL x1, REAL y1, REAL x2, REAL y2);
    Status DrawLine(const Pen* pen, const PointF& from, const PointF& to) {
        return DrawLine(pen, from.X, from.Y, to.X, to.Y);
    }
    Status DrawLine(const Pen* pen, const Point& from, const Point& to) {
        return DrawLine(pen, ToReal(from), ToReal(to));
    }
    Status FillPath(const Brush* brush, const GraphicsPath* path);
    Status DrawPath(const Pen* pen, const GraphicsPath* path);

    Status DrawImage(Image* image, INT x, INT y);
    Status DrawImage(Image* image, INT x, INT y, INT width, INT height);
    Status DrawImage(Image* image, const Rect& destination);
    Status DrawImage(Image* image, const RectF& destination);
    ///@{
    /// Source rectangle in pixels of the image (unit pixel only). Parts of it outside the image draw nothing.
    Status DrawImage(Image* image, const Rect& destination, INT srcX, INT srcY, INT srcWidth, INT srcHeight,
                     Unit unit, const ImageAttributes* attributes = nullptr);
    Status DrawImage(Image* image, const RectF& destination, REAL srcX, REAL srcY, REAL srcWidth,
                     REAL srcHeight, Unit unit, const ImageAttributes* attributes = nullptr);
    ///@}

    ///@{
    /// Length -1: up to the terminator. A null format is the default one. A layout rectangle without width
    /// does not wrap, without height does not clip. A line goes on for 8192 bytes of UTF-8 at most, and lines
    /// for 700 000 pixels; a text of far more than a hundred thousand units may end before, with a whole
    /// line, so that no call takes a second.
    Status DrawString(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                      const StringFormat* format, const Brush* brush);
    Status DrawString(LPCWSTR text, INT length, const Font* font, const PointF& origin, const Brush* brush);
    ///@}
    /// As DrawPath and then FillPath, in the colour of the pen, with the outlines of AddString; but strokes
    /// of neighbouring letters that meet in a pixel may add up there. Sooner for a text of letters drawn
    /// lately.
    Status DrawWidenedString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                             const RectF& layout, const StringFormat* format, const Pen* pen);
    Status MeasureString(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                         const StringFormat* format, RectF* box) const;
    ///@{
    /// The whole of a text.
    Status DrawString(const platform::Utf8& text, const Font* font, const RectF& layout,
                      const StringFormat* format, const Brush* brush) {
        return DrawString(text.Utf16(), -1, font, layout, format, brush);
    }
    Status DrawString(const platform::Utf8& text, const Font* font, const PointF& origin,
                      const Brush* brush) {
        return DrawString(text.Utf16(), -1, font, origin, brush);
    }
    ///@}
    Status MeasureString(const platform::Utf8& text, const Font* font, const RectF& layout,
                         const StringFormat* format, RectF* box) const {
        return MeasureString(text.Utf16(), -1, font, layout, format, box);
    }

  private:
    Status Keep(Status status) const;
    std::unique_ptr<platform::GraphicsData> data_;
    mutable Status last_ = Ok;
};

/// How a text lies in its layout rectangle, without a target to draw on. Nothing for what DrawString refuses.
struct TextExtent {
    RectF box;  ///< as MeasureString gives it
    Rect ink;   ///< the whole pixels that DrawString touches at most, with the identity transform
};
PLATFORM_API TextExtent GetTextExtent(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                                      const StringFormat* format);

/// Work that warm frames must not repeat; a frame that finds everything in its caches leaves them unchanged.
struct DrawingCounters {
    std::uint64_t scaledImages = 0;   ///< pictures resampled
    std::uint64_t textLayouts = 0;    ///< texts shaped and laid out
    std::uint64_t decodedFrames = 0;  ///< frames of pictures decoded
};
PLATFORM_API DrawingCounters GetDrawingCounters();
/// The limit in bytes of the cache of scaled pictures, and of each thread's laid-out texts with their faces
/// (default 64 MiB each). It takes effect with the next drawing. Besides, a thread that draws text keeps the
/// faces that it used last, for 16 to 128 fonts by this limit: some megabytes, with fonts of many scripts a
/// dozen.
PLATFORM_API void SetDrawingCacheLimit(std::size_t bytes);

/// Drawing needs no start and no end; programs that announce both get a token, and Ok. InvalidParameter
/// without a place for the token, or for another version than 1.
struct GdiplusStartupInput {
    UINT GdiplusVersion = 1;
};
struct GdiplusStartupOutput;
PLATFORM_API Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input,
                                   GdiplusStartupOutput* output);
PLATFORM_API void GdiplusShutdown(ULONG_PTR token);

}  // namespace Gdiplus

#pragma pop_macro("Status")
