#include "list/list_node.h"

#include <algorithm>
#include <new>
#include <utility>

#include <platform/gdi.h>

#include "list/list_text.h"

QKShortText::QKShortText(std::u16string_view text) {
    if (text.empty()) return;
    units_.reset(new WCHAR[text.size() + 1]);
    *std::copy(text.begin(), text.end(), units_.get()) = u'\0';
}

std::u16string_view QKShortText::View() const {
    return units_ ? std::u16string_view(units_.get()) : std::u16string_view();
}

void QKReleaseRecord::operator()(QKListItem* item) const {
    delete item->pImage;
    delete item->pImage2;
    delete item->pAlphaImage;
    if (item->hIcon) DestroyIcon(item->hIcon);
    delete item->pTextImage;
    delete item;
}

QKEntryDetails::~QKEntryDetails() {
    if (icon) DestroyIcon(icon);
}

std::u16string_view QKListNode::Text() const {
    return record ? QKTextOf(record->szText) : text.View();
}

std::u16string_view QKListNode::Path() const {
    if (record) return QKTextOf(record->szPath);
    return details ? details->path.View() : std::u16string_view();
}

Gdiplus::Image* QKListNode::Caption() const {
    if (record) return record->pTextImage;
    return look ? look->caption.get() : nullptr;
}

QKEntryLook& QKListNode::Look() {
    if (!look) look = std::make_unique<QKEntryLook>();
    return *look;
}

QKOwnedRecord QKListNode::MakeRecord() const {
    QKOwnedRecord item(new QKListItem);
    item->nID = id;
    item->nMouseState = mouse;
    item->nFocusState = focus;
    item->nSelState = unselected;
    QKSetText(item->szText, text.View());
    if (details) {
        QKSetText(item->szPath, details->path.View());
        int* const users[] = {&item->nUser1, &item->nUser2, &item->nUser3, &item->nUser4, &item->nUser5};
        for (std::size_t i = 0; i < std::size(users); ++i)
            *users[i] = details->users[i];
    }
    if (icon && !(item->pImage = icon->Clone())) throw std::bad_alloc();
    return item;
}

void QKListNode::GiveTo(QKListItem& item, std::uint64_t captionEpoch) {
    if (details) {
        item.pImage2 = details->image2.release();
        item.hIcon = std::exchange(details->icon, HICON());
    }
    if (look) {
        if (look->showsText && look->captionEpoch == captionEpoch) QKSetText(item.szTextCath, text.View());
        item.pTextImage = look->caption.release();
    }
    ForgetPicture();
    text = QKShortText();
    icon.reset();
    details.reset();
    record = &item;
}

void QKListNode::TakeFrom(QKListItem* item) {
    text = QKShortText();
    icon.reset();
    details.reset();
    look.reset();
    record = item;
    id = item->nID;
    mouse = State(item->nMouseState);
    focus = State(item->nFocusState);
    unselected = State(item->nSelState);
}
