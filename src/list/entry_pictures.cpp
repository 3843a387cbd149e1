// What entries look like, as numbers. Nobody can change what an entry shows while it has no record; of one
// that has, images and texts are asked, and everything else was looked at.
#include <atomic>

#include "list/list_entries.h"

namespace {

std::uint64_t RevisionOf(const Gdiplus::Image* image) {
    return image ? image->GetRevision() : 0;
}

std::uint64_t NextNumber() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

}  // namespace

std::optional<QKListEntries::Picture> QKListEntries::KnownPicture(const QKListNode& node) const {
    const QKEntryLook* const look = node.look.get();
    if (!look || look->picture == 0 || look->pictureEpoch != pictureEpoch_) return std::nullopt;
    if (node.record && (RevisionOf(node.Icon()) != look->iconRevision ||
                        RevisionOf(node.Caption()) != look->captionRevision ||
                        (node.ShowsText() && node.HasText() && !ShowsText(node))))
        return std::nullopt;
    return Picture{look->picture, origin_, ToClient(look->touched)};
}

std::optional<QKListEntries::Picture> QKListEntries::KeepPicture(QKListNode& node, const CRect& touched) {
    const bool hasCaption = node.ShowsText() && node.HasText();
    if (!node.IsUsual() || (hasCaption && !(node.Caption() && ShowsText(node)))) return std::nullopt;
    QKEntryLook& look = node.Look();
    look.picture = NextNumber();
    look.pictureEpoch = pictureEpoch_;
    look.iconRevision = RevisionOf(node.Icon());
    look.captionRevision = RevisionOf(node.Caption());
    look.touched = FromOrigin(touched);
    return KnownPicture(node);
}
