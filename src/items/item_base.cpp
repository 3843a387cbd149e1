#include <qkui/items/item_base.h>

#include <utility>

#include <qkui/items/resource_image.h>

QKItemBase::QKItemBase(QKUIType type) : m_nType(type) {}

void QKItemBase::SetRect(const CRect* rect) {
    if (!rect) return;
    SetRect(rect->left, rect->top, rect->Width(), rect->Height());
    m_nStatus = QK_NORMAL;
}

void QKItemBase::SetRect(int x, int y, int width, int height) {
    m_nX = x;
    m_nY = y;
    m_nWidth = width;
    m_nHeight = height;
}

void QKItemBase::GetRect(CRect* rect) const {
    *rect = CRect(CPoint(m_nX, m_nY), CSize(m_nWidth, m_nHeight));
}

void QKItemBase::GetRect(Gdiplus::Rect* rect) const {
    *rect = Gdiplus::Rect(m_nX, m_nY, m_nWidth, m_nHeight);
}

void QKItemBase::GetRect(Gdiplus::RectF* rect) const {
    *rect = Gdiplus::RectF(static_cast<float>(m_nX), static_cast<float>(m_nY), static_cast<float>(m_nWidth),
                           static_cast<float>(m_nHeight));
}

void QKItemBase::SetCallBack(const QKCallbacks* callbacks) {
    m_callbacks = callbacks ? *callbacks : QKCallbacks();
    m_pClicked.reset();
}

void QKItemBase::SetCallBack(std::function<void()> clicked) {
    m_callbacks = QKCallbacks();
    m_pClicked = clicked ? std::make_shared<const std::function<void()>>(std::move(clicked)) : nullptr;
}

void QKItemBase::CallClicked() const {
    const QKCallbacks record = m_callbacks;
    const auto clicked = m_pClicked;
    if (record.pfnClick) record.pfnClick(record.pArgument);
    if (clicked) (*clicked)();
}

void QKItemBase::SetEnable(int enable) {
    m_bEnable = enable;
    m_nStatus = QK_NORMAL;
}

Gdiplus::SizeF QKItemBase::GetTextBounds(const Gdiplus::Font& font, const CString& text) const {
    Gdiplus::FontFamily family;
    font.GetFamily(&family);
    Gdiplus::GraphicsPath path(Gdiplus::FillModeAlternate);
    path.AddString(text, -1, &family, font.GetStyle(), font.GetSize(), Gdiplus::RectF(), nullptr);
    Gdiplus::RectF bounds;
    path.GetBounds(&bounds);
    return Gdiplus::SizeF(bounds.Width, bounds.Height);
}

int QKItemBase::SetImage(UINT id, LPCWSTR type, Gdiplus::Image** target) {
    m_nStatus = QK_NORMAL;
    Gdiplus::Image* const image = QKLoadImage(id, type).release();
    if (image) *target = image;
    return image != nullptr;
}

int QKItemBase::SetImage(LPCWSTR path, Gdiplus::Image** target) {
    m_nStatus = QK_NORMAL;
    *target = new Gdiplus::Image(path);
    return 1;
}

std::shared_ptr<Gdiplus::Image> QKItemBase::LoadShared(UINT id, LPCWSTR type) {
    Gdiplus::Image* image = nullptr;
    SetImage(id, type, &image);
    return std::shared_ptr<Gdiplus::Image>(image);
}

std::shared_ptr<Gdiplus::Image> QKItemBase::LoadShared(LPCWSTR path) {
    Gdiplus::Image* image = nullptr;
    SetImage(path, &image);
    return std::shared_ptr<Gdiplus::Image>(image);
}
