/// @file
/// Check boxes and radio buttons: a button's frame, a mark over it while checked, a text to its right.
#pragma once

#include <cstdint>
#include <memory>

#include <qkui/items/button.h>
#include <qkui/items/item_text.h>

/// A click inverts the check. The item rectangle takes the pointer, not the frame. The default font is "宋体"
/// of 12 pixels. Copies share both pictures: the strip as those of a button do, the check image for as long
/// as one of them holds it.
class PLATFORM_API QKCheckBox : public QKButton, public QKItemText {
  public:
    QKCheckBox();
    explicit QKCheckBox(QKUIType type);

    ///@{
    /// Load the strip of frames and then the check image; 1 when both are there. A failed strip leaves the
    /// check image alone.
    int SetImage(UINT stripId, UINT checkId, LPCWSTR type, QKBT_IMGS images, QKBT_TYPE layout);
    int SetImage(LPCWSTR stripPath, LPCWSTR checkPath, QKBT_IMGS images, QKBT_TYPE layout);
    int SetImage(UINT stripId, UINT checkId, const platform::Utf8& type, QKBT_IMGS images, QKBT_TYPE layout) {
        return SetImage(stripId, checkId, type.Utf16(), images, layout);
    }
    int SetImage(const platform::Utf8& stripPath, const platform::Utf8& checkPath, QKBT_IMGS images,
                 QKBT_TYPE layout) {
        return SetImage(stripPath.Utf16(), checkPath.Utf16(), images, layout);
    }
    ///@}
    void DestroyCheckImage() { m_pCheckImage.reset(); }

    ///@{
    /// Requests no repaint and, on a radio button, leaves the others of its group alone.
    void SetCheck(int check) { m_bCheck = check; }
    int GetCheck() const { return m_bCheck; }
    ///@}

    ///@{
    /// Shift the text, in pixels. Without a strip image they have no effect.
    void SetTextInerTop(int top) { m_nTextTop = top; }
    int GetTextInerTop() const { return m_nTextTop; }
    void SetTextInerLeft(int left) { m_nTextLeft = left; }
    int GetTextInerLeft() const { return m_nTextLeft; }
    ///@}

    ///@{
    /// The text's colours while the pointer is over the item and while it is pressed; alpha 0, as at first,
    /// stands for the normal text colour, and alpha 255 is stored as 254.
    void SetTextMouseOnColor(const Gdiplus::Color& color) { m_crTextOver = WithoutFullAlpha(color); }
    Gdiplus::Color& GetTextMouseOnColor() { return m_crTextOver; }
    void SetTextMouseDownColor(const Gdiplus::Color& color) { m_crTextDown = WithoutFullAlpha(color); }
    Gdiplus::Color& GetTextMouseDownColor() { return m_crTextDown; }
    ///@}
    /// The colour for the status as it is now.
    Gdiplus::Color& GetTextStateColor();

  private:
    Gdiplus::Color StateColor() const;
    float TextHeight(const Gdiplus::RectF& layout) const;

    struct Measured {
        CString text;
        std::uint64_t font = 0;
        float width = 0, height = 0;  ///< of the layout
        float textHeight = 0;
    };
    mutable Measured m_measured;  ///< what the text took up when it was last measured
    std::shared_ptr<Gdiplus::Image> m_pCheckImage;
    int m_nTextTop = 0;
    int m_nTextLeft = 0;
    Gdiplus::Color m_crTextDown{0x00FFFFFF};
    Gdiplus::Color m_crTextOver{0x00FFFFFF};
    Gdiplus::Color m_crTextState{0xFEFFFFFF};
    int m_bCheck = 0;

    friend struct qkui::ItemAccess;
};

/// A check box that a click only checks: the other radio buttons of its dialog with the same group identifier
/// are unchecked then.
class PLATFORM_API QKRadio : public QKCheckBox {
  public:
    QKRadio();
    void SetGroupID(unsigned int group) { m_nGroup = group; }
    unsigned int GetGroupID() const { return m_nGroup; }

  private:
    unsigned int m_nGroup = 0;
};
