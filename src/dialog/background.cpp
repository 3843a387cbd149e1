#include "dialog/background.h"

#include <cstdint>

#include <platform/window.h>

#include <qkui/items/nine_parts.h>
#include "dialog/display_list.h"
#include "items/draw_operations.h"

namespace qkui {

// The part of the picture that is stretched over the client.
Gdiplus::Rect Background::Source(CSize client) const {
    constexpr double kSameRatio = 1e-7;
    const int width = static_cast<int>(picture->GetWidth());
    const int height = static_cast<int>(picture->GetHeight());
    if (!keepsRatio || width < 1 || height < 1) return {0, 0, width, height};
    const double clientRatio = static_cast<double>(client.cx) / client.cy;
    const double ratio = static_cast<double>(width) / height;
    if (clientRatio - ratio > kSameRatio) {
        const int part = static_cast<int>(width / clientRatio);
        return {0, static_cast<int>(static_cast<unsigned>(height - part) >> 1), width, part};
    }
    const int part = static_cast<int>(height * clientRatio);
    return {static_cast<int>(static_cast<unsigned>(width - part) >> 1), 0, part, height};
}

void Background::Draw(Gdiplus::Graphics& graphics, CSize client, Under under) const {
    if (fills) {
        const Gdiplus::SolidBrush brush{Gdiplus::Color(color)};
        graphics.FillRectangle(&brush, 0, 0, client.cx, client.cy);
    }
    if (!picture || client.cx < 1 || client.cy < 1) return;
    if (!parts.IsEmpty()) return parts.Draw(graphics, *picture, ToRectF(CRect(CPoint(0, 0), client)));
    Gdiplus::ImageAttributes attributes;
    attributes.SetWrapMode(Gdiplus::WrapModeTileFlipXY, Gdiplus::Color(0xFF000000), FALSE);
    const Gdiplus::Rect source = Source(client);
    const bool isFirst = under == Under::Nothing && !fills;
    if (isFirst) graphics.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
    graphics.DrawImage(picture, Gdiplus::Rect(0, 0, client.cx, client.cy), source.X, source.Y, source.Width,
                       source.Height, Gdiplus::UnitPixel, &attributes);
    graphics.SetCompositingMode(Gdiplus::CompositingModeSourceOver);
}

bool Background::Covers(CSize client) const {
    if (fills) return color >> 24 == 0xFF;
    if (!picture || !parts.IsEmpty() || client.cx < 1 || client.cy < 1) return false;
    const Gdiplus::Rect source = Source(client);
    return source.Width > 0 && source.Height > 0;
}

void Background::Record(DisplayList& list) const {
    list.Add(std::uint64_t{fills} << 32U | (fills ? color : 0));
    list.Add(picture ? picture->GetRevision() : 0);
    list.Add(keepsRatio);
    list.Add(parts.GetMargins());
}

std::unique_ptr<Gdiplus::Bitmap> Background::Render(CSize client) const {
    const int scale = GetScreenScale();
    auto rendered = std::make_unique<Gdiplus::Bitmap>(client.cx * scale, client.cy * scale,
                                                      Gdiplus::PixelFormat32bppARGB);
    rendered->SetScale(scale);
    Gdiplus::Graphics graphics(rendered.get());
    Draw(graphics, client, Under::Nothing);
    rendered->RotateFlip(Gdiplus::Rotate180FlipX);
    return rendered;
}

}  // namespace qkui
