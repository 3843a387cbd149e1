// A dialog template as the resource compiler packs it (DIALOG and DIALOGEX), unpacked into plain records.
// Only the bytes are judged here; windows are made of them by the framework.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <platform/resources/resource_name.h>
#include <platform/types.h>

namespace platform {

// A rectangle in dialog units of the template's font: a quarter of the average character's width by an
// eighth of its height. Any 16-bit value may stand in a template, also negative extents.
struct DialogUnits {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const DialogUnits&, const DialogUnits&) = default;
};

// The font that a template with DS_SETFONT asks for.
struct DialogFont {
    std::u16string face;
    int pointSize = 0;
    int weight = 0;  // 400 is normal, 700 is bold, 0 leaves it open
    bool italic = false;
    int characterSet = 1;
};

// The numbers that stand for the window classes of common controls.
enum class ControlAtom : WORD {
    Button = 0x0080,
    Edit = 0x0081,
    Static = 0x0082,
    ListBox = 0x0083,
    ScrollBar = 0x0084,
    ComboBox = 0x0085,
};

struct DialogControl {
    DWORD id = 0;  // 0xFFFF or 0xFFFFFFFF for "no identifier" (-1 in the template)
    DWORD helpId = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    DialogUnits place;         // relative to the dialog's client area
    ResourceName windowClass;  // a number is a ControlAtom (or unknown to us), a text is a class name
    ResourceName title;        // a caption, or the number of an image resource
    std::vector<BYTE> creationData;

    // The class by its name: the text itself, or the name of a known atom ("STATIC"); empty for others.
    std::u16string ClassName() const;
};

struct DialogTemplate {
    bool extended = false;  // DIALOGEX
    DWORD helpId = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    DialogUnits place;
    ResourceName menu;         // the number 0 for none
    ResourceName windowClass;  // the number 0 for the dialog class
    std::u16string title;
    std::optional<DialogFont> font;
    std::vector<DialogControl> controls;  // in the order of the template
};

// Unpacks a template. Empty for bytes that end early, announce more controls than they hold, or carry
// another version. Reads nothing outside `bytes`; they need no alignment. Texts keep their UTF-16 units as
// they stand.
[[nodiscard]] std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes);

}  // namespace platform
