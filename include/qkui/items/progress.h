/// @file
/// A horizontal progress bar: a track, and a bar squeezed into the filled part of it.
#pragma once

#include <memory>

#include <qkui/items/item_base.h>

/// Takes no pointer. A position outside the range shows the track alone, and so does an empty range. Copies
/// share the pictures.
class PLATFORM_API QKProgress : public QKItemBase {
  public:
    QKProgress();

    ///@{
    /// Let go of both pictures and load the track and the bar. One that is missing is left out.
    void SetBarImage(UINT backId, UINT barId, LPCWSTR type);
    void SetBarImage(LPCWSTR backPath, LPCWSTR barPath);
    void SetBarImage(UINT backId, UINT barId, const platform::Utf8& type) {
        SetBarImage(backId, barId, type.Utf16());
    }
    void SetBarImage(const platform::Utf8& backPath, const platform::Utf8& barPath) {
        SetBarImage(backPath.Utf16(), barPath.Utf16());
    }
    ///@}
    void DestroyImag();

    ///@{
    /// Nothing is checked; the next paint decides what shows.
    void SetPos(unsigned int position) { m_nPos = position; }
    unsigned int GetPos() const { return m_nPos; }
    ///@}
    void SetMinMax(unsigned int minimum, unsigned int maximum);
    unsigned int GetMin() const { return m_nMin; }
    unsigned int GetMax() const { return m_nMax; }

    ///@{
    /// How far the bar keeps from every edge of the item, in pixels; 1 at first.
    void SetBackBordThick(int thickness) { m_nBorder = thickness; }
    int GetBackBordThick() const { return m_nBorder; }
    ///@}

    /// Where the bar is stretched to now; empty when it does not show.
    CRect GetFilledRect() const;

  private:
    std::shared_ptr<Gdiplus::Image> m_pBackImage;
    std::shared_ptr<Gdiplus::Image> m_pBarImage;
    unsigned int m_nPos = 0;
    unsigned int m_nMin = 0;
    unsigned int m_nMax = 100;
    int m_nBorder = 1;

    friend struct qkui::ItemAccess;
};
