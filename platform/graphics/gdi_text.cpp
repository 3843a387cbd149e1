// Text through device contexts: fonts behind handles, colours, and text in a rectangle.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "platform/graphics/gdi_objects.h"

namespace platform {
namespace {

constexpr UINT kKnownFlags = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM | DT_WORDBREAK | DT_SINGLELINE |
                             DT_NOCLIP | DT_CALCRECT | DT_NOPREFIX | DT_END_ELLIPSIS | DT_RTLREADING |
                             DT_WORD_ELLIPSIS;

// The font that icons' titles have as well.
LOGFONTW SystemFont() {
    LOGFONTW font{};
    font.lfHeight = -12;
    return font;
}

// What is drawn, of what was asked for.
CString TextOf(LPCWSTR text, int length, UINT format) {
    CString drawn = length < 0 ? CString(text) : CString(text, length);
    if (!(format & DT_NOPREFIX)) {
        drawn.Replace(u"&&", CString(u'\0'));
        drawn.Remove(u'&');
        drawn.Replace(u'\0', u'&');
    }
    drawn.Replace(u"\r\n", u"\n");
    if (format & DT_SINGLELINE) drawn.Replace(u'\n', u' ');
    return drawn;
}

Gdiplus::StringFormat FormatOf(UINT format) {
    Gdiplus::StringFormat layoutFormat(
        (format & DT_RTLREADING ? Gdiplus::StringFormatFlagsDirectionRightToLeft : 0) |
        (format & DT_WORDBREAK && !(format & DT_SINGLELINE) ? 0 : Gdiplus::StringFormatFlagsNoWrap) |
        (format & DT_NOCLIP ? Gdiplus::StringFormatFlagsNoClip : 0));
    // Near and far change sides with the direction.
    const bool swapped = (format & DT_RTLREADING) != 0;
    const auto side = [&](bool right) {
        return right != swapped ? Gdiplus::StringAlignmentFar : Gdiplus::StringAlignmentNear;
    };
    layoutFormat.SetAlignment(format & DT_CENTER ? Gdiplus::StringAlignmentCenter
                                                 : side((format & DT_RIGHT) != 0));
    layoutFormat.SetTrimming(format & DT_END_ELLIPSIS    ? Gdiplus::StringTrimmingEllipsisCharacter
                             : format & DT_WORD_ELLIPSIS ? Gdiplus::StringTrimmingEllipsisWord
                                                         : Gdiplus::StringTrimmingNone);
    if (format & DT_SINGLELINE)
        layoutFormat.SetLineAlignment(format & DT_VCENTER  ? Gdiplus::StringAlignmentCenter
                                      : format & DT_BOTTOM ? Gdiplus::StringAlignmentFar
                                                           : Gdiplus::StringAlignmentNear);
    return layoutFormat;
}

Gdiplus::Font FontOf(HDC context, const TextState& state) {
    const LOGFONTW looks = state.font ? state.font->looks : SystemFont();
    return Gdiplus::Font(context, &looks);
}

Gdiplus::Color Opaque(COLORREF colour) {
    Gdiplus::Color color;
    color.SetFromCOLORREF(colour);
    return color;
}

int Up(float length) {
    return static_cast<int>(std::ceil(length));
}

// The size of a text, wrapped at a width where that is not 0.
CSize SizeOf(const CString& text, const Gdiplus::Font& font, int width, UINT format) {
    const Gdiplus::StringFormat layoutFormat =
        FormatOf((format & (DT_WORDBREAK | DT_SINGLELINE)) | DT_NOCLIP);
    const Gdiplus::RectF box = Gdiplus::GetTextExtent(text, text.GetLength(), &font,
                                                      {0, 0, static_cast<float>(width), 0}, &layoutFormat)
                                   .box;
    return {Up(box.Width), Up(box.Height)};
}

// Sets a field of a context's text state and returns what it was; `failed` for a stale context.
template <class T>
T Exchange(HDC context, T TextState::*field, T value, T failed) {
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    return found ? std::exchange(found->Text().*field, value) : failed;
}

}  // namespace
}  // namespace platform

using namespace platform;

HFONT CreateFontIndirectW(const LOGFONTW* font) {
    if (!font) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().fonts.Insert(std::make_shared<GdiFont>(GdiFont{*font}));
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision,
                  DWORD quality, DWORD pitchAndFamily, LPCWSTR face) {
    const auto byte = [](DWORD value) { return static_cast<BYTE>(value); };
    LOGFONTW font{height,
                  width,
                  escapement,
                  orientation,
                  weight,
                  italic != 0,
                  underline != 0,
                  strikeOut != 0,
                  byte(charSet),
                  byte(outPrecision),
                  byte(clipPrecision),
                  byte(quality),
                  byte(pitchAndFamily),
                  {}};
    const CString name = CString(face).Left(std::size(font.lfFaceName) - 1);
    std::copy_n(name.GetString(), name.GetLength(), font.lfFaceName);
    return CreateFontIndirectW(&font);
}

BOOL DeleteObject(HFONT font) {
    const std::lock_guard lock(Gdi().mutex);
    if (Gdi().fonts.Remove(font)) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

HFONT SelectFont(HDC context, HFONT font) {
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    if (!found) return {};
    std::shared_ptr<const GdiFont> object;
    if (font) {
        const std::lock_guard lock(Gdi().mutex);
        object = Gdi().fonts.Share(font);
    }
    if (font && !object) {
        SetLastError(ERROR_INVALID_HANDLE);
        return {};
    }
    found->Text().font = std::move(object);
    return std::exchange(found->Text().fontHandle, font);
}

COLORREF SetTextColor(HDC context, COLORREF colour) {
    return Exchange(context, &TextState::colour, colour, CLR_INVALID);
}

COLORREF GetTextColor(HDC context) {
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    return found ? found->Text().colour : CLR_INVALID;
}

COLORREF SetBkColor(HDC context, COLORREF colour) {
    return Exchange(context, &TextState::background, colour, CLR_INVALID);
}

int SetBkMode(HDC context, int mode) {
    if (mode == TRANSPARENT || mode == OPAQUE) return Exchange(context, &TextState::backgroundMode, mode, 0);
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}

int DrawTextW(HDC context, LPCWSTR text, int length, RECT* rect, UINT format) {
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    if (!found) return 0;
    if (!rect || !text || (format & ~kKnownFlags)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const TextState state = found->Text();
    const CString drawn = TextOf(text, length, format);
    const Gdiplus::Font font = FontOf(context, state);
    const CRect place(*rect);
    const bool wraps = (format & DT_WORDBREAK) && !(format & DT_SINGLELINE);
    const CSize size = SizeOf(drawn, font, wraps ? std::max(place.Width(), 1) : 0, format);
    CRect box(place.TopLeft(), size);
    if (format & DT_SINGLELINE && format & (DT_VCENTER | DT_BOTTOM)) {
        const int free = place.Height() - size.cy;
        box.MoveToY(place.top + (format & DT_VCENTER ? free / 2 : free));
    }
    if (format & DT_CALCRECT) {
        rect->right = rect->left + size.cx;
        rect->bottom = rect->top + size.cy;
        return size.cy;
    }
    if (format & (DT_CENTER | DT_RIGHT)) {
        const int free = place.Width() - size.cx;
        box.MoveToX(place.left + (format & DT_CENTER ? free / 2 : free));
    }
    if (drawn.IsEmpty() || (place.IsRectEmpty() && !(format & DT_NOCLIP))) return size.cy;
    if (!found->IsMemory() || found->Bitmap()) {
        Gdiplus::Graphics graphics(context);
        if (state.backgroundMode == OPAQUE) {
            CRect shown = box;
            if (!(format & DT_NOCLIP)) shown &= place;
            const Gdiplus::SolidBrush background(Opaque(state.background));
            graphics.FillRectangle(&background, shown.left, shown.top, shown.Width(), shown.Height());
        }
        const Gdiplus::SolidBrush ink(Opaque(state.colour));
        const Gdiplus::StringFormat layoutFormat = FormatOf(format);
        const Gdiplus::RectF layout = Gdiplus::ToReal(
            Gdiplus::Rect(place.left, place.top, std::max(place.Width(), 0), std::max(place.Height(), 0)));
        graphics.DrawString(drawn, drawn.GetLength(), &font, layout, &layoutFormat, &ink);
    }
    return box.bottom - place.top;
}

BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length) {
    RECT place{x, y, x, y};
    return DrawTextW(context, text, length, &place, DT_SINGLELINE | DT_NOCLIP | DT_NOPREFIX) != 0;
}

BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, SIZE* size) {
    const std::shared_ptr<DeviceContext> found = ShareContext(context);
    if (!found) return FALSE;
    if (!text || !size) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *size = SizeOf(TextOf(text, length, DT_NOPREFIX | DT_SINGLELINE), FontOf(context, found->Text()), 0,
                   DT_SINGLELINE);
    return TRUE;
}
