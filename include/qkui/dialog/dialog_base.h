/// @file
/// A dialog that draws its whole surface itself and fills it with lightweight items.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <platform/framework.h>
#include <platform/gdiplus.h>

#include <qkui/items/item_base.h>

namespace qkui {
class Alive;
class FramePainter;
class ItemTips;
class Press;
class TabFocus;
struct Entry;
}  // namespace qkui

class COleDataSource;
class QKButton;
class QKCheckBox;
class QKImage;
class QKListCtrl;
class QKProgress;
class QKStaticText;
class QKVScrollBar;
struct QKListItem;

/// The fill that makes an area of a per-pixel window catch the pointer while it stays invisible.
constexpr Gdiplus::ARGB QK_PAINT_TRANSPARENT = 0x01FFFFFF;

/// How the dialog's window shows its pixels.
enum QKLayStyle : int {
    LAY_NONE = 0,      ///< an ordinary window
    LAY_COLORKEY = 1,  ///< the pixels of one colour are left out
    LAY_ALPHA = 2,     ///< the whole window under one alpha
    LAY_OPAQUE = 3,    ///< every pixel with its own alpha
};

/// The host derives its dialogs from this class, registers items that it owns, and refreshes what it changed:
/// setters never repaint. Everything runs on the thread that owns the window.
///
/// Wherever the host is called (functions of items, lists and timers, overridden virtuals, handlers of
/// messages) it may do what it likes: change, add or remove items and delete them, close, minimise, restyle
/// or delete the dialog, run a modal one, pump messages, throw. Who deletes the dialog must not call the base
/// afterwards. Two things end differently from what one might wish: a pointer event that items are removed in
/// ends by the invalid-argument exception when fewer are left than are still to be asked; and a DrawSurface
/// that always refreshes a dialog of LAY_OPAQUE, which draws at once, never comes to an end.
///
/// Flags are ints: 0 is off, anything else is on. Colours are ARGB unless they say COLORREF. Geometry is in
/// client pixels.
class PLATFORM_API CQKDialogBase : public CDialog {
    DECLARE_DYNAMIC(CQKDialogBase)
  public:
    explicit CQKDialogBase(UINT templateId, CWnd* parent = nullptr);
    ~CQKDialogBase() override;

    // ---- The window's looks. These need the window and do not repaint.

    /// Lets the window manager minimise the window.
    void SetMinMaxStyle();
    int SetNoLayDlg();
    /// The results are the platform's: 1, or 0 with a last error.
    int Set_COLORKEYDlg(DWORD key);  ///< a COLORREF
    int Set_ALPHADlg(int alpha);     ///< 0 to 255
    /// Nothing is shown until the first refresh. The pointer passes through pixels of alpha 0.
    int Set_OPAQUEDlg(int alpha);  ///< 0 to 255, over the alpha of each pixel
    /// Rounds the corners of the window as it is now; `cx` and `cy` are width and height of the ellipse.
    void SetRngDlg(int cx, int cy);

    // ---- Background

    /// Fills the client with a colour before the picture when `fill` is set. A cached background stays.
    void SetBackColor(const Gdiplus::Color& color, int fill);
    /// The background picture: stretched over the client, or cropped equally on both sides to its aspect
    /// ratio. An empty path removes it and keeps the ratio flag. With `cache` the background is rendered
    /// once, at the client size of the first frame; this is for LAY_OPAQUE: in the other styles a cached
    /// background shows only in the frame that made the cache.
    void SetBack(const CString& path, int keepRatio, int cache);
    /// The same picture source with the picture's size as the answer. 1 also when the file cannot be decoded:
    /// the rectangle is then empty. 0 for an empty path. Cache and ratio are left as they are, so a cached
    /// background keeps showing the old picture.
    int SetBack(const CString& path, CRect& rcImage);

    ///@{
    /// The same out of the host's resources. 0, and no picture, where there is none of the number and type.
    int SetBack(UINT id, LPCWSTR type, int keepRatio, int cache);
    int SetBack(UINT id, LPCWSTR type, CRect& rcImage);
    int SetBack(UINT id, const platform::Utf8& type, int keepRatio, int cache) {
        return SetBack(id, type.Utf16(), keepRatio, cache);
    }
    int SetBack(UINT id, const platform::Utf8& type, CRect& rcImage) {
        return SetBack(id, type.Utf16(), rcImage);
    }
    ///@}
    /// Draws the picture as a frame of nine parts (see QKNineParts), whatever the ratio flag says; all 0, as
    /// at first: as one. A cached background stays.
    void SetBackMargins(int left, int top, int right, int bottom);

    /// The font of all texts of items that were given none by SetFont: those registered already, and those
    /// that will be. An item keeps it when it leaves the dialog. Lists have a font of their own.
    void SetDefaultFont(const Gdiplus::Font& font);

    /// 1: a press on empty space does not move the window.
    void SetNoMove(int noMove);
    /// 1: a rubber band may be dragged over empty space.
    void SetSelRect(int enable);

    // ---- Commands

    /// Posts the request that also comes from a window manager's close button and from its key for closing,
    /// Alt+F4 in most: WM_CLOSE, which destroys the window unless a derived class answers it otherwise.
    /// Alt+F4 that the dialog gets itself is swallowed. While a modal dialog waits for an answer its owner is
    /// asked nothing.
    void CloseQKDlg();
    void MinQKDlg();            ///< posts the request
    void SetDoModalOK(int ok);  ///< ends as OK or as Cancel
    /// Handles at most one waiting message, without waiting: keeps the windows alive while the host is busy.
    void messagePump();

    // ---- Items. The dialog keeps pointers; later registered items lie on top. No operation repaints.

    int AddQKItem(QKItemBase* item);          ///< 0 when it is registered already
    QKItemBase* GetQKItem(QKItemBase* item);  ///< the argument when it is registered, else null
    int RemoveQKItem(QKItemBase* item);       ///< 0 when it is not registered
    void RemoveAllQKItem();

    // ---- Refreshing and painting

    /// Everything. In LAY_OPAQUE this composes and shows the frame at once; in the other styles the window is
    /// invalidated. Nothing happens without a window, or while it is minimised.
    virtual void UpdateView();
    /// One rectangle (null: everything). LAY_OPAQUE always refreshes everything.
    virtual void UpdateViewRect(const RECT* rect);
    /// Everything, and from now on the per-pixel surface is shown from `source` on.
    virtual void UpdateViewPt(const POINT& source);
    /// Called instead of invalidating while m_bSysInvalidate is 0.
    virtual void CallBackInvalidate();
    /// Renders one frame onto a context. `buffer`: off-screen first, then in one block; not in LAY_OPAQUE.
    /// A host that overrides this may draw below or above the frame, leave it out, change items first, and
    /// put a clip on the context, which holds for the frame and stays. Called once per paint; in LAY_OPAQUE
    /// once per refresh, with a transparent surface that shows the cached background, if there is one.
    virtual void DrawSurface(HDC dc, int width, int height, int buffer);
    /// Composes one frame onto any context, inside its clip: colour key, background, items, rubber band.
    /// Width and height are used for the colour-key fill; all else takes the client size.
    void OnQKPaint(HDC dc, int width, int height);

    // ---- Drawing one item onto any context, as OnQKPaint does; hidden items draw nothing

    /// Buttons of every kind: a text button with its caption, a check box or radio button with its mark but
    /// without its text.
    void DrawButton(HDC dc, QKButton* button);
    void DrawCheckBoxText(HDC dc, QKCheckBox* box);
    void DrawStaticText(HDC dc, QKStaticText* text);
    void DrawImage(HDC dc, QKImage* image);
    void DrawGifImage(HDC dc, QKImage* image);  ///< another name of DrawImage
    void DrawProgress(HDC dc, QKProgress* progress);
    void DrawVScroll(HDC dc, QKVScrollBar* bar);

    // ---- Drawing for hosts; the dialog's state plays no part

    /// A text with a soft glow behind it. `rect`: the layout rectangle, its size cut to whole pixels.
    /// `origin`: where the glow's layout starts, seen from the rectangle; (1, 1) lies on the text. `factor`
    /// above 0: more makes the glow wider and softer.
    void DrawShadowText(Gdiplus::Graphics* graphics, const CString& text, const Gdiplus::Font& font,
                        const Gdiplus::StringFormat& format, const Gdiplus::Color& textColor,
                        const Gdiplus::Color& glowColor, const Gdiplus::RectF& rect,
                        const Gdiplus::PointF& origin, float factor);
    /// The same, rendered once and kept in the list entry. Only another text renders it again (or the same,
    /// once the entry's szTextCath was emptied): another font, colour or size does not, the rendered caption
    /// is stretched.
    void DrawShadowText(Gdiplus::Graphics* graphics, QKListItem* entry, const CString& text,
                        const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                        const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                        const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor);
    ///@{
    /// A frame of nine images around a rectangle, row by row from the top left: corners at their own size,
    /// edges stretched along the sides, a centre. Null images are left out; a null array draws nothing.
    void DrawStateImage(Gdiplus::Graphics* graphics, Gdiplus::Image** images, const Gdiplus::RectF& rect);
    void DrawStateImage(Gdiplus::Graphics* graphics, Gdiplus::Bitmap** images, const Gdiplus::RectF& rect);
    ///@}
    /// Gives every pixel that is not black the alpha (its low 8 bits); black pixels stay, whatever theirs.
    void SetALPH255(Gdiplus::Bitmap* bitmap, int alpha);

    // ---- Pointer

    void OnLbuttonClkDown(UINT flags, CPoint point);
    void OnLbuttonDbClkDown(UINT flags, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnMouseLeave();
    void OnRButtonUp(UINT flags, CPoint point);
    /// Not routed by the dialog: a host that wants it calls it from its own handler.
    void OnRButtonDown(UINT flags, CPoint point);
    /// Scrolls the topmost list under the pointer that scrolls, and has room to. `point` is on the screen.
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    /// Moves the focus of a list that the host gave the keyboard to (QKListCtrl::SetKeyboard). A host with an
    /// OnKeyDown of its own calls this one for the keys that it leaves to the list.
    void OnKeyDown(UINT key, UINT repeat = 1, UINT flags = 0);

    /// One event on one item with its hit rectangle; 1 when something changed or the item took it.
    int MoveOnItem(QKItemBase* item, const CRect& rect, CPoint point);
    int MoveDownItem(QKItemBase* item, const CRect& rect, CPoint point);
    int MoveUpItem(QKItemBase* item, const CRect& rect, CPoint point);
    int MoveLeaveItem(QKItemBase* item, const CRect& rect);  ///< for hosts

    // ---- Keyboard. Enter and Escape never end a dialog.

    /// 1: Tab and Shift+Tab go from item to item that can be clicked, in the order of registration, leaving
    /// out what is hidden, disabled or no tab stop (QKItemBase::SetTabStop); Space and Enter click the one
    /// that has the focus, which is framed. The frame shows from the first Tab on, until the mouse is pressed
    /// or the window deactivated. At first 0: the host gets all of these keys but Enter.
    void SetTabKeys(int enable);
    /// Gives an item the focus and shows the frame, or, with null, neither. 0 for one that cannot have it.
    int SetFocusItem(QKItemBase* item);
    /// The item with the focus; null when there is none, or when it can no longer have it.
    QKItemBase* GetFocusItem();
    void SetFocusColor(const Gdiplus::Color& color);  ///< of the frame; 0xFF3399FF at first

    // ---- Files dragged out of lists. Entries stand for the files that their szPath names.

    /// Drags the selected entries of all shown lists into another program, beginning where the pointer is:
    /// the paths of the list registered last come first, those of each in its order. A path of no length ends
    /// what the receiver sees. 1 when the receiver says that it moved the files: the entries are gone from
    /// their lists then. 0 otherwise: nothing is selected, no button is held, or the files were copied or not
    /// taken. Blocks until the drop, like a modal dialog; the dialog does it by itself after a double click
    /// on an entry that the button is held in.
    int DoDropSource();
    /// Takes the selected entries out of all shown lists and frees them; the others keep their cells, and
    /// nothing is repainted. No file is touched. 1 when there were any.
    int DeleteSelectedFiles();

    // ---- The desktop, as it is at the moment of the call. It may go and come again at any time: repeat the
    // call then.

    /// Puts the window into the desktop: among its icons where these have a window of their own, else into
    /// the desktop's own. 0 when there is none, or when it refuses. Nothing is shown, hidden, moved or
    /// repainted, and the styles stay. See SetParent for what becomes of the window there and when the
    /// desktop goes.
    int SetDesk();
    /// Shows or hides the desktop with its icons; this dialog plays no part, but for being in it. Nothing
    /// happens without a desktop.
    void ShowDeskList(int show);

    // ---- Window messages

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnInitDialog() override;
    /// Not routed by the dialog: a host that wants it calls it from its own handler. Forgets all items.
    void OnDestroy();

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnPaint();
    BOOL OnEraseBkgnd(HDC dc);
    void OnMove(int x, int y);
    void OnActivate(UINT state, HWND other, BOOL minimised);
    void OnClose();
    void OnTimer(UINT_PTR id);
    DECLARE_MESSAGE_MAP()

    // ---- Lists. Each takes an event of one list, with its rectangle, and the pointer in client pixels; the
    // result is 1 when it changed the list or took the event.

    void DrawListCtrl(HDC dc, QKListCtrl* list);
    int MoveOnList(QKListCtrl* list, const CRect& rect, CPoint point);
    int MoveLeaveList(QKListCtrl* list, const CRect& rect);  ///< for hosts
    int MoveLDownList(QKListCtrl* list, const CRect& rect, CPoint point);
    int MoveUpList(QKListCtrl* list, const CRect& rect, CPoint point);
    int MoveLDBClickList(QKListCtrl* list, const CRect& rect, CPoint point);
    int MoveRDownList(QKListCtrl* list, const CRect& rect, CPoint point);
    int MoveRUpList(QKListCtrl* list, const CRect& rect, CPoint point);
    /// Of all shown lists: how many entries are selected; none is any more; those are that the band touches.
    int GetNumsSel();
    void UnSelRcItem();
    void CaleSelItem();

    /// Where SetDesk would put the window; empty without a desktop.
    HWND FindDeskParent();
    /// The desktop's icons where they lie beside the desktop's own window; 0, and nothing stored, without.
    int FindDeskListView(HWND& listView);

    /// 0: in LAY_OPAQUE the whole window catches the pointer.
    void SetMouseTranOver(int transparent);

    POINT m_ptLayerSrc = {0, 0};  ///< where the per-pixel surface is shown from, once m_bLayerSrcSet is 1
    int m_bLayerSrcSet = 0;
    int m_bSysInvalidate = 1;
    int m_nLayStyle = LAY_NONE;
    int m_nAlpha = 255;
    COLORREF m_crColorKey = 0;
    std::unique_ptr<Gdiplus::Image> m_pBackImage;
    CArray<QKItemBase*> m_arItems;
    int m_bHasGif = 0;  ///< once a GIF item was registered
    QKItemBase* m_pDownItem = nullptr;
    int m_bDragOut = 0;
    int m_bSelRect = 0;
    POINT m_ptSelStart = {0, 0};
    POINT m_ptSelEnd = {0, 0};
    CRect m_rcSel;
    int m_bSelecting = 0;
    int m_bMove = 1;
    int m_bTranMouseOver = 1;
    int m_bBackKeepRatio = 0;
    Gdiplus::ARGB m_crBack = 0xFF000000;
    int m_bBackColor = 0;
    std::unique_ptr<Gdiplus::Bitmap> m_pBackCache;  ///< upside down, as the per-pixel surface wants it
    int m_bBackCache = 0;
    int m_bMinimized = 0;  ///< from MinQKDlg to the next release over an item

  private:
    friend class qkui::Alive;
    friend class qkui::FramePainter;
    friend class qkui::Press;
    friend class qkui::TabFocus;

    /// Where an item takes the pointer; false for kinds that never do.
    static bool HitRect(const QKItemBase* item, CRect& rect);
    static bool TakesPointer(const QKItemBase* item);
    QKItemBase* CapturedItem();
    template <class Visit>
    void ForEachList(Visit visit);
    QKListCtrl* TopmostList();
    std::u16string SelectedPaths();
    void CarryFirstIcon(COleDataSource& source);
    void PressEntry(QKListCtrl& list, qkui::Entry& entry);
    void SelectAlone(QKListCtrl& list, qkui::Entry& entry);
    bool DropListFocus();
    QKVScrollBar* BarOf(const QKListCtrl& list) const;
    void SettleScrolling() const;
    void FollowThumb(const QKVScrollBar* bar);
    QKListCtrl* ScrollingListAt(CPoint point);
    void ShowScrolled(QKListCtrl& list);
    QKListCtrl* KeyList();
    bool HandleListKey(UINT key);
    bool MoveFocus(QKListCtrl& list, UINT key);
    bool SelectFocused(QKListCtrl& list);
    void SelectUpTo(QKListCtrl& list, int index);
    void StartBand(CPoint point);
    void BeginBandAt(CPoint point);
    void StretchBand(CPoint point);
    QKListCtrl* BandList() const;

    const QKListCtrl* m_pKeyList = nullptr;  ///< pressed last; it may be gone
    std::shared_ptr<Gdiplus::Font> m_pDefaultFont;
    std::unique_ptr<qkui::Press> m_pPress;
    std::unique_ptr<qkui::TabFocus> m_pFocus;
    std::unique_ptr<qkui::ItemTips> m_pTips;
    std::unique_ptr<qkui::FramePainter> m_pPainter;
    std::shared_ptr<const void> m_pLife = std::make_shared<char>();  ///< expires with the object
};
