#include "examples/gallery/dressing.h"

#include <memory>

#include "examples/gallery/resource.h"
#include "examples/gallery/skin_files.h"

namespace gallery {

void Dress(QKItemText& text, TextStyle style) {
    text.SetFont(FontOf(style));
    text.SetTextColor(Tint(ColourOf(style)));
}

void Dress(QKStaticText& label, TextStyle style, const CRect& place, const CString& text, Align align) {
    Dress(label, style);
    label.SetRect(&place);
    label.SetText(text);
    label.SetTextFormat(ToAlignment(align));
    label.GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter);
    label.GetFormat().SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap);
    label.GetFormat().SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
}

void Dress(TextButton& button, CPoint place, const CString& caption) {
    button.Load(IDP_WIDE, 4);
    button.PlaceAt(place.x, place.y);
    button.SetMouseMoveHand(1);
    Dress(button, TextStyle::Button);
    button.SetText(caption);
}

void Well::PlaceAt(const CRect& place) {
    auto picture = std::make_shared<Gdiplus::Bitmap>(place.Width(), place.Height());
    Gdiplus::Graphics graphics(picture.get());
    PaintWell(graphics, CRect(CPoint(0, 0), place.Size()));
    m_pImage = picture;
    SetRect(&place);
}

void BackgroundPiece::PlaceAt(const CRect& place) {
    Gdiplus::Image shell(SkinFile("shell.png"));
    auto picture = std::make_shared<Gdiplus::Bitmap>(place.Width(), place.Height());
    Gdiplus::Graphics graphics(picture.get());
    const auto width = static_cast<float>(place.Width());
    const auto height = static_cast<float>(place.Height());
    graphics.DrawImage(&shell, Gdiplus::RectF(0, 0, width, height), static_cast<float>(place.left),
                       static_cast<float>(place.top), width, height, Gdiplus::UnitPixel);
    m_pImage = picture;
    SetRect(&place);
}

}  // namespace gallery
