// A dialog template as the resource compiler packs it (DIALOG and DIALOGEX), unpacked into plain records.
// Only the bytes are judged here; windows are made of them by the framework.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

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
};

struct DialogControl {
    DWORD id = 0;  // 0xFFFF or 0xFFFFFFFF for "no identifier" (-1 in the template)
    DWORD style = 0;
    DWORD exStyle = 0;
    DialogUnits place;         // relative to the dialog's client area
    std::u16string className;  // also for one of the six classes that have numbers; empty for other numbers
    std::u16string title;      // empty where the template names an image
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD exStyle = 0;
    DialogUnits place;
    std::u16string title;
    std::optional<DialogFont> font;
    std::vector<DialogControl> controls;  // in the order of the template
};

// Unpacks a template. Empty for bytes that end early, announce more controls than they hold, or carry
// another version. Reads nothing outside `bytes`; they need no alignment. Texts keep their UTF-16 units as
// they stand.
[[nodiscard]] std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes);

}  // namespace platform
