#include "list/entry.h"

#include <algorithm>
#include <new>
#include <utility>

#include <platform/gdi.h>

#include "list/list_text.h"

namespace qkui {

Entry::Entry(std::u16string_view text) {
    text = text.substr(0, QKListItem::kTextUnits - 1);
    if (text.empty()) return;
    text_.reset(new WCHAR[text.size()]);
    std::copy(text.begin(), text.end(), text_.get());
    textLength = static_cast<std::uint16_t>(text.size());
}

void ReleaseRecord::operator()(QKListItem* item) const {
    delete item->pImage;
    delete item->pImage2;
    delete item->pAlphaImage;
    if (item->hIcon) DestroyIcon(item->hIcon);
    delete item->pTextImage;
    delete item;
}

EntryDetails::~EntryDetails() {
    if (icon) DestroyIcon(icon);
}

std::u16string_view Entry::Text() const {
    return record ? TextOf(record->szText) : OwnText();
}

std::u16string_view Entry::Path() const {
    if (record) return TextOf(record->szPath);
    return details ? std::u16string_view(details->path) : std::u16string_view();
}

Gdiplus::Image* Entry::Caption() const {
    if (record) return record->pTextImage;
    return look ? look->caption.get() : nullptr;
}

EntryLook& Entry::Look() {
    if (!look) look = std::make_unique<EntryLook>();
    return *look;
}

OwnedRecord Entry::MakeRecord() const {
    OwnedRecord item(new QKListItem);
    item->nID = id;
    item->nMouseState = mouse;
    item->nFocusState = focus;
    item->nSelState = unselected;
    CopyText(item->szText, OwnText());
    if (details) {
        CopyText(item->szPath, details->path);
        int* const users[] = {&item->nUser1, &item->nUser2, &item->nUser3, &item->nUser4, &item->nUser5};
        for (std::size_t i = 0; i < std::size(users); ++i)
            *users[i] = details->users[i];
    }
    if (icon && !(item->pImage = icon->Clone())) throw std::bad_alloc();
    return item;
}

void Entry::GiveTo(QKListItem& item, std::uint64_t captionEpoch) {
    if (details) {
        item.pImage2 = details->image2.release();
        item.hIcon = std::exchange(details->icon, HICON());
    }
    if (look) {
        if (look->showsText && look->captionEpoch == captionEpoch) CopyText(item.szTextCath, OwnText());
        item.pTextImage = look->caption.release();
    }
    ForgetPicture();
    text_.reset();
    icon.reset();
    details.reset();
    record = &item;
}

void Entry::TakeFrom(QKListItem* item) {
    text_.reset();
    icon.reset();
    details.reset();
    look.reset();
    record = item;
    id = item->nID;
    mouse = State(item->nMouseState);
    focus = State(item->nFocusState);
    unselected = State(item->nSelState);
}

}  // namespace qkui
