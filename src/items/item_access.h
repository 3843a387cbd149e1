// What the library does with items beyond what hosts see of them.
#pragma once

#include <platform/gdiplus.h>

#include <qkui/items/check_box.h>
#include <qkui/items/image.h>
#include <qkui/items/progress.h>
#include <qkui/items/scroll_bar.h>
#include <qkui/items/static_text.h>
#include <qkui/items/text_button.h>
#include "items/draw_operations.h"

namespace qkui {

struct ItemAccess {
    // The draw operations of an item. Of a check box: frame and mark without the text.
    static void Record(const QKButton& button, OperationSink& sink);
    static void Record(const QKTextButton& button, OperationSink& sink);
    static void Record(const QKCheckBox& box, OperationSink& sink);
    static void Record(const QKStaticText& text, OperationSink& sink);
    static void Record(const QKImage& image, OperationSink& sink);
    static void Record(const QKProgress& progress, OperationSink& sink);
    static void Record(const QKVScrollBar& bar, OperationSink& sink);
    static void RecordText(const QKCheckBox& box, OperationSink& sink);
    // Of a picture in nine parts.
    static void Record(QKNineParts& parts, Gdiplus::Image& picture, const Gdiplus::RectF& rect,
                       OperationSink& sink);

    // What a completed click calls. The item may be gone afterwards.
    static void CallClicked(const QKItemBase& item) { item.CallClicked(); }
    // Where the pointer was when the button went down on the item, or last dragged it.
    static POINT& PressedAt(QKItemBase& item) { return item.m_ptLast; }
    // What is called while a thumb is dragged: a copy, since the first of the two may end the bar.
    struct Dragged {
        void (*position)(int, LPVOID);
        LPVOID argument;
        std::shared_ptr<const std::function<void(int)>> scrolled;
    };
    static Dragged CallsOf(const QKVScrollBar& bar) {
        return {bar.m_pfnPosition, bar.m_pArgument, bar.m_pScrolled};
    }

  private:
    static void RecordThumb(const QKVScrollBar& bar, OperationSink& sink);
};

// The font of a dialog (null: none) for an item with a text, unless it has its own.
void GiveDefaultFont(QKItemBase& item, const std::shared_ptr<Gdiplus::Font>& font);

}  // namespace qkui
