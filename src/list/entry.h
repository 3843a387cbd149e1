// An entry of a list, as small as can be: most entries of a long list are never looked at.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include <qkui/list/list_item.h>
#include "list/caption_extents.h"

namespace qkui {

// Frees a record and all that it owns.
struct ReleaseRecord {
    void operator()(QKListItem* item) const;
};
using OwnedRecord = std::unique_ptr<QKListItem, ReleaseRecord>;

// What few entries have.
struct EntryDetails {
    EntryDetails() = default;
    ~EntryDetails();
    EntryDetails(const EntryDetails&) = delete;
    EntryDetails& operator=(const EntryDetails&) = delete;

    std::u16string path;
    std::unique_ptr<Gdiplus::Image> image2;
    HICON icon;  // owned
    int users[5] = {};
};

struct Entry;

// What is made when an entry is looked at, or exposed to a host: its measured rectangles and its rendered
// caption.
struct EntryLook {
    CRect hit, focus;  // seen from the entries' common origin
    // Of an entry with a record: in which layout it was last measured, and what that gave.
    std::uint64_t layout = 0;
    std::unique_ptr<CaptionExtents> extents;

    // The picture of the entry as it was last described; 0 where it is another one.
    std::uint64_t picture = 0;
    std::uint64_t pictureEpoch = 0;
    std::uint64_t iconRevision = 0, captionRevision = 0;  // that it shows
    CRect touched;                                        // by it, seen from the origin

    // The rendered caption; of an entry with a record, the record has it.
    std::unique_ptr<Gdiplus::Image> caption;
    bool showsText = false;          // was rendered for the entry's text as it is, and for its state
    std::uint64_t captionEpoch = 0;  // of the rendering; of a record: in which it was last emptied

    // While it is kept.
    bool hasCaption = false;
    std::list<Entry*>::iterator captionSeen;
    std::uint64_t captionFrame = 0;
    std::size_t captionBytes = 0;
    // How it was rendered, so that one dropped for lack of room comes back the same.
    struct Rendering {
        SIZE size = {0, 0};
        Gdiplus::StringTrimming trimming = Gdiplus::StringTrimmingNone;
        std::uint64_t age = 0;
    };
    bool droppedCaption = false;
    Rendering rendering;
};

// A place in a list's collection. The record that hosts see is made when one asks for the entry; from then on
// it has the entry's texts, images and icon, and may be behind in what the list found out since.
struct Entry {
    // What the state rectangles are.
    enum class Extent : std::int8_t {
        kEmpty,     // no layout has been here
        kUnplaced,  // a layout found no cell
        kCover,     // inside what HitCover says; measured when somebody asks
        kKnown,     // in the look
    };

    // With a caption, cut to what a record holds.
    explicit Entry(std::u16string_view text);

    std::uint64_t order = 0;               // grows along the collection
    CRect cell;                            // seen from the entries' common origin, as all rectangles here
    CRect caption;                         // rcText
    CRect reach;                           // whatever a question may meet, as the index has it
    std::shared_ptr<Gdiplus::Image> icon;  // with other entries
    std::unique_ptr<EntryDetails> details;
    std::unique_ptr<EntryLook> look;
    QKListItem* record = nullptr;
    std::uint32_t heldAt = 0;  // of the record, among HeldRecords
    int id = -1;
    // As in a record; whatever else a host writes there counts as kOther.
    std::int8_t mouse = 0;
    std::int8_t focus = 1;
    std::int8_t unselected = 1;
    Extent extent = Extent::kEmpty;
    std::uint16_t textLength = 0;  // of its own text
    bool placed = true;
    bool mayChange = false;  // a host holds the record, and not only to read it

    static constexpr std::int8_t kOther = 3;
    static std::int8_t State(int value) {
        return value >= 0 && value < kOther ? static_cast<std::int8_t>(value) : kOther;
    }

    std::u16string_view Text() const;
    std::u16string_view Path() const;
    Gdiplus::Image* Icon() const { return record ? record->pImage : icon.get(); }
    bool HasText() const { return record ? record->szText[0] != u'\0' : textLength > 0; }
    bool ShowsText() const { return !record || record->bShowText != 0; }
    bool ClickSelects() const { return !record || record->nClickSel != 0; }
    Gdiplus::Image* Caption() const;
    // Made when it is first needed.
    EntryLook& Look();
    void ForgetPicture() {
        if (look) look->picture = 0;
    }
    // Without any frame around it.
    bool IsUsual() const { return mouse == 0 && focus == 1 && unselected == 1; }

    // A record of what is in here, but for rectangles and what only the list knows; without memory nothing
    // changes. What the entry owned goes over to it with GiveTo.
    OwnedRecord MakeRecord() const;
    void GiveTo(QKListItem& item, std::uint64_t captionEpoch);
    // The entry is what a host's record says.
    void TakeFrom(QKListItem* item);

  private:
    std::u16string_view OwnText() const { return {text_.get(), textLength}; }

    std::unique_ptr<WCHAR[]> text_;  // until a record has it
};

}  // namespace qkui
