/// @file
/// The numbers and small values that drawing is told with. All of it comes with gdiplus.h.
#pragma once

#include <platform/gdiplus_colors.h>
#include <platform/types.h>

/// Xlib has a macro of that name. Where it was included before, GpStatus names the type.
#pragma push_macro("Status")
#undef Status

namespace Gdiplus {

using REAL = float;
using PixelFormat = INT;

enum Status {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    FileNotFound = 10,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    PropertyNotFound = 19,
};
using GpStatus = Status;
enum Unit { UnitWorld = 0, UnitPixel = 2, UnitPoint = 3 };
enum WrapMode {
    WrapModeTile = 0,
    WrapModeTileFlipX = 1,
    WrapModeTileFlipY = 2,
    WrapModeTileFlipXY = 3,
    WrapModeClamp = 4
};
enum InterpolationMode {
    InterpolationModeDefault = 0,
    InterpolationModeLowQuality = 1,   ///< as bilinear
    InterpolationModeHighQuality = 2,  ///< and the other two of that name: the same
    InterpolationModeBilinear = 3,
    InterpolationModeNearestNeighbor = 5,
    InterpolationModeHighQualityBilinear = 6,
    InterpolationModeHighQualityBicubic = 7
};
/// How a drawn picture meets what was there.
enum CompositingMode {
    CompositingModeSourceOver = 0,
    CompositingModeSourceCopy = 1  // takes its place, alpha included
};
enum SmoothingMode {
    SmoothingModeDefault = 0,      ///< none
    SmoothingModeHighSpeed = 1,    ///< none
    SmoothingModeHighQuality = 2,  ///< as anti-aliasing
    SmoothingModeNone = 3,
    SmoothingModeAntiAlias = 4
};
enum LinearGradientMode {
    LinearGradientModeHorizontal = 0,
    LinearGradientModeVertical = 1,
    LinearGradientModeForwardDiagonal = 2,  ///< from the top left
    LinearGradientModeBackwardDiagonal = 3  // from the top right
};
enum FillMode { FillModeAlternate = 0, FillModeWinding = 1 };
enum StringAlignment { StringAlignmentNear = 0, StringAlignmentCenter = 1, StringAlignmentFar = 2 };
enum StringTrimming {
    StringTrimmingNone = 0,
    StringTrimmingCharacter = 1,
    StringTrimmingWord = 2,
    StringTrimmingEllipsisCharacter = 3,
    StringTrimmingEllipsisWord = 4
};
enum StringFormatFlags {
    StringFormatFlagsDirectionRightToLeft = 0x0001,
    StringFormatFlagsNoWrap = 0x1000,
    StringFormatFlagsLineLimit = 0x2000,  ///< only whole lines
    StringFormatFlagsNoClip = 0x4000
};
enum FontStyle {
    FontStyleRegular = 0,
    FontStyleBold = 1,
    FontStyleItalic = 2,
    FontStyleBoldItalic = 3,
    FontStyleUnderline = 4,
    FontStyleStrikeout = 8
};
enum RotateFlipType {
    RotateNoneFlipNone = 0,
    Rotate90FlipNone = 1,
    Rotate180FlipNone = 2,
    Rotate270FlipNone = 3,
    RotateNoneFlipX = 4,
    Rotate90FlipX = 5,
    Rotate180FlipX = 6,  ///< a vertical flip
    Rotate270FlipX = 7
};
enum ImageLockMode { ImageLockModeRead = 1, ImageLockModeWrite = 2, ImageLockModeUserInputBuf = 4 };
enum MatrixOrder { MatrixOrderPrepend = 0, MatrixOrderAppend = 1 };
enum CombineMode { CombineModeReplace = 0, CombineModeIntersect = 1 };

constexpr PixelFormat PixelFormat32bppRGB = 0x00022009;
constexpr PixelFormat PixelFormat32bppARGB = 0x0026200A;   ///< straight
constexpr PixelFormat PixelFormat32bppPARGB = 0x000E200B;  ///< premultiplied

template <class T>
struct PointOf {
    T X = 0, Y = 0;
    PointOf() = default;
    PointOf(T x, T y) : X(x), Y(y) {}
};
template <class T>
struct SizeOf {
    T Width = 0, Height = 0;
    SizeOf() = default;
    SizeOf(T width, T height) : Width(width), Height(height) {}
};
template <class T>
struct RectOf {
    T X = 0, Y = 0, Width = 0, Height = 0;
    RectOf() = default;
    RectOf(T x, T y, T width, T height) : X(x), Y(y), Width(width), Height(height) {}
    T GetLeft() const { return X; }
    T GetTop() const { return Y; }
    T GetRight() const { return X + Width; }
    T GetBottom() const { return Y + Height; }
};
using Point = PointOf<INT>;
using PointF = PointOf<REAL>;
using Size = SizeOf<INT>;
using SizeF = SizeOf<REAL>;
using Rect = RectOf<INT>;
using RectF = RectOf<REAL>;

inline PointF ToReal(const Point& point) {
    return {static_cast<REAL>(point.X), static_cast<REAL>(point.Y)};
}
inline RectF ToReal(const Rect& rect) {
    return {static_cast<REAL>(rect.X), static_cast<REAL>(rect.Y), static_cast<REAL>(rect.Width),
            static_cast<REAL>(rect.Height)};
}

class Color : public ColorNames {
  public:
    constexpr Color() = default;                 ///< opaque black
    constexpr Color(ARGB argb) : argb_(argb) {}  ///< NOLINT: names of colours are numbers
    constexpr Color(BYTE r, BYTE g, BYTE b) : Color(255, r, g, b) {}
    constexpr Color(BYTE a, BYTE r, BYTE g, BYTE b)
        : argb_((ARGB{a} << 24) | (ARGB{r} << 16) | (ARGB{g} << 8) | ARGB{b}) {}
    constexpr ARGB GetValue() const { return argb_; }
    constexpr void SetValue(ARGB argb) { argb_ = argb; }
    static constexpr ARGB MakeARGB(BYTE a, BYTE r, BYTE g, BYTE b) { return Color(a, r, g, b).GetValue(); }
    constexpr BYTE GetA() const { return static_cast<BYTE>(argb_ >> 24); }
    constexpr BYTE GetR() const { return static_cast<BYTE>(argb_ >> 16); }
    constexpr BYTE GetG() const { return static_cast<BYTE>(argb_ >> 8); }
    constexpr BYTE GetB() const { return static_cast<BYTE>(argb_); }
    constexpr BYTE GetAlpha() const { return GetA(); }
    constexpr BYTE GetRed() const { return GetR(); }
    constexpr BYTE GetGreen() const { return GetG(); }
    constexpr BYTE GetBlue() const { return GetB(); }
    constexpr COLORREF ToCOLORREF() const { return RGB(GetR(), GetG(), GetB()); }
    /// Opaque, from a 0x00BBGGRR colour.
    constexpr void SetFromCOLORREF(COLORREF c) {
        *this = Color(static_cast<BYTE>(c), static_cast<BYTE>(c >> 8), static_cast<BYTE>(c >> 16));
    }

  private:
    ARGB argb_ = 0xFF000000;
};

}  // namespace Gdiplus

#pragma pop_macro("Status")
