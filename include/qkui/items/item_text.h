/// @file
/// The text of an item, with its font, colour and format.
#pragma once

#include <memory>

#include <platform/gdiplus.h>
#include <platform/text.h>

class PLATFORM_API QKItemText {
  public:
    /// Copies have the text, share the font until one gets another, and have a format of their own.
    QKItemText(const QKItemText&) = default;
    QKItemText& operator=(const QKItemText&) = default;

    ///@{
    /// Keeps a copy; null is no text, and without memory for the copy there is none either.
    void SetText(LPCWSTR text);
    void SetText(const platform::Utf8& text) { SetText(text.Utf16()); }
    ///@}
    /// The item's own copy, until the next change; null while there is no text.
    LPCWSTR GetText() const { return m_bHasText ? m_strText.GetString() : nullptr; }
    /// In UTF-16 units; -1 while there is no text, 0 for an empty one.
    int GetTextLen() const { return m_bHasText ? m_strText.GetLength() : -1; }
    void ReleaseBuf();

    /// Keeps a clone. The default face is "宋体"; a font that cannot be cloned leaves none, and no text
    /// shows.
    void SetFont(const Gdiplus::Font& font);
    /// The font of a dialog for items that were given none (CQKDialogBase::SetDefaultFont).
    void TakeDefaultFont(const std::shared_ptr<Gdiplus::Font>& font);
    /// Stays the item's own.
    Gdiplus::Font* GetFont() const { return m_pFont.get(); }

    ///@{
    /// Alpha 255 is stored as 254, every other alpha as it is. At first white of alpha 254.
    void SetTextColor(const Gdiplus::Color& color);
    Gdiplus::Color& GetTextColor() { return m_crText; }
    const Gdiplus::Color& GetTextColor() const { return m_crText; }
    ///@}

    /// Sets the horizontal alignment; all else is set through the format itself.
    void SetTextFormat(Gdiplus::StringAlignment alignment);
    Gdiplus::StringFormat& GetFormat() { return m_format; }
    const Gdiplus::StringFormat& GetFormat() const { return m_format; }

  protected:
    QKItemText(float fontSize, Gdiplus::Unit unit);
    ~QKItemText() = default;

    static Gdiplus::Color WithoutFullAlpha(const Gdiplus::Color& color);

  private:
    CString m_strText;
    bool m_bHasText = false;
    std::shared_ptr<Gdiplus::Font> m_pFont;
    bool m_bOwnFont = false;
    Gdiplus::Color m_crText{0xFEFFFFFF};
    Gdiplus::StringFormat m_format;
};
