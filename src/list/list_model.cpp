// The entries of a list: adding, removing, finding.
#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include <platform/gdi.h>
#include <platform/window.h>

#include <qkui/list/list_ctrl.h>
#include "list/list_access.h"
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
    auto entry = std::make_unique<Entry>(TextOf(host.szText));
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

QKListCtrl::QKListCtrl() : QKItemBase(QKUI_LISTCTRL), m_pFont(IconTitleFont()) {
    m_format.SetAlignment(Gdiplus::StringAlignmentCenter);
    m_format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
}

QKListCtrl::~QKListCtrl() = default;

QKListCtrl::State::State() : state_(std::make_unique<ListState>()) {
    state_->entries = std::make_shared<ListEntries>();
}

QKListCtrl::State::State(const State& other) : state_(std::make_unique<ListState>(*other.state_)) {
    state_->life = std::make_shared<const char>();
}

QKListCtrl::State& QKListCtrl::State::operator=(const State& other) {
    const auto life = state_->entries == other->entries ? state_->life : std::make_shared<const char>();
    *state_ = *other.state_;
    state_->life = life;
    return *this;
}

QKListCtrl::State::~State() = default;

// `place` puts the entry into a cell; the list, which grows for it, is as before if it cannot stay.
template <class Place>
bool ListAccess::Add(QKListCtrl& list, QKListItem& host, int index, Place place) {
    const CSize size(list.m_nWidth, list.m_nHeight);
    const QKItemBase::QK_STATUS status = list.m_nStatus;
    const Uninterrupted uninterrupted;
    try {
        std::unique_ptr<Entry> entry = EntryOf(host, Entries(list));
        const std::optional<CellPlace> cell = place();
        if (cell) {
            entry->cell = cell->cell;
            entry->caption = cell->caption;
        }
        const bool measured = cell && list.m_hParent;
        const ListMeasure measure = measured ? Measure(list) : ListMeasure();
        Entries(list).Insert(std::move(entry), index, measured ? &measure : nullptr);
        LetGo(host);
        return true;
    } catch (const std::bad_alloc&) {
        list.m_nWidth = size.cx;
        list.m_nHeight = size.cy;
        list.m_nStatus = status;
        return false;
    }
}

int QKListCtrl::AddItem(QKListItem* item, int x, int y) {
    return ListAccess::Add(*this, *item, GetCount(), [&] { return ListAccess::PlaceAtPoint(*this, x, y); });
}

int QKListCtrl::AddItem(QKListItem* item, int layout) {
    return ListAccess::Add(*this, *item, GetCount(), [&] {
        return layout ? ListAccess::PlaceFirstFree(*this, ListAccess::LayoutGrid(*this)) : std::nullopt;
    });
}

void QKListCtrl::InsertItem(QKListItem* item, int index) {
    const int place = index < 0 || index >= GetCount() ? GetCount() : index;
    if (ListAccess::Add(*this, *item, place, [] { return std::optional<CellPlace>(); }))
        ListAccess::LayOutAll(*this);
}

int QKListCtrl::RemoveAt(QKListItem* item, int release) {
    m_state->entries->Deselect(item);
    return WithinMemory(0, [&] {
        Entry* entry = m_state->entries->Find(item);
        if (!entry) return 0;
        if (!release) m_state->entries->Expose(*entry);  // measured, as its new owner may expect
        m_state->entries->Extract(*entry);
        if (!release) return 1;
        // A freed record must not stand anywhere else.
        while ((entry = m_state->entries->Find(item)))
            m_state->entries->Extract(*entry);
        ReleaseRecord()(item);
        return 1;
    });
}

void QKListCtrl::RemoveAll() {
    m_state->entries->Release();
    ListAccess::KeepInRange(*this);
}

int QKListCtrl::GetCount() const {
    return m_state->entries->Count();
}

int QKListCtrl::GetItem(int index, QKListItem** out) {
    QKListItem* item = GetItem(index);
    if (!item) return 0;
    *out = item;
    return 1;
}

QKListItem* QKListCtrl::GetItem(int index) {
    return WithinMemory<QKListItem*>(nullptr, [&] {
        Entry* entry = m_state->entries->At(index);
        return entry ? m_state->entries->Expose(*entry) : nullptr;
    });
}

const QKListItem* QKListCtrl::GetItem(int index) const {
    return WithinMemory<const QKListItem*>(nullptr, [&] {
        Entry* entry = m_state->entries->At(index);
        return entry ? m_state->entries->Expose(*entry, false) : nullptr;
    });
}

void QKListCtrl::SetItem(int index, QKListItem* item) {
    WithinMemory([&] {
        Entry* entry = m_state->entries->At(index);
        if (entry && item) m_state->entries->Replace(*entry, item);
    });
}

int QKListCtrl::ChangeItemPos(QKListItem* a, QKListItem* b) {
    return WithinMemory(0, [&] {
        Entry* first = m_state->entries->Find(a);
        Entry* second = m_state->entries->Find(b);
        if (first && second && first != second) m_state->entries->Swap(*first, *second);
        return 0;
    });
}

int QKListCtrl::GetItemFromRect(const CRect* rect, QKListItem*& out) {
    return WithinMemory(-1, [&] {
        Entry* entry = m_state->entries->FirstMeeting(*rect);
        if (!entry) return -1;
        out = m_state->entries->Expose(*entry);
        return m_state->entries->PositionOf(*entry);
    });
}

int QKListCtrl::IsItemInPos(const POINT& point) {
    return WithinMemory(0, [&] { return m_state->entries->IsOccupied(point) ? 1 : 0; });
}

int QKListCtrl::ItemInSelect(QKListItem* item) {
    return m_state->entries->IsSelected(item);
}

int QKListCtrl::SetTextCath(QKListItem* item, LPCWSTR text) {
    if (text == TextOf(item->szTextCath)) return 0;
    CopyText(item->szTextCath, text);
    return 1;
}

int QKListCtrl::ComputerID() {
    return WithinMemory(0, [this] { return m_state->entries->NextId(); });
}

void QKListCtrl::RedrawList() {
    m_state->entries->ReleaseCaptions();
    ListAccess::LayOutAll(*this);
}

void QKListCtrl::SetListCallBack(const QKListCallbacks* callbacks) {
    m_listCallbacks = callbacks ? *callbacks : QKListCallbacks();
}
