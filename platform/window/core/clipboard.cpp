#include <platform/clipboard.h>

#include <algorithm>
#include <new>
#include <string>

#include <platform/text.h>

#include "platform/window/core/display.h"
#include "platform/window/core/window_table.h"
#include "platform/window/text_clipboard.h"

using namespace platform;

namespace {

// As the program holds it open.
struct OpenState {
    bool open = false;
    HGLOBAL given;  // by GetClipboardData
};
OpenState state;

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

// Null with the last error where none can be reached, or not by this thread.
TextClipboard* Clipboard() {
    WindowSystem* const system = ClaimThread() ? EnsureSystem() : nullptr;
    return system ? system->CopiedText() : nullptr;
}

TextClipboard* Opened() {
    if (state.open) return Clipboard();
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

// The units of a block before their terminator; false without one.
template <class Unit>
bool Read(HGLOBAL block, std::basic_string<Unit>& text) {
    const auto* const units = static_cast<const Unit*>(GlobalLock(block));
    if (!units) return false;
    const Unit* const end = units + GlobalSize(block) / sizeof(Unit);
    const Unit* const last = std::find(units, end, Unit());
    if (last != end) text.assign(units, last);
    GlobalUnlock(block);
    return last != end;
}

template <class Unit>
HGLOBAL BlockOf(const Unit* text, std::size_t length) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (length + 1) * sizeof(Unit));
    if (auto* const units = static_cast<Unit*>(GlobalLock(block))) {
        *std::copy_n(text, length, units) = Unit();
        GlobalUnlock(block);
    }
    return block;
}

}  // namespace

BOOL OpenClipboard(HWND window) {
    if (window && !IsWindow(window)) return Fail(ERROR_INVALID_WINDOW_HANDLE);
    if (state.open) return Fail(ERROR_ACCESS_DENIED);
    if (!Clipboard()) return FALSE;
    state.open = true;
    return TRUE;
}

BOOL CloseClipboard() {
    if (!state.open) return Fail(ERROR_ACCESS_DENIED);
    state.open = false;
    if (state.given) GlobalFree(state.given);
    state.given = nullptr;
    return TRUE;
}

BOOL EmptyClipboard() {
    TextClipboard* const clipboard = Opened();
    if (!clipboard) return FALSE;
    return clipboard->Put(std::nullopt) || Fail(ERROR_ACCESS_DENIED);
}

HGLOBAL SetClipboardData(UINT format, HGLOBAL block) try {
    TextClipboard* const clipboard = Opened();
    if (!clipboard) return {};
    std::string text;
    std::u16string wide;
    const bool read =
        (format == CF_TEXT && Read(block, text)) || (format == CF_UNICODETEXT && Read(block, wide));
    if (!read) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    if (format == CF_UNICODETEXT) text = ToUtf8(wide);
    if (!clipboard->Put(std::move(text))) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return {};
    }
    GlobalFree(block);
    return block;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return {};
}

HGLOBAL GetClipboardData(UINT format) {
    TextClipboard* const clipboard = Opened();
    if (!clipboard) return {};
    const std::optional<std::string> text = clipboard->Get();
    if (!text || (format != CF_TEXT && format != CF_UNICODETEXT)) {
        SetLastError(ERROR_INVALID_DATA);
        return {};
    }
    if (state.given) GlobalFree(state.given);
    const CString wide = FromUtf8(*text);
    state.given = format == CF_TEXT ? BlockOf(text->c_str(), text->size())
                                    : BlockOf(wide.GetString(), static_cast<std::size_t>(wide.GetLength()));
    return state.given;
}

BOOL IsClipboardFormatAvailable(UINT format) {
    if (format != CF_TEXT && format != CF_UNICODETEXT) return FALSE;
    TextClipboard* const clipboard = Clipboard();
    return clipboard && clipboard->Get();
}
