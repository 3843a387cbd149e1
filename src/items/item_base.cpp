#include "items/item_base.h"

#include <cstring>

#include <platform/ole.h>
#include <platform/resources.h>

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
    const HMODULE module = AfxGetResourceHandle();
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCE(id), type);
    if (!resource) return 0;
    const DWORD size = SizeofResource(module, resource);
    const void* data = LockResource(LoadResource(module, resource));
    if (!data) return 0;

    const HGLOBAL block = GlobalAlloc(GMEM_FIXED, size);
    void* copy = GlobalLock(block);
    if (!copy) return 0;
    std::memcpy(copy, data, size);
    // The image reads its encoded bytes from the stream for as long as it lives, so the block goes with the
    // stream's last holder.
    IStream* stream = nullptr;
    const HRESULT made = CreateStreamOnHGlobal(block, TRUE, &stream);
    GlobalUnlock(block);
    if (FAILED(made)) {
        GlobalFree(block);
        return 0;
    }
    *target = new Gdiplus::Image(stream);
    stream->Release();
    return 1;
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
