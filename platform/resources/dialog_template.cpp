#include "platform/resources/dialog_template.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <platform/window.h>

#include "platform/base/byte_reader.h"

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

// A menu or a window class, where an empty text says "none".
ResourceName ReadOptionalName(ByteReader& reader) {
    ResourceName name = ReadName(reader);
    return !name.IsNumber() && name.Text().empty() ? ResourceName() : name;
}

DialogFont ReadFont(ByteReader& reader, bool extended) {
    DialogFont font;
    font.pointSize = Signed(reader.Word());
    if (extended) {
        font.weight = Signed(reader.Word());
        font.italic = reader.Byte() != 0;
        font.characterSet = reader.Byte();
    }
    font.face = reader.Text();
    return font;
}

std::vector<BYTE> ReadCreationData(ByteReader& reader, bool extended) {
    std::size_t size = reader.Word();
    // The classic size counts its own word.
    if (!extended) size = std::max<std::size_t>(size, 2) - 2;
    const std::span<const BYTE> data = reader.Bytes(size);
    return {data.begin(), data.end()};
}

DialogControl ReadControl(ByteReader& reader, bool extended) {
    DialogControl control;
    reader.AlignToDword();
    if (extended) {
        control.helpId = reader.Dword();
        control.exStyle = reader.Dword();
        control.style = reader.Dword();
    } else {
        control.style = reader.Dword();
        control.exStyle = reader.Dword();
    }
    control.place = ReadPlace(reader);
    control.id = extended ? reader.Dword() : reader.Word();
    control.windowClass = ReadName(reader);
    control.title = ReadName(reader);
    control.creationData = ReadCreationData(reader, extended);
    return control;
}

}  // namespace

std::u16string DialogControl::ClassName() const {
    if (!windowClass.IsNumber()) return std::u16string(windowClass.Text());
    switch (static_cast<ControlAtom>(windowClass.Number())) {
        case ControlAtom::Button:
            return u"BUTTON";
        case ControlAtom::Edit:
            return u"EDIT";
        case ControlAtom::Static:
            return u"STATIC";
        case ControlAtom::ListBox:
            return u"LISTBOX";
        case ControlAtom::ScrollBar:
            return u"SCROLLBAR";
        case ControlAtom::ComboBox:
            return u"COMBOBOX";
    }
    return {};
}

std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    DialogTemplate dialog;
    ByteReader ahead = reader;
    const WORD version = ahead.Word();
    dialog.extended = ahead.Word() == kExtendedMark;
    if (dialog.extended) {
        if (version != kExtendedVersion) return std::nullopt;
        reader = ahead;
        dialog.helpId = reader.Dword();
        dialog.exStyle = reader.Dword();
        dialog.style = reader.Dword();
    } else {
        dialog.style = reader.Dword();
        dialog.exStyle = reader.Dword();
    }
    const std::size_t count = reader.Word();
    dialog.place = ReadPlace(reader);
    dialog.menu = ReadOptionalName(reader);
    dialog.windowClass = ReadOptionalName(reader);
    dialog.title = reader.Text();
    if (dialog.style & DS_SETFONT) dialog.font = ReadFont(reader, dialog.extended);
    // The count is a claim: it reserves nothing that the bytes could not hold.
    if (reader.Failed() || count > reader.Left() / kSmallestControl) return std::nullopt;
    dialog.controls.reserve(count);
    for (std::size_t i = 0; i < count && !reader.Failed(); ++i)
        dialog.controls.push_back(ReadControl(reader, dialog.extended));
    if (reader.Failed()) return std::nullopt;
    return dialog;
}

}  // namespace platform
