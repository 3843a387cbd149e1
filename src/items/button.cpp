#include <qkui/items/button.h>

#include "items/item_access.h"
#include "items/sprite_strip.h"

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

void QKButton::GetButtonRect(CRect& rect) const {
    if (m_pImage)
        rect = CRect(CPoint(m_nX, m_nY), qkui::StripOf(*this).FrameSize());
    else
        GetRect(&rect);
}

void qkui::ItemAccess::Record(const QKButton& button, OperationSink& sink) {
    const Sprite sprite = SpriteOf(button);
    if (!sprite.source.IsRectEmpty())
        sink.Add({button.GetImage(), ToRectF(sprite.Place()), ToRectF(sprite.source)});
}
