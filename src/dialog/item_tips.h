// Tooltips: the text of the item that the pointer rests on, in a small window of its own.
#pragma once

#include <memory>

#include <platform/gdiplus.h>
#include <platform/window.h>

class QKItemBase;

namespace qkui {

class ItemTips {
  public:
    ItemTips() = default;
    ~ItemTips();
    ItemTips(const ItemTips&) = delete;
    ItemTips& operator=(const ItemTips&) = delete;

    // The pointer moved over an item of the window `owner`, or over none (null). `font` (null: a label's at
    // first) is what the text is shown in.
    void PointerOver(const QKItemBase* item, HWND owner, const std::shared_ptr<Gdiplus::Font>& font);
    // Until the pointer is over another item.
    void Hide();

  private:
    static LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool MakeWindow(HWND owner);
    void Show();
    void Paint();
    void Tick(UINT_PTR timer);

    HWND window_;  // hidden while there is nothing to show; goes with its owner
    HWND owner_;
    const QKItemBase* item_ = nullptr;  // compared only: it may be gone
    bool waiting_ = false;
    CString text_;
    std::shared_ptr<Gdiplus::Font> font_;
};

}  // namespace qkui
