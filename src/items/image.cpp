#include <qkui/items/image.h>

#include "items/draw_operations.h"

QKImage::QKImage(QKUIType type) : QKItemBase(type) {}

int QKImage::SetImage(UINT id, LPCWSTR type) {
    m_pImage = LoadShared(id, type);
    return m_pImage != nullptr;
}

int QKImage::SetImage(LPCWSTR path) {
    m_pImage = LoadShared(path);
    return m_pImage != nullptr;
}

void QKImage::Compose(qkui::OperationSink& pieces) const {
    if (!m_pImage) return;
    Gdiplus::RectF place;
    GetRect(&place);
    if (!m_parts.IsEmpty()) return m_parts.Compose(*m_pImage, place, pieces);
    pieces.Add({m_pImage.get(), place, qkui::WholeImage(m_pImage.get()), Gdiplus::WrapModeTileFlipXY});
}
