/// @file
/// The icon list: entries with an icon and a caption in a grid of cells, selected by click or rubber band.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include <platform/collections.h>

#include <qkui/items/item_base.h>
#include <qkui/list/list_item.h>

class QKVScrollBar;

namespace qkui {
struct ListAccess;
struct ListState;
}  // namespace qkui

/// How a list behaves.
enum QKListMode : int {
    QKLIST_NORMAL = 0,
    QKLIST_DESKTOP = 1,  ///< entries may be placed at a point; a press on empty space starts the rubber band
};

/// The shape of the cells. Any other number gets the settings of QKLT_LIST and the layout of a grid.
enum QKListType : int {
    QKLT_BIGICON = 0,  ///< icons of 48 pixels in cells of 75 by 90, captions below
    QKLT_ICON = 1,     ///< icons of 32 pixels in cells of 75 by 74
    QKLT_LIST = 2,     ///< rows as wide as the list, icons of 18 pixels, captions beside
};

/// What a list calls. Entries are the list's own: to be read and changed, not freed. The point is the
/// pointer's, in client pixels, and lives as long as the call. Functions may change, empty or remove the list
/// and close the dialog.
struct QKListCallbacks {
    LPVOID pReserved1 = nullptr;  ///< these three are not read
    LPVOID pReserved2 = nullptr;
    LPVOID pReserved3 = nullptr;
    void (*pfnRClick)(QKListItem* item, POINT* point, LPVOID param) = nullptr;  ///< null: empty space
    void (*pfnClick)(QKListItem* item, POINT* point, LPVOID param) = nullptr;
    void (*pfnDblClick)(QKListItem* item, LPVOID param) = nullptr;
    LPVOID pParam = nullptr;
};

/// The list owns its entries and what they hold, and keeps them in one order: that of every index, of layout
/// and of drawing. Entries lie where they are, inside the list's rectangle or not, and nothing scrolls by
/// itself, unless the host asks for it (SetScrollBar). No operation repaints.
///
/// What a host may do with an entry that it got from GetItem, GetItemFromRect or a callback: read and change
/// any field at any time for as long as the entry is in the list; one got from a const list may only be read.
/// As long as a host never got more than 1024 entries of a list, the list takes a change into account at
/// once, and the entries stay true. After that, it is so with the 64 that were got last. Of the others, a
/// change is taken into account at once where it is asked for the entry (it is got again or passed to the
/// list, drawn, or under the pointer), by a layout of all entries and by ReSetPos, SelectAll, ClearState and
/// a drag, and else by and by, 64 entries with every frame; and their rectangles may be those from before the
/// list was moved or laid out: who reads them gets the entry again. Their states are true at any time. A
/// record takes 1.7 kB, and is made when an entry is first got: who never asks for an entry never pays for
/// it. An entry must not be freed, and what it owns may be replaced but not shared. Texts end at their
/// terminator, or with the 259th unit. After changing the caption of an entry the host calls ReCalcStateRect;
/// after changing what its caption looks like otherwise it empties szTextCath.
///
/// A derived class may change any of the protected fields, the font and the format among them: captions are
/// measured and drawn with what they hold when the list is next laid out (RedrawList, or any other layout).
///
/// Copies share the entries, with what each of them adds or removes, the font and the frame images; every
/// copy has its own place, settings and callbacks, and the entries lie where the last layout, of any, put
/// them: of lists that scroll there should be one.
///
/// When memory runs out, an operation answers as if there was nothing to do or to find, and a layout leaves
/// entries without a place until the next one.
class PLATFORM_API QKListCtrl : public QKItemBase {
  public:
    QKListCtrl();
    ~QKListCtrl();
    QKListCtrl(const QKListCtrl&) = default;
    QKListCtrl& operator=(const QKListCtrl&) = default;

    // ---- Entries

    ///@{
    /// Adopt a copy of the record at the end. Its images are taken over: the record's pointers are null
    /// afterwards; its icon is destroyed and must not be used. State rectangles, flags, pAlphaImage and
    /// caption are not taken over. 1; 0 when memory ran out: the list and the record are as they were then.
    /// The first form places the entry in the first free cell from the point on, in a list of QKLIST_DESKTOP;
    /// in other lists, and in the second form without `layout`, it keeps the record's cell. With `layout` it
    /// gets the first free cell.
    int AddItem(QKListItem* item, int x, int y);
    int AddItem(QKListItem* item, int layout);
    ///@}
    /// Before the entry at `index`; at the end for an index that is negative or beyond. Lays everything out
    /// again. Where memory runs out the record keeps its images, unless it is in the list.
    void InsertItem(QKListItem* item, int index);
    ///@{
    /// 0 when it is no entry. It leaves the selection in any case. Without `release` the caller owns it now,
    /// and frees its images, icon, rendered caption and record. The others keep their cells.
    int RemoveAt(QKListItem* item, int release);
    void RemoveAll();
    ///@}
    int GetCount() const;
    ///@{
    /// The entry at an index, from 0; 0 or null when there is none.
    int GetItem(int index, QKListItem** out);
    QKListItem* GetItem(int index);
    const QKListItem* GetItem(int index) const;
    ///@}
    /// Puts a record, made with new, into the place of another, which is neither freed nor taken out of the
    /// selection. The list owns the new one. Nothing happens for a null record or a wrong index.
    void SetItem(int index, QKListItem* item);
    /// Swaps the places of two entries; their cells stay theirs. Always 0.
    int ChangeItemPos(QKListItem* a, QKListItem* b);
    /// The first entry whose cell meets a rectangle: its index, or -1.
    int GetItemFromRect(const CRect* rect, QKListItem*& out);
    /// One more than the largest identifier; 0 for an empty list.
    int ComputerID();

    // ---- Looks and layout. The grid's cells are filled in order; an entry gets the first whose top left
    // corner lies in no other entry's cell. The list grows to the right and downwards to hold them.

    /// Applies the settings of a type and lays everything out again.
    void SetListType(QKListType type);
    ///@{
    /// Stores settings of the host's own; the next layout follows them.
    void SetListType(QKListType type, int itemWidth, int itemHeight, int imageWidth, int imageHeight,
                     int gapX, int gapY);
    QKListType GetListType() const { return m_nListType; }
    ///@}
    int GetItemWidth() const { return m_nItemWidth; }
    int GetItemHeight() const { return m_nItemHeight; }
    int GetImageWidth() const { return m_nImageWidth; }
    int GetImageHeight() const { return m_nImageHeight; }
    int GetWIner() const { return m_nWIner; }
    int GetHIner() const { return m_nHIner; }
    int GetInerTop() const { return m_nInerTop; }
    ///@{
    /// 1: columns are filled first, 0: rows. What is stored, and returned, is the inverse.
    void SetArrange(int columnsFirst) { m_nArrange = columnsFirst ? 0 : 1; }
    int GetArrange() const { return m_nArrange; }
    ///@}
    void SetListMode(QKListMode mode) { m_nListMode = mode; }
    QKListMode GetListMode() const { return m_nListMode; }

    ///@{
    /// Moves the list and lays everything out; the first form writes the rectangle back, grown. Nothing
    /// happens for a null rectangle. Moving a list whose entries stay the same costs the same however many
    /// there are: a scroll bar may call this for every step.
    void SetRect(CRect* rect);
    void SetRect(const CRect* rect);
    ///@}
    using QKItemBase::SetRect;  ///< the form with four numbers moves no entry
    /// Lays everything out; with 0 only the heights, in place.
    void ReSetPos(int full);
    /// Drops every rendered caption and lays everything out.
    void RedrawList();
    /// After the host changed an entry's caption.
    void ReCalcStateRect(QKListItem* item);
    ///@{
    /// How far the cells reach from the list's top and left; those left of or above the client area do not
    /// count.
    int GetListMaxHeight();
    int GetListMaxWidth();
    ///@}

    // ---- Scrolling. A list that scrolls keeps the rectangle that SetRect gives it, draws nothing outside it
    // and takes the pointer nowhere else. Its entries, placed by the list or by the host, are moved under it:
    // every rectangle of an entry says where it is now. A layout keeps the position, a shorter content ends
    // at the bottom of the rectangle, and RemoveAll goes back to the top. Rows begin so far right that all of
    // their icons shows. AddItem at a point takes the cell under it, wherever that is.

    /// Scrolls from now on: by the bar's thumb, by the wheel over list or bar, and by keys (SetKeyboard,
    /// which this turns on). Give the list its rectangle afterwards. It fills rows from now on; SetArrange(1)
    /// brings the columns back, which then scroll sideways, without the bar. The bar stays the host's, who
    /// registers it with the same dialog, places it and gives it its pictures; its length and position follow
    /// the list whenever the dialog draws or the user scrolls, and its own callbacks are called as ever.
    /// Null: no bar.
    void SetScrollBar(QKVScrollBar* bar);
    ///@{
    /// The same without a bar, and without turning on the keys; 0 goes back to the top and ends it.
    void SetScrolling(int enable);
    int IsScrolling() const;
    ///@}
    ///@{
    /// How far the content is moved to the left and up, in pixels, and how far it can be. Positions beyond
    /// are limited. 1 when that moved it. The cost does not depend on the number of entries.
    int SetScrollPos(int x, int y);
    CPoint GetScrollPos();
    CSize GetScrollMax();
    ///@}
    /// Scrolls as little as shows the entry's cell. 1 when that moved the content.
    int EnsureVisible(int index);

    // ---- Keyboard

    /// 1: keys that come to the dialog move the focus, and scroll it into view: arrows, Home, End, Page Up
    /// and Page Down. The entry with the focus is the only one selected then. With Shift all from the last
    /// one that was chosen otherwise up to it are; with Ctrl the selection stays. The space bar selects the
    /// entry besides the others, with Ctrl it also unselects; Ctrl+A selects all. Of several lists the one
    /// that was pressed last has the keys, or else the topmost. 0, as at first: the keys are the host's.
    void SetKeyboard(int enable);
    ///@{
    /// Gives one entry the focus, as a press on it does, but for selecting it; a wrong index takes it away.
    void SetFocusItem(int index);
    int GetFocusItem();  ///< the first that has it; -1 for none
    ///@}

    // ---- Looks of the captions. Entries stay where they are; captions are measured and drawn anew.

    ///@{
    /// Keeps a clone. At first the font that the desktop writes below its icons in.
    void SetFont(const Gdiplus::Font& font);
    Gdiplus::Font* GetFont() const { return m_pFont.get(); }  ///< stays the list's; null when it has none
    ///@}
    ///@{
    /// Alpha 255 is stored as 254. At first white, on a glow of 0xB4323232; a glow of alpha 0 is none.
    void SetTextColor(const Gdiplus::Color& color);
    Gdiplus::Color GetTextColor() const { return m_crText; }
    ///@}
    void SetGlowColor(const Gdiplus::Color& color);
    Gdiplus::Color GetGlowColor() const { return m_crGlow; }

    /// Nine-part frames around hovered, pressed, and selected or focused entries, each of nine files in the
    /// order of DrawStateImage; other numbers of paths are ignored.
    void SetMouseMoveImage(const CStringArray& paths);
    void SetMouseDownImage(const CStringArray& paths);
    void SetFouceImage(const CStringArray& paths);

    // ---- States

    /// Nothing is selected, focused, hovered or pressed any more. 1 when that changed an entry.
    int ClearState();
    int RemoveMoveState();  ///< hovered entries only
    /// Frees every entry's pAlphaImage and sets nAlpha to 255. 1 when there was one.
    int ClearAlphImage();
    /// Whether `text` is another than the entry's caption was rendered for, which it is from now on.
    int SetTextCath(QKListItem* item, LPCWSTR text);

    // ---- Selection: a flag in the entry, and the order of selecting. 1 when the entry's flag changed.

    int SetSel(QKListItem* item, int select);
    int SetSel(int index, int select);
    void SetSignalSel(int index);  ///< selects one more
    void SelectAll();
    int UnSelRcItem();  ///< unselects all; 1 when a flag changed
    int ItemInSelect(QKListItem* item);
    ///@{
    /// The selected entries in the list's order. From a list that is not const they are handed out.
    std::vector<int> GetSelectedIndexes() const;
    std::vector<QKListItem*> GetSelectedItems();
    std::vector<const QKListItem*> GetSelectedItems() const;
    int GetSelectedCount() const;
    ///@}

    /// Copies the last four fields; null removes them.
    void SetListCallBack(const QKListCallbacks* callbacks);
    /// Any callable, with what it captures, in the place of a function of the record; an empty one gives that
    /// its place back. It may do all that the record's may.
    void SetClickCallBack(std::function<void(QKListItem* item, CPoint point)> clicked);
    void SetDblClickCallBack(std::function<void(QKListItem* item)> clicked);
    void SetRClickCallBack(
        std::function<void(QKListItem* item, CPoint point)> clicked);  ///< null: empty space
    /// Called when a press, a release, a step of the rubber band, a key or files that were dragged away have
    /// made the selection another one: once for all of that, whatever number of entries it concerned, and
    /// after the click functions. What the host selects outside of these it knows itself.
    void SetSelectionCallBack(std::function<void()> changed);

    /// Rendered captions that are out of sight are dropped when all take more than this; 16 MiB at first.
    void SetCaptionLimit(std::size_t bytes) { m_nCaptionLimit = bytes; }

  protected:
    int IsItemInPos(const POINT& point);
    void ScaleItemXY(QKListItem* item);
    void ScaleItemXY_Auto(QKListItem* item, int x, int y);
    void SetMStateRect(QKListItem* item);
    void SetFStateRect(QKListItem* item);

    using NineImages = std::array<std::shared_ptr<Gdiplus::Image>, 9>;

    std::shared_ptr<Gdiplus::Font> m_pFont;  ///< null: no caption shows
    Gdiplus::Color m_crText{0xFEFFFFFF};
    Gdiplus::Color m_crGlow{0xB4323232};
    Gdiplus::StringFormat m_format;  ///< but for the trimming, which drawing sets
    QKListCallbacks m_listCallbacks;
    NineImages m_pMoveImage, m_pDownImage, m_pFouceImage;
    int m_nArrange = 0;
    QKListType m_nListType = QKLT_LIST;
    int m_nItemWidth = -1;
    int m_nItemHeight = 20;
    int m_nHIner = 3;
    int m_nWIner = -1;
    int m_nImageWidth = 18;
    int m_nImageHeight = 18;
    int m_nInerTop = 3;
    int m_nTextGap = 5;
    QKListMode m_nListMode = QKLIST_NORMAL;
    std::size_t m_nCaptionLimit = std::size_t{16} << 20;

  private:
    /// The entries, which copies share, and what each copy keeps by itself.
    class State {
      public:
        State();
        State(const State& other);
        State& operator=(const State& other);
        ~State();
        qkui::ListState* operator->() const { return state_.get(); }

      private:
        std::unique_ptr<qkui::ListState> state_;
    };
    State m_state;

    friend struct qkui::ListAccess;
};
