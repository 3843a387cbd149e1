// A press on a dialog, from the button going down until it is up again, and the click that it becomes.
#pragma once

#include <platform/geometry.h>

class CQKDialogBase;
class QKItemBase;

namespace qkui {

// What is known of the press is in the dialog's own fields. Wherever the host is called the dialog may be
// gone afterwards, and this with it.
class Press {
  public:
    explicit Press(CQKDialogBase& dialog) : dialog_(dialog) {}

    void Begin(CPoint point);
    // Whatever ends the dispatch of a release, the press is over: nothing stays captured.
    void End();
    // A press that no item takes moves the window, or is held.
    void DragWindow(CPoint point);
    // The thumb follows the pointer as far as its travel goes. 1 when it was dragged.
    int DragThumb(QKItemBase* item, CPoint point);
    // Drags the selected entries out; 1 when they were moved.
    int DragOut();

    enum class ClickedBy { Pointer, Key };
    // The check and the host's function. False when the item, the window or the dialog itself did not outlive
    // them: the release then touches none of them any more.
    bool Complete(QKItemBase* item, ClickedBy by, bool& changed);
    void ClickByKey(QKItemBase* item);

    // Of the items at a point the topmost that has a tooltip, unless one that takes the pointer covers it.
    const QKItemBase* TippedAt(CPoint point) const;

  private:
    bool ToggleCheck(QKItemBase* item);
    void UncheckOthers(const QKItemBase* radio);

    CQKDialogBase& dialog_;
};

}  // namespace qkui
