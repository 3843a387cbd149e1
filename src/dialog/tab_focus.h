// Which item the keyboard clicks, and the frame that shows it.
#pragma once

#include <platform/gdiplus.h>

#include <qkui/dialog/dialog_base.h>

namespace qkui {

class TabFocus {
  public:
    explicit TabFocus(CQKDialogBase& dialog) : dialog_(dialog) {}

    void Enable(bool enable) { enabled_ = enable; }
    void SetColor(const Gdiplus::Color& color) { color_ = color; }
    const Gdiplus::Color& GetColor() const { return color_; }

    // Whether it is of a kind that is clicked, can be now, and is a tab stop.
    static bool CanHave(const QKItemBase& item);
    // Null when it is none of the dialog's any more, or can no longer have it.
    QKItemBase* Item() const;
    // Gives it to an item and refreshes the frame. The dialog may be gone then.
    void Show(QKItemBase* item, bool shown);
    // The next Tab goes on from where the mouse was pressed.
    void PressedAt(CPoint point);
    // True when the key was the focus's. The dialog may be gone then.
    bool TakeKey(const MSG& message);

    CRect Frame() const;  // empty while it does not show
    void Draw(Gdiplus::Graphics& graphics, const CRect& frame) const;

  private:
    void Set(QKItemBase* item, bool shown) {
        item_ = item;
        shown_ = shown && item;
    }
    // Who gets it from the one who has it; null when nobody can.
    QKItemBase* Next(bool backwards) const;

    CQKDialogBase& dialog_;
    bool enabled_ = false;
    bool shown_ = false;
    QKItemBase* item_ = nullptr;  // compared, and used only while it is registered
    Gdiplus::Color color_{0xFF3399FF};
};

}  // namespace qkui
