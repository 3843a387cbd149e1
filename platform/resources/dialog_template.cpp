#include "platform/resources/dialog_template.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <platform/window.h>

#include "platform/base/byte_reader.h"
#include "platform/resources/resource_name.h"

namespace platform {
namespace {

// What the first two words of an extended template say.
constexpr WORD kExtendedVersion = 1;
constexpr WORD kExtendedMark = 0xFFFF;
// The fixed fields of the smaller kind of control, the classic one.
constexpr std::size_t kSmallestControl = 18;

int Signed(WORD value) {
    return static_cast<std::int16_t>(value);
}

DialogUnits ReadPlace(ByteReader& reader) {
    DialogUnits place;
    place.x = Signed(reader.Word());
    place.y = Signed(reader.Word());
    place.width = Signed(reader.Word());
    place.height = Signed(reader.Word());
    return place;
}

// The classes whose numbers templates may hold in place of their names, from 0x0080 on.
std::u16string ClassOfNumber(WORD number) {
    static constexpr std::array<const char16_t*, 6> kClasses = {u"BUTTON",  u"EDIT",      u"STATIC",
                                                                u"LISTBOX", u"SCROLLBAR", u"COMBOBOX"};
    const std::size_t index = std::size_t{number} - 0x0080;
    return index < kClasses.size() ? kClasses[index] : u"";
}

DialogFont ReadFont(ByteReader& reader, bool extended) {
    DialogFont font;
    font.pointSize = Signed(reader.Word());
    if (extended) {
        font.weight = Signed(reader.Word());
        font.italic = reader.Byte() != 0;
        reader.Skip(1);  // the character set: the face alone says what it has
    }
    font.face = reader.Text();
    return font;
}

void SkipCreationData(ByteReader& reader, bool extended) {
    const std::size_t size = reader.Word();
    // The classic size counts its own word.
    reader.Skip(extended ? size : std::max<std::size_t>(size, 2) - 2);
}

DialogControl ReadControl(ByteReader& reader, bool extended) {
    DialogControl control;
    reader.AlignToDword();
    if (extended) {
        reader.Skip(4);  // a help identifier
        control.exStyle = reader.Dword();
        control.style = reader.Dword();
    } else {
        control.style = reader.Dword();
        control.exStyle = reader.Dword();
    }
    control.place = ReadPlace(reader);
    control.id = extended ? reader.Dword() : reader.Word();
    const ResourceName windowClass = ReadName(reader);
    control.className =
        windowClass.IsNumber() ? ClassOfNumber(windowClass.Number()) : std::u16string(windowClass.Text());
    control.title = ReadName(reader).Text();
    SkipCreationData(reader, extended);
    return control;
}

}  // namespace

std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    DialogTemplate dialog;
    ByteReader ahead = reader;
    const WORD version = ahead.Word();
    const bool extended = ahead.Word() == kExtendedMark;
    if (extended) {
        if (version != kExtendedVersion) return std::nullopt;
        reader = ahead;
        reader.Skip(4);  // a help identifier
        dialog.exStyle = reader.Dword();
        dialog.style = reader.Dword();
    } else {
        dialog.style = reader.Dword();
        dialog.exStyle = reader.Dword();
    }
    const std::size_t count = reader.Word();
    dialog.place = ReadPlace(reader);
    // Dialogs have no menus, and the window class is the caller's.
    ReadName(reader);
    ReadName(reader);
    dialog.title = reader.Text();
    if (dialog.style & DS_SETFONT) dialog.font = ReadFont(reader, extended);
    // The count is a claim: it reserves nothing that the bytes could not hold.
    if (reader.Failed() || count > reader.Left() / kSmallestControl) return std::nullopt;
    dialog.controls.reserve(count);
    for (std::size_t i = 0; i < count && !reader.Failed(); ++i)
        dialog.controls.push_back(ReadControl(reader, extended));
    if (reader.Failed()) return std::nullopt;
    return dialog;
}

}  // namespace platform
