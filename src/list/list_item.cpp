#include <qkui/list/list_item.h>

#include "list/list_text.h"

using namespace qkui;

BOOL QKListItem::SetText(const CString& text) {
    constexpr int room = kTextUnits - 1;
    const bool fits = text.GetLength() <= room;
    const WCHAR last = fits ? u'\0' : text[room - 1];
    const bool half = last >= 0xD800 && last < 0xDC00;
    CopyText(szText, text.View().substr(0, room - (half ? 1 : 0)));
    return fits;
}

BOOL QKListItem::SetPath(const CString& path) {
    const bool fits = path.GetLength() < kTextUnits;
    CopyText(szPath, fits ? path.View() : std::u16string_view());
    return fits;
}
