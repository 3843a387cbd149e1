// A picture stretched over its rectangle.
#pragma once

#include <memory>

#include "items/item_base.h"

class QKPieces;

// Its aspect ratio is not kept. Copies share the picture, which lives as long as one of them holds it.
class PLATFORM_API QKImage : public QKItemBase {
  public:
    explicit QKImage(QKUIType type = QKUI_IMAGE);

    // Let go of the old picture, reset the status and load a new one from the host's resources or from a
    // file. 1 when there is an image object: a file that cannot be decoded makes one, too, of size 0.
    int SetImage(UINT id, LPCWSTR type);
    int SetImage(LPCWSTR path);
    // Stays the item's own.
    Gdiplus::Image* GetImage() const { return m_pImage.get(); }
    void DestroyImag() { m_pImage.reset(); }

    void Compose(QKPieces& pieces) const;

  protected:
    std::shared_ptr<Gdiplus::Image> m_pImage;
};
