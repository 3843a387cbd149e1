/// @file
/// An image button: one picture holds a frame for each of its states.
#pragma once

#include <qkui/items/item_base.h>

class PLATFORM_API QKButton : public QKItemBase {
  public:
    /// How many frames the strip has, in the order normal, over, pressed, active, disabled. With two, the
    /// second also shows while pressed; the fourth of five is never shown.
    enum QKBT_IMGS : int { QKBT_IMGS_1 = 1, QKBT_IMGS_2, QKBT_IMGS_3, QKBT_IMGS_4, QKBT_IMGS_5 };
    /// How the frames lie. Every number but 0 is read as stacked.
    enum QKBT_TYPE : int { QKBT_HORIZONTAL = 0, QKBT_VERTICAL = 1 };

    QKButton();
    explicit QKButton(QKUIType type);
    ~QKButton();
    /// Copies share the picture: the host sees to it that only one of them frees it (SetImageNull).
    QKButton(const QKButton&) = default;
    QKButton& operator=(const QKButton&) = default;

    ///@{
    /// Load the strip from the host's resources or from a file, free the old one and reset the status. 1 when
    /// there is an image object, 0 otherwise. A frame count below 1 is refused and changes nothing.
    int SetImage(UINT id, LPCWSTR type, QKBT_IMGS images, QKBT_TYPE layout);
    int SetImage(LPCWSTR path, QKBT_IMGS images, QKBT_TYPE layout);
    int SetImage(UINT id, const platform::Utf8& type, QKBT_IMGS images, QKBT_TYPE layout) {
        return SetImage(id, type.Utf16(), images, layout);
    }
    int SetImage(const platform::Utf8& path, QKBT_IMGS images, QKBT_TYPE layout) {
        return SetImage(path.Utf16(), images, layout);
    }
    ///@}
    /// Forgets the picture without freeing it: the caller takes it back.
    void SetImageNull() { m_pImage = nullptr; }
    /// Stays the button's own.
    Gdiplus::Image* GetImage() const { return m_pImage; }
    void DestroyImag();

    QKBT_IMGS GetEMImages() const { return m_nImages; }
    QKBT_TYPE GetButtonType() const { return m_nLayout; }

    ///@{
    /// The height to draw, in pixels; -1 is the frame's own. Less crops the frame, more shows what follows it
    /// in the strip. The hit rectangle stays a whole frame.
    void SetButtonHeight(int height) { m_nButtonHeight = height; }
    int GetButtonHeight() const { return m_nButtonHeight; }
    ///@}

    /// Where the button takes the pointer: one frame from its top left corner, or its item rectangle while it
    /// has no picture. Width and height of the item do not matter to a button with a picture.
    void GetButtonRect(CRect& rect) const;

  protected:
    /// Takes the new shape of the strip and frees the old one; false refuses.
    bool Replace(QKBT_IMGS images, QKBT_TYPE layout);

    Gdiplus::Image* m_pImage = nullptr;  ///< owned, but copies share it
    QKBT_IMGS m_nImages = QKBT_IMGS_1;
    QKBT_TYPE m_nLayout = QKBT_VERTICAL;
    int m_nButtonHeight = -1;
};
