// What can be asked about the entries of a list by place, and what they look like.
#include <algorithm>
#include <atomic>

#include "list/list_entries.h"

namespace qkui {
namespace {

std::uint64_t RevisionOf(const Gdiplus::Image* image) {
    return image ? image->GetRevision() : 0;
}

std::uint64_t NextNumber() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

}  // namespace

bool ListEntries::IsOccupied(CPoint point) {
    Sync();
    return geometry_.OccupantAt(point).has_value();
}

std::vector<Entry*> ListEntries::Meeting(const CRect& area) {
    Sync();
    std::vector<Entry*> entries = geometry_.Meeting(area);
    SyncMany(entries);
    return entries;
}

// While there are many records, those that the answer is about were not compared yet.
void ListEntries::SyncMany(const std::vector<Entry*>& entries) {
    constexpr std::size_t kAhead = 8;  // on their way from memory
    for (std::size_t i = 0; records_.AreMany() && i < entries.size(); ++i) {
        if (i + kAhead < entries.size() && entries[i + kAhead]->record)
            RecordState::Prefetch(*entries[i + kAhead]->record);
        SyncFromRecord(*entries[i]);
    }
}

Entry* ListEntries::FirstMeeting(const CRect& rect) {
    for (Entry* entry : Meeting(rect))
        if (CRect common; common.IntersectRect(CellOf(*entry), rect)) return entry;
    return nullptr;
}

std::vector<Entry*> ListEntries::HitBy(CPoint point) {
    Sync();
    std::vector<Entry*> entries = geometry_.At(point);
    SyncMany(entries);
    std::erase_if(entries, [&](Entry* entry) {
        geometry_.EnsureMeasured(*entry);
        return !RectsOf(*entry).hit.PtInRect(point);
    });
    return entries;
}

std::vector<Entry*> ListEntries::HitBy(const CRect& area) {
    std::vector<Entry*> entries = Meeting(area);
    std::erase_if(entries, [&](Entry* entry) {
        geometry_.EnsureMeasured(*entry);
        CRect common;
        return !common.IntersectRect(RectsOf(*entry).hit, area);
    });
    return entries;
}

const std::vector<Entry*>& ListEntries::DrawnIn(const CRect& area, const DrawnMetrics& metrics,
                                                const DrawnFrames& frames) {
    geometry_.SetDrawnBy(metrics);
    if (frames != frames_) {
        frames_ = frames;
        ++framesRevision_;
    }
    Sync();
    CRect common;
    common.IntersectRect(area, whole_.area);
    const bool isWhole = !IsCurrent(whole_) || area == whole_.area || !(common == area);
    Drawn& drawn = isWhole ? whole_ : part_;
    if (!IsCurrent(drawn) || !(area == drawn.area)) {
        drawn.area = area;
        drawn.origin = geometry_.Origin();
        drawn.revision = geometry_.IndexRevision();
        drawn.inOrder = geometry_.Meeting(area);
        drawn.Sort();
    }
    SyncMany(drawn.inOrder);
    if (!IsCurrent(drawn)) drawn.Sort();
    for (Entry* entry : drawn.inOrder)
        if (!entry->IsUsual()) geometry_.EnsureMeasured(*entry);
    return drawn.asDrawn;
}

bool ListEntries::IsCurrent(const Drawn& drawn) const {
    return drawn.revision == geometry_.IndexRevision() && drawn.origin == geometry_.Origin();
}

// An entry whose flag says neither is drawn in both turns.
void ListEntries::Drawn::Sort() {
    asDrawn.clear();
    for (Entry* entry : inOrder)
        if (entry->focus != 0) asDrawn.push_back(entry);
    for (Entry* entry : inOrder)
        if (entry->focus != 1) asDrawn.push_back(entry);
}

std::optional<CPoint> ListEntries::ContentEnd() {
    Sync();
    if (geometry_.NonePlaced()) return std::nullopt;
    const CPoint end = geometry_.End();
    return geometry_.ToClient(CRect(end.x, end.y, end.x, end.y)).TopLeft();
}

int ListEntries::LowestBottom() {
    Sync();
    return Count() == 0 ? 0 : std::max(0, geometry_.ToClient(CRect(0, 0, 0, geometry_.End().y)).bottom);
}

int ListEntries::RightmostRight() {
    Sync();
    return Count() == 0 ? 0 : std::max(0, geometry_.ToClient(CRect(0, 0, geometry_.End().x, 0)).right);
}

// ---- Pictures, as numbers. Nobody can change what an entry shows while it has no record; of one that has,
// images and texts are asked, and everything else was compared.

std::optional<ListEntries::Picture> ListEntries::KnownPicture(const Entry& entry) const {
    const EntryLook* const look = entry.look.get();
    if (!look || look->picture == 0 || look->pictureEpoch != PictureRevision(entry)) return std::nullopt;
    if (entry.record && (RevisionOf(entry.Icon()) != look->iconRevision ||
                         RevisionOf(entry.Caption()) != look->captionRevision ||
                         (entry.ShowsText() && entry.HasText() && !captions_.ShowsText(entry))))
        return std::nullopt;
    return Picture{look->picture, geometry_.Origin(), geometry_.ToClient(look->touched)};
}

std::optional<ListEntries::Picture> ListEntries::KeepPicture(Entry& entry, const CRect& touched) {
    const bool hasCaption = entry.ShowsText() && entry.HasText();
    if (hasCaption && !(entry.Caption() && captions_.ShowsText(entry))) return std::nullopt;
    EntryLook& look = entry.Look();
    look.picture = NextNumber();
    look.pictureEpoch = PictureRevision(entry);
    look.iconRevision = RevisionOf(entry.Icon());
    look.captionRevision = RevisionOf(entry.Caption());
    look.touched = geometry_.FromOrigin(touched);
    return KnownPicture(entry);
}

}  // namespace qkui
