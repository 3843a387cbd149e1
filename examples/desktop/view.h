// The window: a folder's icons over the whole work area, below all other windows.
#pragma once

#include <optional>
#include <string>

#include <QKUILib.h>

#include "examples/desktop/background.h"
#include "examples/desktop/carry.h"
#include "examples/desktop/folder.h"
#include "examples/desktop/menu.h"
#include "examples/desktop/shelf.h"
#include "examples/desktop/wallpaper.h"

namespace desktop {

class View : public CQKDialogBase {
  public:
    // `settings`: the folder that places and wallpaper are kept in; empty: nothing is kept.
    View(const std::string& folder, const std::string& settings);
    ~View() override;

    // False with the last error. Files come later: they are read off this thread.
    bool Open();
    // Whether all files and their pictures are there.
    bool IsSettled() const { return known_ && !shelf_.IsBusy(); }

    int Count() { return shelf_.List().GetCount(); }
    CRect PlaceOf(int entry);
    bool IsPicture(int entry);
    Menu& ContextMenu() { return menu_; }

    BOOL OnInitDialog() override;
    void DrawSurface(HDC dc, int width, int height, int buffer) override;

  protected:
    void OnDestroy();
    void OnSize(UINT type, int width, int height);
    void OnTimer(UINT_PTR id);
    void OnMouseMove(UINT flags, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnRButtonDown(UINT flags, CPoint point);
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

  private:
    // Files
    void Read(Listing listing);
    void OpenEntry(const std::string& name);
    void ShowMenu(const QKListItem* entry, CPoint point);
    void UseAsWallpaper(const std::string& path);

    // Window
    void CoverWorkArea();
    void StayBelow();
    void ShowWallpaper();
    void Lay();
    void UpdateScrollBar();
    int HiddenHeight() const;
    void ScrollTo(int offset);
    void Tell(const CString& text, bool stays);

    // Dragging
    void PressedOn(CPoint point);
    void DragIcons(UINT flags, CPoint point);
    void DragOut(UINT flags, CPoint point);
    bool IsDragging() const { return draggingOut_ || carry_.IsUnderway(); }

    Folder folder_;
    Shelf shelf_;
    Wallpaper wallpaper_;
    Menu menu_;
    Carry carry_;
    QKVScrollBar bar_;
    int scrolled_ = 0;  // pixels; the bar itself knows no finer steps than those of its thumb
    CString notice_;
    bool noticeStays_ = false;
    std::optional<std::string> toOpen_;  // when the button comes up
    bool draggingOut_ = false;
    bool known_ = false;  // the folder was read, or could not be
    Lifetime lifetime_;
};

}  // namespace desktop
