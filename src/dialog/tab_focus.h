// Which item the keyboard clicks, and the frame that shows it.
#pragma once

#include <platform/gdiplus.h>

#include <qkui/dialog/dialog_base.h>

namespace qkui {

class TabFocus {
  public:
    void Enable(bool enable) { enabled_ = enable; }
    bool IsEnabled() const { return enabled_; }

    // Whether it is of a kind that is clicked, can be now, and is a tab stop.
    static bool CanHave(const QKItemBase& item);

    void Set(QKItemBase* item, bool shown) {
        item_ = item;
        shown_ = shown && item;
    }
    // Null when it is none of `items` any more, or can no longer have it.
    QKItemBase* Item(const CArray<QKItemBase*>& items) const;
    bool IsShown() const { return shown_; }
    // Who gets it from the one who has it; null when nobody can.
    QKItemBase* Next(const CArray<QKItemBase*>& items, bool backwards) const;

    void SetColor(const Gdiplus::Color& color) { color_ = color; }
    const Gdiplus::Color& GetColor() const { return color_; }
    // Where the frame of an item with this rectangle lies, as far as the client area reaches.
    static CRect Outside(const CRect& item, const CRect& client);
    void Draw(Gdiplus::Graphics& graphics, const CRect& outside) const;

  private:
    bool enabled_ = false;
    bool shown_ = false;
    QKItemBase* item_ = nullptr;  // compared, and used only while it is registered
    Gdiplus::Color color_{0xFF3399FF};
};

}  // namespace qkui
