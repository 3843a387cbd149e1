// The entries of a list: adding, removing, finding.
#include <algorithm>
#include <string_view>
#include <utility>

#include <platform/gdi.h>
#include <platform/window.h>

#include "list/list_ctrl.h"
#include "list/list_entries.h"
#include "list/list_layout.h"

namespace {

// The font in which the desktop writes below its icons.
std::unique_ptr<Gdiplus::Font> IconTitleFont() {
    ICONMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETICONMETRICS, sizeof metrics, &metrics, 0);
    const HDC context = CreateCompatibleDC(HDC());
    auto font = std::make_unique<Gdiplus::Font>(context, &metrics.lfFont);
    DeleteDC(context);
    return font;
}

void TakeOver(Gdiplus::Image*& from, Gdiplus::Image*& to) {
    if (!from) return;
    to = from->Clone();
    delete std::exchange(from, nullptr);
}

// Cut to what a record holds.
void CopyText(WCHAR (&to)[QKListItem::kTextUnits], LPCWSTR from) {
    const std::u16string_view text = std::u16string_view(from).substr(0, QKListItem::kTextUnits - 1);
    *std::copy(text.begin(), text.end(), to) = u'\0';
}

}  // namespace

QKListCtrl::QKListCtrl() : QKItemBase(QKUI_LISTCTRL), m_pFont(IconTitleFont()) {
    m_format.SetAlignment(Gdiplus::StringAlignmentCenter);
    m_format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    m_measureFormat.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    m_lstItems = std::make_shared<QKListEntries>(QKCaptionStyle{m_pFont.get(), &m_measureFormat});
}

QKListCtrl::~QKListCtrl() = default;

QKListItem* QKListCtrl::Adopt(QKListItem& host) {
    auto entry = std::make_unique<QKListItem>();
    entry->nID = m_lstItems->NextId();
    TakeOver(host.pImage, entry->pImage);
    TakeOver(host.pImage2, entry->pImage2);
    entry->nUser1 = host.nUser1;
    entry->nUser2 = host.nUser2;
    entry->nUser3 = host.nUser3;
    entry->nUser4 = host.nUser4;
    entry->nUser5 = host.nUser5;
    entry->rcItem = host.rcItem;
    CopyText(entry->szText, host.szText);
    CopyText(entry->szPath, host.szPath);
    if (host.hIcon) {
        entry->hIcon = CopyIcon(host.hIcon);
        DestroyIcon(host.hIcon);  // the record keeps the dead handle
    }
    return entry.release();
}

void QKListCtrl::Join(QKListItem* entry, int index, bool placed) {
    QKListNode& node = m_lstItems->Insert(entry, index);
    if (placed && m_hParent) m_lstItems->Placed(node, Metrics(), false);
}

int QKListCtrl::AddItem(QKListItem* item, int x, int y) {
    QKListItem* entry = Adopt(*item);
    Join(entry, GetCount(), PlaceAtPoint(*entry, x, y));
    return 1;
}

int QKListCtrl::AddItem(QKListItem* item, int layout) {
    QKListItem* entry = Adopt(*item);
    Join(entry, GetCount(), layout && PlaceFirstFree(*entry));
    return 1;
}

void QKListCtrl::InsertItem(QKListItem* item, int index) {
    QKListItem* entry = Adopt(*item);
    Join(entry, index < 0 || index >= GetCount() ? GetCount() : index, false);
    LayOutAll();
}

int QKListCtrl::RemoveAt(QKListItem* entry, int release) {
    m_lstItems->Deselect(entry);
    QKListNode* node = m_lstItems->Find(entry);
    if (!node) return 0;
    if (!release) m_lstItems->HandOut(*node);  // measured, as its new owner may expect
    m_lstItems->Extract(*node);
    if (!release) return 1;
    // A freed record must not stand anywhere else.
    while ((node = m_lstItems->Find(entry)))
        m_lstItems->Extract(*node);
    QKListEntries::Release(entry);
    return 1;
}

void QKListCtrl::RemoveAll() {
    m_lstItems->Release();
}

int QKListCtrl::GetCount() const {
    return m_lstItems->Count();
}

int QKListCtrl::GetItem(int index, QKListItem** out) {
    QKListItem* entry = GetItem(index);
    if (!entry) return 0;
    *out = entry;
    return 1;
}

QKListItem* QKListCtrl::GetItem(int index) {
    QKListNode* node = m_lstItems->At(index);
    return node ? m_lstItems->HandOut(*node) : nullptr;
}

const QKListItem* QKListCtrl::GetItem(int index) const {
    const QKListNode* node = m_lstItems->At(index);
    return node ? node->item : nullptr;
}

void QKListCtrl::SetItem(int index, QKListItem* entry) {
    QKListNode* node = m_lstItems->At(index);
    if (!node || !entry) return;
    m_lstItems->Replace(*node, entry);
    m_lstItems->HandOut(*node);
}

int QKListCtrl::ChangeItemPos(QKListItem* a, QKListItem* b) {
    QKListNode* first = m_lstItems->Find(a);
    QKListNode* second = m_lstItems->Find(b);
    if (first && second && first != second) m_lstItems->Swap(*first, *second);
    return 0;
}

int QKListCtrl::GetItemFromRect(const CRect* rect, QKListItem*& out) {
    QKListNode* node = m_lstItems->FirstMeeting(*rect);
    if (!node) return -1;
    out = m_lstItems->HandOut(*node);
    return m_lstItems->PositionOf(*node);
}

int QKListCtrl::IsItemInPos(const POINT& point) {
    return m_lstItems->OccupantAt(point).has_value();
}

int QKListCtrl::ItemInSelect(QKListItem* entry) {
    return m_lstItems->IsSelected(entry);
}

int QKListCtrl::SetTextCath(QKListItem* entry, LPCWSTR text) {
    if (std::u16string_view(text) == entry->szTextCath) return 0;
    CopyText(entry->szTextCath, text);
    return 1;
}

int QKListCtrl::ComputerID() {
    return m_lstItems->NextId();
}

void QKListCtrl::RedrawList() {
    m_lstItems->ReleaseCaptions();
    LayOutAll();
}

void QKListCtrl::SetListCallBack(const QKListCallbacks* callbacks) {
    m_listCallbacks = callbacks ? *callbacks : QKListCallbacks();
}
