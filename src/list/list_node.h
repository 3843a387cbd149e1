// An entry of a list, as small as can be: most entries of a long list are never looked at.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string_view>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include <qkui/list/list_item.h>

// A text on the heap, without the room that a record has for it.
class QKShortText {
  public:
    QKShortText() = default;
    explicit QKShortText(std::u16string_view text);
    std::u16string_view View() const;  // without zeros

  private:
    std::unique_ptr<WCHAR[]> units_;  // with a terminator; null for an empty text
};

// Frees a record and all that it owns.
struct QKReleaseRecord {
    void operator()(QKListItem* item) const;
};
using QKOwnedRecord = std::unique_ptr<QKListItem, QKReleaseRecord>;

// What few entries have.
struct QKEntryDetails {
    QKEntryDetails() = default;
    ~QKEntryDetails();
    QKEntryDetails(const QKEntryDetails&) = delete;
    QKEntryDetails& operator=(const QKEntryDetails&) = delete;

    QKShortText path;
    std::unique_ptr<Gdiplus::Image> image2;
    HICON icon;  // owned
    int users[5] = {};
};

struct QKListNode;

// What is made when an entry is looked at: its measured rectangles and its rendered caption.
struct QKEntryLook {
    CRect hit, focus;  // seen from the entries' common origin

    // The picture of the entry in its usual state, as it was last described; 0 where it is another one.
    std::uint64_t picture = 0;
    std::uint64_t pictureEpoch = 0;
    std::uint64_t iconRevision = 0, captionRevision = 0;  // that it shows
    CRect touched;                                        // by it, seen from the origin

    // The rendered caption; of an entry with a record, the record has it.
    std::unique_ptr<Gdiplus::Image> caption;
    bool showsText = false;  // was rendered for the entry's text as it is, and for its state
    std::uint64_t captionEpoch = 0;

    // While it is kept.
    bool hasCaption = false;
    std::list<QKListNode*>::iterator captionSeen;
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
struct QKListNode {
    // What the state rectangles are.
    enum class Extent : std::int8_t {
        kEmpty,     // no layout has been here
        kUnplaced,  // a layout found no cell
        kCover,     // inside what QKHitCover says; measured when somebody asks
        kKnown,     // in the look
    };

    std::uint64_t order = 0;  // grows along the collection
    CRect cell;               // seen from the entries' common origin, as all rectangles here
    CRect caption;            // rcText
    CRect reach;              // whatever a question may meet, as the index has it
    QKShortText text;
    std::shared_ptr<Gdiplus::Image> icon;  // with other entries
    std::unique_ptr<QKEntryDetails> details;
    std::unique_ptr<QKEntryLook> look;
    QKListItem* record = nullptr;
    std::uint32_t heldAt = 0;  // of the record, among those that hosts hold
    int id = -1;
    // As in a record; whatever else a host writes there counts as kOther.
    std::int8_t mouse = 0;
    std::int8_t focus = 1;
    std::int8_t unselected = 1;
    Extent extent = Extent::kEmpty;
    bool placed = true;
    bool mayChange = false;  // a host holds the record, and not only to read it

    static constexpr std::int8_t kOther = 3;
    static std::int8_t State(int value) {
        return value >= 0 && value < kOther ? static_cast<std::int8_t>(value) : kOther;
    }

    std::u16string_view Text() const;
    std::u16string_view Path() const;
    Gdiplus::Image* Icon() const { return record ? record->pImage : icon.get(); }
    bool HasText() const { return record ? record->szText[0] != u'\0' : !text.View().empty(); }
    bool ShowsText() const { return !record || record->bShowText != 0; }
    bool ClickSelects() const { return !record || record->nClickSel != 0; }
    Gdiplus::Image* Caption() const;
    // Made when it is first needed.
    QKEntryLook& Look();
    void ForgetPicture() {
        if (look) look->picture = 0;
    }
    bool IsUsual() const { return mouse == 0 && focus == 1 && unselected == 1; }

    // A record of what is in here, but for rectangles and what only the list knows; without memory nothing
    // changes. What the entry owned goes over to it with GiveTo.
    QKOwnedRecord MakeRecord() const;
    void GiveTo(QKListItem& item, std::uint64_t captionEpoch);
    // The entry is what a host's record says.
    void TakeFrom(QKListItem* item);
};
