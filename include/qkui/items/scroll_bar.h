/// @file
/// A vertical scroll bar whose thumb the user drags.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <qkui/items/item_base.h>

/// What a scroll bar calls while its thumb is dragged. `position` is the thumb's offset in pixels, 0 to the
/// bar's maximum; QKVScrollBar::GetPos turns it into a position of the content. It may close the dialog or
/// remove the bar.
struct QKVScrollCallbacks {
    LPVOID pReserved1 = nullptr;  ///< not read
    LPVOID pArgument = nullptr;
    LPVOID pReserved3 = nullptr;  ///< not read
    void (*pfnPosition)(int position, LPVOID argument) = nullptr;
};

/// The bar does not know its content: the host says how much of it is visible. The thumb is a top cap, a
/// stretched middle and a bottom cap, each cut from a strip of three stacked frames: normal, over, pressed. A
/// press beside the thumb does nothing. Copies share the pictures.
class PLATFORM_API QKVScrollBar : public QKItemBase {
  public:
    QKVScrollBar();

    ///@{
    /// Let go of all pictures, the track's too, and load the thumb's. From resources both caps come from the
    /// first identifier, and the third is not used. One that is missing leaves the thumb out.
    void SetBarImage(UINT firstId, UINT secondId, UINT thirdId, LPCWSTR type);
    void SetBarImage(LPCWSTR topPath, LPCWSTR middlePath, LPCWSTR bottomPath);
    void SetBarImage(UINT firstId, UINT secondId, UINT thirdId, const platform::Utf8& type) {
        SetBarImage(firstId, secondId, thirdId, type.Utf16());
    }
    void SetBarImage(const platform::Utf8& topPath, const platform::Utf8& middlePath,
                     const platform::Utf8& bottomPath) {
        SetBarImage(topPath.Utf16(), middlePath.Utf16(), bottomPath.Utf16());
    }
    ///@}
    ///@{
    /// The track, stretched over the whole bar. After SetBarImage, which takes it away. 1 when there is an
    /// image object.
    int SetTrackImage(UINT id, LPCWSTR type);
    int SetTrackImage(LPCWSTR path);
    int SetTrackImage(UINT id, const platform::Utf8& type) { return SetTrackImage(id, type.Utf16()); }
    int SetTrackImage(const platform::Utf8& path) { return SetTrackImage(path.Utf16()); }
    ///@}
    void DestroyImag();

    /// How much of the content is visible, and how long it is, in any unit. With a total of 0 or less the
    /// thumb stays as it was. The bar's height and the caps are those of now; the position is not limited to
    /// the new maximum until it is next set or dragged.
    void SetBarLength(int visible, int total);
    void SetBarPos(int position);  ///< limited to 0 up to the maximum
    int GetBarPos() const { return m_nPos; }
    int GetMax() const { return m_nMax; }              ///< the thumb's travel, in pixels
    int GetBarHeight() const { return m_nBarHeight; }  ///< of the thumb's middle part
    int GetPos() const;                                ///< of the content, in the unit of SetBarLength

    ///@{
    /// ---- The same in the unit of SetBarLength, exactly: from 0 to what is not visible of the content. What
    /// SetScrollPos set holds until the thumb is dragged or set in pixels; a new length keeps it, as far as
    /// it goes, and moves the thumb.
    void SetScrollPos(int position);
    int GetScrollPos() const;
    int GetScrollMax() const;
    ///@}
    /// Called with that position while the thumb is dragged: any callable, as QKItemBase::SetCallBack takes
    /// it. Besides the record of SetVBarCallBack, and after it.
    void SetScrollCallBack(std::function<void(int position)> scrolled);

    /// Whether the thumb takes a point. It reaches 20 pixels below its middle part, whatever the caps
    /// measure.
    int ptOnBar(const POINT& point) const;

    /// Copies argument and function; null removes them.
    void SetVBarCallBack(const QKVScrollCallbacks* callbacks);

  private:
    using Picture = std::shared_ptr<Gdiplus::Image>;
    bool HasCaps() const { return m_pTopImage && m_pBottomImage; }
    int FrameHeight(const Picture& strip) const;
    void SetThumb(int position);

    LPVOID m_pArgument = nullptr;
    void (*m_pfnPosition)(int, LPVOID) = nullptr;
    std::shared_ptr<const std::function<void(int)>> m_pScrolled;
    std::optional<int> m_scrollPos;  ///< of the content, while it is more exact than the thumb's
    Picture m_pTrackImage;
    Picture m_pMiddleImage;
    Picture m_pTopImage;
    Picture m_pBottomImage;
    int m_nPos = 0;
    int m_nMax = 0;
    int m_nBarHeight = 0;
    int m_nVisible = 0;
    int m_nTotal = 0;
    static constexpr unsigned int m_nFrames = 3;

    friend struct qkui::ItemAccess;
};
