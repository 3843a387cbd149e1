/// @file
/// A picture stretched over its rectangle.
#pragma once

#include <memory>

#include <qkui/items/item_base.h>
#include <qkui/items/nine_parts.h>

/// Its aspect ratio is not kept. Copies share the picture, which lives as long as one of them holds it.
class PLATFORM_API QKImage : public QKItemBase {
  public:
    explicit QKImage(QKUIType type = QKUI_IMAGE);

    ///@{
    /// Let go of the old picture, reset the status and load a new one from the host's resources or from a
    /// file. 1 when there is an image object: a file that cannot be decoded makes one, too, of size 0.
    int SetImage(UINT id, LPCWSTR type);
    int SetImage(LPCWSTR path);
    int SetImage(UINT id, const platform::Utf8& type) { return SetImage(id, type.Utf16()); }
    int SetImage(const platform::Utf8& path) { return SetImage(path.Utf16()); }
    ///@}
    /// Draws the picture as a frame, its corners at their own size: they reach so far into it from each side.
    /// All 0, as at first, stretches it as a whole.
    void SetMargins(int left, int top, int right, int bottom) {
        m_parts.SetMargins({left, top, right, bottom});
    }
    /// Stays the item's own.
    Gdiplus::Image* GetImage() const { return m_pImage.get(); }
    void DestroyImag() { m_pImage.reset(); }

  protected:
    std::shared_ptr<Gdiplus::Image> m_pImage;

  private:
    mutable QKNineParts m_parts;  ///< cut when they are drawn

    friend struct qkui::ItemAccess;
};
