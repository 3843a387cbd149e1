/// @file
/// What every lightweight item of a dialog has: a kind, a place, a visual state and a click callback.
#pragma once

#include <functional>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>
#include <platform/text.h>
#include <platform/types.h>

namespace qkui {
struct ItemAccess;
}  // namespace qkui

/// The kind of an item, fixed by its class. The dialog draws it and hands it the pointer by this number;
/// other numbers are neither drawn nor reached by the pointer.
enum QKUIType : int {
    QKUI_STATICTEXT = 0,
    QKUI_IMAGE = 1,
    QKUI_BUTTON = 2,
    QKUI_CHECKBOX = 3,
    QKUI_RADIO = 4,
    QKUI_TEXTBUTTON = 5,
    QKUI_PROGRESS = 6,
    QKUI_RESERVED7 = 7,  ///< no class has it
    QKUI_LISTCTRL = 8,
    QKUI_VSCROLLBAR = 9,
    QKUI_GIFIMAGE = 10
};

/// What an item calls when a click on it completes: the left button went down on it and comes up inside its
/// hit rectangle. Runs on the dialog's thread, from inside the release; it may close or minimise the dialog,
/// open a modal one, or remove (and then delete) the item.
struct QKCallbacks {
    void (*pfnClick)(LPVOID argument) = nullptr;
    LPVOID pArgument = nullptr;
};

/// An item is a plain object that the host makes, configures and registers with a dialog. The host owns it
/// and keeps it alive while it is registered. Items are used on the dialog's thread only.
class PLATFORM_API QKItemBase {
  public:
    enum QK_STATUS : int {
        QK_NORMAL = 0,     ///< the pointer is elsewhere
        QK_MOUSEON = 1,    ///< the pointer is over the item
        QK_MOUSEDOWN = 2,  ///< the left button went down on the item and is still down
    };

    explicit QKItemBase(QKUIType type);

    ///@{
    /// Position and size in client pixels of the dialog. The form with a rectangle also resets the status to
    /// QK_NORMAL; the form with four numbers leaves it alone.
    void SetRect(const CRect* rect);
    void SetRect(int x, int y, int width, int height);
    void GetRect(CRect* rect) const;
    void GetRect(Gdiplus::Rect* rect) const;
    void GetRect(Gdiplus::RectF* rect) const;
    ///@}

    void SetStatus(QK_STATUS status) { m_nStatus = status; }
    QK_STATUS GetStatus() const { return m_nStatus; }

    /// The dialog's window; AddQKItem stores it.
    void SetParent(HWND parent) { m_hParent = parent; }

    ///@{
    /// Whether the item holds the pointer since a press on it.
    void SetCaptrue(int capture) { m_bCapture = capture; }
    int GetCaptrue() const { return m_bCapture; }
    ///@}

    ///@{
    /// A hidden item is neither drawn nor reached by the pointer. Hiding keeps the status.
    void SetShow(int show) { m_bShow = show; }
    int IsShow() const { return m_bShow; }
    ///@}

    QKUIType GetType() const { return m_nType; }

    /// Copies the record; the host may drop its own. A null pointer removes the callback.
    void SetCallBack(const QKCallbacks* callbacks);
    /// Any callable in its place: a lambda, with what it captures; an empty function removes it. Copies of
    /// the item share it. It lives until its own call is over, whatever that does to the item.
    void SetCallBack(std::function<void()> clicked);

    ///@{
    /// 1 (the default): the pointer passes through the item's transparent pixels on a per-pixel window. 0:
    /// the whole item rectangle catches it, by an invisible fill of alpha 1.
    void SetTranMouseOver(int transparent) { m_bTranMouseOver = transparent; }
    int GetTranMouseOver() const { return m_bTranMouseOver; }
    ///@}

    ///@{
    /// The host's "current" or "selected" look; a button of four frames shows its fourth.
    void SetActive(int active) { m_bActive = active; }
    int GetActive() const { return m_bActive; }
    ///@}

    ///@{
    /// A disabled item ignores the pointer; a button of five frames shows its fifth. Resets the status.
    void SetEnable(int enable);
    int GetEnable() const { return m_bEnable; }
    ///@}

    ///@{
    /// A number of the host's own, 0 at first.
    void SetItemData(int data) { m_nItemData = data; }
    int GetItemData() const { return m_nItemData; }
    ///@}

    ///@{
    /// Non-zero: the pointer shows a hand over the item.
    void SetMouseMoveHand(int hand) { m_bHand = hand; }
    int GetMouseMoveHand() const { return m_bHand; }
    ///@}

    ///@{
    /// Shown in a small window when the pointer has rested on the item for half a second, by any kind of item
    /// but a list, enabled or not. Line breaks count. Null or empty: none, as at first.
    void SetTooltip(LPCWSTR text) { m_strTooltip = text; }
    void SetTooltip(const platform::Utf8& text) { SetTooltip(text.Utf16()); }
    const CString& GetTooltip() const { return m_strTooltip; }
    ///@}

    ///@{
    /// 0: left out by the Tab key (CQKDialogBase::SetTabKeys).
    void SetTabStop(int stop) { m_bTabStop = stop; }
    int GetTabStop() const { return m_bTabStop; }
    ///@}

    /// The tight size of the text's glyph outlines, not of its layout box. The font's size is taken as it
    /// stands, whatever its unit. An empty text has no size.
    Gdiplus::SizeF GetTextBounds(const Gdiplus::Font& font, const CString& text) const;

  protected:
    ///@{
    /// Load a picture into `target` and reset the status. What `target` pointed to is not freed. The result
    /// is 1 when there is an image object; a picture that cannot be decoded still makes one, of size 0.
    /// From the host's resources: a missing resource gives 0 and leaves the target alone.
    int SetImage(UINT id, LPCWSTR type, Gdiplus::Image** target);
    int SetImage(LPCWSTR path, Gdiplus::Image** target);
    ///@}
    ///@{
    /// The same, for a picture that copies of the item share; null where SetImage answers 0.
    std::shared_ptr<Gdiplus::Image> LoadShared(UINT id, LPCWSTR type);
    std::shared_ptr<Gdiplus::Image> LoadShared(LPCWSTR path);
    ///@}

    /// What a completed click calls. The item may be gone afterwards.
    void CallClicked() const;

    QKCallbacks m_callbacks;
    std::shared_ptr<const std::function<void()>> m_pClicked;  ///< in the place of a record
    HWND m_hParent;
    POINT m_ptLast = {0, 0};  ///< where the pointer was when the button went down on the item
    int m_nX = 0, m_nY = 0, m_nWidth = 0, m_nHeight = 0;
    int m_bShow = 1;
    QKUIType m_nType;
    QK_STATUS m_nStatus = QK_NORMAL;
    int m_bTranMouseOver = 1;
    int m_bCapture = 0;
    int m_bActive = 0;
    int m_bEnable = 1;
    int m_nItemData = 0;
    int m_bHand = 0;
    CString m_strTooltip;
    int m_bTabStop = 1;

    friend struct qkui::ItemAccess;
};
