#include <qkui/items/image.h>

#include "items/item_access.h"

QKImage::QKImage(QKUIType type) : QKItemBase(type) {}

int QKImage::SetImage(UINT id, LPCWSTR type) {
    m_pImage = LoadShared(id, type);
    return m_pImage != nullptr;
}

int QKImage::SetImage(LPCWSTR path) {
    m_pImage = LoadShared(path);
    return m_pImage != nullptr;
}

void qkui::ItemAccess::Record(const QKImage& image, OperationSink& sink) {
    Gdiplus::Image* const picture = image.m_pImage.get();
    if (!picture) return;
    Gdiplus::RectF place;
    image.GetRect(&place);
    if (!image.m_parts.IsEmpty()) return Record(image.m_parts, *picture, place, sink);
    sink.Add({picture, place, WholeImage(picture), Gdiplus::WrapModeTileFlipXY});
}
