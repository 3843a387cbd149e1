// The entries of a list: adding, removing, finding.
#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include <platform/gdi.h>
#include <platform/window.h>

#include <qkui/list/list_ctrl.h>
#include "list/list_entries.h"
#include "list/list_layout.h"
#include "list/list_text.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

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

std::unique_ptr<EntryDetails> DetailsOf(const QKListItem& host) {
    auto details = std::make_unique<EntryDetails>();
    details->path = TextOf(host.szPath);
    const int users[] = {host.nUser1, host.nUser2, host.nUser3, host.nUser4, host.nUser5};
    std::copy(std::begin(users), std::end(users), details->users);
    if (host.pImage2) details->image2.reset(host.pImage2->Clone());
    if (host.hIcon) details->icon = CopyIcon(host.hIcon);
    return details;
}

bool HasDetails(const QKListItem& host) {
    return host.szPath[0] || host.pImage2 || host.hIcon || host.nUser1 || host.nUser2 || host.nUser3 ||
           host.nUser4 || host.nUser5;
}

// The list's own entry: what it takes over is copied first, and let go of when the entry is in the list.
std::unique_ptr<Entry> EntryOf(const QKListItem& host, ListEntries& entries) {
    std::unique_ptr<Entry> entry = Entry::Make(TextOf(host.szText));
    entry->id = entries.NextId();
    entry->cell = host.rcItem;
    if (host.pImage) entry->icon = entries.Icons().Share(*host.pImage);
    if (HasDetails(host)) entry->details = DetailsOf(host);
    return entry;
}

// The record keeps the dead handle of its icon.
void LetGo(QKListItem& host) {
    delete std::exchange(host.pImage, nullptr);
    delete std::exchange(host.pImage2, nullptr);
    if (host.hIcon) DestroyIcon(host.hIcon);
}

}  // namespace

QKListCtrl::QKListCtrl()
    : QKItemBase(QKUI_LISTCTRL), m_lstItems(std::make_shared<ListEntries>()), m_pFont(IconTitleFont()) {
    m_format.SetAlignment(Gdiplus::StringAlignmentCenter);
    m_format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
}

QKListCtrl::~QKListCtrl() = default;

std::shared_ptr<ListEntries> QKListCtrl::Entries::HoldToo(const std::shared_ptr<ListEntries>& other) {
    return {other.get(), [held = other->shared_from_this()](ListEntries*) {}};
}

// `place` puts the entry into a cell; the list, which grows for it, is as before if it cannot stay.
template <class Place>
bool QKListCtrl::Add(QKListItem& host, int index, Place place) {
    const CSize size(m_nWidth, m_nHeight);
    const QK_STATUS status = m_nStatus;
    const Uninterrupted uninterrupted;
    try {
        std::unique_ptr<Entry> entry = EntryOf(host, *m_lstItems);
        const std::optional<CellPlace> cell = place();
        if (cell) {
            entry->cell = cell->cell;
            entry->caption = cell->caption;
        }
        const bool measured = cell && m_hParent;
        const ListMeasure measure = measured ? Measure() : ListMeasure();
        m_lstItems->Insert(std::move(entry), index, measured ? &measure : nullptr);
        LetGo(host);
        return true;
    } catch (const std::bad_alloc&) {
        m_nWidth = size.cx;
        m_nHeight = size.cy;
        m_nStatus = status;
        return false;
    }
}

int QKListCtrl::AddItem(QKListItem* item, int x, int y) {
    return Add(*item, GetCount(), [&] { return PlaceAtPoint(x, y); });
}

int QKListCtrl::AddItem(QKListItem* item, int layout) {
    return Add(*item, GetCount(), [&] { return layout ? PlaceFirstFree(LayoutGrid()) : std::nullopt; });
}

void QKListCtrl::InsertItem(QKListItem* item, int index) {
    const int place = index < 0 || index >= GetCount() ? GetCount() : index;
    if (Add(*item, place, [] { return std::optional<CellPlace>(); })) LayOutAll();
}

int QKListCtrl::RemoveAt(QKListItem* entry, int release) {
    m_lstItems->Deselect(entry);
    return WithinMemory(0, [&] {
        Entry* node = m_lstItems->Find(entry);
        if (!node) return 0;
        if (!release) m_lstItems->Expose(*node);  // measured, as its new owner may expect
        m_lstItems->Extract(*node);
        if (!release) return 1;
        // A freed record must not stand anywhere else.
        while ((node = m_lstItems->Find(entry)))
            m_lstItems->Extract(*node);
        ReleaseRecord()(entry);
        return 1;
    });
}

void QKListCtrl::RemoveAll() {
    m_lstItems->Release();
    KeepInRange();
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
    return WithinMemory<QKListItem*>(nullptr, [&] {
        Entry* node = m_lstItems->At(index);
        return node ? m_lstItems->Expose(*node) : nullptr;
    });
}

const QKListItem* QKListCtrl::GetItem(int index) const {
    return WithinMemory<const QKListItem*>(nullptr, [&] {
        Entry* node = m_lstItems->At(index);
        return node ? m_lstItems->Expose(*node, false) : nullptr;
    });
}

void QKListCtrl::SetItem(int index, QKListItem* entry) {
    WithinMemory([&] {
        Entry* node = m_lstItems->At(index);
        if (node && entry) m_lstItems->Replace(*node, entry);
    });
}

int QKListCtrl::ChangeItemPos(QKListItem* a, QKListItem* b) {
    return WithinMemory(0, [&] {
        Entry* first = m_lstItems->Find(a);
        Entry* second = m_lstItems->Find(b);
        if (first && second && first != second) m_lstItems->Swap(*first, *second);
        return 0;
    });
}

int QKListCtrl::GetItemFromRect(const CRect* rect, QKListItem*& out) {
    return WithinMemory(-1, [&] {
        Entry* node = m_lstItems->FirstMeeting(*rect);
        if (!node) return -1;
        out = m_lstItems->Expose(*node);
        return m_lstItems->PositionOf(*node);
    });
}

int QKListCtrl::IsItemInPos(const POINT& point) {
    return WithinMemory(0, [&] { return m_lstItems->IsOccupied(point) ? 1 : 0; });
}

int QKListCtrl::ItemInSelect(QKListItem* entry) {
    return m_lstItems->IsSelected(entry);
}

int QKListCtrl::SetTextCath(QKListItem* entry, LPCWSTR text) {
    if (text == TextOf(entry->szTextCath)) return 0;
    CopyText(entry->szTextCath, text);
    return 1;
}

int QKListCtrl::ComputerID() {
    return WithinMemory(0, [this] { return m_lstItems->NextId(); });
}

void QKListCtrl::RedrawList() {
    m_lstItems->ReleaseCaptions();
    LayOutAll();
}

void QKListCtrl::SetListCallBack(const QKListCallbacks* callbacks) {
    m_listCallbacks = callbacks ? *callbacks : QKListCallbacks();
}
