// The texts of a record: they end at their terminator, or where the record has no room for one.
#pragma once

#include <algorithm>
#include <string_view>

#include <qkui/list/list_item.h>

namespace qkui {

inline std::u16string_view TextOf(const WCHAR (&units)[QKListItem::kTextUnits]) {
    const WCHAR* const last = units + QKListItem::kTextUnits - 1;
    return {units, static_cast<std::size_t>(std::find(units, last, u'\0') - units)};
}

inline bool IsSameText(const WCHAR (&a)[QKListItem::kTextUnits], const WCHAR (&b)[QKListItem::kTextUnits]) {
    for (int i = 0; i < QKListItem::kTextUnits - 1; ++i)
        if (a[i] != b[i] || a[i] == u'\0') return a[i] == b[i];
    return true;
}

// Cut to what a record holds.
inline void CopyText(WCHAR (&to)[QKListItem::kTextUnits], std::u16string_view text) {
    const std::u16string_view kept = text.substr(0, QKListItem::kTextUnits - 1);
    *std::copy(kept.begin(), kept.end(), to) = u'\0';
}

}  // namespace qkui
