#include <qkui/items/button.h>

#include <algorithm>

#include "items/draw_operations.h"

QKButton::QKButton() : QKButton(QKUI_BUTTON) {}

QKButton::QKButton(QKUIType type) : QKItemBase(type) {}

QKButton::~QKButton() {
    DestroyImag();
}

void QKButton::DestroyImag() {
    delete m_pImage;
    m_pImage = nullptr;
}

int QKButton::SetImage(UINT id, LPCWSTR type, QKBT_IMGS images, QKBT_TYPE layout) {
    return Replace(images, layout) ? QKItemBase::SetImage(id, type, &m_pImage) : 0;
}

int QKButton::SetImage(LPCWSTR path, QKBT_IMGS images, QKBT_TYPE layout) {
    return Replace(images, layout) ? QKItemBase::SetImage(path, &m_pImage) : 0;
}

bool QKButton::Replace(QKBT_IMGS images, QKBT_TYPE layout) {
    if (images < QKBT_IMGS_1) return false;
    m_nImages = images;
    m_nLayout = layout;
    DestroyImag();
    return true;
}

QKFrameStrip QKButton::Strip() const {
    return {static_cast<int>(m_pImage->GetWidth()), static_cast<int>(m_pImage->GetHeight()),
            std::max<int>(m_nImages, 1), m_nLayout != QKBT_HORIZONTAL};
}

void QKButton::GetButtonRect(CRect& rect) const {
    if (m_pImage)
        rect = CRect(CPoint(m_nX, m_nY), Strip().FrameSize());
    else
        GetRect(&rect);
}

QKButton::Cut QKButton::GetFrameCut() const {
    Cut cut;
    cut.destination = CPoint(m_nX, m_nY);
    if (!m_bShow || !m_pImage) return cut;
    const QKFrameStrip strip = Strip();
    CSize size = strip.FrameSize();
    if (m_nButtonHeight != -1) size.cy = m_nButtonHeight;
    const int offset = QKFrameOffset(strip, {m_nStatus, m_bActive != 0, m_bEnable != 0});
    cut.source = CRect(strip.vertical ? CPoint(0, offset) : CPoint(offset, 0), size);
    return cut;
}

void QKButton::Compose(qkui::OperationSink& pieces) const {
    const Cut cut = GetFrameCut();
    if (!cut.source.IsRectEmpty())
        pieces.Add(
            {m_pImage, qkui::ToRectF(CRect(cut.destination, cut.source.Size())), qkui::ToRectF(cut.source)});
}
