/// @file
/// Device contexts, bitmaps, block copies and regions.
///
/// Every surface is premultiplied 32-bit ARGB. A device context draws onto the bitmap selected into it or
/// onto a window, inside its clip; coordinates are pixels, the origin is the top left.
#pragma once

#include <concepts>

#include <platform/types.h>

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;  ///< positive: the first row in memory is the bottom one; negative: the top one
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
};
enum : DWORD { BI_RGB = 0 };
enum : UINT { DIB_RGB_COLORS = 0 };

/// How UpdateLayeredWindow blends.
struct BLENDFUNCTION {
    BYTE BlendOp;
    BYTE BlendFlags;
    BYTE SourceConstantAlpha;
    BYTE AlphaFormat;
};
enum : BYTE { AC_SRC_OVER = 0, AC_SRC_ALPHA = 1 };

/// A memory context without a bitmap: nothing can be drawn until one is selected. The given context only
/// has to be live; the empty one is accepted. Owned by the caller until DeleteDC.
PLATFORM_API HDC CreateCompatibleDC(HDC context);
/// Fails for a context that came from GetDC or BeginPaint.
PLATFORM_API BOOL DeleteDC(HDC context);

/// A bitmap of zeroed (transparent) pixels. Sizes below 1, above 32767 or above 2^28 pixels fail with
/// ERROR_INVALID_PARAMETER, lack of memory with ERROR_NOT_ENOUGH_MEMORY. Owned by the caller.
PLATFORM_API HBITMAP CreateCompatibleBitmap(HDC context, int width, int height);
/// A 32-bit bitmap whose memory the caller sees through `bits`: premultiplied 0xAARRGGBB words, width x 4
/// bytes a row, zeroed, bottom-up when the height is positive. Only 32 bits, one plane, BI_RGB.
/// A writer of the memory calls GdiFlush before the bitmap is drawn with again.
PLATFORM_API HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits);
/// How many pixels a unit of a context's coordinates is, each way: 1, but for windows on a dense screen where
/// the program asked for it (SetScreenScale), and for bitmaps made to fit them. CreateCompatibleBitmap counts
/// in units, CreateDIBSection in pixels. 1 for the empty handle.
PLATFORM_API int GetDeviceScale(HDC context);
/// The same for a bitmap that no context holds, whose sides must be multiples; FALSE otherwise.
PLATFORM_API BOOL SetBitmapScale(HBITMAP bitmap, int scale);
/// Tells the platform that memory of DIB sections was written directly.
PLATFORM_API void GdiFlush();

/// Selects a bitmap into a memory context and returns the one selected before. Empty on failure: a stale
/// handle, a context that is not a memory context, or a bitmap that another context holds.
/// Selecting the empty handle takes the bitmap out.
PLATFORM_API HBITMAP SelectObject(HDC context, HBITMAP bitmap);

PLATFORM_API HBRUSH CreateSolidBrush(COLORREF colour);

///@{
/// Deleting a bitmap that a context still holds fails. Stale handles fail.
PLATFORM_API BOOL DeleteObject(HBITMAP bitmap);
PLATFORM_API BOOL DeleteObject(HBRUSH brush);
PLATFORM_API BOOL DeleteObject(HRGN region);
PLATFORM_API BOOL DeleteObject(HFONT font);
///@}

/// A font by its looks.
struct LOGFONTW {
    LONG lfHeight;  ///< negative: of the letters, in pixels; the sign is not looked at
    LONG lfWidth;   ///< this and the next four are not looked at
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;  ///< 700 and above is bold
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;  ///< this and the next four are not looked at
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[32];
};

PLATFORM_API HFONT CreateFontIndirectW(const LOGFONTW* font);
/// What LOGFONTW says, one by one; the name is cut at 31 units.
PLATFORM_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight,
                               DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                               DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily,
                               LPCWSTR face);
///@{
/// The font that a context's text is drawn in; returns the one before, empty for the system's common font of
/// 9 points, which a context begins with. The empty handle selects that one. A font that is deleted stays in
/// use.
PLATFORM_API HFONT SelectFont(HDC context, HFONT font);
template <std::same_as<HFONT> Font>  // nullptr is a bitmap
Font SelectObject(HDC context, Font font) {
    return SelectFont(context, font);
}
///@}

/// Icons are made from pictures: Gdiplus::Bitmap::GetHICON. Each is its owner's until DestroyIcon. A stale or
/// foreign handle gives the empty one, or FALSE, with ERROR_INVALID_HANDLE.
PLATFORM_API HICON CopyIcon(HICON icon);
PLATFORM_API BOOL DestroyIcon(HICON icon);

enum : DWORD { SRCCOPY = 0x00CC0020 };
/// Copies a block, alpha channel included, without blending. The parts of the source rectangle outside the
/// source leave the destination alone. Source and destination may be one bitmap; overlap is handled.
/// Only SRCCOPY.
PLATFORM_API BOOL BitBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX,
                         int sourceY, DWORD operation);
/// The same, scaled: without averaging, or (HALFTONE) as a picture is that grows and shrinks. A width or
/// height below 0 at one of the two mirrors. Where sizes agree it is BitBlt. A bitmap may be stretched onto
/// itself.
PLATFORM_API BOOL StretchBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX,
                             int sourceY, int sourceWidth, int sourceHeight, DWORD operation);
enum { COLORONCOLOR = 3, HALFTONE = 4 };
/// Of a context that is stretched onto. Returns the mode before; 0 for another mode or a stale context.
PLATFORM_API int SetStretchBltMode(HDC context, int mode);
/// Fills with opaque pixels of the brush's colour.
PLATFORM_API int FillRect(HDC context, const RECT* rect, HBRUSH brush);

/// ---- Text. Each of the first four returns what was set before, and CLR_INVALID or 0 for a stale context.
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
enum { TRANSPARENT = 1, OPAQUE = 2 };
PLATFORM_API COLORREF SetTextColor(HDC context, COLORREF colour);  ///< black
PLATFORM_API COLORREF GetTextColor(HDC context);
/// What fills the box of a text before it is drawn, in the mode OPAQUE, which is the one to begin with.
PLATFORM_API COLORREF SetBkColor(HDC context, COLORREF colour);  ///< white
PLATFORM_API int SetBkMode(HDC context, int mode);

enum : UINT {
    DT_TOP = 0x0000,
    DT_LEFT = 0x0000,
    DT_CENTER = 0x0001,
    DT_RIGHT = 0x0002,
    DT_VCENTER = 0x0004,  ///< this and DT_BOTTOM: with DT_SINGLELINE
    DT_BOTTOM = 0x0008,
    DT_WORDBREAK = 0x0010,
    DT_SINGLELINE = 0x0020,  ///< line ends are blanks
    DT_NOCLIP = 0x0100,
    DT_CALCRECT = 0x0400,      ///< nothing is drawn: `rect` is made as wide and high as the text
    DT_NOPREFIX = 0x0800,      ///< else an `&` is left out, and `&&` is one; no letter is underlined
    DT_END_ELLIPSIS = 0x8000,  ///< what does not fit ends with an ellipsis
    DT_RTLREADING = 0x20000,
    DT_WORD_ELLIPSIS = 0x40000  // the same, between words
};
/// Draws text in a rectangle; -1 units: up to the terminator. Returns the height of the text, or with
/// DT_VCENTER and DT_BOTTOM the distance from the rectangle's top to the text's end. 0 with
/// ERROR_INVALID_PARAMETER for other flags or no rectangle, with ERROR_INVALID_HANDLE for a stale context.
PLATFORM_API int DrawTextW(HDC context, LPCWSTR text, int length, RECT* rect, UINT format);
/// One line, its top left at a point.
PLATFORM_API BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length);
/// The size that one line takes.
PLATFORM_API BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, SIZE* size);

/// Regions: sets of pixels. Owned by the caller until DeleteObject, or until SetWindowRgn takes one. Where
/// memory runs out they answer with the empty handle, FALSE or ERROR_REGION and ERROR_NOT_ENOUGH_MEMORY, and
/// a region stays what it was.
enum { ERROR_REGION = 0, NULLREGION = 1, SIMPLEREGION = 2, COMPLEXREGION = 3 };
enum { RGN_AND = 1, RGN_OR = 2, RGN_XOR = 3, RGN_DIFF = 4, RGN_COPY = 5 };
PLATFORM_API HRGN CreateRectRgn(int left, int top, int right, int bottom);
PLATFORM_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom);
/// A rectangle whose corners are quarters of an ellipse of the given width and height. Right and bottom are
/// outside, as in every rectangle. An ellipse larger than the rectangle is reduced to it; none gives square
/// corners. Corners higher than 32767 rows take more memory than there is for them.
PLATFORM_API HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth,
                                     int ellipseHeight);
/// target = first OP second; RGN_COPY ignores the second. Any of the three may be the same region.
PLATFORM_API int CombineRgn(HRGN target, HRGN first, HRGN second, int mode);
PLATFORM_API int OffsetRgn(HRGN region, int dx, int dy);
PLATFORM_API int GetRgnBox(HRGN region, RECT* box);
PLATFORM_API BOOL PtInRegion(HRGN region, int x, int y);
PLATFORM_API BOOL RectInRegion(HRGN region, const RECT* rect);
///@{
/// How many rectangles the region is made of, and each of them, top to bottom, left to right in a band.
PLATFORM_API int GetRgnRectCount(HRGN region);
PLATFORM_API BOOL GetRgnRect(HRGN region, int index, RECT* rect);
///@}

/// The caller's clip of a context. A paint context keeps its update region besides: the two intersect.
/// The empty region handle removes the caller's clip. The region is copied.
PLATFORM_API int SelectClipRgn(HDC context, HRGN region);
PLATFORM_API int IntersectClipRect(HDC context, int left, int top, int right, int bottom);
/// Copies the caller's clip into `region`. 1; 0 without a clip, and then `region` is left alone; -1 on
/// failure.
PLATFORM_API int GetClipRgn(HDC context, HRGN region);
/// The smallest rectangle around all that can be drawn on: surface, update region and clip together.
PLATFORM_API int GetClipBox(HDC context, RECT* box);
/// Copies the drawable set (as GetClipBox, but exact) into `region`. Returns its kind.
PLATFORM_API int GetDrawableRgn(HDC context, HRGN region);

/// Counts what is drawn on a context's surface: equal numbers mean equal pixels, unless memory of a DIB
/// section was written directly, which its writer alone can tell. 0 for a stale or empty context.
PLATFORM_API std::uint64_t GetSurfaceRevision(HDC context);

/// Puts off making the pixels of a memory context's bitmap until they are wanted. The procedure is called
/// once, right before the context is drawn on or read from, its revision asked for, or another bitmap
/// selected; it may use the context itself. A null procedure takes the call back. FALSE for a stale context
/// or a window's.
using FIRSTUSEPROC = void (*)(void* argument);
PLATFORM_API BOOL SetFirstUseProc(HDC context, FIRSTUSEPROC procedure, void* argument);
