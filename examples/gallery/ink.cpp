#include "examples/gallery/ink.h"

#include <array>
#include <cmath>

namespace gallery {
namespace {

using namespace skin;

struct Face {
    float pixels;
    INT style;
    Colour colour;
};

constexpr std::array<Face, 5> kFaces = {{
    {26, Gdiplus::FontStyleBold, Rgb(0xf4f2ff)},
    {15, Gdiplus::FontStyleBold, Rgb(0xf0edff)},
    {14, Gdiplus::FontStyleRegular, Rgb(0xc9c7ee)},
    {12, Gdiplus::FontStyleRegular, Rgb(0x9d9bcb)},
    {14, Gdiplus::FontStyleRegular, Rgb(0xf0edff)},
}};

const Face& FaceOf(TextStyle style) {
    return kFaces[static_cast<std::size_t>(style)];
}

void FillBox(Gdiplus::Graphics& graphics, const CRect& place, Colour colour) {
    const Gdiplus::SolidBrush brush(Tint(colour));
    graphics.FillRectangle(&brush, place.left, place.top, place.Width(), place.Height());
}

void FrameBox(Gdiplus::Graphics& graphics, const CRect& place, Colour colour) {
    FillBox(graphics, CRect(place.left, place.top, place.right, place.top + 1), colour);
    FillBox(graphics, CRect(place.left, place.bottom - 1, place.right, place.bottom), colour);
    FillBox(graphics, CRect(place.left, place.top + 1, place.left + 1, place.bottom - 1), colour);
    FillBox(graphics, CRect(place.right - 1, place.top + 1, place.right, place.bottom - 1), colour);
}

Gdiplus::RectF ToRectF(const CRect& rect) {
    return {static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(rect.Width()),
            static_cast<float>(rect.Height())};
}

}  // namespace

Gdiplus::Color Tint(Colour colour) {
    const auto channel = [](double value) { return static_cast<BYTE>(std::lround(value * 255)); };
    return {channel(colour.alpha), channel(colour.red), channel(colour.green), channel(colour.blue)};
}

const Gdiplus::Font& FontOf(TextStyle style) {
    const auto make = [](const Face& face) {
        return Gdiplus::Font(u"Noto Sans CJK SC", face.pixels, face.style, Gdiplus::UnitPixel);
    };
    static const std::array<Gdiplus::Font, kFaces.size()> fonts = {
        make(kFaces[0]), make(kFaces[1]), make(kFaces[2]), make(kFaces[3]), make(kFaces[4])};
    return fonts[static_cast<std::size_t>(style)];
}

Colour ColourOf(TextStyle style) {
    return FaceOf(style).colour;
}

Gdiplus::StringAlignment ToAlignment(Align align) {
    switch (align) {
        case Align::Left:
            return Gdiplus::StringAlignmentNear;
        case Align::Centre:
            return Gdiplus::StringAlignmentCenter;
        case Align::Right:
            return Gdiplus::StringAlignmentFar;
    }
    return Gdiplus::StringAlignmentNear;
}

void PaintWell(Gdiplus::Graphics& graphics, const CRect& place) {
    FillBox(graphics, place, WithAlpha(palette::kInk, 0.38));
    FrameBox(graphics, place, WithAlpha(palette::kMist, 0.13));
}

Ink::Ink(HDC context) : context_(context), graphics_(context) {
    graphics_.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
}

void Ink::Write(TextStyle style, const CRect& place, const CString& text, const Gdiplus::StringFormat& format,
                Colour colour) {
    const Gdiplus::SolidBrush brush(Tint(colour));
    graphics_.DrawString(text, -1, &FontOf(style), ToRectF(place), &format, &brush);
}

void Ink::Text(TextStyle style, const CRect& place, const CString& text, Align align) {
    Text(style, place, text, align, FaceOf(style).colour);
}

void Ink::Text(TextStyle style, const CRect& place, const CString& text, Align align, Colour colour) {
    Gdiplus::StringFormat format;
    format.SetAlignment(ToAlignment(align));
    Write(style, place, text, format, colour);
}

void Ink::Label(TextStyle style, const CRect& place, const CString& text, Align align) {
    Label(style, place, text, align, FaceOf(style).colour);
}

void Ink::Label(TextStyle style, const CRect& place, const CString& text, Align align, Colour colour) {
    Gdiplus::StringFormat format(Gdiplus::StringFormatFlagsNoWrap);
    format.SetAlignment(ToAlignment(align));
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
    format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    Write(style, place, text, format, colour);
}

void Ink::Fill(const CRect& place, Colour colour) {
    FillBox(graphics_, place, colour);
}

void Ink::Frame(const CRect& place, Colour colour) {
    FrameBox(graphics_, place, colour);
}

void FillDot(Gdiplus::Graphics& graphics, int x, int y, float radius, Colour colour) {
    const Gdiplus::SolidBrush brush(Tint(colour));
    const auto left = static_cast<float>(x) + 0.5F - radius;
    const auto top = static_cast<float>(y) + 0.5F - radius;
    graphics.FillEllipse(&brush, Gdiplus::RectF(left, top, 2 * radius, 2 * radius));
}

}  // namespace gallery
